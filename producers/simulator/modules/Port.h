// SPDX-License-Identifier: Apache-2.0
// Registers and description of a module, as GenTL sees them.
#pragma once

#include "features/Description.h"
#include "features/RegisterMap.h"
#include "gentl/Info.h"

#include <functional>
#include <mutex>
#include <string>

namespace KxSim
{

struct CPortFacts
{
    std::string id, model, tlType, module, portName;
};

class CPort
{
public:
    /// Where the description lies; registers lie below.
    static constexpr uint64_t kFileAddress = 0x40000000;

    CPort(CPortFacts facts, EByteOrder order)
        : m_facts(std::move(facts))
        , m_registers(order)
    {}

    /// Makes registers and description of the features. Once, before the first access.
    void Publish(const CFeatureList& features, const CDescriptionHead& head, bool isZipped = false);
    /// From now on only half of the description can be had.
    void SetTruncated(bool isTruncated);
    bool IsTruncated() const;

    /// Access by consumers. Any thread.
    void Read(uint64_t address, void* data, size_t size);
    void Write(uint64_t address, const void* data, size_t size);
    CInfo GetInfo(GenTL::PORT_INFO_CMD command) const;
    CInfo GetUrlInfo(GenTL::URL_INFO_CMD command) const;
    std::string GetUrl() const;

    /// Guards the registers; held while their functions run.
    std::mutex& Mutex() const { return m_mutex; }
    CRegisterMap& Registers() { return m_registers; }
    /// Asked before each access, with the lock held; throws what the access then fails with.
    std::function<void(uint64_t address, bool isWrite)> check;
    /// What GetInfo tells of access.
    std::function<GenTL::DEVICE_ACCESS_FLAGS()> access;

private:
    bool CanWrite() const { return !access || access() != GenTL::DEVICE_ACCESS_READONLY; }
    size_t FileSize() const { return m_isTruncated ? m_file.size() / 2 : m_file.size(); }

    CPortFacts m_facts;
    mutable std::mutex m_mutex;
    CRegisterMap m_registers;
    std::string m_file;
    std::string m_fileName;
    bool m_isTruncated = false;
};

} // namespace KxSim

// SPDX-License-Identifier: Apache-2.0
// Registers and description of a module, as GenTL sees them.
#pragma once

#include "common/features/RegisterMap.h"
#include "common/gentl/Info.h"

#include <cstdint>
#include <string>

namespace KxProducer
{

/// Where descriptions lie, unless the module's registers reach so far.
inline constexpr uint64_t kUsualFileAddress = 0x40000000;

struct CPortFacts
{
    std::string id, model, tlType, module, portName;
    std::string vendor = "Kestrix";
    std::string version = "1.0.0";
    uint64_t fileAddress = kUsualFileAddress;
};

/// A file that describes the registers. It is read through the port like them.
struct CDescriptionFile
{
    std::string name; // ends in .xml or .zip
    std::string content;
    int schemaMajor = 1, schemaMinor = 1;
};

/// A port; what its registers are, derived classes know. Any thread, unless they say otherwise.
class CPort
{
public:
    CPort(CPortFacts facts, EByteOrder order)
        : m_facts(std::move(facts))
        , m_order(order)
    {}
    CPort(const CPort&) = delete;
    CPort& operator=(const CPort&) = delete;
    virtual ~CPort() = default;

    /// Access by consumers. Throw CError.
    void Read(uint64_t address, void* data, size_t size);
    void Write(uint64_t address, const void* data, size_t size);
    CInfo GetInfo(GenTL::PORT_INFO_CMD command) const;
    CInfo GetUrlInfo(GenTL::URL_INFO_CMD command) const;
    std::string GetUrl() const;

    /// Whether its registers belong to the producer's lock, as those of modules do. Those of a camera, where
    /// an answer takes its time, should have a lock of their own.
    virtual bool NeedsProducerLock() const { return true; }
    const CPortFacts& Facts() const { return m_facts; }

protected:
    /// Once, before the first access.
    void SetFile(CDescriptionFile file) { m_file = std::move(file); }
    virtual void ReadRegisters(uint64_t address, void* data, size_t size) = 0;
    virtual void WriteRegisters(uint64_t address, const void* data, size_t size) = 0;
    virtual bool CanWrite() const { return true; }
    /// A piece of the description. Throws for what it doesn't have.
    virtual void ReadFile(uint64_t offset, void* data, size_t size) const;
    /// Bytes of the description that can be had.
    virtual size_t FileSize() const { return m_file.content.size(); }
    const CDescriptionFile& File() const { return m_file; }

private:
    const CPortFacts m_facts;
    const EByteOrder m_order;
    CDescriptionFile m_file;
};

} // namespace KxProducer

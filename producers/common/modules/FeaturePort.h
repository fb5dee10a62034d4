// SPDX-License-Identifier: Apache-2.0
// A port whose registers are those of a list of features.
#pragma once

#include "common/features/Description.h"
#include "common/features/RegisterMap.h"
#include "common/modules/Port.h"

#include <functional>
#include <mutex>

namespace KxProducer
{

class CFeaturePort : public CPort
{
public:
    CFeaturePort(CPortFacts facts, EByteOrder order)
        : CPort(std::move(facts), order)
        , m_registers(order)
    {}

    /// Makes registers and description of the features. Once, before the first access.
    void Publish(const CFeatureList& features, const CDescriptionHead& head, bool isZipped = false);

    /// Guards the registers; held while their functions run.
    std::mutex& Mutex() const { return m_mutex; }
    CRegisterMap& Registers() { return m_registers; }

    // Functions of features, tied to their registers.
    // ---------------------------------------------------------------------------------------------------
    /// A text or a number that is asked for anew at each read, with the index of the selected element.
    void BindText(const std::string& feature, std::function<std::string(size_t)> text);
    void BindInteger(const std::string& feature, std::function<int64_t(size_t)> value);
    /// What a command does. It is done when that returns.
    void BindCommand(const std::string& feature, std::function<void(size_t)> action);
    /// Hears of each value that was written.
    void BindWrite(const std::string& feature, std::function<void(int64_t value, size_t)> written);

protected:
    void ReadRegisters(uint64_t address, void* data, size_t size) override;
    void WriteRegisters(uint64_t address, const void* data, size_t size) override;
    /// Asked before each access, with the lock held; throws what the access then fails with.
    virtual void CheckAccess(uint64_t address, bool isWrite);

private:
    mutable std::mutex m_mutex;
    CRegisterMap m_registers;
};

} // namespace KxProducer

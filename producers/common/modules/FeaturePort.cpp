// SPDX-License-Identifier: Apache-2.0

#include "FeaturePort.h"

#include <utility>

namespace KxProducer
{

void CFeaturePort::Publish(const CFeatureList& features, const CDescriptionHead& head, bool isZipped)
{
    features.MakeRegisters(m_registers);
    std::string text = WriteDescription(head, features, m_registers);
    const std::string stem = "Kestrix_" + head.model + "_1.0.0";
    if (isZipped)
        SetFile({stem + ".zip", Zip(stem + ".xml", text)});
    else
        SetFile({stem + ".xml", std::move(text)});
}

void CFeaturePort::CheckAccess(uint64_t, bool) {}

void CFeaturePort::ReadRegisters(uint64_t address, void* data, size_t size)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CheckAccess(address, false);
    m_registers.Read(address, data, size);
}

void CFeaturePort::WriteRegisters(uint64_t address, const void* data, size_t size)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CheckAccess(address, true);
    m_registers.Write(address, data, size);
}

void CFeaturePort::BindText(const std::string& feature, std::function<std::string(size_t)> text)
{
    const std::string name = CFeatureList::RegisterOf(feature);
    m_registers.At(name).beforeRead = [this, name, text = std::move(text)](size_t index) {
        m_registers.SetText(name, text(index), index);
    };
}

void CFeaturePort::BindInteger(const std::string& feature, std::function<int64_t(size_t)> value)
{
    const std::string name = CFeatureList::RegisterOf(feature);
    m_registers.At(name).beforeRead = [this, name, value = std::move(value)](size_t index) {
        m_registers.SetInteger(name, value(index), index);
    };
}

void CFeaturePort::BindCommand(const std::string& feature, std::function<void(size_t)> action)
{
    const std::string name = CFeatureList::RegisterOf(feature);
    m_registers.At(name).afterWrite = [this, name, action = std::move(action)](size_t index) {
        m_registers.SetInteger(name, 0, index);
        action(index);
    };
}

void CFeaturePort::BindWrite(const std::string& feature, std::function<void(int64_t, size_t)> written)
{
    const std::string name = CFeatureList::RegisterOf(feature);
    m_registers.At(name).afterWrite = [this, name, written = std::move(written)](size_t index) {
        written(m_registers.GetInteger(name, index), index);
    };
}

} // namespace KxProducer

// SPDX-License-Identifier: Apache-2.0

#include "RegisterMap.h"

#include "common/gentl/Error.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace KxProducer
{
namespace
{

double ToReal(uint64_t bits)
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

uint64_t ToBits(double value)
{
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

CRegister& CRegisterMap::Add(CRegister entry)
{
    constexpr uint64_t kAlignment = 8;
    entry.address = m_nextAddress;
    entry.bytes.assign(entry.size * entry.count, 0);
    m_nextAddress += (entry.bytes.size() + kAlignment - 1) / kAlignment * kAlignment;
    m_registers.push_back(std::move(entry));
    CRegister& added = m_registers.back();
    if (!m_names.emplace(added.name, &added).second)
        Fail(GenTL::GC_ERR_ERROR, "There are two registers '%s'", added.name.c_str());
    return added;
}

CRegister& CRegisterMap::At(const std::string& name)
{
    const auto place = m_names.find(name);
    if (place == m_names.end())
        Fail(GenTL::GC_ERR_ERROR, "There is no register '%s'", name.c_str());
    return *place->second;
}

CRegister& CRegisterMap::Find(uint64_t address, size_t size)
{
    const auto behind =
        std::upper_bound(m_registers.begin(), m_registers.end(), address,
                         [](uint64_t value, const CRegister& entry) { return value < entry.address; });
    if (behind != m_registers.begin()) {
        CRegister& entry = *std::prev(behind);
        const uint64_t offset = address - entry.address;
        if (offset < entry.bytes.size() && size <= entry.bytes.size() - offset)
            return entry;
    }
    Fail(GenTL::GC_ERR_INVALID_ADDRESS, "There are no registers of %zu bytes at 0x%llx", size,
         static_cast<unsigned long long>(address));
}

uint64_t CRegisterMap::Decode(const uint8_t* data, size_t size) const
{
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i)
        value |= static_cast<uint64_t>(data[i]) << (8 * (m_order == EByteOrder::Little ? i : size - 1 - i));
    return value;
}

void CRegisterMap::Encode(uint64_t value, uint8_t* data, size_t size) const
{
    for (size_t i = 0; i < size; ++i)
        data[i] = static_cast<uint8_t>(value >> (8 * (m_order == EByteOrder::Little ? i : size - 1 - i)));
}

int64_t CRegisterMap::ToInteger(const CRegister& entry, const uint8_t* element) const
{
    return static_cast<int64_t>(Decode(element, entry.size));
}

void CRegisterMap::Read(uint64_t address, void* data, size_t size)
{
    CRegister& entry = Find(address, size);
    if (entry.access == EAccess::WO)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Register '%s' can't be read", entry.name.c_str());
    const size_t offset = static_cast<size_t>(address - entry.address);
    if (entry.beforeRead)
        entry.beforeRead(offset / entry.size);
    if (size != 0)
        std::memcpy(data, entry.bytes.data() + offset, size);
}

void CRegisterMap::CheckValue(const CRegister& entry, const uint8_t* element) const
{
    if (entry.type == ERegister::Text || entry.type == ERegister::Raw)
        return;
    const bool isReal = entry.type == ERegister::Real;
    const double value =
        isReal ? ToReal(Decode(element, entry.size)) : static_cast<double>(ToInteger(entry, element));
    if (!std::isfinite(value))
        Fail(GenTL::GC_ERR_INVALID_VALUE, "'%s' can't be %g", entry.name.c_str(), value);
    if (entry.max > entry.min && (value < entry.min || value > entry.max))
        Fail(GenTL::GC_ERR_INVALID_VALUE, "'%s' = %g must lie from Min = %g to Max = %g", entry.name.c_str(),
             value, entry.min, entry.max);
    if (!entry.allowed.empty() && std::find(entry.allowed.begin(), entry.allowed.end(),
                                            ToInteger(entry, element)) == entry.allowed.end())
        Fail(GenTL::GC_ERR_INVALID_VALUE, "'%s' has no value %g", entry.name.c_str(), value);
}

void CRegisterMap::Write(uint64_t address, const void* data, size_t size)
{
    CRegister& entry = Find(address, size);
    if (entry.access == EAccess::RO)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Register '%s' can't be written", entry.name.c_str());
    if (size == 0)
        return;
    const size_t offset = static_cast<size_t>(address - entry.address);
    const size_t index = offset / entry.size;
    if (entry.type != ERegister::Raw && (offset + size - 1) / entry.size != index)
        Fail(GenTL::GC_ERR_INVALID_ADDRESS, "%zu bytes at 0x%llx are more than one of '%s'", size,
             static_cast<unsigned long long>(address), entry.name.c_str());
    if (entry.beforeWrite)
        entry.beforeWrite(index);
    std::vector<uint8_t> changed = entry.bytes;
    std::memcpy(changed.data() + offset, data, size);
    CheckValue(entry, changed.data() + index * entry.size);
    entry.bytes.swap(changed);
    if (!entry.afterWrite)
        return;
    try {
        entry.afterWrite(index);
    } catch (...) {
        entry.bytes.swap(changed);
        throw;
    }
}

uint8_t* CRegisterMap::Element(const std::string& name, size_t index, CRegister** found)
{
    CRegister& entry = At(name);
    if (index >= entry.count)
        Fail(GenTL::GC_ERR_INVALID_INDEX, "'%s' has %zu values, not one at %zu", name.c_str(), entry.count,
             index);
    if (found)
        *found = &entry;
    return entry.bytes.data() + index * entry.size;
}

int64_t CRegisterMap::GetInteger(const std::string& name, size_t index)
{
    CRegister* entry = nullptr;
    const uint8_t* const element = Element(name, index, &entry);
    return ToInteger(*entry, element);
}

double CRegisterMap::GetReal(const std::string& name, size_t index)
{
    return ToReal(Decode(Element(name, index), sizeof(double)));
}

std::string CRegisterMap::GetText(const std::string& name, size_t index)
{
    CRegister* entry = nullptr;
    const char* const element = reinterpret_cast<const char*>(Element(name, index, &entry));
    return std::string(element, strnlen(element, entry->size));
}

void CRegisterMap::SetInteger(const std::string& name, int64_t value, size_t index)
{
    CRegister* entry = nullptr;
    uint8_t* const element = Element(name, index, &entry);
    Encode(static_cast<uint64_t>(value), element, entry->size);
}

void CRegisterMap::SetReal(const std::string& name, double value, size_t index)
{
    Encode(ToBits(value), Element(name, index), sizeof value);
}

void CRegisterMap::SetText(const std::string& name, const std::string& value, size_t index)
{
    CRegister* entry = nullptr;
    uint8_t* const element = Element(name, index, &entry);
    const size_t length = std::min(value.size(), entry->size);
    std::fill(std::copy_n(value.begin(), length, element), element + entry->size, uint8_t{0});
}

} // namespace KxProducer

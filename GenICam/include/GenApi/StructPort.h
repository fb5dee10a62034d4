// SPDX-License-Identifier: Apache-2.0
// A port on a structure in memory, for tests and for settings of programs.
#pragma once

#include <Base/GCException.h>
#include <GenApi/PortImpl.h>

#include <cstring>
#include <type_traits>

namespace GenApi
{

/// A port whose registers are the members of CDataStruct, which it derives from. Accesses outside the
/// structure raise OutOfRangeException.
template <class CDataStruct>
class CTestPortStruct : public CPortImpl, public CDataStruct
{
    static_assert(std::is_trivially_copyable_v<CDataStruct>, "registers are plain bytes");

public:
    /// @param StructOffset address of the structure's first byte.
    explicit CTestPortStruct(int64_t StructOffset = 0)
        : CDataStruct()
        , m_structOffset(StructOffset)
    {}

    EAccessMode GetAccessMode() const override { return RW; }

    void Read(void* pBuffer, int64_t Address, int64_t Length) override
    {
        std::memcpy(pBuffer, At(Address, Length), static_cast<size_t>(Length));
        ++m_numReads;
    }

    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        std::memcpy(At(Address, Length), pBuffer, static_cast<size_t>(Length));
        ++m_numWrites;
    }

    /// Number of accesses since construction or ResetStatistics.
    uint32_t GetNumReads() const { return m_numReads; }
    uint32_t GetNumWrites() const { return m_numWrites; }
    void ResetStatistics() { m_numReads = m_numWrites = 0; }

private:
    uint8_t* At(int64_t address, int64_t length)
    {
        constexpr auto kSize = static_cast<int64_t>(sizeof(CDataStruct));
        const bool inside = address >= m_structOffset && length >= 0 && length <= kSize &&
                            static_cast<uint64_t>(address) - static_cast<uint64_t>(m_structOffset) <=
                                static_cast<uint64_t>(kSize - length);
        if (!inside)
            throw OUT_OF_RANGE_EXCEPTION(
                "Address = %lld with Length = %lld lies outside the %lld bytes from %lld on",
                static_cast<long long>(address), static_cast<long long>(length),
                static_cast<long long>(kSize), static_cast<long long>(m_structOffset));
        return reinterpret_cast<uint8_t*>(static_cast<CDataStruct*>(this)) + (address - m_structOffset);
    }

    int64_t m_structOffset;
    uint32_t m_numReads = 0;
    uint32_t m_numWrites = 0;
};

} // namespace GenApi

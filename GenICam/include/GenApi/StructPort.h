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
/// structure raise RuntimeException.
template <class CDataStruct>
class CTestPortStruct : public CDataStruct, public CPortImpl
{
    static_assert(std::is_trivially_copyable<CDataStruct>::value, "registers are plain bytes");

public:
    /// The structure holds zeros. @param BaseAddress address of its first byte.
    CTestPortStruct(int64_t BaseAddress = 0)
        : CDataStruct()
        , m_NumReads(0)
        , m_NumWrites(0)
        , m_BaseAddress(BaseAddress)
    {}

    EInterfaceType GetPrincipalInterfaceType() const { return intfIPort; }
    EAccessMode GetAccessMode() const override { return RW; }

    void Read(void* pBuffer, int64_t Address, int64_t Length) override
    {
        std::memcpy(pBuffer, At(Address, Length), static_cast<size_t>(Length));
        ++m_NumReads;
    }
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        std::memcpy(At(Address, Length), pBuffer, static_cast<size_t>(Length));
        ++m_NumWrites;
    }

    /// Sets all bytes of the structure.
    void MemSet(const char Value)
    {
        std::memset(At(m_BaseAddress, 0), static_cast<unsigned char>(Value), sizeof(CDataStruct));
    }

    /// Number of accesses since construction or ResetStatistics.
    int64_t GetNumReads() { return m_NumReads; }
    int64_t GetNumWrites() { return m_NumWrites; }
    void ResetStatistics() { m_NumReads = m_NumWrites = 0; }

protected:
    int64_t m_NumReads;
    int64_t m_NumWrites;
    int64_t m_BaseAddress;

private:
    uint8_t* At(int64_t address, int64_t length)
    {
        const int64_t size = static_cast<int64_t>(sizeof(CDataStruct));
        const bool inside = address >= m_BaseAddress && length >= 0 && length <= size &&
                            static_cast<uint64_t>(address) - static_cast<uint64_t>(m_BaseAddress) <=
                                static_cast<uint64_t>(size - length);
        if (!inside)
            throw RUNTIME_EXCEPTION(
                "Address = %lld with Length = %lld lies outside the %lld bytes from %lld on",
                static_cast<long long>(address), static_cast<long long>(length), static_cast<long long>(size),
                static_cast<long long>(m_BaseAddress));
        return reinterpret_cast<uint8_t*>(static_cast<CDataStruct*>(this)) + (address - m_BaseAddress);
    }
};

} // namespace GenApi

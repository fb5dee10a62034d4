// SPDX-License-Identifier: Apache-2.0
// Base for ports of devices that know 32-bit registers only.
#pragma once

#include <GenApi/PortImpl.h>

namespace GenApi
{

/// A port that splits every access into accesses to registers of 4 bytes. Derived classes give access mode,
/// ReadRegister and WriteRegister. Read and Write raise InvalidArgumentException for an address or length
/// that is no multiple of 4, OutOfRangeException for what lies outside 32-bit addresses.
class GENAPI_DECL CRegisterPortImpl : public CPortImpl
{
public:
    /// @param SwapBytes turns the bytes of each register round between device and node map.
    explicit CRegisterPortImpl(bool SwapBytes = false)
        : m_swapBytes(SwapBytes)
    {}

    /// The register at an address that is a multiple of 4.
    virtual uint32_t ReadRegister(uint32_t Address) = 0;
    virtual void WriteRegister(uint32_t Address, uint32_t Value) = 0;

    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    bool m_swapBytes;
};

} // namespace GenApi

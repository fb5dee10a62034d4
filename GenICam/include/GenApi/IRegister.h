// SPDX-License-Identifier: Apache-2.0
// A stretch of bytes at an address.
#pragma once

#include <GenApi/IValue.h>

#include <cstdint>

namespace GenApi
{

/// A register. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IRegister : virtual public IValue
{
    /// Writes the first Length bytes; OutOfRangeException if the register is shorter.
    /// @param Verify checks the access mode: AccessException.
    virtual void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) = 0;

    /// Reads the first Length bytes; OutOfRangeException if there are fewer, AccessException if unreadable.
    /// @param IgnoreCache reads the device even if the bytes are cached.
    virtual void Get(uint8_t* pBuffer, int64_t Length, bool Verify = false, bool IgnoreCache = false) = 0;

    /// Length in bytes.
    virtual int64_t GetLength(bool Verify = false) = 0;

    /// Address of the first byte in the address space of the port.
    virtual int64_t GetAddress(bool Verify = false) = 0;
};

/// Reference to a register.
template <class T>
class CRegisterRefT : public CValueRefT<T>
{
public:
    void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) override
    {
        this->Target().Set(pBuffer, Length, Verify);
    }
    void Get(uint8_t* pBuffer, int64_t Length, bool Verify = false, bool IgnoreCache = false) override
    {
        this->Target().Get(pBuffer, Length, Verify, IgnoreCache);
    }
    int64_t GetLength(bool Verify = false) override { return this->Target().GetLength(Verify); }
    int64_t GetAddress(bool Verify = false) override { return this->Target().GetAddress(Verify); }
};
typedef CRegisterRefT<IRegister> CRegisterRef;

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// The road to the registers of a device. Applications and transport layers implement it.
#pragma once

#include <GenApi/IBase.h>
#include <GenApi/Reference.h>

#include <cstdint>

namespace GenApi
{

/// A port. The node map calls it from whatever thread uses the map, one call at a time, with the lock held.
/// Exceptions of any type pass through the node map unchanged.
struct GENAPI_DECL_ABSTRACT IPort : virtual public IBase
{
    /// Reads Length bytes from Address.
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) = 0;

    /// Writes Length bytes to Address.
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;
};

/// Reference to a port.
template <class T>
class CPortRefT : public CBaseRefT<T>
{
public:
    using T::Write; // stacked ports have one more

    void Read(void* pBuffer, int64_t Address, int64_t Length) override
    {
        this->Target().Read(pBuffer, Address, Length);
    }
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        this->Target().Write(pBuffer, Address, Length);
    }
};
typedef CPortRefT<IPort> CPortRef;

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// A port that takes many writes in one go.
#pragma once

#include <GenApi/IPort.h>

#include <cstddef>
#include <cstdint>

namespace GenApi
{

/// One of the writes.
typedef struct S_PORT_REGISTER_STACK_ENTRY
{
    uint64_t Address;
    void* pBuffer;
    size_t Size;
} PORT_REGISTER_STACK_ENTRY;

/// Implemented by programs; the node map calls it with its lock held.
struct GENAPI_DECL_ABSTRACT IPortStacked : virtual public IPort
{
    using IPort::Write;
    /// Does all writes in their order.
    virtual void Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t NumEntries) = 0;
};

/// Reference to such a port.
template <class T>
class CPortStackedRefT : public CPortRefT<T>
{
public:
    using CPortRefT<T>::Write;
    void Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t NumEntries) override
    {
        this->Target().Write(pEntries, NumEntries);
    }
};
typedef CPortStackedRefT<IPortStacked> CPortStackedRef;

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// How an application supplies the memory of images.
#pragma once

#include <cstddef>

namespace KxApi
{

/// Source of image memory, written by the application. It is called in the thread that resizes or releases
/// the image buffer, and must live until OnDeregister. It must not throw.
struct IKxAllocator
{
    /// Supplies memory.
    /// @param[out] ppBuffer the memory; left or set null when there is none, which the caller reports.
    /// @param nSize bytes wanted, never 0.
    /// @param[in,out] ppContext a value of the allocator's own, which comes back in Deallocate and is told by
    /// IKxImage::GetUserContext.
    virtual void Allocate(void** ppBuffer, size_t nSize, void** ppContext) = 0;

    /// Takes memory back, with the size and the context of its Allocate.
    virtual void Deallocate(void* pBuffer, size_t nSize, void* pContext) = 0;

    /// The buffer that used this allocator is gone; the last call from it.
    virtual void OnDeregister() = 0;

protected:
    ~IKxAllocator() = default;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Memory for an image.
#pragma once

#include <KxApi_TL/IKxReleasable.h>
#include <KxApi_TL/KxApi_TLLinkage.h>
#include <KxApi_TL/KxPixelFormat.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

struct IKxAllocator;
struct IKxImage;

/// What a new image is filled with.
enum _EKxMemoryInitialization_t : int32_t
{
    KxMemoryInitialization_None = 0, ///< nothing
    KxMemoryInitialization_Zero = 1, ///< bytes 0
    KxMemoryInitialization_FF = 2,   ///< bytes 0xFF
    /// A test chart: grey steps and ramps for Mono8 to Mono16, 24 colour patches for the BGR formats of 8 to
    /// 16 bits with and without alpha; zeros for formats without a chart.
    KxMemoryInitialization_Chart = 3,
};

/// An image that grows with its needs: memory once had is kept for smaller images. One thread at a time.
///
/// The pixel format has to be one that GetIKxPixelFormatInfo knows, and an image to copy one of the SDK's own
/// (IKxImageInside); anything else is a fault in the program and ends the process. Raised by all that give
/// the image a size: OutOfRangeException for a width or height below 1, BadAllocException when the allocator
/// yields nothing.
struct IKxImageBuffer
{
    /// Gives the image its size, with the format's default line pitch, and fills it.
    virtual void CreateBuffer(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat,
                              _EKxMemoryInitialization_t eInitialization) = 0;

    /// The image, which belongs to the buffer. Raises RuntimeException "There is no available image." when it
    /// has no size yet.
    virtual IKxImage* GetIKxImage() = 0;

    /// Becomes a copy of the image: same size and format. The lines get the format's default pitch, except
    /// for formats whose planes differ in size, which keep the pitch that they have.
    virtual void CopyImage(IKxImage* pSrcIKxImage) = 0;

    /// Gives the image its size; what the memory holds is not touched.
    /// @param nAlignment bytes to whose multiple the lines are filled; 0 for the format's default.
    virtual void SetSize(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat,
                         size_t nAlignment) = 0;

    /// Whether there is memory.
    virtual bool HasImageBuffer() const = 0;

protected:
    ~IKxImageBuffer() = default;
};

/// The form that the factory returns.
struct IKxImageBufferReleasable : IKxImageBuffer, IKxReleasable
{
protected:
    ~IKxImageBufferReleasable() = default;
};

/// A new image buffer without an image; the caller gives it back by Release. Any thread.
/// @param pAllocator source of the memory, not owned, told by OnDeregister when it isn't needed any more;
/// null for the process's own memory. Raises LogicalErrorException when the SDK is not started,
/// BadAllocException.
KXAPI_TL_API IKxImageBufferReleasable* CreateIKxImageBuffer(IKxAllocator* pAllocator);

} // namespace KxApi

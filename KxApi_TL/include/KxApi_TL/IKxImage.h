// SPDX-License-Identifier: Apache-2.0
// An image, as it crosses every boundary of the SDK.
#pragma once

#include <KxApi_TL/KxPixelFormat.h>

#include <cstddef>

namespace KxApi
{

struct IKxPixelComponent;

/// Pixels in memory, with what is needed to find them. One thread at a time, together with all windows on it.
struct IKxImage
{
    /// Pixels per line.
    virtual size_t GetImageWidth() const = 0;
    /// Lines.
    virtual size_t GetImageHeight() const = 0;
    /// Bytes from line to line; of the first plane, where the planes differ.
    virtual size_t GetImageLinePitch() const = 0;
    /// Bytes from plane to plane, for formats whose planes have one size.
    virtual size_t GetImagePlanePitch() const = 0;
    virtual EKxPixelFormatNamingConvention_t GetImagePixelFormat() const = 0;
    /// The first byte; null when there is no image.
    virtual void* GetImageBuffer() const = 0;
    /// The context value of the allocator that supplied the memory.
    virtual void* GetUserContext() const = 0;

    /// The window of w by h pixels at x, y as an image: no copy, unless the format's planes differ in size.
    /// There is one such object for each image: the next call moves it. It belongs to the image. Raises
    /// OutOfRangeException when the window isn't inside the image or not on the format's grid,
    /// RuntimeException when the format can't be cut there, BadAllocException.
    virtual IKxImage* GetROIImage(size_t x, size_t y, size_t w, size_t h) = 0;

    /// The values of the pixel at x, y. The object belongs to the image and is filled anew by the next call.
    /// Raises OutOfRangeException when there is no such pixel.
    virtual IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) = 0;

protected:
    ~IKxImage() = default;
};

/// An image of the SDK's own making; only such can be copied by IKxImageBuffer::CopyImage.
struct IKxImageInside : IKxImage
{
protected:
    ~IKxImageInside() = default;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// What there is to know of a pixel format.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/KxApi_TLLinkage.h>
#include <KxApi_TL/KxPixelComponentType.h>
#include <KxApi_TL/KxPixelFormat.h>

#include <cstddef>

namespace KxApi
{

/// Description of one pixel format. Lives as long as the process; any thread.
struct IKxPixelFormatInfo
{
    virtual EKxPixelFormatNamingConvention_t GetPixelFormat() const = 0;
    /// Name by the naming convention, such as "BayerRG12p".
    virtual GenICam::gcstring GetName() const = 0;

    /// True when an image of the format has colour: RGB and its kin, luma with chroma, mosaics of colour
    /// filters. A single channel such as R8 has none.
    virtual bool IsColor() const = 0;
    /// True when each pixel has one value that needs no name: mono, data and confidence.
    virtual bool IsSingleComponent() const = 0;
    /// True when the pixels lie behind polarisers of different angles.
    virtual bool IsPolarized() const = 0;

    /// Average bits of a pixel in memory, over all planes.
    virtual size_t GetBitsPerPixel() const = 0;
    /// Bits of a pixel in the lines of the first plane; for formats of one plane the same as GetBitsPerPixel.
    /// The byte of pixel x in a line is this times x / 8, for x a multiple of GetIncrementX.
    virtual size_t GetBitsPerPixelOfPlane() const = 0;

    /// Smallest step of a width or x offset, in pixels: a window then starts on a whole byte and its pattern
    /// or chroma sub-sampling can be told by a format (GetPixelFormatAtOffset).
    virtual size_t GetIncrementX() const = 0;
    /// The same for a height or y offset, in lines.
    virtual size_t GetIncrementY() const = 0;

    /// The format of a window that starts at x, y, which are multiples of the increments: another colour
    /// filter pattern at odd offsets, for formats without such a pattern the same format.
    virtual EKxPixelFormatNamingConvention_t GetPixelFormatAtOffset(size_t x, size_t y) const = 0;

    /// Type of component `component` of the pixel at x, y; only colour filters and polarisers make it depend
    /// on the place. Raises OutOfRangeException from GetComponentCount on.
    virtual EKxPixelComponentType_t GetComponentType(size_t component, size_t x, size_t y) const = 0;

protected:
    ~IKxPixelFormatInfo() = default;
};

/// How images of the format lie in memory.
struct IKxPixelFormatInfoInside : IKxPixelFormatInfo
{
    /// Bits that one component takes in memory; the greatest, where they differ (RGB565p: 6). 12 for
    /// Mono10Packed.
    virtual size_t GetStorageBits() const = 0;
    /// Bits of one component's value; the greatest, where they differ.
    virtual size_t GetEffectiveBits() const = 0;
    /// Values that a pixel has, chroma that it shares with others included: 1 for mono and mosaics, 3 for
    /// YUV422_8.
    virtual size_t GetComponentCount() const = 0;
    virtual size_t GetPlaneCount() const = 0;

    /// Bytes to whose multiple lines are filled when nothing else is asked for.
    virtual size_t GetDefaultAlignment() const = 0;
    /// Bytes from line to line for `nWidth` pixels when lines are filled to a multiple of `nAlignment` bytes,
    /// 0 standing for the default one; with 1, the bytes that the pixels of a line take. Of the first plane.
    /// Raises OutOfRangeException when it doesn't fit into size_t.
    virtual size_t GetLinePitch(size_t nWidth, size_t nAlignment) const = 0;
    /// Bytes of all planes of an image as cameras deliver it, the planes one behind the other, sub-sampled
    /// ones with their true size. For formats without sub-sampled planes height times pitch times planes.
    /// Raises OutOfRangeException when it doesn't fit into size_t.
    virtual size_t GetImageSize(size_t nHeight, size_t nLinePitch) const = 0;

protected:
    ~IKxPixelFormatInfoInside() = default;
};

/// The description of a format, null for a code that names none. Any thread.
KXAPI_TL_API const IKxPixelFormatInfo* GetIKxPixelFormatInfo(EKxPixelFormatNamingConvention_t ePixelFormat);

/// The description of a format by its name, case counting; null when there is none. Any thread.
KXAPI_TL_API const IKxPixelFormatInfo* GetIKxPixelFormatInfoByName(const GenICam::gcstring& strName);

/// Number of formats known, and the description of each in the order of the codes, null from the number on.
/// Any thread.
KXAPI_TL_API size_t GetIKxPixelFormatInfoCount();
KXAPI_TL_API const IKxPixelFormatInfo* GetIKxPixelFormatInfoByIndex(size_t nIndex);

} // namespace KxApi

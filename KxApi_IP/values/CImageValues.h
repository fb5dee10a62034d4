// SPDX-License-Identifier: Apache-2.0
// The values of an image, line by line.
#pragma once

#include "PixelReader.h"

#include <KxApi_TL/KxPixelFormat.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

struct IKxImage;

namespace Detail
{

/// One plane of an image in memory.
struct CPlaneMemory
{
    const uint8_t* first;
    size_t linePitch;
    size_t lines;
    size_t lineBytes; ///< that hold pixels
};

/// Reads the values of an image of any format, which has to stay as it is meanwhile. Any number of threads.
class CImageValues
{
public:
    /// Checks all that reading relies on. Raises LogicalErrorException when there is no image,
    /// InvalidArgumentException when its format is unknown, when its pitch is smaller than its lines, or when
    /// its size cuts a group of pixels that share values.
    explicit CImageValues(const IKxImage* pImage);
    /// The same for pixels that are no image yet.
    CImageValues(EKxPixelFormatNamingConvention_t ePixelFormat, size_t nWidth, size_t nHeight,
                 const CPixelMemory& memory);

    const CPixelFormatRow& Format() const { return m_row; }
    const CPixelLayout& Layout() const { return kLayouts[m_row.layout]; }
    size_t Width() const { return m_width; }
    size_t Height() const { return m_height; }
    size_t ComponentCount() const { return m_row.componentCount; }
    size_t PlaneCount() const { return Layout().planes; }
    CPlaneMemory Plane(size_t plane) const;
    /// Bytes of all planes, one behind the other.
    size_t Size() const;

    /// Bits of component k of one pixel.
    uint64_t Bits(size_t k, size_t x, size_t y) const { return ReadComponent(m_row, m_memory, k, x, y); }

    /// Bits of component k of `count` pixels from x on, the value of pixel x + i to values[i * step]. T holds
    /// the component's bits.
    template <class T>
    void Read(size_t k, size_t x, size_t y, size_t count, T* values, size_t step = 1) const;

    /// How many numbers of T lie from one value of component k to the next, if its values are such numbers;
    /// else 0. And where the value of pixel 0 of line y lies. The bits above the component's depth may hold
    /// anything.
    template <class T>
    size_t PlainStep(size_t k) const;
    template <class T>
    const T* PlainLine(size_t k, size_t y) const
    {
        const CComponentPlace& place = Layout().places[k];
        return reinterpret_cast<const T*>(LineOf(place, y) + place.high[0] / 8);
    }

private:
    explicit CImageValues(const IKxImage& image);
    void CheckLines() const;
    size_t LineBits(const CComponentPlace& place, size_t k) const;
    const uint8_t* LineOf(const CComponentPlace& place, size_t y) const;

    const CPixelFormatRow& m_row;
    size_t m_width;
    size_t m_height;
    CPixelMemory m_memory;
};

extern template void CImageValues::Read(size_t, size_t, size_t, size_t, uint8_t*, size_t) const;
extern template void CImageValues::Read(size_t, size_t, size_t, size_t, uint16_t*, size_t) const;
extern template void CImageValues::Read(size_t, size_t, size_t, size_t, uint32_t*, size_t) const;

template <class T>
size_t CImageValues::PlainStep(size_t k) const
{
    const CComponentPlace& place = Layout().places[k];
    constexpr size_t kBits = 8 * sizeof(T);
    const auto isAligned = [](size_t value) { return value % sizeof(T) == 0; };
    const bool isPlain = place.groupShift == 0 && place.lowBits == 0 && place.groupBits % kBits == 0 &&
                         place.high[0] % kBits == 0 && m_row.components[k].bits <= kBits &&
                         isAligned(reinterpret_cast<uintptr_t>(m_memory.buffer)) &&
                         isAligned(m_memory.linePitch) && isAligned(m_memory.planePitch);
    return isPlain ? place.groupBits / kBits : 0;
}

} // namespace Detail
} // namespace KxApi

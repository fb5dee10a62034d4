// SPDX-License-Identifier: Apache-2.0
#include "CImageValues.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>

#include <algorithm>
#include <numeric>

namespace KxApi
{
namespace Detail
{
namespace
{

const IKxImage& CheckedImage(const IKxImage* image)
{
    if (!image || !image->GetImageBuffer() || image->GetImageWidth() == 0 || image->GetImageHeight() == 0)
        throw LOGICAL_ERROR_EXCEPTION("There is no image");
    return *image;
}

const CPixelFormatRow& CheckedFormat(uint32_t code)
{
    const CPixelFormatRow* const row = FindFormat(code);
    if (!row)
        throw INVALID_ARGUMENT_EXCEPTION("Pixel format 0x%08X is unknown", static_cast<unsigned>(code));
    return *row;
}

/// Where values of one kind lie: the first one's byte and shift, and the bytes from one to the next.
struct CStride
{
    const uint8_t* first;
    size_t bytes;
    unsigned shift;
    unsigned bits;
};

template <unsigned kBytes>
uint64_t LoadBytes(const uint8_t* bytes)
{
    uint64_t word = 0;
    for (unsigned i = 0; i < kBytes; ++i)
        word |= uint64_t{bytes[i]} << (8 * i);
    return word;
}

/// Takes `count` values, moved up by `up`, either as they are or added to what stands there.
template <unsigned kBytes, bool kAdd, class T>
void Take(const CStride& source, unsigned up, size_t count, T* values, size_t step)
{
    const uint64_t mask = source.bits == 64 ? ~uint64_t{0} : (uint64_t{1} << source.bits) - 1;
    const uint8_t* bytes = source.first;
    for (; count > 0; --count, bytes += source.bytes, values += step) {
        const T part = static_cast<T>((LoadBytes<kBytes>(bytes) >> source.shift & mask) << up);
        *values = kAdd ? static_cast<T>(*values | part) : part;
    }
}

template <bool kAdd, class T>
void TakeAny(const CStride& source, unsigned up, size_t count, T* values, size_t step)
{
    switch ((source.shift + source.bits + 7) / 8) {
    case 1:
        return Take<1, kAdd>(source, up, count, values, step);
    case 2:
        return Take<2, kAdd>(source, up, count, values, step);
    case 3:
        return Take<3, kAdd>(source, up, count, values, step);
    case 4:
        return Take<4, kAdd>(source, up, count, values, step);
    default:
        return Take<5, kAdd>(source, up, count, values, step);
    }
}

} // namespace

CImageValues::CImageValues(const IKxImage* pImage)
    : CImageValues(CheckedImage(pImage))
{}

CImageValues::CImageValues(const IKxImage& image)
    : CImageValues(image.GetImagePixelFormat(), image.GetImageWidth(), image.GetImageHeight(),
                   {static_cast<const uint8_t*>(image.GetImageBuffer()), image.GetImageLinePitch(),
                    image.GetImagePlanePitch()})
{}

CImageValues::CImageValues(EKxPixelFormatNamingConvention_t ePixelFormat, size_t nWidth, size_t nHeight,
                           const CPixelMemory& memory)
    : m_row(CheckedFormat(ePixelFormat))
    , m_width(nWidth)
    , m_height(nHeight)
    , m_memory(memory)
{
    CheckLines();
}

/// Bits of a line up to the end of the last value of component k.
size_t CImageValues::LineBits(const CComponentPlace& place, size_t k) const
{
    const size_t group = size_t{1} << place.groupShift;
    const size_t bits = m_row.components[k].bits;
    const size_t last = m_width - 1;
    // Pixels of the last group may be read from further on than the last pixel is.
    size_t end = 0;
    for (size_t x = last & ~(group - 1); x <= last; ++x) {
        end = std::max<size_t>(end, place.high[x % group] + bits - place.lowBits);
        if (place.lowBits != 0)
            end = std::max<size_t>(end, place.low[x % group] + place.lowBits);
    }
    return (last >> place.groupShift) * place.groupBits + end;
}

void CImageValues::CheckLines() const
{
    const CPixelLayout& layout = Layout();
    // Far beyond what memory holds; keeps all products of sizes below within size_t.
    constexpr size_t kMaxSize = size_t{1} << 31;
    if (m_width > kMaxSize || m_height > kMaxSize || m_memory.linePitch > kMaxSize * 16)
        throw INVALID_ARGUMENT_EXCEPTION("An image of %zu x %zu pixels with lines of %zu bytes is too large",
                                         m_width, m_height, m_memory.linePitch);
    for (size_t k = 0; k < ComponentCount(); ++k) {
        const CComponentPlace& place = layout.places[k];
        const size_t divisor = place.plane != 0 ? layout.chromaDivisor : 1;
        if (m_memory.linePitch % divisor != 0 || m_height % (size_t{1} << place.lineShift) != 0)
            throw INVALID_ARGUMENT_EXCEPTION(
                "An image of %zu lines with a line pitch of %zu bytes cuts the shared values of %s", m_height,
                m_memory.linePitch, m_row.name);
        if (m_memory.linePitch / divisor < (LineBits(place, k) + 7) / 8)
            throw INVALID_ARGUMENT_EXCEPTION(
                "The line pitch of %zu bytes is too small for lines of %zu pixels in %s", m_memory.linePitch,
                m_width, m_row.name);
    }
}

CPlaneMemory CImageValues::Plane(size_t plane) const
{
    const CPixelLayout& layout = Layout();
    CPlaneMemory memory{m_memory.buffer, m_memory.linePitch, m_height, 0};
    if (plane != 0) {
        memory.first += PlaneOffset(layout, m_memory, plane);
        memory.linePitch /= layout.chromaDivisor;
    }
    for (size_t k = 0; k < ComponentCount(); ++k) {
        const CComponentPlace& place = layout.places[k];
        if (place.plane != plane)
            continue;
        memory.lines = m_height >> place.lineShift;
        memory.lineBytes = std::max(memory.lineBytes, (LineBits(place, k) + 7) / 8);
    }
    // Bits that no value has, such as the unused byte of four, belong to the pixel all the same.
    if (plane == 0)
        memory.lineBytes =
            std::max(memory.lineBytes, std::min((m_width * m_row.planeBits + 7) / 8, memory.linePitch));
    return memory;
}

size_t CImageValues::Size() const
{
    size_t size = 0;
    for (size_t i = 0; i < PlaneCount(); ++i) {
        const CPlaneMemory plane = Plane(i);
        size += plane.lines * plane.linePitch;
    }
    return size;
}

const uint8_t* CImageValues::LineOf(const CComponentPlace& place, size_t y) const
{
    const uint8_t* base = m_memory.buffer;
    size_t linePitch = m_memory.linePitch;
    if (place.plane != 0) {
        base += PlaneOffset(Layout(), m_memory, place.plane);
        linePitch /= Layout().chromaDivisor;
    }
    return base + (y >> place.lineShift) * linePitch;
}

template <class T>
void CImageValues::Read(size_t k, size_t x, size_t y, size_t count, T* values, size_t step) const
{
    const CComponentPlace& place = Layout().places[k];
    const unsigned bits = m_row.components[k].bits;
    const uint8_t* const line = LineOf(place, y);
    // After this many pixels the values lie at the same bit of a byte again.
    const size_t groups = 8 / std::gcd<size_t>(place.groupBits, 8);
    const size_t period = groups << place.groupShift;
    const size_t periodBytes = groups * place.groupBits / 8;
    const size_t inGroupMask = (size_t{1} << place.groupShift) - 1;

    for (size_t i = 0; i < std::min(period, count); ++i) {
        const size_t at = x + i;
        const size_t groupBit = (at >> place.groupShift) * place.groupBits;
        const size_t valueCount = (count - i + period - 1) / period;
        const auto stride = [&](size_t offset, unsigned partBits) {
            const size_t bit = groupBit + offset;
            return CStride{line + bit / 8, periodBytes, static_cast<unsigned>(bit % 8), partBits};
        };
        T* const target = values + i * step;
        TakeAny<false>(stride(place.high[at & inGroupMask], bits - place.lowBits), place.lowBits, valueCount,
                       target, period * step);
        if (place.lowBits != 0)
            TakeAny<true>(stride(place.low[at & inGroupMask], place.lowBits), 0, valueCount, target,
                          period * step);
    }
}

template void CImageValues::Read(size_t, size_t, size_t, size_t, uint8_t*, size_t) const;
template void CImageValues::Read(size_t, size_t, size_t, size_t, uint16_t*, size_t) const;
template void CImageValues::Read(size_t, size_t, size_t, size_t, uint32_t*, size_t) const;

} // namespace Detail
} // namespace KxApi

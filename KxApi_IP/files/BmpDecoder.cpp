// SPDX-License-Identifier: Apache-2.0
// Reads images from ".bmp" files.

#include "BmpHeader.h"
#include "Decoding.h"
#include "LittleEndian.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

using namespace Bmp;

/// Bits that a mask names, as a value of 8 bits.
struct CMaskedChannel
{
    uint32_t mask = 0;
    unsigned shift = 0;
    uint32_t max = 0;

    explicit CMaskedChannel(uint32_t bits)
        : mask(bits)
        , shift(bits != 0 ? static_cast<unsigned>(__builtin_ctz(bits)) : 0)
        , max(bits >> shift)
    {}
    uint8_t Of(uint32_t pixel) const
    {
        if (max == 0)
            return 0;
        return static_cast<uint8_t>((uint64_t{(pixel & mask) >> shift} * 255 + max / 2) / max);
    }
};

/// What the headers tell.
struct CBmp
{
    uint32_t width = 0;
    uint32_t height = 0;
    bool isTopDown = false;
    unsigned bits = 0;
    uint32_t compression = kPlain;
    size_t pixelsAt = 0;
    std::array<uint32_t, 256> palette{}; ///< 0x00RRGGBB
    size_t colors = 0;
    std::array<uint32_t, 4> masks{}; ///< red, green, blue, alpha

    bool IsRuns() const { return compression == kRuns8 || compression == kRuns4; }
};

/// The number at a place that short headers don't have; then it is 0.
template <class T>
T FieldAt(const CFileContent& content, size_t at, uint32_t infoSize)
{
    return at + sizeof(T) <= kFileHeader + infoSize ? GetLittle<T>(content.data + at) : T{0};
}

void ReadPalette(const CFileContent& content, CBmp& bmp, uint32_t infoSize)
{
    const size_t entry = infoSize == kCoreHeader ? 3 : 4;
    const size_t at = kFileHeader + infoSize;
    const uint32_t told = infoSize == kCoreHeader ? 0 : FieldAt<uint32_t>(content, kColorsAt, infoSize);
    const uint32_t most = uint32_t{1} << bmp.bits;
    bmp.colors = told == 0 ? most : told;
    if (bmp.colors > most || at + bmp.colors * entry > content.size)
        content.Raise("its palette of %zu colours is too large", bmp.colors);
    for (size_t i = 0; i < bmp.colors; ++i) {
        const uint8_t* const color = content.data + at + entry * i;
        bmp.palette[i] = uint32_t{color[2]} << 16 | uint32_t{color[1]} << 8 | color[0];
    }
}

void ReadMasks(const CFileContent& content, CBmp& bmp, uint32_t infoSize, uint32_t compression)
{
    if (compression == kPlain) {
        bmp.masks = bmp.bits == 16 ? std::array<uint32_t, 4>{0x7C00, 0x03E0, 0x001F, 0}
                                   : std::array<uint32_t, 4>{0xFF0000, 0x00FF00, 0x0000FF, 0};
        return;
    }
    const size_t count = infoSize >= 56 ? 4 : 3; // from that header size on there is one for alpha
    if (content.size < kMasksAt + 4 * count)
        content.Raise("it ends in its headers");
    for (size_t i = 0; i < count; ++i)
        bmp.masks[i] = GetLittle<uint32_t>(content.data + kMasksAt + 4 * i);
}

void ReadSize(const CFileContent& content, CBmp& bmp, uint32_t infoSize)
{
    const uint8_t* const data = content.data;
    if (infoSize == kCoreHeader) {
        bmp.width = GetLittle<uint16_t>(data + kWidthAt);
        bmp.height = GetLittle<uint16_t>(data + kCoreHeightAt);
        bmp.bits = GetLittle<uint16_t>(data + kCoreBitsAt);
        return;
    }
    bmp.width = GetLittle<uint32_t>(data + kWidthAt);
    bmp.height = GetLittle<uint32_t>(data + kHeightAt);
    bmp.bits = GetLittle<uint16_t>(data + kBitsAt);
    bmp.compression = FieldAt<uint32_t>(content, kCompressionAt, infoSize);
    bmp.isTopDown = bmp.height >> 31 != 0;
    if (bmp.isTopDown)
        bmp.height = ~bmp.height + 1;
}

CBmp ReadHeaders(const CFileContent& content)
{
    if (content.size < kFileHeader + kCoreHeader)
        content.Raise("it ends in its headers");
    const uint32_t infoSize = GetLittle<uint32_t>(content.data + kInfoSizeAt);
    if (infoSize != kCoreHeader && (infoSize < 16 || infoSize > kLongestHeader))
        content.Raise("its header of %u bytes is of no known kind", infoSize);
    if (content.size < kFileHeader + infoSize)
        content.Raise("it ends in its headers");
    CBmp bmp;
    ReadSize(content, bmp, infoSize);
    bmp.pixelsAt = GetLittle<uint32_t>(content.data + kPixelsAt);
    const bool canHaveMasks = bmp.bits == 16 || bmp.bits == 32;
    if (bmp.bits != 1 && bmp.bits != 4 && bmp.bits != 8 && bmp.bits != 24 && !canHaveMasks)
        content.Raise("its %u bits a pixel are of no known kind", bmp.bits);
    const bool isKnown = bmp.compression == kPlain || (bmp.compression == kRuns8 && bmp.bits == 8) ||
                         (bmp.compression == kRuns4 && bmp.bits == 4) ||
                         (bmp.compression == kMasked && canHaveMasks && infoSize >= kInfoHeader);
    if (!isKnown || (bmp.IsRuns() && bmp.isTopDown))
        content.Raise("its compression %u isn't supported", bmp.compression);
    if (bmp.bits <= 8)
        ReadPalette(content, bmp, infoSize);
    if (canHaveMasks)
        ReadMasks(content, bmp, infoSize, bmp.compression);
    return bmp;
}

bool IsGreyRamp(const CBmp& bmp)
{
    for (uint32_t i = 0; i < bmp.colors; ++i) {
        if (bmp.palette[i] != i * 0x010101)
            return false;
    }
    return bmp.bits == 8;
}

EKxPixelFormatNamingConvention_t FormatOf(const CBmp& bmp)
{
    if (bmp.bits <= 8 && IsGreyRamp(bmp))
        return KxPixelFormat_Mono8;
    return bmp.masks[3] != 0 ? KxPixelFormat_BGRa8 : KxPixelFormat_BGR8;
}

void PutPaletteLine(const CBmp& bmp, const uint8_t* source, uint8_t* target)
{
    for (size_t x = 0; x < bmp.width; ++x) {
        const size_t bit = x * bmp.bits;
        const unsigned shift = 8 - bmp.bits - static_cast<unsigned>(bit % 8);
        const uint32_t color = bmp.palette[source[bit / 8] >> shift & ((1U << bmp.bits) - 1)];
        for (const unsigned channel : {0U, 8U, 16U})
            *target++ = static_cast<uint8_t>(color >> channel);
    }
}

void PutMaskedLine(const CBmp& bmp, const uint8_t* source, uint8_t* target)
{
    const CMaskedChannel red(bmp.masks[0]), green(bmp.masks[1]), blue(bmp.masks[2]), alpha(bmp.masks[3]);
    for (size_t x = 0; x < bmp.width; ++x) {
        const uint32_t pixel =
            bmp.bits == 16 ? GetLittle<uint16_t>(source + 2 * x) : GetLittle<uint32_t>(source + 4 * x);
        *target++ = blue.Of(pixel);
        *target++ = green.Of(pixel);
        *target++ = red.Of(pixel);
        if (alpha.max != 0)
            *target++ = alpha.Of(pixel);
    }
}

/// Puts runs of palette numbers into lines of a byte a pixel, the last line of the picture first.
class CRunReader
{
public:
    CRunReader(const CFileContent& content, const CBmp& bmp, uint8_t* lines)
        : m_content(content)
        , m_bmp(bmp)
        , m_at(bmp.pixelsAt)
        , m_lines(lines)
    {}

    void Read()
    {
        while (m_y < m_bmp.height && !IsWhole()) {
            const unsigned count = Next(), value = Next();
            if (count > 0)
                PutRun(count, value);
            else if (value == 0)
                EndLine();
            else if (value == 1)
                return;
            else if (value == 2)
                Skip();
            else
                PutValues(value);
        }
    }

private:
    /// Without a mark of the end, files may end with the last pixel.
    bool IsWhole() const { return m_at >= m_content.size && m_y + 1 == m_bmp.height && m_x == m_bmp.width; }
    uint8_t Next()
    {
        if (m_at >= m_content.size)
            m_content.Raise("it ends too early");
        return m_content.data[m_at++];
    }
    void EndLine()
    {
        m_x = 0;
        ++m_y;
    }
    void Skip()
    {
        m_x += Next();
        m_y += Next();
    }
    uint8_t* Room(unsigned count) const
    {
        if (m_y >= m_bmp.height || m_x > m_bmp.width || count > m_bmp.width - m_x)
            m_content.Raise("its runs go beyond its %u x %u pixels", m_bmp.width, m_bmp.height);
        return m_lines + m_y * m_bmp.width + m_x;
    }
    /// Of the numbers in a byte, the one of the pixel that is even or odd within its run.
    unsigned NumberIn(unsigned value, unsigned i) const
    {
        return m_bmp.bits == 8 ? value : (i % 2 == 0 ? value >> 4 : value & 0xF);
    }
    void PutRun(unsigned count, unsigned value)
    {
        uint8_t* const room = Room(count);
        for (unsigned i = 0; i < count; ++i)
            room[i] = static_cast<uint8_t>(NumberIn(value, i));
        m_x += count;
    }
    void PutValues(unsigned count)
    {
        uint8_t* const room = Room(count);
        const unsigned bytes = (count * m_bmp.bits + 7) / 8;
        unsigned value = 0;
        for (unsigned i = 0; i < count; ++i) {
            if (i * m_bmp.bits % 8 == 0)
                value = Next();
            room[i] = static_cast<uint8_t>(NumberIn(value, i));
        }
        m_x += count;
        m_at += bytes % 2; // to whole words
    }

    const CFileContent& m_content;
    const CBmp& m_bmp;
    size_t m_at;
    uint8_t* m_lines;
    size_t m_x = 0;
    size_t m_y = 0;
};

/// The numbers of a picture of runs, a byte each.
CBytes ReadRuns(const CFileContent& content, const CBmp& bmp)
{
    // Far more than runs make of a byte; pixels may be left out, too.
    constexpr uint64_t kMaxRatio = 4096;
    const uint64_t pixels = uint64_t{bmp.width} * bmp.height;
    if (pixels / kMaxRatio > content.size || pixels > content.maxImageSize)
        content.Raise("its %zu bytes can't hold %u x %u pixels", content.size, bmp.width, bmp.height);
    CBytes lines(pixels);
    std::memset(lines.data.get(), 0, pixels);
    CRunReader(content, bmp, lines.data.get()).Read();
    return lines;
}

} // namespace

CDecodedImage DecodeBmp(const CFileContent& content)
{
    CBmp bmp = ReadHeaders(content);
    const bool isRuns = bmp.IsRuns();
    const size_t lineSize = isRuns ? bmp.width : LineSize(bmp.width, bmp.bits);
    const uint64_t pixelBytes = uint64_t{lineSize} * bmp.height; // both of 32 bits at most
    if (bmp.pixelsAt > content.size || (!isRuns && pixelBytes > content.size - bmp.pixelsAt))
        content.Raise("%u x %u pixels should follow byte %zu of its %zu", bmp.width, bmp.height, bmp.pixelsAt,
                      content.size);
    const EKxPixelFormatNamingConvention_t format = FormatOf(bmp);
    const CBytes runs = isRuns ? ReadRuns(content, bmp) : CBytes();
    CDecodedImage image = MakePicture(content, bmp.width, bmp.height, format);
    if (isRuns)
        bmp.bits = 8;
    const uint8_t* const pixels = isRuns ? runs.data.get() : content.data + bmp.pixelsAt;
    for (size_t y = 0; y < bmp.height; ++y) {
        const uint8_t* const source = pixels + y * lineSize;
        uint8_t* const target = image.Line(bmp.isTopDown ? y : bmp.height - 1 - y);
        if (bmp.bits == 24 || image.format == KxPixelFormat_Mono8)
            std::memcpy(target, source, image.linePitch);
        else if (bmp.bits <= 8)
            PutPaletteLine(bmp, source, target);
        else
            PutMaskedLine(bmp, source, target);
    }
    return image;
}

} // namespace Detail
} // namespace KxApi

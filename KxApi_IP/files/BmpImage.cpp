// SPDX-License-Identifier: Apache-2.0
// Images in ".bmp" files.

#include "Decoding.h"
#include "Encoding.h"
#include "LittleEndian.h"
#include "OutputFile.h"

#include <Base/GCException.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kFileHeader = 14;
constexpr size_t kInfoHeader = 40;   // the oldest that tells all
constexpr size_t kAlphaHeader = 108; // the first that tells of alpha

// Places, from the start of the file.
constexpr size_t kFileSizeAt = 2;
constexpr size_t kPixelsAt = 10;
constexpr size_t kInfoSizeAt = 14;
constexpr size_t kWidthAt = 18;
constexpr size_t kHeightAt = 22;
constexpr size_t kPlanesAt = 26;
constexpr size_t kBitsAt = 28;
constexpr size_t kCompressionAt = 30;
constexpr size_t kPixelBytesAt = 34;
constexpr size_t kResolutionAt = 38;
constexpr size_t kColorsAt = 46;
constexpr size_t kMasksAt = 54;
constexpr size_t kColorSpaceAt = 70;

constexpr uint32_t kPlain = 0;
constexpr uint32_t kMasked = 3;
constexpr uint32_t kPixelsPerMetre = 2835; // 72 dots per inch
constexpr uint32_t kSRgb = 0x73524742;

size_t LineSize(size_t width, size_t bits) { return (width * bits + 31) / 32 * 4; }

unsigned int PaletteEntry(const CPicture& picture, unsigned int i)
{
    return picture.Palette() ? (*picture.Palette())[i] : i * 0x010101;
}

std::vector<uint8_t> Header(const CPicture& picture)
{
    const unsigned channels = picture.Form().channels;
    const size_t info = channels == 4 ? kAlphaHeader : kInfoHeader;
    const size_t colors = channels == 1 ? 256 : 0;
    const size_t headers = kFileHeader + info + 4 * colors;
    const uint64_t pixelBytes = uint64_t{LineSize(picture.Width(), 8 * channels)} * picture.Height();
    constexpr uint64_t kMax = std::numeric_limits<uint32_t>::max();
    if (pixelBytes > kMax - headers)
        throw RUNTIME_EXCEPTION("%zu x %zu pixels are more than a BMP file can hold", picture.Width(),
                                picture.Height());
    std::vector<uint8_t> header(headers);
    header[0] = 'B';
    header[1] = 'M';
    PutLittle<uint32_t>(&header[kFileSizeAt], static_cast<uint32_t>(headers + pixelBytes));
    PutLittle<uint32_t>(&header[kPixelsAt], static_cast<uint32_t>(headers));
    PutLittle<uint32_t>(&header[kInfoSizeAt], static_cast<uint32_t>(info));
    PutLittle<uint32_t>(&header[kWidthAt], static_cast<uint32_t>(picture.Width()));
    PutLittle<uint32_t>(&header[kHeightAt], static_cast<uint32_t>(picture.Height()));
    PutLittle<uint16_t>(&header[kPlanesAt], 1);
    PutLittle<uint16_t>(&header[kBitsAt], static_cast<uint16_t>(8 * channels));
    PutLittle<uint32_t>(&header[kCompressionAt], channels == 4 ? kMasked : kPlain);
    PutLittle<uint32_t>(&header[kPixelBytesAt], static_cast<uint32_t>(pixelBytes));
    PutLittle<uint32_t>(&header[kResolutionAt], kPixelsPerMetre);
    PutLittle<uint32_t>(&header[kResolutionAt + 4], kPixelsPerMetre);
    PutLittle<uint32_t>(&header[kColorsAt], static_cast<uint32_t>(colors));
    for (unsigned int i = 0; i < colors; ++i)
        PutLittle<uint32_t>(&header[kFileHeader + info + size_t{4} * i], PaletteEntry(picture, i));
    if (channels == 4) {
        constexpr std::array<uint32_t, 4> kMasks = {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000};
        for (size_t i = 0; i < kMasks.size(); ++i)
            PutLittle<uint32_t>(&header[kMasksAt + 4 * i], kMasks[i]);
        PutLittle<uint32_t>(&header[kColorSpaceAt], kSRgb);
    }
    return header;
}

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
    size_t pixelsAt = 0;
    std::array<uint32_t, 256> palette{}; ///< 0x00RRGGBB
    size_t colors = 0;
    std::array<uint32_t, 4> masks{}; ///< red, green, blue, alpha
};

void ReadPalette(const CFileContent& content, CBmp& bmp, size_t at, uint32_t colors)
{
    const uint32_t most = uint32_t{1} << bmp.bits;
    bmp.colors = colors == 0 ? most : colors;
    if (bmp.colors > most || at + bmp.colors * 4 > content.size)
        content.Raise("its palette of %zu colours is too large", bmp.colors);
    for (size_t i = 0; i < bmp.colors; ++i)
        bmp.palette[i] = GetLittle<uint32_t>(content.data + at + 4 * i) & 0xFFFFFF;
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

CBmp ReadHeaders(const CFileContent& content)
{
    const uint8_t* const data = content.data;
    if (content.size < kFileHeader + kInfoHeader)
        content.Raise("it ends in its headers");
    const uint32_t infoSize = GetLittle<uint32_t>(data + kInfoSizeAt);
    if (infoSize < kInfoHeader || infoSize > 124)
        content.Raise("its header of %u bytes is of no known kind", infoSize);
    CBmp bmp;
    bmp.width = GetLittle<uint32_t>(data + kWidthAt);
    bmp.height = GetLittle<uint32_t>(data + kHeightAt);
    bmp.isTopDown = bmp.height >> 31 != 0;
    if (bmp.isTopDown)
        bmp.height = ~bmp.height + 1;
    bmp.bits = GetLittle<uint16_t>(data + kBitsAt);
    bmp.pixelsAt = GetLittle<uint32_t>(data + kPixelsAt);
    const uint32_t compression = GetLittle<uint32_t>(data + kCompressionAt);
    const bool canHaveMasks = bmp.bits == 16 || bmp.bits == 32;
    if (bmp.bits != 1 && bmp.bits != 4 && bmp.bits != 8 && bmp.bits != 24 && !canHaveMasks)
        content.Raise("its %u bits a pixel are of no known kind", bmp.bits);
    if (compression != kPlain && (compression != kMasked || !canHaveMasks))
        content.Raise("its compression %u isn't supported", compression);
    if (bmp.bits <= 8)
        ReadPalette(content, bmp, kFileHeader + infoSize, GetLittle<uint32_t>(data + kColorsAt));
    if (canHaveMasks)
        ReadMasks(content, bmp, infoSize, compression);
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

} // namespace

void EncodeBmp(const CImageValues& values, const CEncodeOptions& options, COutputFile& file)
{
    CPicture picture(values, options.pColorMap, {true, true, true});
    const std::vector<uint8_t> header = Header(picture);
    file.Write(header.data(), header.size());
    std::vector<uint8_t> line(LineSize(picture.Width(), size_t{8} * picture.Form().channels));
    for (size_t y = picture.Height(); y-- > 0;) {
        picture.Row(y, line.data());
        if (!file.Write(line.data(), line.size()))
            return;
    }
}

CDecodedImage DecodeBmp(const CFileContent& content)
{
    const CBmp bmp = ReadHeaders(content);
    const size_t lineSize = LineSize(bmp.width, bmp.bits);
    const uint64_t pixelBytes = uint64_t{lineSize} * bmp.height; // both of 32 bits at most
    if (bmp.pixelsAt > content.size || pixelBytes > content.size - bmp.pixelsAt)
        content.Raise("%u x %u pixels should follow byte %zu of its %zu", bmp.width, bmp.height, bmp.pixelsAt,
                      content.size);
    CDecodedImage image = MakePicture(content, bmp.width, bmp.height, FormatOf(bmp));
    for (size_t y = 0; y < bmp.height; ++y) {
        const uint8_t* const source = content.data + bmp.pixelsAt + y * lineSize;
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

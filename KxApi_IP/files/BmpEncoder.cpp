// SPDX-License-Identifier: Apache-2.0
// Writes images as ".bmp" files.

#include "BmpHeader.h"
#include "COutputFile.h"
#include "Encoding.h"
#include "LittleEndian.h"

#include <Base/GCException.h>

#include <array>
#include <limits>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

using namespace Bmp;

constexpr uint32_t kPixelsPerMetre = 2835; // 72 dots per inch
constexpr uint32_t kSRgb = 0x73524742;

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

} // namespace Detail
} // namespace KxApi

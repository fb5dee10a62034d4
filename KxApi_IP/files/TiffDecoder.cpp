// SPDX-License-Identifier: Apache-2.0
// Reads images from ".tif" files.
//
// Grey, RGB and palettes are taken out of their blocks (strips or tiles, of all samples or of one) as they
// are; the library makes colours of what else there is. Both only after the table of the blocks has been
// checked.

#include "Decoding.h"
#include "TiffHandle.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

struct CTiffSource
{
    const CFileContent& content;
    uint64_t at = 0;
    bool isShort = false; ///< more was asked for than there is
};

CTiffSource& SourceOf(thandle_t handle) { return *static_cast<CTiffSource*>(handle); }

tmsize_t ReadSource(thandle_t handle, void* data, tmsize_t size)
{
    CTiffSource& source = SourceOf(handle);
    const uint64_t left = source.content.size - std::min<uint64_t>(source.at, source.content.size);
    const uint64_t count = std::min<uint64_t>(left, static_cast<uint64_t>(size));
    source.isShort |= count < static_cast<uint64_t>(size);
    if (count > 0)
        std::memcpy(data, source.content.data + source.at, count);
    source.at += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t NoWrite(thandle_t, void*, tmsize_t) { return 0; }

toff_t SeekSource(thandle_t handle, toff_t offset, int whence)
{
    CTiffSource& source = SourceOf(handle);
    source.at = offset + (whence == SEEK_SET ? 0 : whence == SEEK_CUR ? source.at : source.content.size);
    return source.at;
}

toff_t SizeOfSource(thandle_t handle) { return SourceOf(handle).content.size; }

struct CTiffLayout
{
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t blockWidth = 0;
    uint32_t blockHeight = 0;
    bool isTiled = false;
    uint16_t bits = 1;
    uint16_t samples = 1;
    uint16_t photometric = PHOTOMETRIC_MINISBLACK;
    uint16_t planar = PLANARCONFIG_CONTIG;
    uint16_t sampleFormat = SAMPLEFORMAT_UINT;
    uint16_t maxSample = 0;
    uint16_t compression = COMPRESSION_NONE;
    uint16_t orientation = ORIENTATION_TOPLEFT;
    bool hasAlpha = false; ///< the first sample behind the colours
    std::string formatName;

    bool IsPalette() const { return photometric == PHOTOMETRIC_PALETTE; }
    bool IsInverted() const { return photometric == PHOTOMETRIC_MINISWHITE; }
    bool IsSeparate() const { return planar == PLANARCONFIG_SEPARATE && samples > 1; }
    unsigned ColorSamples() const { return photometric == PHOTOMETRIC_RGB ? 3 : 1; }
    size_t BlocksAcross() const { return (size_t{width} + blockWidth - 1) / blockWidth; }
    size_t BlocksDown() const { return (size_t{height} + blockHeight - 1) / blockHeight; }
    size_t Blocks() const { return BlocksAcross() * BlocksDown() * (IsSeparate() ? samples : 1U); }
    /// Lines of the blocks of a row; the last strip has fewer.
    uint32_t LinesOf(size_t blockRow) const
    {
        const size_t first = blockRow * blockHeight;
        return isTiled ? blockHeight : static_cast<uint32_t>(std::min<size_t>(blockHeight, height - first));
    }

    /// Whether the samples can be taken as they are.
    bool IsDirect() const
    {
        const bool isGrey = photometric == PHOTOMETRIC_MINISBLACK || IsInverted();
        const bool isColor = photometric == PHOTOMETRIC_RGB && samples >= 3;
        return (isGrey || isColor || (IsPalette() && bits <= 8)) && bits >= 1 && bits <= 16 &&
               (sampleFormat == SAMPLEFORMAT_UINT || sampleFormat == SAMPLEFORMAT_VOID);
    }
    CPictureForm Form() const
    {
        const unsigned channels = hasAlpha ? 4 : IsPalette() ? 3 : ColorSamples();
        CPictureForm form{channels, std::max<unsigned>(bits, 8)};
        if (bits == 16 && maxSample >= 255) {
            for (form.depth = 8; (1U << form.depth) - 1 < maxSample; ++form.depth) {
            }
            if (form.depth == 8) // in two bytes all the same
                form.depth = 16;
        }
        return form;
    }
};

bool HasAlpha(TIFF* tiff, const CTiffLayout& layout)
{
    uint16_t count = 0;
    uint16_t* kinds = nullptr;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds);
    if (layout.IsPalette() || layout.samples <= layout.ColorSamples())
        return false;
    // Of a fourth sample beside RGB many programs don't tell what it is.
    const bool isNamed = count > 0 && kinds && kinds[0] != EXTRASAMPLE_UNSPECIFIED;
    return isNamed || (layout.photometric == PHOTOMETRIC_RGB && layout.samples == 4);
}

CTiffLayout ReadLayout(TIFF* tiff)
{
    CTiffLayout layout;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &layout.bits);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &layout.samples);
    TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &layout.photometric);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &layout.planar);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &layout.sampleFormat);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &layout.compression);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_ORIENTATION, &layout.orientation);
    layout.isTiled = TIFFIsTiled(tiff) != 0;
    if (layout.isTiled) {
        TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &layout.blockWidth);
        TIFFGetField(tiff, TIFFTAG_TILELENGTH, &layout.blockHeight);
    } else {
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &layout.blockHeight);
        layout.blockHeight = std::min(layout.blockHeight, layout.height);
        layout.blockWidth = layout.width;
    }
    if (!TIFFGetField(tiff, TIFFTAG_MAXSAMPLEVALUE, &layout.maxSample))
        layout.maxSample = 0xFFFF;
    layout.hasAlpha = HasAlpha(tiff, layout);
    const char* description = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_IMAGEDESCRIPTION, &description) && description &&
        std::strncmp(description, kTiffFormatKey.data(), kTiffFormatKey.size()) == 0)
        layout.formatName = description + kTiffFormatKey.size();
    return layout;
}

/// Bytes that a byte of a file can stand for at most.
uint64_t MaxRatio(const CTiffLayout& layout)
{
    switch (layout.compression) {
    case COMPRESSION_NONE:
        return 1;
    case COMPRESSION_PACKBITS:
        return 64;
    case COMPRESSION_LZW:
        return 1500;
    case COMPRESSION_DEFLATE:
    case COMPRESSION_ADOBE_DEFLATE:
        return 1040;
    case COMPRESSION_CCITTRLE:
    case COMPRESSION_CCITTFAX3:
    case COMPRESSION_CCITTFAX4: // a bit for a line
        return std::max<uint64_t>(layout.blockWidth, 8);
    default:
        return 100000;
    }
}

/// All blocks have to lie in the file and to be large enough for their pixels: the library reads what the
/// table of a damaged file leaves out from its header, and takes memory by sizes alone.
void CheckBlocks(TIFF* tiff, const CTiffLayout& layout, const CFileContent& content)
{
    if (layout.width == 0 || layout.height == 0 || layout.blockWidth == 0 || layout.blockHeight == 0)
        content.Raise("its size is %u x %u pixels in blocks of %u x %u", layout.width, layout.height,
                      layout.blockWidth, layout.blockHeight);
    const size_t blocks = layout.Blocks();
    const uint32_t counted = layout.isTiled ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
    if (blocks != counted || blocks > content.size)
        content.Raise("its %zu bytes can't hold %zu strips or tiles", content.size, blocks);
    const uint64_t ratio = MaxRatio(layout);
    const size_t across = layout.BlocksAcross(), down = layout.BlocksDown();
    for (size_t i = 0; i < blocks; ++i) {
        const auto number = static_cast<uint32_t>(i);
        int error = 0;
        const uint64_t offset = TIFFGetStrileOffsetWithErr(tiff, number, &error);
        const uint64_t size = error ? 0 : TIFFGetStrileByteCountWithErr(tiff, number, &error);
        if (error || offset == 0 || size == 0 || offset > content.size || size > content.size - offset)
            content.Raise("its strip or tile %zu of %zu is missing", i, blocks);
        const uint64_t needed =
            layout.isTiled ? TIFFTileSize64(tiff) : TIFFVStripSize64(tiff, layout.LinesOf(i / across % down));
        if (needed == 0 || (needed - 1) / ratio >= size)
            content.Raise("the %llu bytes of its strip or tile %zu can't hold %u x %u pixels",
                          static_cast<unsigned long long>(size), i, layout.blockWidth, layout.blockHeight);
    }
}

/// What the values of the channels are in terms of samples.
struct CSampleMap
{
    unsigned channels;
    std::array<unsigned, 4> sample{};                ///< by channel
    std::array<std::array<uint8_t, 256>, 4> table{}; ///< by channel and sample of up to 8 bits
    uint16_t flip = 0;                               ///< of larger ones: all bits of inverted grey
};

void FillPalette(TIFF* tiff, const CFileContent& content, CSampleMap& map, size_t colors)
{
    uint16_t* tables[3] = {};
    if (!TIFFGetField(tiff, TIFFTAG_COLORMAP, &tables[0], &tables[1], &tables[2]))
        content.Raise("its palette is missing");
    // Some programs write colours of 8 bits, which would be all but black.
    const bool isNarrow = std::all_of(std::begin(tables), std::end(tables), [=](const uint16_t* table) {
        return std::all_of(table, table + colors, [](uint16_t value) { return value < 256; });
    });
    for (size_t k = 0; k < 3; ++k) {
        for (size_t i = 0; i < colors; ++i)
            map.table[k][i] = static_cast<uint8_t>(isNarrow ? tables[k][i] : tables[k][i] >> 8);
    }
}

CSampleMap MakeSampleMap(TIFF* tiff, const CTiffLayout& layout, const CFileContent& content)
{
    CSampleMap map{layout.Form().channels, {}, {}, 0};
    const bool isColor = layout.ColorSamples() == 3;
    map.sample = {0, isColor ? 1U : 0U, isColor ? 2U : 0U, layout.ColorSamples()};
    if (layout.bits > 8) {
        map.flip = layout.IsInverted() ? static_cast<uint16_t>((1U << layout.Form().depth) - 1) : uint16_t{0};
        return map;
    }
    const unsigned max = (1U << layout.bits) - 1;
    if (layout.IsPalette()) {
        FillPalette(tiff, content, map, size_t{max} + 1);
        return map;
    }
    for (unsigned k = 0; k < 4; ++k) {
        for (unsigned i = 0; i <= max; ++i)
            map.table[k][i] = static_cast<uint8_t>((layout.IsInverted() && k < 3 ? max - i : i) * 255 / max);
    }
    return map;
}

/// Sample i of a line; those that aren't whole bytes follow each other from the highest bit on.
unsigned SampleAt(const uint8_t* line, size_t i, unsigned bits)
{
    if (bits == 8)
        return line[i];
    if (bits == 16) { // the library has brought it into the machine's order
        uint16_t value;
        std::memcpy(&value, line + 2 * i, sizeof value);
        return value;
    }
    const size_t bit = i * bits;
    const size_t last = (bit + bits - 1) / 8;
    uint32_t word = 0;
    for (size_t at = bit / 8; at <= last; ++at)
        word = word << 8 | line[at];
    return word >> (8 * (last + 1) - bit - bits) & ((1U << bits) - 1);
}

/// Puts a block's line of `count` pixels where it belongs; of a block of one sample, its channels alone.
template <class T>
void PutLine(const uint8_t* line, size_t count, const CTiffLayout& layout, const CSampleMap& map,
             size_t plane, T* target)
{
    for (unsigned k = 0; k < map.channels; ++k) {
        if (layout.IsSeparate() && map.sample[k] != plane)
            continue;
        const size_t step = layout.IsSeparate() ? 1 : layout.samples;
        const size_t first = layout.IsSeparate() ? 0 : map.sample[k];
        const uint16_t flip = k < 3 ? map.flip : uint16_t{0};
        for (size_t x = 0; x < count; ++x) {
            const unsigned sample = SampleAt(line, x * step + first, layout.bits);
            target[x * map.channels + k] =
                layout.bits <= 8 ? static_cast<T>(map.table[k][sample]) : static_cast<T>(sample ^ flip);
        }
    }
}

/// Puts block `number`, whose bytes these are, into the image.
void PutBlock(const uint8_t* bytes, size_t lineBytes, size_t number, const CTiffLayout& layout,
              const CSampleMap& map, CDecodedImage& image)
{
    const size_t across = layout.BlocksAcross(), down = layout.BlocksDown();
    const size_t left = number % across * layout.blockWidth,
                 top = number / across % down * layout.blockHeight;
    const size_t plane = number / (across * down);
    const size_t count = std::min<size_t>(layout.blockWidth, layout.width - left);
    const size_t lines = std::min<size_t>(layout.blockHeight, layout.height - top);
    for (size_t y = 0; y < lines; ++y, bytes += lineBytes) {
        uint8_t* const line = image.Line(top + y);
        if (layout.bits <= 8)
            PutLine(bytes, count, layout, map, plane, line + left * map.channels);
        else
            PutLine(bytes, count, layout, map, plane,
                    reinterpret_cast<uint16_t*>(line) + left * map.channels);
    }
}

/// Whether a strip is what the lines of the image are.
bool IsPlain(const CTiffLayout& layout)
{
    return !layout.isTiled && !layout.IsSeparate() && !layout.IsPalette() && !layout.IsInverted() &&
           layout.bits % 8 == 0 && layout.samples == layout.Form().channels;
}

CDecodedImage ReadDirectly(TIFF* tiff, const CTiffLayout& layout, const CFileContent& content,
                           const CTiffMessage& message)
{
    const CPictureForm form = layout.Form();
    CDecodedImage image =
        MakePicture(content, layout.width, layout.height,
                    layout.IsPalette() ? DefaultFormat(form) : NamedFormat(layout.formatName, form));
    const CSampleMap map = MakeSampleMap(tiff, layout, content);
    const bool isPlain = IsPlain(layout);
    const uint64_t lineBytes =
        (uint64_t{layout.blockWidth} * layout.bits * (layout.IsSeparate() ? 1U : layout.samples) + 7) / 8;
    const size_t across = layout.BlocksAcross(), down = layout.BlocksDown();
    // The bytes of a block may be more than the image's, though not by far: tiles are filled up, samples left
    // out.
    constexpr uint64_t kMaxSmallBlock = uint64_t{1} << 24;
    if (!isPlain && lineBytes > std::max(content.maxImageSize, kMaxSmallBlock) / layout.blockHeight)
        content.Raise("its tiles of %u x %u pixels are more than the limit of %llu bytes", layout.blockWidth,
                      layout.blockHeight, static_cast<unsigned long long>(content.maxImageSize));
    const CBytes block(isPlain ? 0 : lineBytes * layout.blockHeight);
    for (size_t i = 0; i < layout.Blocks(); ++i) {
        const size_t row = i / across % down;
        const auto wanted = static_cast<tmsize_t>(lineBytes * layout.LinesOf(row));
        uint8_t* const target = isPlain ? image.Line(row * layout.blockHeight) : block.data.get();
        const auto number = static_cast<uint32_t>(i);
        const tmsize_t got = layout.isTiled ? TIFFReadEncodedTile(tiff, number, target, wanted)
                                            : TIFFReadEncodedStrip(tiff, number, target, wanted);
        if (got != wanted)
            content.Raise("%s", message.text[0] ? message.text : "its strips don't fit its size");
        if (!isPlain)
            PutBlock(target, lineBytes, i, layout, map, image);
    }
    if (IsBlueFirst(image.format))
        SwapRedBlue(image);
    return image;
}

/// Whatever else the library can turn into colours: luma with chroma, the inks of printers.
CDecodedImage ReadAsColors(TIFF* tiff, const CTiffLayout& layout, const CFileContent& content,
                           const CTiffMessage& message)
{
    char cause[1024] = "";
    if (layout.bits > 8 || !TIFFRGBAImageOK(tiff, cause))
        content.Raise("%s", cause[0] ? cause : "its kind of pixels isn't supported");
    CDecodedImage image = MakePicture(content, layout.width, layout.height, KxPixelFormat_RGBa8);
    // The library writes words with red in the low byte; to be turned later, all in one way.
    if (!TIFFReadRGBAImageOriented(tiff, layout.width, layout.height,
                                   reinterpret_cast<uint32_t*>(image.pixels.data.get()), layout.orientation,
                                   1))
        content.Raise("%s", message.text[0] ? message.text : "its pixels can't be made colours");
    CDecodedImage colors = MakePicture(content, layout.width, layout.height, KxPixelFormat_RGB8);
    const size_t pixels = image.width * image.height;
    for (size_t i = 0; i < pixels; ++i)
        std::memcpy(colors.pixels.data.get() + 3 * i, image.pixels.data.get() + 4 * i, 3);
    return colors;
}

} // namespace

CDecodedImage DecodeTiff(const CFileContent& content)
{
    CTiffMessage message;
    const CTiffOptionsPtr options = MakeTiffOptions(message);
    constexpr uint64_t kLeast = uint64_t{1} << 20, kMost = uint64_t{1} << 30;
    TIFFOpenOptionsSetMaxSingleMemAlloc(
        options.get(), static_cast<tmsize_t>(std::clamp(content.maxImageSize, kLeast, kMost)));
    CTiffSource source{content};
    const CTiffPtr tiff(TIFFClientOpenExt("", "rm", &source, ReadSource, NoWrite, SeekSource, NoTiffClose,
                                          SizeOfSource, NoTiffMap, NoTiffUnmap, options.get()));
    if (!tiff)
        content.Raise("%s", message.text[0] ? message.text : "it can't be opened");
    const CTiffLayout layout = ReadLayout(tiff.get());
    CheckBlocks(tiff.get(), layout, content);
    CDecodedImage image = layout.IsDirect() ? ReadDirectly(tiff.get(), layout, content, message)
                                            : ReadAsColors(tiff.get(), layout, content, message);
    // The library goes on without entries that it couldn't read.
    if (source.isShort)
        content.Raise("it ends too early");
    return Upright(std::move(image), layout.orientation);
}

} // namespace Detail
} // namespace KxApi

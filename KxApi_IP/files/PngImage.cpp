// SPDX-License-Identifier: Apache-2.0
// Images in ".png" files.
//
// libpng leaves its calls by longjmp when something fails. The functions that call it hold nothing with a
// destructor; what they work on lies in the state of their caller, who turns a failure into an exception.

#include "COutputFile.h"
#include "Decoding.h"
#include "Encoding.h"

#include <Base/GCException.h>

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr const char* kFormatKey = "PixelFormat"; // of the text that names the pixel format
constexpr size_t kChunkSize = size_t{64} * 1024;
constexpr uint32_t kFastCompression = 3;
constexpr png_uint_32 kMaxSize = 0x7FFFFFFF;

struct CMessage
{
    char text[96] = "";

    void Set(const char* message) { std::snprintf(text, sizeof text, "%s", message); }
};

[[noreturn]] void OnError(png_structp png, png_const_charp message)
{
    static_cast<CMessage*>(png_get_error_ptr(png))->Set(message);
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {} // an odd chunk that isn't needed

// ---- writing

struct CPngWrite
{
    COutputFile& file;
    CPicture& picture;
    const uint32_t compression;
    std::vector<uint8_t> line;
    CMessage message;
    png_structp png = nullptr;
    png_infop info = nullptr;

    ~CPngWrite() { png_destroy_write_struct(&png, &info); }
};

void OnWrite(png_structp png, png_bytep data, png_size_t size)
{
    if (!static_cast<COutputFile*>(png_get_io_ptr(png))->Write(data, size))
        png_error(png, "the file can't be written");
}

void OnFlush(png_structp) {}

int ColorType(const CPicture& picture)
{
    if (picture.Palette())
        return PNG_COLOR_TYPE_PALETTE;
    switch (picture.Form().channels) {
    case 3:
        return PNG_COLOR_TYPE_RGB;
    case 4:
        return PNG_COLOR_TYPE_RGB_ALPHA;
    default:
        return PNG_COLOR_TYPE_GRAY;
    }
}

void SetPalette(const CPngWrite& write, const CColorTable& table)
{
    png_color palette[256];
    for (size_t i = 0; i < table.size(); ++i)
        palette[i] = {static_cast<png_byte>(table[i] >> 16), static_cast<png_byte>(table[i] >> 8),
                      static_cast<png_byte>(table[i])};
    png_set_PLTE(write.png, write.info, palette, 256);
}

void SetDepth(const CPngWrite& write, unsigned depth)
{
    const auto bits = static_cast<png_byte>(depth);
    const png_color_8 significant{bits, bits, bits, bits, bits};
    png_set_sBIT(write.png, write.info, &significant);
}

void SetFormatName(const CPngWrite& write)
{
    char key[16];
    char name[64];
    std::snprintf(key, sizeof key, "%s", kFormatKey);
    std::snprintf(name, sizeof name, "%s", write.picture.FormatName());
    png_text text{};
    text.compression = PNG_TEXT_COMPRESSION_NONE;
    text.key = key;
    text.text = name;
    text.text_length = std::strlen(name);
    png_set_text(write.png, write.info, &text, 1);
}

/// Values fill 16 bits from the top, as the file type wants it, with their upper bits again below.
void Spread(uint8_t* line, size_t count, unsigned depth)
{
    auto* const samples = reinterpret_cast<uint16_t*>(line);
    for (size_t i = 0; i < count; ++i)
        samples[i] = static_cast<uint16_t>(samples[i] << (16 - depth) | samples[i] >> (2 * depth - 16));
}

/// False after a failure, which the message tells.
bool WritePng(CPngWrite& write)
{
    if (setjmp(png_jmpbuf(write.png)) != 0) // NOLINT(cert-err52-cpp): the library's way to fail
        return false;
    const CPictureForm form = write.picture.Form();
    png_set_write_fn(write.png, &write.file, OnWrite, OnFlush);
    png_set_user_limits(write.png, kMaxSize, kMaxSize);
    png_set_compression_level(write.png, static_cast<int>(write.compression));
    png_set_compression_buffer_size(write.png, kChunkSize);
    // Cameras' noise repeats nothing but runs; looking for more costs time and makes the files larger.
    if (write.compression == 1)
        png_set_compression_strategy(write.png, Z_RLE);
    // Trying all filters on each line takes longer than the fast levels' compression itself.
    if (write.compression <= kFastCompression && !write.picture.Palette())
        png_set_filter(write.png, PNG_FILTER_TYPE_BASE,
                       write.compression == 0 ? PNG_FILTER_NONE : PNG_FILTER_SUB);
    png_set_IHDR(write.png, write.info, static_cast<png_uint_32>(write.picture.Width()),
                 static_cast<png_uint_32>(write.picture.Height()), form.depth > 8 ? 16 : 8,
                 ColorType(write.picture), PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (const CColorTable* const palette = write.picture.Palette())
        SetPalette(write, *palette);
    if (form.depth % 8 != 0)
        SetDepth(write, form.depth);
    if (*write.picture.FormatName())
        SetFormatName(write);
    png_write_info(write.png, write.info);
    if (form.depth > 8)
        png_set_swap(write.png);
    for (size_t y = 0; y < write.picture.Height(); ++y) {
        write.picture.Row(y, write.line.data());
        if (form.depth > 8)
            Spread(write.line.data(), write.line.size() / 2, form.depth);
        png_write_row(write.png, write.line.data());
    }
    png_write_end(write.png, write.info);
    return true;
}

// ---- reading

struct CPngRead
{
    const CFileContent& content;
    size_t at = 0;
    CMessage message;
    png_structp png = nullptr;
    png_infop info = nullptr;
    CPictureForm form{};
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    char formatName[64] = "";

    ~CPngRead() { png_destroy_read_struct(&png, &info, nullptr); }
};

void OnRead(png_structp png, png_bytep data, png_size_t size)
{
    auto& read = *static_cast<CPngRead*>(png_get_io_ptr(png));
    if (size > read.content.size - read.at)
        png_error(png, "it ends too early");
    std::memcpy(data, read.content.data + read.at, size);
    read.at += size;
}

void FindFormatName(CPngRead& read)
{
    png_textp texts = nullptr;
    int count = 0;
    png_get_text(read.png, read.info, &texts, &count);
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(texts[i].key, kFormatKey) == 0)
            std::snprintf(read.formatName, sizeof read.formatName, "%s", texts[i].text);
    }
}

unsigned DepthOf(const CPngRead& read)
{
    if (png_get_bit_depth(read.png, read.info) < 16)
        return 8;
    png_color_8p bits = nullptr;
    if (!png_get_sBIT(read.png, read.info, &bits))
        return 16;
    const bool isGrey = (png_get_color_type(read.png, read.info) & PNG_COLOR_MASK_COLOR) == 0;
    const unsigned depth = isGrey ? bits->gray : std::max({bits->red, bits->green, bits->blue});
    return depth > 8 && depth <= 16 ? depth : 16; // of less the values have two bytes all the same
}

/// Channels of the pixels once palettes and transparent colours are told as what they stand for.
unsigned ChannelsOf(const CPngRead& read)
{
    const int colorType = png_get_color_type(read.png, read.info);
    const bool hasAlpha =
        (colorType & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(read.png, read.info, PNG_INFO_tRNS) != 0;
    if (hasAlpha)
        return 4;
    return (colorType & PNG_COLOR_MASK_COLOR) != 0 ? 3 : 1;
}

/// Reads up to the pixels. Memory for them isn't taken yet.
bool ReadHeader(CPngRead& read)
{
    if (setjmp(png_jmpbuf(read.png)) != 0) // NOLINT(cert-err52-cpp)
        return false;
    png_set_read_fn(read.png, &read, OnRead);
    png_set_user_limits(read.png, kMaxSize, kMaxSize);
    png_set_chunk_cache_max(read.png, 64);
    png_set_chunk_malloc_max(read.png, size_t{1} << 20);
    png_read_info(read.png, read.info);
    FindFormatName(read);
    read.form = {ChannelsOf(read), DepthOf(read)};
    read.width = png_get_image_width(read.png, read.info);
    read.height = png_get_image_height(read.png, read.info);
    return true;
}

/// Reads lines of linePitch bytes. All kinds of PNG become grey, RGB or RGBA of 8 or 16 bits.
bool ReadPixels(CPngRead& read, png_bytepp rows, size_t linePitch)
{
    if (setjmp(png_jmpbuf(read.png)) != 0) // NOLINT(cert-err52-cpp)
        return false;
    png_set_expand(read.png);
    if (read.form.channels == 4)
        png_set_gray_to_rgb(read.png);
    if (read.form.depth > 8)
        png_set_swap(read.png);
    png_set_interlace_handling(read.png);
    png_read_update_info(read.png, read.info);
    if (png_get_rowbytes(read.png, read.info) != linePitch)
        png_error(read.png, "its lines have another length than its header tells");
    png_read_image(read.png, rows);
    png_read_end(read.png, nullptr);
    return true;
}

void Unspread(CDecodedImage& image, unsigned depth)
{
    for (size_t y = 0; y < image.height; ++y) {
        auto* const samples = reinterpret_cast<uint16_t*>(image.Line(y));
        for (size_t i = 0; i < image.linePitch / 2; ++i)
            samples[i] = static_cast<uint16_t>(samples[i] >> (16 - depth));
    }
}

/// The library takes memory for a chunk by the length that it tells, so all chunks have to lie in the file.
void CheckChunks(const CFileContent& content)
{
    constexpr size_t kSignature = 8;
    constexpr size_t kAround = 12; // length, name and checksum
    for (size_t at = kSignature; content.size - at >= kAround;) {
        const uint8_t* const chunk = content.data + at;
        const size_t length =
            size_t{chunk[0]} << 24 | size_t{chunk[1]} << 16 | size_t{chunk[2]} << 8 | chunk[3];
        if (length > content.size - at - kAround)
            break;
        if (std::memcmp(chunk + 4, "IEND", 4) == 0)
            return;
        at += kAround + length;
    }
    content.Raise("it ends too early");
}

/// Deflate yields at most some 1032 bytes a byte, so that a size which the file can't hold is known early.
void CheckPlausible(const CPngRead& read)
{
    constexpr uint64_t kMaxRatio = 1040;
    const uint64_t bits =
        uint64_t{png_get_bit_depth(read.png, read.info)} * png_get_channels(read.png, read.info);
    const uint64_t lineBytes = (read.width * bits + 7) / 8;
    if (lineBytes > read.content.size * kMaxRatio / read.height)
        read.content.Raise("its %zu bytes can't hold %u x %u pixels", read.content.size, read.width,
                           read.height);
}

} // namespace

void EncodePng(const CImageValues& values, const CEncodeOptions& options, COutputFile& file)
{
    CPicture picture(values, options.pColorMap, {false, true, true});
    CPngWrite write{file, picture, options.pngCompression, std::vector<uint8_t>(picture.RowBytes()), {}};
    write.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &write.message, OnError, OnWarning);
    write.info = write.png ? png_create_info_struct(write.png) : nullptr;
    if (!write.info)
        throw std::bad_alloc();
    if (!WritePng(write)) {
        file.Check();
        throw RUNTIME_EXCEPTION("The PNG file can't be made: %s", write.message.text);
    }
}

CDecodedImage DecodePng(const CFileContent& content)
{
    CheckChunks(content);
    CPngRead read{content, 0, {}};
    read.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &read.message, OnError, OnWarning);
    read.info = read.png ? png_create_info_struct(read.png) : nullptr;
    if (!read.info)
        throw BAD_ALLOC_EXCEPTION("Cannot read '%s': no memory", content.shown.c_str());
    if (!ReadHeader(read))
        content.Raise("%s", read.message.text);
    CheckPlausible(read);
    CDecodedImage image =
        MakePicture(content, read.width, read.height, NamedFormat(read.formatName, read.form));
    std::vector<png_bytep> rows(image.height);
    for (size_t y = 0; y < rows.size(); ++y)
        rows[y] = image.Line(y);
    if (!ReadPixels(read, rows.data(), image.linePitch))
        content.Raise("%s", read.message.text);
    // A depth without a format of its own stays as it is.
    if (const unsigned depth = FindPictureForm(image.format)->depth; depth > 8 && depth < 16)
        Unspread(image, depth);
    if (IsBlueFirst(image.format))
        SwapRedBlue(image);
    return image;
}

} // namespace Detail
} // namespace KxApi

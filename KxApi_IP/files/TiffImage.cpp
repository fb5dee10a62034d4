// SPDX-License-Identifier: Apache-2.0
// Images in ".tif" files.

#include "Decoding.h"
#include "Encoding.h"
#include "OutputFile.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr std::string_view kFormatKey = "PixelFormat="; // of the description that names the pixel format

struct CTiffMessage
{
    char text[96] = "";
};

int OnError(TIFF*, void* context, const char*, const char* format, va_list arguments)
{
    auto& message = *static_cast<CTiffMessage*>(context);
    if (!message.text[0]) // the first one tells the cause
        std::vsnprintf(message.text, sizeof message.text, format, arguments);
    return 1;
}

int OnWarning(TIFF*, void*, const char*, const char*, va_list) { return 1; }

struct CTiffDeleter
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

using CTiffPtr = std::unique_ptr<TIFF, CTiffDeleter>;
using CTiffOptionsPtr = std::unique_ptr<TIFFOpenOptions, CTiffDeleter>;

CTiffOptionsPtr MakeOptions(CTiffMessage& message)
{
    CTiffOptionsPtr options(TIFFOpenOptionsAlloc());
    if (!options)
        throw BAD_ALLOC_EXCEPTION("No memory for a TIFF file");
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), OnError, &message);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), OnWarning, &message);
    return options;
}

int NoMap(thandle_t, void**, toff_t*) { return 0; }
void NoUnmap(thandle_t, void*, toff_t) {}
int NoClose(thandle_t) { return 0; }

// ---- writing

COutputFile& FileOf(thandle_t handle) { return *static_cast<COutputFile*>(handle); }

tmsize_t ReadBack(thandle_t handle, void* data, tmsize_t size)
{
    return static_cast<tmsize_t>(FileOf(handle).Read(data, static_cast<size_t>(size)));
}

tmsize_t WriteFile(thandle_t handle, void* data, tmsize_t size)
{
    return FileOf(handle).Write(data, static_cast<size_t>(size)) ? size : 0;
}

toff_t SeekFile(thandle_t handle, toff_t offset, int whence)
{
    COutputFile& file = FileOf(handle);
    const uint64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.Position() : file.Size();
    return file.Seek(base + offset) ? file.Position() : static_cast<toff_t>(-1);
}

toff_t SizeOfFile(thandle_t handle) { return FileOf(handle).Size(); }

void SetPalette(TIFF* tiff, const CColorTable& table)
{
    uint16_t colors[3][256];
    for (size_t i = 0; i < table.size(); ++i) {
        for (size_t channel = 0; channel < 3; ++channel)
            colors[channel][i] = static_cast<uint16_t>((table[i] >> (16 - 8 * channel) & 0xFF) * 0x101);
    }
    TIFFSetField(tiff, TIFFTAG_COLORMAP, colors[0], colors[1], colors[2]);
}

void SetFields(TIFF* tiff, const CPicture& picture)
{
    const CPictureForm form = picture.Form();
    const int photometric = picture.Palette()    ? PHOTOMETRIC_PALETTE
                            : form.channels == 1 ? PHOTOMETRIC_MINISBLACK
                                                 : PHOTOMETRIC_RGB;
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(picture.Width()));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(picture.Height()));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, form.depth > 8 ? 16 : 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(form.channels));
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, photometric);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    if (form.channels == 4) {
        uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
    }
    if (const CColorTable* const palette = picture.Palette())
        SetPalette(tiff, *palette);
    if (form.depth % 8 != 0)
        TIFFSetField(tiff, TIFFTAG_MAXSAMPLEVALUE, (1 << form.depth) - 1);
    if (*picture.FormatName())
        TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION,
                     (std::string(kFormatKey) + picture.FormatName()).c_str());
}

/// Lines are written in strips of about this many bytes, and one call each.
constexpr size_t kStripSize = size_t{256} * 1024;

bool WriteStrips(TIFF* tiff, CPicture& picture)
{
    const size_t linesPerStrip = std::clamp<size_t>(kStripSize / picture.RowBytes(), 1, picture.Height());
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(linesPerStrip));
    std::vector<uint8_t> strip(linesPerStrip * picture.RowBytes());
    uint32_t number = 0;
    for (size_t y = 0; y < picture.Height(); y += linesPerStrip, ++number) {
        const size_t lines = std::min(linesPerStrip, picture.Height() - y);
        for (size_t i = 0; i < lines; ++i)
            picture.Row(y + i, strip.data() + i * picture.RowBytes());
        if (TIFFWriteEncodedStrip(tiff, number, strip.data(),
                                  static_cast<tmsize_t>(lines * picture.RowBytes())) < 0)
            return false;
    }
    return TIFFWriteDirectory(tiff) != 0;
}

// ---- reading

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
    uint16_t bits = 1;
    uint16_t samples = 1;
    uint16_t photometric = PHOTOMETRIC_MINISBLACK;
    uint16_t planar = PLANARCONFIG_CONTIG;
    uint16_t sampleFormat = SAMPLEFORMAT_UINT;
    uint16_t maxSample = 0;
    std::string formatName;

    CPictureForm Form() const
    {
        CPictureForm form{samples, bits};
        if (bits == 16 && maxSample >= 255) {
            for (form.depth = 8; (1U << form.depth) - 1 < maxSample; ++form.depth) {
            }
            if (form.depth == 8) // in two bytes all the same
                form.depth = 16;
        }
        return form;
    }
    /// Whether the samples can be taken as they are.
    bool IsDirect(TIFF* tiff) const
    {
        const bool isGrey = samples == 1 && photometric == PHOTOMETRIC_MINISBLACK;
        const bool isColor = (samples == 3 || samples == 4) && photometric == PHOTOMETRIC_RGB;
        return (isGrey || isColor) && (bits == 8 || bits == 16) && planar == PLANARCONFIG_CONTIG &&
               sampleFormat == SAMPLEFORMAT_UINT && !TIFFIsTiled(tiff);
    }
};

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
    if (!TIFFGetField(tiff, TIFFTAG_MAXSAMPLEVALUE, &layout.maxSample))
        layout.maxSample = 0xFFFF;
    const char* description = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_IMAGEDESCRIPTION, &description) && description &&
        std::strncmp(description, kFormatKey.data(), kFormatKey.size()) == 0)
        layout.formatName = description + kFormatKey.size();
    return layout;
}

/// Strips, whose sizes the library has checked, as lines.
bool ReadStrips(TIFF* tiff, CDecodedImage& image)
{
    const tmsize_t stripSize = TIFFStripSize(tiff);
    const uint32_t count = TIFFNumberOfStrips(tiff);
    const size_t size = image.linePitch * image.height;
    if (stripSize <= 0 || static_cast<size_t>(TIFFScanlineSize(tiff)) != image.linePitch)
        return false;
    size_t at = 0;
    for (uint32_t i = 0; i < count && at < size; ++i) {
        const tmsize_t wanted =
            static_cast<tmsize_t>(std::min<size_t>(static_cast<size_t>(stripSize), size - at));
        if (TIFFReadEncodedStrip(tiff, i, image.pixels.data.get() + at, wanted) != wanted)
            return false;
        at += static_cast<size_t>(wanted);
    }
    return at == size;
}

/// Whatever else the library can turn into colours: palettes, tiles, planes, luma with chroma.
CDecodedImage ReadAsColors(TIFF* tiff, const CTiffLayout& layout, const CFileContent& content,
                           const CTiffMessage& message)
{
    char cause[1024] = "";
    if (layout.bits > 8 || !TIFFRGBAImageOK(tiff, cause))
        content.Raise("%s", cause[0] ? cause : "its kind of pixels isn't supported");
    CDecodedImage image = MakePicture(content, layout.width, layout.height, KxPixelFormat_RGBa8);
    // The library writes words with red in the low byte.
    if (!TIFFReadRGBAImageOriented(tiff, layout.width, layout.height,
                                   reinterpret_cast<uint32_t*>(image.pixels.data.get()), ORIENTATION_TOPLEFT,
                                   1))
        content.Raise("%s", message.text);
    if (layout.samples == 4)
        return image;
    CDecodedImage colors = MakePicture(content, layout.width, layout.height, KxPixelFormat_RGB8);
    const size_t pixels = image.width * image.height;
    for (size_t i = 0; i < pixels; ++i)
        std::memcpy(colors.pixels.data.get() + 3 * i, image.pixels.data.get() + 4 * i, 3);
    return colors;
}

CDecodedImage ReadDirectly(TIFF* tiff, const CTiffLayout& layout, const CFileContent& content,
                           const CTiffMessage& message)
{
    CDecodedImage image =
        MakePicture(content, layout.width, layout.height, NamedFormat(layout.formatName, layout.Form()));
    if (!ReadStrips(tiff, image))
        content.Raise("%s", message.text[0] ? message.text : "its strips don't fit its size");
    if (IsBlueFirst(image.format))
        SwapRedBlue(image);
    return image;
}

/// No kind of compression that the library knows makes more of a byte, run lengths of blank fax lines aside.
void CheckPlausible(const CFileContent& content, const CTiffLayout& layout)
{
    constexpr uint64_t kMaxRatio = 100000;
    if (uint64_t{layout.width} * layout.height / 8 / kMaxRatio > content.size)
        content.Raise("its %zu bytes can't hold %u x %u pixels", content.size, layout.width, layout.height);
}

} // namespace

void EncodeTiff(const CImageValues& values, const CEncodeOptions& options, COutputFile& file)
{
    CPicture picture(values, options.pColorMap, {false, true, true});
    CTiffMessage message;
    const CTiffOptionsPtr tiffOptions = MakeOptions(message);
    // Beyond 4 GB, which the headers are part of, offsets have to be larger.
    const bool isBig = picture.RowBytes() * picture.Height() > 0xFFF00000U;
    bool isWritten = false;
    {
        const CTiffPtr tiff(TIFFClientOpenExt("", isBig ? "w8" : "w", &file, ReadBack, WriteFile, SeekFile,
                                              NoClose, SizeOfFile, NoMap, NoUnmap, tiffOptions.get()));
        if (tiff) {
            SetFields(tiff.get(), picture);
            isWritten = WriteStrips(tiff.get(), picture);
        }
    }
    file.Check();
    if (!isWritten)
        throw RUNTIME_EXCEPTION("The TIFF file can't be made: %s", message.text);
}

CDecodedImage DecodeTiff(const CFileContent& content)
{
    CTiffMessage message;
    const CTiffOptionsPtr options = MakeOptions(message);
    constexpr uint64_t kMaxAllocation = 0x40000000;
    TIFFOpenOptionsSetMaxSingleMemAlloc(
        options.get(), static_cast<tmsize_t>(std::min(content.maxImageSize, kMaxAllocation)));
    CTiffSource source{content};
    const CTiffPtr tiff(TIFFClientOpenExt("", "rm", &source, ReadSource, NoWrite, SeekSource, NoClose,
                                          SizeOfSource, NoMap, NoUnmap, options.get()));
    if (!tiff)
        content.Raise("%s", message.text);
    const CTiffLayout layout = ReadLayout(tiff.get());
    CheckPlausible(content, layout);
    CDecodedImage image = layout.IsDirect(tiff.get()) ? ReadDirectly(tiff.get(), layout, content, message)
                                                      : ReadAsColors(tiff.get(), layout, content, message);
    // The library goes on without entries that it couldn't read.
    if (source.isShort)
        content.Raise("it ends too early");
    return image;
}

} // namespace Detail
} // namespace KxApi

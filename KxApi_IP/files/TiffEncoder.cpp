// SPDX-License-Identifier: Apache-2.0
// Writes images as ".tif" files.

#include "COutputFile.h"
#include "Encoding.h"
#include "TiffHandle.h"

#include <Base/GCException.h>

#include <algorithm>
#include <string>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

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
                     (std::string(kTiffFormatKey) + picture.FormatName()).c_str());
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

} // namespace

void EncodeTiff(const CImageValues& values, const CEncodeOptions& options, COutputFile& file)
{
    CPicture picture(values, options.pColorMap, {false, true, true});
    CTiffMessage message;
    const CTiffOptionsPtr tiffOptions = MakeTiffOptions(message);
    // Beyond 4 GB, which the headers are part of, offsets have to be larger.
    const bool isBig = picture.RowBytes() * picture.Height() > 0xFFF00000U;
    bool isWritten = false;
    {
        const CTiffPtr tiff(TIFFClientOpenExt("", isBig ? "w8" : "w", &file, ReadBack, WriteFile, SeekFile,
                                              NoTiffClose, SizeOfFile, NoTiffMap, NoTiffUnmap,
                                              tiffOptions.get()));
        if (tiff) {
            SetFields(tiff.get(), picture);
            isWritten = WriteStrips(tiff.get(), picture);
        }
    }
    file.Check();
    if (!isWritten)
        throw RUNTIME_EXCEPTION("The TIFF file can't be made: %s", message.text);
}

} // namespace Detail
} // namespace KxApi

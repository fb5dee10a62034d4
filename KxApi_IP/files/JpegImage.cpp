// SPDX-License-Identifier: Apache-2.0
// Images in ".jpg" files.
//
// libjpeg leaves its calls by longjmp when something fails. The functions that call it hold nothing with a
// destructor; what they work on lies in the state of their caller, who turns a failure into an exception.

#include "COutputFile.h"
#include "Decoding.h"
#include "Encoding.h"

#include <Base/GCException.h>

#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kBufferSize = size_t{64} * 1024;

/// Application data of the first kind, which Exif is.
constexpr int kExifMarker = JPEG_APP0 + 1;

/// From this quality on colours keep their full resolution.
constexpr uint32_t kFullColorQuality = 90;

struct CJpegErrors
{
    jpeg_error_mgr base{};
    jmp_buf jump{};
    char text[JMSG_LENGTH_MAX] = "";
};

[[noreturn]] void OnError(j_common_ptr jpeg)
{
    auto* const errors = reinterpret_cast<CJpegErrors*>(jpeg->err);
    errors->base.format_message(jpeg, errors->text);
    std::longjmp(errors->jump, 1); // NOLINT(cert-err52-cpp): the library's way to fail
}

/// A picture that only looks complete is worth less than none. Bytes between the parts harm nothing.
void OnMessage(j_common_ptr jpeg, int level)
{
    if (level < 0 && jpeg->err->msg_code != JWRN_EXTRANEOUS_DATA)
        OnError(jpeg);
}

void OnOutput(j_common_ptr) {}

jpeg_error_mgr* SetErrors(CJpegErrors& errors)
{
    jpeg_std_error(&errors.base);
    errors.base.error_exit = OnError;
    errors.base.emit_message = OnMessage;
    errors.base.output_message = OnOutput;
    return &errors.base;
}

// ---- writing

struct CJpegWrite
{
    COutputFile& file;
    CPicture& picture;
    const uint32_t quality;
    std::vector<uint8_t> line;
    std::vector<uint8_t> buffer = std::vector<uint8_t>(kBufferSize);
    CJpegErrors errors{};
    jpeg_destination_mgr target{};
    jpeg_compress_struct jpeg{};

    ~CJpegWrite() { jpeg_destroy_compress(&jpeg); }
};

CJpegWrite& WriteOf(j_compress_ptr jpeg) { return *static_cast<CJpegWrite*>(jpeg->client_data); }

void Empty(CJpegWrite& write, size_t size)
{
    if (!write.file.Write(write.buffer.data(), size))
        ERREXIT(&write.jpeg, JERR_FILE_WRITE);
    write.target.next_output_byte = write.buffer.data();
    write.target.free_in_buffer = kBufferSize;
}

void OnStart(j_compress_ptr jpeg) { Empty(WriteOf(jpeg), 0); }

boolean OnFull(j_compress_ptr jpeg)
{
    Empty(WriteOf(jpeg), kBufferSize);
    return TRUE;
}

void OnEnd(j_compress_ptr jpeg)
{
    CJpegWrite& write = WriteOf(jpeg);
    Empty(write, kBufferSize - write.target.free_in_buffer);
}

/// False after a failure, which the errors tell.
bool WriteJpeg(CJpegWrite& write)
{
    if (setjmp(write.errors.jump) != 0) // NOLINT(cert-err52-cpp)
        return false;
    jpeg_compress_struct& jpeg = write.jpeg;
    jpeg_create_compress(&jpeg);
    jpeg.client_data = &write;
    write.target.init_destination = OnStart;
    write.target.empty_output_buffer = OnFull;
    write.target.term_destination = OnEnd;
    jpeg.dest = &write.target;
    const bool isGrey = write.picture.Form().channels == 1;
    jpeg.image_width = static_cast<JDIMENSION>(write.picture.Width());
    jpeg.image_height = static_cast<JDIMENSION>(write.picture.Height());
    jpeg.input_components = isGrey ? 1 : 3;
    jpeg.in_color_space = isGrey ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, static_cast<int>(write.quality), TRUE);
    if (write.quality >= kFullColorQuality) {
        jpeg.comp_info[0].h_samp_factor = 1;
        jpeg.comp_info[0].v_samp_factor = 1;
    }
    jpeg_start_compress(&jpeg, TRUE);
    JSAMPROW row = write.line.data();
    while (jpeg.next_scanline < jpeg.image_height) {
        write.picture.Row(jpeg.next_scanline, write.line.data());
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    return true;
}

// ---- reading

/// Progressive files may repeat their scans over an image without end.
constexpr int kMaxScans = 100;

struct CJpegRead
{
    CJpegErrors errors{};
    jpeg_progress_mgr progress{};
    jpeg_decompress_struct jpeg{};

    ~CJpegRead() { jpeg_destroy_decompress(&jpeg); }
};

void OnProgress(j_common_ptr jpeg)
{
    const auto* const read = reinterpret_cast<j_decompress_ptr>(jpeg);
    if (read->input_scan_number > kMaxScans)
        ERREXIT(jpeg, JERR_BAD_PROGRESSION);
}

bool ReadHeader(CJpegRead& read, const CFileContent& content)
{
    if (setjmp(read.errors.jump) != 0) // NOLINT(cert-err52-cpp)
        return false;
    jpeg_create_decompress(&read.jpeg);
    read.jpeg.progress = &read.progress;
    read.progress.progress_monitor = OnProgress;
    // The library only reads it.
    jpeg_mem_src(&read.jpeg, content.data, content.size);
    jpeg_save_markers(&read.jpeg, kExifMarker, 0xFFFF);
    jpeg_read_header(&read.jpeg, TRUE);
    return true;
}

bool ReadPixels(CJpegRead& read, CDecodedImage& image, J_COLOR_SPACE colors)
{
    if (setjmp(read.errors.jump) != 0) // NOLINT(cert-err52-cpp)
        return false;
    read.jpeg.out_color_space = colors;
    jpeg_start_decompress(&read.jpeg);
    while (read.jpeg.output_scanline < read.jpeg.output_height) {
        JSAMPROW row = image.Line(read.jpeg.output_scanline);
        jpeg_read_scanlines(&read.jpeg, &row, 1);
    }
    jpeg_finish_decompress(&read.jpeg);
    return true;
}

/// The colours that the library is asked for; those of inks are made ours later.
J_COLOR_SPACE ColorsOf(const CFileContent& content, const jpeg_decompress_struct& jpeg)
{
    switch (jpeg.jpeg_color_space) {
    case JCS_GRAYSCALE:
        return JCS_GRAYSCALE;
    case JCS_RGB:
    case JCS_YCbCr:
        return JCS_RGB;
    case JCS_CMYK:
    case JCS_YCCK:
        return JCS_CMYK;
    default:
        content.Raise("its colour space of %d components isn't supported", jpeg.num_components);
    }
}

/// Each block of pixels takes a bit at least, but for arithmetic coding, where many share one.
void CheckPlausible(const CFileContent& content, const jpeg_decompress_struct& jpeg)
{
    constexpr uint64_t kMaxShared = 1000;
    uint64_t blocks = 0;
    for (int i = 0; i < jpeg.num_components; ++i)
        blocks += uint64_t{jpeg.comp_info[i].width_in_blocks} * jpeg.comp_info[i].height_in_blocks;
    if (blocks / 8 / (jpeg.arith_code ? kMaxShared : 1) > content.size)
        content.Raise("its %zu bytes can't hold %u x %u pixels", content.size, jpeg.image_width,
                      jpeg.image_height);
}

/// Four inks as they are printed on white paper. Files of one maker's programs, which mark them, hold the
/// paper that each ink leaves in place of the ink.
CDecodedImage MixInks(const CFileContent& content, const CDecodedImage& inks, bool isPaper)
{
    CDecodedImage image = MakePicture(content, inks.width, inks.height, KxPixelFormat_RGB8);
    const uint8_t flip = isPaper ? 0 : 0xFF;
    const uint8_t* source = inks.pixels.data.get();
    uint8_t* target = image.pixels.data.get();
    for (size_t i = inks.width * inks.height; i > 0; --i, source += 4) {
        const unsigned black = source[3] ^ flip;
        for (size_t k = 0; k < 3; ++k)
            *target++ = static_cast<uint8_t>(((source[k] ^ flip) * black + 127) / 255);
    }
    return image;
}

/// A number of an Exif block, which has the byte order of its writer.
struct CExifReader
{
    const uint8_t* data;
    size_t size;
    bool isBigEndian;

    /// 0 for what lies outside.
    uint32_t Number(size_t at, unsigned bytes) const
    {
        uint32_t value = 0;
        for (unsigned i = 0; i < bytes && at <= size && bytes <= size - at; ++i)
            value = value << 8 | data[at + (isBigEndian ? i : bytes - 1 - i)];
        return value;
    }
};

/// The orientation that the first Exif block tells, 0 when there is none.
unsigned OrientationOf(const jpeg_decompress_struct& jpeg)
{
    constexpr size_t kTitle = 6; // "Exif" and two zeros
    constexpr unsigned kOrientationTag = 0x0112;
    constexpr size_t kEntry = 12;
    for (const jpeg_marker_struct* marker = jpeg.marker_list; marker; marker = marker->next) {
        if (marker->marker != kExifMarker || marker->data_length < kTitle + 8 ||
            std::memcmp(marker->data, "Exif\0", kTitle) != 0)
            continue;
        const uint8_t* const data = marker->data + kTitle;
        const CExifReader exif{data, marker->data_length - kTitle, data[0] == 'M'};
        const size_t directory = exif.Number(4, 4);
        const size_t count = exif.Number(directory, 2);
        for (size_t i = 0; i < count; ++i) {
            const size_t entry = directory + 2 + i * kEntry;
            if (exif.Number(entry, 2) == kOrientationTag)
                return exif.Number(entry + 8, 2);
        }
    }
    return 0;
}

} // namespace

void EncodeJpeg(const CImageValues& values, const CEncodeOptions& options, COutputFile& file)
{
    CPicture picture(values, options.pColorMap, {false, false, false});
    if (picture.Width() > JPEG_MAX_DIMENSION || picture.Height() > JPEG_MAX_DIMENSION)
        throw RUNTIME_EXCEPTION("A JPEG file holds at most %ld x %ld pixels, not %zu x %zu",
                                JPEG_MAX_DIMENSION, JPEG_MAX_DIMENSION, picture.Width(), picture.Height());
    CJpegWrite write{file, picture, options.jpegQuality, std::vector<uint8_t>(picture.RowBytes())};
    write.jpeg.err = SetErrors(write.errors);
    if (!WriteJpeg(write)) {
        file.Check();
        throw RUNTIME_EXCEPTION("The JPEG file can't be made: %s", write.errors.text);
    }
}

CDecodedImage DecodeJpeg(const CFileContent& content)
{
    CJpegRead read;
    read.jpeg.err = SetErrors(read.errors);
    if (!ReadHeader(read, content))
        content.Raise("%s", read.errors.text);
    CheckPlausible(content, read.jpeg);
    const J_COLOR_SPACE colors = ColorsOf(content, read.jpeg);
    const bool isInks = colors == JCS_CMYK;
    const unsigned orientation = OrientationOf(read.jpeg);
    CDecodedImage image = MakePicture(content, read.jpeg.image_width, read.jpeg.image_height,
                                      colors == JCS_GRAYSCALE ? KxPixelFormat_Mono8
                                      : isInks                ? KxPixelFormat_RGBa8
                                                              : KxPixelFormat_RGB8);
    if (!ReadPixels(read, image, colors))
        content.Raise("%s", read.errors.text);
    if (isInks)
        image = MixInks(content, image, read.jpeg.saw_Adobe_marker);
    return Upright(std::move(image), orientation);
}

} // namespace Detail
} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Images in ".jpg" files.
//
// libjpeg leaves its calls by longjmp when something fails. The functions that call it hold nothing with a
// destructor; what they work on lies in the state of their caller, who turns a failure into an exception.

#include "Decoding.h"
#include "Encoding.h"
#include "OutputFile.h"

#include <Base/GCException.h>

#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kBufferSize = size_t{64} * 1024;

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
    jpeg_read_header(&read.jpeg, TRUE);
    return true;
}

bool ReadPixels(CJpegRead& read, CDecodedImage& image)
{
    if (setjmp(read.errors.jump) != 0) // NOLINT(cert-err52-cpp)
        return false;
    read.jpeg.out_color_space = image.format == KxPixelFormat_Mono8 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&read.jpeg);
    while (read.jpeg.output_scanline < read.jpeg.output_height) {
        JSAMPROW row = image.Line(read.jpeg.output_scanline);
        jpeg_read_scanlines(&read.jpeg, &row, 1);
    }
    jpeg_finish_decompress(&read.jpeg);
    return true;
}

EKxPixelFormatNamingConvention_t FormatOf(const CFileContent& content, const jpeg_decompress_struct& jpeg)
{
    switch (jpeg.jpeg_color_space) {
    case JCS_GRAYSCALE:
        return KxPixelFormat_Mono8;
    case JCS_RGB:
    case JCS_YCbCr:
        return KxPixelFormat_RGB8;
    default:
        content.Raise("its colour space of %d components isn't supported", jpeg.num_components);
    }
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
    CDecodedImage image =
        MakePicture(content, read.jpeg.image_width, read.jpeg.image_height, FormatOf(content, read.jpeg));
    if (!ReadPixels(read, image))
        content.Raise("%s", read.errors.text);
    return image;
}

} // namespace Detail
} // namespace KxApi

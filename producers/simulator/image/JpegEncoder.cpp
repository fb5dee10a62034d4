// SPDX-License-Identifier: Apache-2.0
//
// libjpeg leaves its calls by longjmp when something fails: the function that calls it holds nothing with a
// destructor.

#include "JpegEncoder.h"

#include "Common.h"

// The library's header needs these first.
#include <jpeglib.h>

#include <csetjmp>
#include <cstdio>
#include <cstdlib>

namespace KxSim
{
namespace
{

struct CJpegWork
{
    jpeg_error_mgr errors{};
    jmp_buf jump{};
    jpeg_compress_struct jpeg{};
    unsigned char* memory = nullptr; // of malloc
    unsigned long size = 0;

    ~CJpegWork()
    {
        jpeg_destroy_compress(&jpeg);
        std::free(memory);
    }
};

[[noreturn]] void OnError(j_common_ptr jpeg)
{
    auto* const work = static_cast<CJpegWork*>(jpeg->client_data);
    std::longjmp(work->jump, 1); // NOLINT(cert-err52-cpp): the library's way to fail
}

/// False after a failure.
bool Encode(CJpegWork& work, const uint8_t* rgb, int width, int height, int quality)
{
    if (setjmp(work.jump) != 0) // NOLINT(cert-err52-cpp)
        return false;
    jpeg_compress_struct& jpeg = work.jpeg;
    jpeg.err = jpeg_std_error(&work.errors);
    work.errors.error_exit = OnError;
    jpeg.client_data = &work;
    jpeg_create_compress(&jpeg);
    jpeg_mem_dest(&jpeg, &work.memory, &work.size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, quality, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    const size_t pitch = size_t{3} * jpeg.image_width;
    while (jpeg.next_scanline < jpeg.image_height) {
        // The library only reads it.
        auto* row = const_cast<JSAMPROW>(rgb + jpeg.next_scanline * pitch);
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    return true;
}

} // namespace

void EncodeJpeg(const std::vector<uint8_t>& rgb, int width, int height, int quality,
                std::vector<uint8_t>& encoded)
{
    CJpegWork work;
    if (!Encode(work, rgb.data(), width, height, quality))
        Fail(GenTL::GC_ERR_OUT_OF_MEMORY, "An image of %d x %d pixels can't be compressed", width, height);
    encoded.assign(work.memory, work.memory + work.size);
}

size_t MaxJpegSize(int width, int height)
{
    // Whole blocks of 16 x 16 pixels with colours at a quarter: 1.5 values a pixel, each at most 2 bytes.
    constexpr size_t kHead = 2048;
    const auto blocks = [](int pixels) { return (static_cast<size_t>(pixels) + 15) / 16 * 16; };
    return blocks(width) * blocks(height) * 3 + kHead;
}

} // namespace KxSim

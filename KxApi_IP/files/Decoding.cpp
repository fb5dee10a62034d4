// SPDX-License-Identifier: Apache-2.0
#include "Decoding.h"

#include "PixelReader.h"
#include "RawContainer.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace KxApi
{
namespace Detail
{
namespace
{

template <class T>
void SwapInLine(T* line, size_t width, unsigned channels)
{
    for (size_t x = 0; x < width; ++x, line += channels)
        std::swap(line[0], line[2]);
}

struct CSignature
{
    std::string_view bytes;
    CDecodedImage (*decode)(const CFileContent&);
};

using namespace std::string_view_literals;

constexpr CSignature kSignatures[] = {
    {kRawMagic, DecodeRaw},         {"\x89PNG\r\n\x1A\n"sv, DecodePng},
    {"\xFF\xD8\xFF"sv, DecodeJpeg}, {"II*\0"sv, DecodeTiff},
    {"MM\0*"sv, DecodeTiff},        {"II+\0"sv, DecodeTiff},
    {"MM\0+"sv, DecodeTiff},        {"BM"sv, DecodeBmp},
};

} // namespace

void CFileContent::Raise(const char* format, ...) const
{
    char cause[128];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(cause, sizeof cause, format, arguments);
    va_end(arguments);
    throw RUNTIME_EXCEPTION("Cannot read '%s': %s", shown.c_str(), cause);
}

CDecodedImage MakePicture(const CFileContent& content, uint64_t width, uint64_t height,
                          EKxPixelFormatNamingConvention_t format)
{
    const CPixelFormatRow* const row = FindFormat(format);
    if (!row || width == 0 || height == 0)
        content.Raise("its size is %llu x %llu pixels", static_cast<unsigned long long>(width),
                      static_cast<unsigned long long>(height));
    uint64_t pitch = 0;
    uint64_t size = 0;
    if (__builtin_mul_overflow(width, uint64_t{row->bits} / 8, &pitch) ||
        __builtin_mul_overflow(pitch, height, &size) || size > content.maxImageSize)
        content.Raise("%llu x %llu pixels of %s are more than the limit of %llu bytes",
                      static_cast<unsigned long long>(width), static_cast<unsigned long long>(height),
                      row->name, static_cast<unsigned long long>(content.maxImageSize));
    CDecodedImage image;
    image.format = format;
    image.width = width;
    image.height = height;
    image.linePitch = pitch;
    image.pixels = GenICam::GuardBadAlloc([&] { return CBytes(size); });
    return image;
}

void SwapRedBlue(CDecodedImage& image)
{
    const CPixelFormatRow& row = *FindFormat(image.format);
    for (size_t y = 0; y < image.height; ++y) {
        if (row.storageBits > 8)
            SwapInLine(reinterpret_cast<uint16_t*>(image.Line(y)), image.width, row.componentCount);
        else
            SwapInLine(image.Line(y), image.width, row.componentCount);
    }
}

CDecodedImage DecodeImageFile(const CFileContent& content)
{
    const std::string_view bytes(reinterpret_cast<const char*>(content.data), content.size);
    for (const CSignature& signature : kSignatures) {
        if (bytes.substr(0, signature.bytes.size()) == signature.bytes)
            return signature.decode(content);
    }
    content.Raise("it is no BMP, JPEG, TIFF, PNG or kxraw file");
}

} // namespace Detail
} // namespace KxApi

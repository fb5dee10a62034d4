// SPDX-License-Identifier: Apache-2.0
// Images in ".kxraw" files: the memory of the image as it is.

#include "Decoding.h"
#include "Encoding.h"
#include "LittleEndian.h"
#include "RawContainer.h"

#include <Base/GCBadAlloc.h>

#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

// Places in CRawAbout; bytes 12 to 15 are 0.
constexpr size_t kFormatAt = 0;
constexpr size_t kRawWidthAt = 4;
constexpr size_t kRawHeightAt = 8;
constexpr size_t kPitchAt = 16;

/// The description of an image that lies at `data`, which needn't be there yet.
CImageValues DescribedImage(const CFileContent& content, const CRawAbout& about, const uint8_t* data)
{
    const auto format = static_cast<EKxPixelFormatNamingConvention_t>(GetLittle<uint32_t>(&about[kFormatAt]));
    const size_t width = GetLittle<uint32_t>(&about[kRawWidthAt]);
    const size_t height = GetLittle<uint32_t>(&about[kRawHeightAt]);
    const size_t pitch = GetLittle<uint64_t>(&about[kPitchAt]);
    if (!FindFormat(format))
        content.Raise("its pixel format 0x%08X is unknown", static_cast<unsigned>(format));
    if (width == 0 || height == 0)
        content.Raise("its size is %zu x %zu pixels", width, height);
    try {
        return {format, width, height, {data, pitch, height * pitch}};
    } catch (const GenICam::InvalidArgumentException&) {
        content.Raise("%zu x %zu pixels of %s don't go with lines of %zu bytes", width, height,
                      FindFormat(format)->name, pitch);
    }
}

} // namespace

void EncodeRaw(const CImageValues& values, COutputFile& file)
{
    const CPlaneMemory first = values.Plane(0);
    CRawAbout about{};
    PutLittle<uint32_t>(&about[kFormatAt], values.Format().code);
    PutLittle<uint32_t>(&about[kRawWidthAt], static_cast<uint32_t>(values.Width()));
    PutLittle<uint32_t>(&about[kRawHeightAt], static_cast<uint32_t>(values.Height()));
    PutLittle<uint64_t>(&about[kPitchAt], first.linePitch);
    CRawWriter writer(file, ERawContent::Image, about);
    for (size_t i = 0; i < values.PlaneCount(); ++i) {
        const CPlaneMemory plane = values.Plane(i);
        for (size_t y = 0; y < plane.lines; ++y) {
            // What follows the pixels of a window belongs to others, and behind the last line it may be
            // nobody's.
            writer.Add(plane.first + y * plane.linePitch, plane.lineBytes);
            writer.AddZeros(plane.linePitch - plane.lineBytes);
        }
    }
    writer.Finish();
}

CDecodedImage DecodeRaw(const CFileContent& content)
{
    const CRawPayload payload = ReadRawFile(content, ERawContent::Image);
    const CImageValues values = DescribedImage(content, payload.about, payload.data);
    if (values.Size() != payload.size)
        content.Raise("%zu x %zu pixels of %s take %zu bytes, not %zu", values.Width(), values.Height(),
                      values.Format().name, values.Size(), payload.size);
    if (payload.size > content.maxImageSize)
        content.Raise("its %zu bytes are more than the limit of %llu", payload.size,
                      static_cast<unsigned long long>(content.maxImageSize));
    CDecodedImage image;
    image.format = static_cast<EKxPixelFormatNamingConvention_t>(values.Format().code);
    image.width = values.Width();
    image.height = values.Height();
    image.linePitch = values.Plane(0).linePitch;
    image.isPitchTold = true;
    image.pixels = GenICam::GuardBadAlloc([&] { return CBytes(payload.size); });
    std::memcpy(image.pixels.data.get(), payload.data, payload.size);
    return image;
}

} // namespace Detail
} // namespace KxApi

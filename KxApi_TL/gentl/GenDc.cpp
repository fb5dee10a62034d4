// SPDX-License-Identifier: Apache-2.0

#include "GenDc.h"

#include "ImageLayout.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr uint32_t kSignature = 0x43444E47; // "GNDC"
constexpr uint8_t kMajorVersion = 1;
/// More than any camera sends; a container that tells more is in error.
constexpr uint32_t kMaxChildren = 1024;

enum EHeaderType : uint16_t
{
    kContainer = 0x1000,
    kComponent = 0x2000,
    kPart2D = 0x4200,
    kPartJpeg = 0x4201,
    kPartJpeg2000 = 0x4202
};

/// Where the fields of headers lie, in bytes from their beginning. Numbers are little endian.
enum EPlace : size_t
{
    kContainerVersion = 4,
    kContainerType = 8,
    kContainerCount = 52,
    kContainerChildren = 56,

    kComponentType = 0,
    kComponentFlags = 2,
    kComponentSourceID = 12,
    kComponentRegionID = 14,
    kComponentX = 16,
    kComponentY = 20,
    kComponentTypeID = 32,
    kComponentCount = 46,
    kComponentChildren = 48,

    kPartType = 0,
    kPartFormat = 8,
    kPartDataSize = 24,
    kPartDataOffset = 32,
    kPartWidth = 40,
    kPartHeight = 44,
    kPartXPadding = 48,
};

constexpr uint16_t kIsInvalid = 1; // of a component's flags

enum ETypeID : uint64_t
{
    kRange = 4,
    kConfidence = 6,
    kDisparity = 8
};

/// The bytes of which nothing outside is read.
class CBytes
{
public:
    CBytes(const uint8_t* data, size_t size)
        : m_data(data)
        , m_size(size)
    {}

    template <class T>
    T At(uint64_t header, size_t place) const
    {
        T value{};
        if (m_size < sizeof(value) + place || header > m_size - sizeof(value) - place)
            throw RUNTIME_EXCEPTION(
                "A header of a GenDC container at byte %llu lies outside of its %zu bytes",
                static_cast<unsigned long long>(header), m_size);
        std::memcpy(&value, m_data + header + place, sizeof(value));
        return value;
    }

    void Expect(uint64_t header, size_t place, EHeaderType type, const char* szWhat) const
    {
        const auto found = At<uint16_t>(header, place);
        if (found != type)
            throw RUNTIME_EXCEPTION("A GenDC container has a header of type 0x%04X in place of its %s", found,
                                    szWhat);
    }

    /// Calls `visit` with where each child's header lies.
    template <class Visit>
    void ForEach(uint64_t header, size_t place, uint32_t count, Visit visit) const
    {
        if (count > kMaxChildren)
            throw RUNTIME_EXCEPTION("A header of a GenDC container names %u others; Max = %u", count,
                                    kMaxChildren);
        for (uint32_t i = 0; i < count; ++i)
            visit(At<uint64_t>(header, place + i * sizeof(uint64_t)));
    }

private:
    const uint8_t* const m_data;
    const size_t m_size;
};

int32_t DataTypeOf(uint64_t typeID)
{
    switch (typeID) {
    case kRange:
    case kDisparity:
        return GenTL::PART_DATATYPE_3D_IMAGE;
    case kConfidence:
        return GenTL::PART_DATATYPE_CONFIDENCE_MAP;
    default:
        return GenTL::PART_DATATYPE_2D_IMAGE;
    }
}

/// What all parts of a component have in common.
CImageContent ReadComponent(const CBytes& bytes, uint64_t component)
{
    CImageContent image;
    image.purposeID = bytes.At<uint64_t>(component, kComponentTypeID);
    image.dataType = DataTypeOf(image.purposeID);
    image.sourceID = bytes.At<uint16_t>(component, kComponentSourceID);
    image.regionID = bytes.At<uint16_t>(component, kComponentRegionID);
    image.offsetX = bytes.At<uint32_t>(component, kComponentX);
    image.offsetY = bytes.At<uint32_t>(component, kComponentY);
    return image;
}

/// Sizes of an image of pixels, whose bytes end at `end`.
void ReadPixels(const CBytes& bytes, uint64_t part, size_t end, CImageContent& image, CBufferContent& content)
{
    const auto code = bytes.At<uint32_t>(part, kPartFormat);
    const IKxPixelFormatInfoInside* const format = FindFormat(code);
    image.width = bytes.At<uint32_t>(part, kPartWidth);
    image.height = bytes.At<uint32_t>(part, kPartHeight);
    if (!format || image.width == 0 || image.height == 0)
        throw RUNTIME_EXCEPTION("Image of %zu by %zu pixels of format 0x%08X in a GenDC container",
                                image.width, image.height, code);
    image.pixelFormat = format->GetPixelFormat();
    const size_t filled = std::min(content.sizeFilled, end);
    const size_t needed = LayOut(*format, bytes.At<uint16_t>(part, kPartXPadding), end, image);
    image.deliveredHeight = filled >= needed ? image.height : FilledLines(image, filled);
    content.isIncomplete |= filled < needed;
}

void ReadPart(const CBytes& bytes, uint64_t part, CImageContent image, size_t bufferSize,
              CBufferContent& content)
{
    const auto type = bytes.At<uint16_t>(part, kPartType);
    if (type != kPart2D && type != kPartJpeg && type != kPartJpeg2000)
        return;
    const auto dataSize = bytes.At<uint64_t>(part, kPartDataSize);
    const auto dataOffset = bytes.At<uint64_t>(part, kPartDataOffset);
    if (dataOffset > bufferSize || dataSize > bufferSize - dataOffset)
        throw RUNTIME_EXCEPTION("A part of a GenDC container, %llu bytes at byte %llu, does not fit into a "
                                "buffer of %zu bytes",
                                static_cast<unsigned long long>(dataSize),
                                static_cast<unsigned long long>(dataOffset), bufferSize);
    image.place = dataOffset;
    const size_t end = dataOffset + dataSize;
    if (type == kPart2D) {
        ReadPixels(bytes, part, end, image, content);
    } else {
        if (dataSize == 0) // it would pass for an image of pixels
            throw RUNTIME_EXCEPTION("A compressed part of a GenDC container, at byte %llu, is empty",
                                    static_cast<unsigned long long>(dataOffset));
        image.dataType = type == kPartJpeg ? GenTL::PART_DATATYPE_JPEG : GenTL::PART_DATATYPE_JPEG2000;
        image.encodedSize = dataSize;
        content.isIncomplete |= content.sizeFilled < end;
    }
    if (content.images.size() == kMaxChildren)
        throw RUNTIME_EXCEPTION("A GenDC container with more than %u images", kMaxChildren);
    content.images.push_back(image);
}

} // namespace

void ReadGenDc(const uint8_t* data, size_t size, CBufferContent& content)
{
    const CBytes bytes(data, std::min(size, content.sizeFilled)); // headers have to be there
    if (bytes.At<uint32_t>(0, 0) != kSignature || bytes.At<uint8_t>(0, kContainerVersion) != kMajorVersion)
        throw RUNTIME_EXCEPTION("A buffer holds no GenDC container of version %d", int{kMajorVersion});
    bytes.Expect(0, kContainerType, kContainer, "own");
    bytes.ForEach(0, kContainerChildren, bytes.At<uint32_t>(0, kContainerCount), [&](uint64_t component) {
        bytes.Expect(component, kComponentType, kComponent, "components");
        if (bytes.At<uint16_t>(component, kComponentFlags) & kIsInvalid)
            return;
        const CImageContent common = ReadComponent(bytes, component);
        bytes.ForEach(component, kComponentChildren, bytes.At<uint16_t>(component, kComponentCount),
                      [&](uint64_t part) { ReadPart(bytes, part, common, size, content); });
    });
    if (content.images.empty())
        throw RUNTIME_EXCEPTION("A GenDC container holds no image");
}

} // namespace Detail
} // namespace KxApi

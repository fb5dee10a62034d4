// SPDX-License-Identifier: Apache-2.0

#include "ImageInfo.h"

#include "GenTLInfo.h"
#include "ImageLayout.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <cstddef>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr uint32_t kMaxParts = 1024;

/// The first format that is known. Codes of a namespace that isn't ours are other numbers: the camera's
/// feature has the format in the form that we know.
const IKxPixelFormatInfoInside& ReadFormat(const CBufferAtProducer& buffer, const CImageDefaults& defaults)
{
    const uint64_t nameSpace =
        Info(buffer, GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE, GenTL::PIXELFORMAT_NAMESPACE_UNKNOWN);
    const bool isOurs = nameSpace != GenTL::PIXELFORMAT_NAMESPACE_IIDC &&
                        nameSpace != GenTL::PIXELFORMAT_NAMESPACE_PFNC_16BIT;
    uint64_t code = isOurs ? Info(buffer, GenTL::BUFFER_INFO_PIXELFORMAT, 0) : 0;
    if (code == 0)
        code = defaults.pixelFormat;
    const IKxPixelFormatInfoInside* const info = FindFormat(code);
    if (!info)
        throw RUNTIME_EXCEPTION("Pixel format 0x%08llX of an image is unknown",
                                static_cast<unsigned long long>(code));
    return *info;
}

uint64_t FirstSet(std::initializer_list<uint64_t> candidates)
{
    const auto* const set =
        std::find_if(candidates.begin(), candidates.end(), [](uint64_t value) { return value != 0; });
    return set == candidates.end() ? 0 : *set;
}

} // namespace

void ReadImage(CBufferAtProducer& buffer, const CImageDefaults& defaults, CBufferContent& content)
{
    // Not with the others: of buffers with parts they are none, and to say so takes a producer long.
    buffer.told.Ask(buffer.lib, buffer.hStream, buffer.hBuffer,
                    {GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE, GenTL::BUFFER_INFO_PIXELFORMAT,
                     GenTL::BUFFER_INFO_XPADDING, GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT,
                     GenTL::BUFFER_INFO_XOFFSET, GenTL::BUFFER_INFO_YOFFSET, GenTL::BUFFER_INFO_IMAGEOFFSET,
                     GenTL::BUFFER_INFO_WIDTH, GenTL::BUFFER_INFO_HEIGHT});
    const auto info = [&buffer](GenTL::BUFFER_INFO_CMD command) {
        return static_cast<size_t>(Info(buffer, command, 0));
    };
    const IKxPixelFormatInfoInside& format = ReadFormat(buffer, defaults);
    const size_t linePadding = info(GenTL::BUFFER_INFO_XPADDING);
    const size_t delivered = info(GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT);
    CImageContent image;
    image.pixelFormat = format.GetPixelFormat();
    image.offsetX = info(GenTL::BUFFER_INFO_XOFFSET);
    image.offsetY = info(GenTL::BUFFER_INFO_YOFFSET);
    image.place = info(GenTL::BUFFER_INFO_IMAGEOFFSET);
    image.width = FirstSet({info(GenTL::BUFFER_INFO_WIDTH), defaults.width});
    image.height = FirstSet({info(GenTL::BUFFER_INFO_HEIGHT), delivered, defaults.height});
    size_t linePitch = 0;
    const bool isLineKnown =
        image.width != 0 &&
        !__builtin_add_overflow(format.GetLinePitch(image.width, 1), linePadding, &linePitch) &&
        linePitch != 0;
    if (image.height == 0 && isLineKnown)
        image.height = (content.sizeFilled - std::min(content.sizeFilled, image.place)) / linePitch;
    if (image.width == 0 || image.height == 0)
        throw RUNTIME_EXCEPTION("Image of %zu by %zu pixels", image.width, image.height);
    const size_t end = LayOut(format, linePadding, buffer.size, image);
    image.deliveredHeight = std::min(delivered, image.height);
    // 0 is what producers say that don't know; and not all notice what they didn't receive.
    if (delivered == 0)
        image.deliveredHeight =
            content.sizeFilled >= end ? image.height : FilledLines(image, content.sizeFilled);
    if (content.sizeFilled < end)
        content.isIncomplete = true;
    content.images.push_back(image);
}

void ReadEncoded(const CBufferAtProducer& buffer, int32_t dataType, CBufferContent& content)
{
    CImageContent image;
    image.dataType = dataType;
    image.place = static_cast<size_t>(Info(buffer, GenTL::BUFFER_INFO_IMAGEOFFSET, 0));
    if (image.place >= content.sizeFilled)
        throw RUNTIME_EXCEPTION("A compressed image at byte %zu of %zu that were filled", image.place,
                                content.sizeFilled);
    image.encodedSize = content.sizeFilled - image.place;
    content.images.push_back(image);
}

namespace
{

/// The infos of one part.
class CPartAtProducer
{
public:
    CPartAtProducer(const CBufferAtProducer& buffer, uint32_t index)
        : m_buffer(buffer)
        , m_index(index)
    {}

    uint64_t Get(GenTL::BUFFER_PART_INFO_CMD command, uint64_t fallback = 0) const
    {
        return static_cast<uint64_t>(GetInfoInteger(
            [&](auto... arguments) {
                return m_buffer.lib.DSGetBufferPartInfo(m_buffer.hStream, m_buffer.hBuffer, m_index, command,
                                                        arguments...);
            },
            static_cast<int64_t>(fallback)));
    }
    size_t Size(GenTL::BUFFER_PART_INFO_CMD command, size_t fallback = 0) const
    {
        return static_cast<size_t>(Get(command, fallback));
    }

private:
    const CBufferAtProducer& m_buffer;
    const uint32_t m_index;
};

/// The standard's text counts the padding of a part's lines in pixels, producers count bytes as they do with
/// whole images: what fits the part's size is right.
size_t PaddingBytes(const IKxPixelFormatInfoInside& format, const CPartAtProducer& part,
                    const CImageContent& image, size_t dataSize)
{
    const size_t padding = part.Size(GenTL::BUFFER_PART_INFO_XPADDING);
    if (padding == 0 || padding > SIZE_MAX / 2 - image.width)
        return padding;
    const size_t line = format.GetLinePitch(image.width, 1);
    const size_t paddedLine = format.GetLinePitch(image.width + padding, 1);
    const bool isInPixels = dataSize != 0 && image.height <= dataSize / paddedLine &&
                            format.GetImageSize(image.height, paddedLine) == dataSize;
    return isInPixels ? paddedLine - line : padding;
}

/// False for a part that is no image that we know.
bool ReadPart(const CBufferAtProducer& buffer, const CPartAtProducer& part, CBufferContent& content)
{
    using namespace GenTL;
    CImageContent image;
    image.dataType = static_cast<int32_t>(part.Get(BUFFER_PART_INFO_DATA_TYPE, PART_DATATYPE_2D_IMAGE));
    const IKxPixelFormatInfoInside* const format = FindFormat(part.Get(BUFFER_PART_INFO_DATA_FORMAT));
    image.width = part.Size(BUFFER_PART_INFO_WIDTH);
    const size_t delivered = part.Size(BUFFER_PART_INFO_DELIVERED_IMAGEHEIGHT);
    image.height = FirstSet({part.Size(BUFFER_PART_INFO_HEIGHT), delivered});
    const bool isPicture =
        image.dataType >= PART_DATATYPE_2D_IMAGE && image.dataType <= PART_DATATYPE_CONFIDENCE_MAP;
    const bool isEncoded = image.dataType == PART_DATATYPE_JPEG || image.dataType == PART_DATATYPE_JPEG2000;
    if (!isEncoded && (!format || !isPicture || image.width == 0 || image.height == 0))
        return false;
    const auto base = static_cast<uintptr_t>(part.Get(BUFFER_PART_INFO_BASE));
    const auto begin = reinterpret_cast<uintptr_t>(buffer.base);
    if (base < begin || base - begin > buffer.size)
        throw RUNTIME_EXCEPTION("A part of a buffer lies outside of its %zu bytes", buffer.size);
    image.place = base - begin;
    image.offsetX = part.Size(BUFFER_PART_INFO_XOFFSET);
    image.offsetY = part.Size(BUFFER_PART_INFO_YOFFSET);
    image.sourceID = part.Get(BUFFER_PART_INFO_SOURCE_ID);
    image.regionID = part.Get(BUFFER_PART_INFO_REGION_ID);
    image.purposeID = part.Get(BUFFER_PART_INFO_DATA_PURPOSE_ID);
    const size_t dataSize = part.Size(BUFFER_PART_INFO_DATA_SIZE);
    if (isEncoded) {
        if (dataSize == 0 || dataSize > buffer.size - image.place)
            throw RUNTIME_EXCEPTION("A compressed part of %zu bytes does not fit into a buffer of %zu bytes",
                                    dataSize, buffer.size);
        image.width = image.height = 0;
        image.encodedSize = dataSize;
        content.images.push_back(image);
        return true;
    }
    image.pixelFormat = format->GetPixelFormat();
    const size_t padding = PaddingBytes(*format, part, image, dataSize);
    const size_t end = LayOut(*format, padding, buffer.size, image);
    image.deliveredHeight = std::min(delivered, image.height);
    if (delivered == 0 && !content.isIncomplete)
        image.deliveredHeight = image.height;
    if (content.sizeFilled < end)
        content.isIncomplete = true;
    content.images.push_back(image);
    return true;
}

} // namespace

void ReadParts(const CBufferAtProducer& buffer, CBufferContent& content)
{
    uint32_t count = 0;
    CheckGenTL(buffer.lib, buffer.lib.DSGetNumBufferParts(buffer.hStream, buffer.hBuffer, &count),
               "DSGetNumBufferParts", "image");
    if (count > kMaxParts)
        throw RUNTIME_EXCEPTION("Buffer with %u parts; Max = %u", count, kMaxParts);
    for (uint32_t i = 0; i < count; ++i)
        ReadPart(buffer, CPartAtProducer(buffer, i), content);
    if (content.images.empty() && !content.hasChunks)
        throw RUNTIME_EXCEPTION("None of the %u parts of a buffer is an image that is known", count);
}

void TurnBytes(const CBufferAtProducer& buffer, const CBufferContent& content)
{
    const uint64_t order = Info(buffer, GenTL::BUFFER_INFO_PIXEL_ENDIANNESS, GenTL::PIXELENDIANNESS_UNKNOWN);
    if (order != GenTL::PIXELENDIANNESS_BIG)
        return;
    for (const CImageContent& image : content.images) {
        if (image.encodedSize != 0)
            continue;
        const IKxPixelFormatInfoInside& format = *FindFormat(static_cast<uint64_t>(image.pixelFormat));
        // Values that share bytes with others have no byte order.
        const size_t bytes = format.GetStorageBits() / 8;
        if (format.GetStorageBits() % 16 != 0 ||
            format.GetBitsPerPixelOfPlane() % format.GetStorageBits() != 0)
            continue;
        uint8_t* const begin = buffer.base + image.place;
        const size_t size = format.GetImageSize(image.height, image.linePitch);
        for (size_t at = 0; at + bytes <= size; at += bytes)
            std::reverse(begin + at, begin + at + bytes);
    }
}

} // namespace Detail
} // namespace KxApi

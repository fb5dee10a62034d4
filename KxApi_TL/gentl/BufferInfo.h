// SPDX-License-Identifier: Apache-2.0
// What a producer tells of a buffer that it has filled, checked before anybody relies on it.
#pragma once

#include <GenApi/ChunkAdapterGeneric.h>
#include <KxApi_TL/CKxGenTLLib.h>
#include <KxApi_TL/KxPixelFormat.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace GenApi
{
struct INodeMap;
}

namespace KxApi
{
namespace Detail
{

/// What is known of the images before the first one comes, for producers that don't tell it with each.
struct CImageDefaults
{
    uint64_t width = 0;
    uint64_t height = 0;
    uint64_t pixelFormat = 0;
    double tickNs = 0; ///< nanoseconds of a tick of the device's clock; 0 when they aren't known
};

/// From the features of the device; what can't be read stays 0.
CImageDefaults ReadImageDefaults(const GenApi::INodeMap& map, double tickNs);

/// An image in its buffer, of which it may be a part.
struct CImageContent
{
    size_t width = 0;
    size_t height = 0;
    size_t deliveredHeight = 0;
    size_t offsetX = 0;
    size_t offsetY = 0;
    size_t place = 0; // bytes from the buffer's beginning
    size_t linePitch = 0;
    size_t planePitch = 0;
    EKxPixelFormatNamingConvention_t pixelFormat = KxPixelFormat_None;
    size_t encodedSize = 0; // bytes of a compressed image, which has none of the above but its place
    int32_t dataType = GenTL::PART_DATATYPE_2D_IMAGE;
    uint64_t sourceID = 0;
    uint64_t regionID = 0;
    uint64_t purposeID = 0;
};

/// What a buffer holds.
struct CBufferContent
{
    bool isEmpty = false; // nothing was filled in: neither images nor chunks
    bool hasChunks = false;
    bool areChunksListed = false; // by the producer; else they are found from the end of the data
    bool isIncomplete = false;
    uint64_t frameID = 0;
    uint64_t timestamp = 0;
    uint64_t timestampNs = 0;
    size_t sizeFilled = 0; // bytes
    std::vector<CImageContent> images;
};

/// Infos of a buffer that were asked for at one go, which takes a fraction of the time of many calls.
class CToldInfos
{
public:
    using Commands = std::initializer_list<GenTL::BUFFER_INFO_CMD>;

    /// Asks; where the producer has no function for it, or doesn't like it, nothing is told.
    void Ask(CKxGenTLLib& lib, GenTL::DS_HANDLE hStream, GenTL::BUFFER_HANDLE hBuffer, Commands commands);
    /// An info as DSGetBufferInfo gives it; false for one that wasn't told.
    bool Get(GenTL::BUFFER_INFO_CMD command, GenTL::INFO_DATATYPE& type, void* value, size_t& size,
             GenTL::GC_ERROR& result) const;

private:
    static constexpr size_t kMost = 24;
    static constexpr size_t kValueSize = 16; // as GetInfoInteger has room for

    std::array<GenTL::DS_BUFFER_INFO_STACKED, kMost> m_entries;
    std::array<std::array<unsigned char, kValueSize>, kMost> m_values;
    size_t m_count = 0;
};

/// A stream's buffer at the producer.
struct CBufferAtProducer
{
    CKxGenTLLib& lib;
    GenTL::DS_HANDLE hStream;
    GenTL::BUFFER_HANDLE hBuffer;
    uint8_t* base; ///< of its memory
    size_t size;   ///< bytes announced
    CToldInfos told = {};
};

/// Asks for what has to be known of every buffer.
void AskFirst(CBufferAtProducer& buffer);

/// Whether the producer has filled the buffer, and doesn't just give it back.
bool IsFilled(const CBufferAtProducer& buffer);

/// The number of the buffer's image; 0 when it isn't told.
uint64_t ReadFrameID(const CBufferAtProducer& buffer);

/// Facts that contradict each other are taken in this order: those of the image, those of what was delivered,
/// the features of the camera, the bytes filled. Pixels of the other byte order are turned round in place.
/// Raises RuntimeException for a payload that is neither images nor chunks, an unknown pixel format, and an
/// image that is larger than the buffer.
CBufferContent ReadBufferContent(CBufferAtProducer& buffer, const CImageDefaults& defaults);

/// Lists the chunks of the buffer; false when the producer can't tell where they are. Raises
/// CKxGenTLErrorException, RuntimeException for an absurd number of them.
bool ReadChunks(const CBufferAtProducer& buffer, std::vector<GenApi::SingleChunkData_t>& chunks);

} // namespace Detail
} // namespace KxApi

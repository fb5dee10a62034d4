// SPDX-License-Identifier: Apache-2.0
// The layout of ".kxseq" files; docs/kxseq.md tells it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KxApps::SequenceFormat
{

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the structures are written as they lie in memory");

inline constexpr char kFileMagic[8] = {'K', 'X', 'S', 'E', 'Q', '\r', '\n', '\x1A'};
inline constexpr char kRecordMagic[4] = {'K', 'X', 'I', 'M'};
inline constexpr char kIndexMagic[8] = {'K', 'X', 'I', 'N', 'D', 'E', 'X', 0};
inline constexpr char kEndMagic[8] = {'K', 'X', 'S', 'E', 'Q', 'E', 'N', 'D'};
inline constexpr uint32_t kVersion = 1;
inline constexpr size_t kAlignment = 64; // of records and pixels in the file

enum RecordFlags : uint32_t
{
    Incomplete = 1,
    Encoded = 2,
};

/// Checksums are XXH64 with seed 0; that of a structure covers all bytes before it.
struct FileHeader
{
    char magic[8];
    uint32_t version;
    uint32_t reserved0;
    uint64_t startedNs; ///< since 1970
    uint64_t reserved[4];
    uint64_t checksum;
};
static_assert(sizeof(FileHeader) == 64);

struct RecordHeader
{
    char magic[4];
    uint32_t flags;
    uint64_t size; ///< bytes of the image behind this header
    uint64_t imageChecksum;
    uint64_t frameId;
    uint64_t timestampNs;
    uint64_t hostNs;
    uint32_t pixelFormat;
    uint32_t width;
    uint32_t height;
    uint32_t reserved0;
    uint64_t linePitch;
    uint64_t reserved[6];
    uint64_t checksum;
};
static_assert(sizeof(RecordHeader) == 128);

/// Followed by `count` offsets of records, 8 bytes each, and FileEnd.
struct IndexHeader
{
    char magic[8];
    uint64_t count;
    uint64_t offsetsChecksum;
    uint64_t checksum;
};
static_assert(sizeof(IndexHeader) == 32);

struct FileEnd
{
    uint64_t indexOffset;
    uint64_t checksum;
    char magic[8];
};
static_assert(sizeof(FileEnd) == 24);

inline constexpr uint64_t Aligned(uint64_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

} // namespace KxApps::SequenceFormat

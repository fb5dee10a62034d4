// SPDX-License-Identifier: Apache-2.0
// Graph data in ".kxraw" files.

#include "Decoding.h"
#include "GraphLines.h"
#include "LittleEndian.h"
#include "RawContainer.h"

#include <array>
#include <cstring>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr size_t kCountAt = 0; // in CRawAbout; the rest is 0

// Places in the header of an item, which its values follow.
constexpr size_t kKindAt = 0;
constexpr size_t kComponentAt = 4;
constexpr size_t kFullScaleAt = 8;
constexpr size_t kDivisorAt = 12;
constexpr size_t kLengthAt = 16;
constexpr size_t kItemHeaderSize = 24;

void AddItem(const CGraphLine& line, CRawWriter& writer)
{
    std::array<uint8_t, kItemHeaderSize> header{};
    PutLittle<uint32_t>(&header[kKindAt], static_cast<uint32_t>(line.description.eKind));
    PutLittle<uint32_t>(&header[kComponentAt], line.description.eComponent);
    PutLittle<uint32_t>(&header[kFullScaleAt], line.description.nFullScale);
    PutLittle<uint32_t>(&header[kDivisorAt], line.description.nDivisor);
    PutLittle<uint64_t>(&header[kLengthAt], line.values.size());
    writer.Add(header.data(), header.size());
    std::array<uint8_t, 4096> bytes;
    for (size_t i = 0; i < line.values.size();) {
        size_t used = 0;
        for (; used < bytes.size() && i < line.values.size(); used += 4, ++i)
            PutLittle<uint32_t>(&bytes[used], line.values[i]);
        writer.Add(bytes.data(), used);
    }
}

CGraphLine ReadItem(const CFileContent& content, const uint8_t* data, size_t size, size_t index)
{
    if (size < kItemHeaderSize)
        content.Raise("item %zu has %zu bytes for a header of %zu", index, size, kItemHeaderSize);
    CGraphLine line;
    line.description.eKind = static_cast<EKxGraphDataKind_t>(GetLittle<uint32_t>(data + kKindAt));
    line.description.eComponent =
        static_cast<EKxPixelComponentType_t>(GetLittle<uint32_t>(data + kComponentAt));
    line.description.nFullScale = GetLittle<uint32_t>(data + kFullScaleAt);
    line.description.nDivisor = GetLittle<uint32_t>(data + kDivisorAt);
    const uint64_t length = GetLittle<uint64_t>(data + kLengthAt);
    if (!IsSound(line.description))
        content.Raise("item %zu is of kind %d with the divisor %u", index,
                      static_cast<int>(line.description.eKind), line.description.nDivisor);
    if (length > (size - kItemHeaderSize) / 4)
        content.Raise("item %zu tells %llu values, more than follow", index,
                      static_cast<unsigned long long>(length));
    line.values.resize(length);
    for (size_t i = 0; i < length; ++i)
        line.values[i] = GetLittle<uint32_t>(data + kItemHeaderSize + 4 * i);
    return line;
}

} // namespace

void WriteRawGraph(const CGraphLines& lines, COutputFile& file)
{
    CRawAbout about{};
    PutLittle<uint32_t>(&about[kCountAt], static_cast<uint32_t>(lines.size()));
    CRawWriter writer(file, ERawContent::GraphData, about);
    for (const CGraphLine& line : lines)
        AddItem(line, writer);
    writer.Finish();
}

CGraphLines ReadRawGraph(const CFileContent& content)
{
    const CRawPayload payload = ReadRawFile(content, ERawContent::GraphData);
    const uint32_t count = GetLittle<uint32_t>(&payload.about[kCountAt]);
    CGraphLines lines;
    size_t at = 0;
    for (uint32_t i = 0; i < count; ++i) {
        lines.push_back(ReadItem(content, payload.data + at, payload.size - at, i));
        at += kItemHeaderSize + 4 * lines.back().values.size();
    }
    if (at != payload.size)
        content.Raise("%zu bytes follow the last item", payload.size - at);
    return lines;
}

CGraphLines ReadGraphFile(const CFileContent& content)
{
    const bool isRaw = content.size >= kRawMagic.size() &&
                       std::memcmp(content.data, kRawMagic.data(), kRawMagic.size()) == 0;
    return isRaw ? ReadRawGraph(content) : ReadCsvGraph(content);
}

} // namespace Detail
} // namespace KxApi

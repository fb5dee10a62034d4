// SPDX-License-Identifier: Apache-2.0
// Changes image files by their structure: chunks of PNG with right checksums, fields of TIFF and BMP,
// segments of JPEG. Changes of single bytes seldom get past checksums and lengths, and what is worth testing
// comes after them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace
{

using Random = std::minstd_rand;
using Bytes = std::vector<std::uint8_t>;
using namespace std::string_view_literals;

constexpr std::uint32_t kNumbers[] = {0,     1,      2,       3,          4,          7,          8,
                                      15,    16,     17,      32,         64,         255,        256,
                                      65535, 0x8000, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};

template <typename List>
const auto& Any(const List& list, Random& random)
{
    return list[random() % std::size(list)];
}

void Put(Bytes& bytes, std::size_t at, std::uint64_t value, std::size_t count, bool isBigEndian)
{
    for (std::size_t i = 0; i < count && at + i < bytes.size(); ++i)
        bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * (isBigEndian ? count - 1 - i : i)));
}

std::uint32_t Get(const Bytes& bytes, std::size_t at, std::size_t count, bool isBigEndian)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count && at + count <= bytes.size(); ++i)
        value = value << 8 | bytes[at + (isBigEndian ? i : count - 1 - i)];
    return value;
}

/// libFuzzer's own changes of a part.
void MutatePart(Bytes& part, std::size_t maxSize)
{
    const std::size_t size = part.size();
    part.resize(std::max(maxSize, size + 1));
    part.resize(LLVMFuzzerMutate(part.data(), size, part.size()));
}

// ---- PNG

struct Chunk
{
    std::string name;
    Bytes content;
};

std::uint32_t Crc(const Bytes& bytes)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int i = 0; i < 8; ++i)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

std::vector<Chunk> Chunks(const Bytes& bytes)
{
    std::vector<Chunk> chunks;
    for (std::size_t at = 8; at + 12 <= bytes.size();) {
        const std::size_t length = std::min<std::size_t>(Get(bytes, at, 4, true), bytes.size() - at - 12);
        const auto content = bytes.begin() + static_cast<std::ptrdiff_t>(at + 8);
        chunks.push_back({std::string(content - 4, content),
                          Bytes(content, content + static_cast<std::ptrdiff_t>(length))});
        at += 12 + length;
    }
    return chunks;
}

constexpr std::string_view kChunks[] = {"sBIT\x08\x08\x08\x08"sv,
                                        "sBIT\x08"sv,
                                        "sBIT\x0C"sv,
                                        "tRNS\0\1\0\2\0\3"sv,
                                        "tRNS\0\1"sv,
                                        "PLTE\1\2\3\4\5\6"sv,
                                        "IEND"sv,
                                        "gAMA\0\0\0\1"sv,
                                        "tEXtPixelFormat\0Mono12"sv,
                                        "tEXtPixelFormat\0BayerRG8"sv,
                                        "zTXtPixelFormat\0\0\x78\x9C"sv,
                                        "IDAT\x78\1"sv};

void MutatePng(Bytes& bytes, std::size_t maxSize, Random& random)
{
    std::vector<Chunk> chunks = Chunks(bytes);
    if (chunks.empty())
        return MutatePart(bytes, maxSize);
    const std::size_t place = random() % chunks.size();
    const auto at = chunks.begin() + static_cast<std::ptrdiff_t>(place);
    switch (random() % 8) {
    case 0: {
        const std::string_view chunk = Any(kChunks, random);
        chunks.insert(at, {std::string(chunk.substr(0, 4)), Bytes(chunk.begin() + 4, chunk.end())});
        break;
    }
    case 1:
        chunks.erase(at);
        break;
    case 2:
        std::swap(chunks[place], chunks[random() % chunks.size()]);
        break;
    case 3:
    case 4: { // depth, colour type and interlacing, or a size
        Bytes& header = chunks[0].content;
        header.resize(13);
        constexpr std::uint8_t kDepths[] = {1, 2, 4, 8, 16}, kTypes[] = {0, 2, 3, 4, 6};
        header[8] = Any(kDepths, random);
        header[9] = Any(kTypes, random);
        header[12] = random() % 2;
        if (random() % 3 == 0)
            Put(header, random() % 2 * 4, Any(kNumbers, random), 4, true);
        break;
    }
    default:
        MutatePart(at->content, std::min<std::size_t>(maxSize / 2, at->content.size() + 64));
    }
    bytes.resize(8);
    for (const Chunk& chunk : chunks) {
        Bytes body(chunk.name.begin(), chunk.name.end());
        body.insert(body.end(), chunk.content.begin(), chunk.content.end());
        const std::size_t start = bytes.size();
        bytes.resize(start + 4);
        Put(bytes, start, chunk.content.size(), 4, true);
        bytes.insert(bytes.end(), body.begin(), body.end());
        bytes.resize(bytes.size() + 4);
        Put(bytes, bytes.size() - 4, Crc(body), 4, true);
    }
}

// ---- TIFF

constexpr std::uint16_t kTags[] = {254, 256, 257, 258, 259, 262, 266, 270, 273, 274, 277, 278, 279,
                                   280, 281, 284, 317, 320, 322, 323, 324, 325, 338, 339, 347, 530};
constexpr std::uint16_t kTagValues[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 12, 14, 16, 32773, 32946, 8 * 256};

void MutateTiff(Bytes& bytes, std::size_t maxSize, Random& random)
{
    const bool isBig = bytes[0] == 'M';
    const std::size_t directory = Get(bytes, 4, 4, isBig);
    const std::size_t count = Get(bytes, directory, 2, isBig);
    if (bytes[isBig ? 3 : 2] != 42 || count == 0 || random() % 4 == 0)
        return MutatePart(bytes, maxSize);
    const std::size_t entry = directory + 2 + 12 * (random() % count);
    switch (random() % 6) {
    case 0:
        Put(bytes, entry, Any(kTags, random), 2, isBig);
        break;
    case 1:
        Put(bytes, entry + 2, random() % 19, 2, isBig);
        break;
    case 2:
        Put(bytes, entry + 4, Any(kNumbers, random), 4, isBig);
        break;
    case 3:
        Put(bytes, entry + 8, Any(kNumbers, random), 4, isBig);
        break;
    case 4: // in the form that short values have
        Put(bytes, entry + 8, Any(kTagValues, random), 2, isBig);
        break;
    default: // one more or fewer
        Put(bytes, directory, count + random() % 3 - 1, 2, isBig);
    }
}

// ---- BMP and JPEG

void MutateBmp(Bytes& bytes, std::size_t maxSize, Random& random)
{
    struct Field
    {
        std::uint8_t at, size;
    };
    constexpr Field kFields[] = {{10, 4}, {14, 4}, {18, 4}, {22, 4}, {18, 2}, {20, 2}, {24, 2},
                                 {26, 2}, {28, 2}, {30, 4}, {46, 4}, {54, 4}, {58, 4}, {66, 4}};
    if (random() % 2 == 0)
        return MutatePart(bytes, maxSize);
    const Field& field = Any(kFields, random);
    constexpr std::uint32_t kHeaders[] = {12, 16, 40, 52, 56, 64, 108, 124};
    const bool isHeader = field.at == 14 && random() % 2 == 0;
    Put(bytes, field.at, isHeader ? Any(kHeaders, random) : Any(kNumbers, random), field.size, false);
}

void MutateJpeg(Bytes& bytes, std::size_t maxSize, Random& random)
{
    std::vector<std::size_t> segments;
    for (std::size_t at = 2; at + 4 <= bytes.size() && bytes[at] == 0xFF && bytes[at + 1] != 0xDA;
         at += 2 + Get(bytes, at + 2, 2, true))
        segments.push_back(at);
    if (segments.empty() || random() % 3 == 0)
        return MutatePart(bytes, maxSize);
    const std::size_t at = Any(segments, random);
    const std::size_t length = std::min<std::size_t>(Get(bytes, at + 2, 2, true), bytes.size() - at - 2);
    if (length <= 2)
        return;
    const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(at + 4);
    Bytes content(first, first + static_cast<std::ptrdiff_t>(length - 2));
    const bool isFrame = bytes[at + 1] >= 0xC0 && bytes[at + 1] <= 0xC2;
    if (isFrame && random() % 2 == 0) {
        bytes[at + 1] = static_cast<std::uint8_t>(0xC0 + random() % 3); // baseline, extended, progressive
        Put(content, 1 + random() % 2 * 2, Any(kNumbers, random), 2, true);
    } else {
        MutatePart(content, std::min<std::size_t>(content.size() + 16, 0xFFF0));
    }
    bytes.erase(first, first + static_cast<std::ptrdiff_t>(length - 2));
    bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at + 4), content.begin(), content.end());
    Put(bytes, at + 2, content.size() + 2, 2, true);
}

struct Kind
{
    std::string_view signature;
    void (*mutate)(Bytes&, std::size_t, Random&);
};

constexpr Kind kKinds[] = {{"\x89PNG\r\n\x1A\n"sv, MutatePng},
                           {"II*\0"sv, MutateTiff},
                           {"MM\0*"sv, MutateTiff},
                           {"BM"sv, MutateBmp},
                           {"\xFF\xD8\xFF"sv, MutateJpeg}};

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer's name
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    Random random(seed);
    Bytes bytes(data, data + size);
    for (const Kind& kind : kKinds) {
        if (size < 32 || std::memcmp(data, kind.signature.data(), kind.signature.size()) != 0)
            continue;
        for (unsigned changes = 1 + random() % 3; changes > 0; --changes)
            kind.mutate(bytes, maxSize, random);
        bytes.resize(std::min(bytes.size(), maxSize));
        // Runs of one format stay with it.
        if (bytes.size() >= kind.signature.size())
            std::copy(kind.signature.begin(), kind.signature.end(), bytes.begin());
        std::copy(bytes.begin(), bytes.end(), data);
        return bytes.size();
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}

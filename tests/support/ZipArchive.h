// SPDX-License-Identifier: Apache-2.0
// Archives written from the format's own table of fields, so that reader and writer are two witnesses.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

namespace KxTest
{

struct ZipEntry
{
    std::string name;
    std::string content;
    bool isDeflated = false;
    uint16_t flags = 0;
    uint32_t declaredSize = 0xFFFFFFFF; // the true one if this
    uint32_t crcError = 0;
};

inline std::string ZipNumber(uint32_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

inline std::string Deflated(const std::string& content)
{
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 9, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, content.size()), '\0');
    std::string input = content;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

inline std::string Zip(const std::vector<ZipEntry>& entries)
{
    std::string archive, directory;
    for (const ZipEntry& entry : entries) {
        const std::string packed = entry.isDeflated ? Deflated(entry.content) : entry.content;
        const auto crc = static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(entry.content.data()),
                                                     static_cast<uInt>(entry.content.size())));
        const uint32_t size = entry.declaredSize == 0xFFFFFFFF ? static_cast<uint32_t>(entry.content.size())
                                                               : entry.declaredSize;
        const std::string common = ZipNumber(20, 2) + ZipNumber(entry.flags, 2) +
                                   ZipNumber(entry.isDeflated ? 8 : 0, 2) + ZipNumber(0, 4) +
                                   ZipNumber(crc ^ entry.crcError, 4) +
                                   ZipNumber(static_cast<uint32_t>(packed.size()), 4) + ZipNumber(size, 4) +
                                   ZipNumber(static_cast<uint32_t>(entry.name.size()), 2) + ZipNumber(0, 2);
        directory += "PK\x01\x02" + ZipNumber(20, 2) + common + ZipNumber(0, 2) + ZipNumber(0, 2) +
                     ZipNumber(0, 2) + ZipNumber(0, 4) + ZipNumber(static_cast<uint32_t>(archive.size()), 4) +
                     entry.name;
        archive.append("PK\x03\x04").append(common).append(entry.name).append(packed);
    }
    const auto count = static_cast<uint32_t>(entries.size());
    return archive + directory + "PK\x05\x06" + ZipNumber(0, 4) + ZipNumber(count, 2) + ZipNumber(count, 2) +
           ZipNumber(static_cast<uint32_t>(directory.size()), 4) +
           ZipNumber(static_cast<uint32_t>(archive.size()), 4) + ZipNumber(0, 2);
}

} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Image files written from the definitions of their types, as other programs write them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace KxTest
{

inline std::string Little(uint64_t value, size_t bytes)
{
    std::string text;
    for (size_t i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

/// A bitmap by hand, with one line per 4 bytes of pixels.
inline std::string HandMadeBmp(uint32_t width, int32_t height, unsigned bits, uint32_t compression,
                               const std::string& behindHeader, const std::string& pixels)
{
    std::string bytes(54, '\0');
    const auto put = [&](size_t at, uint32_t value, size_t count) {
        for (size_t i = 0; i < count; ++i)
            bytes[at + i] = static_cast<char>(value >> (8 * i));
    };
    bytes[0] = 'B', bytes[1] = 'M';
    put(10, static_cast<uint32_t>(54 + behindHeader.size()), 4);
    put(14, 40, 4);
    put(18, width, 4);
    put(22, static_cast<uint32_t>(height), 4);
    put(26, 1, 2);
    put(28, bits, 2);
    put(30, compression, 4);
    put(46, bits <= 8 ? static_cast<uint32_t>(behindHeader.size() / 4) : 0, 4);
    return bytes + behindHeader + pixels;
}

/// A chunk of a PNG file: name and content, with length and checksum around.
inline std::string PngChunk(const std::string& nameAndContent)
{
    uint32_t crc = 0xFFFFFFFF;
    for (const char byte : nameAndContent) {
        crc ^= static_cast<uint8_t>(byte);
        for (int i = 0; i < 8; ++i)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    const auto big = [](uint32_t value) {
        const std::string little = Little(value, 4);
        return std::string(little.rbegin(), little.rend());
    };
    return big(static_cast<uint32_t>(nameAndContent.size() - 4)) + nameAndContent + big(~crc);
}

/// A TIFF of fields (by tag, each a row of numbers) and blocks, whose places and sizes become the fields
/// `offsets` and `offsets + 6` for strips (273), `offsets + 1` for tiles (324).
inline std::string HandMadeTiff(std::map<unsigned, std::vector<uint32_t>> fields, unsigned offsets,
                                const std::vector<std::string>& blocks)
{
    std::string data;
    const auto place = [&] { return static_cast<uint32_t>(8 + data.size()); };
    for (const std::string& block : blocks) {
        fields[offsets].push_back(place());
        fields[offsets + (offsets == 273 ? 6 : 1)].push_back(static_cast<uint32_t>(block.size()));
        data += block;
    }
    std::string directory = Little(fields.size(), 2);
    for (const auto& [tag, values] : fields) {
        directory += Little(tag, 2) + Little(4, 2) + Little(values.size(), 4); // numbers of 32 bits
        directory += Little(values.size() == 1 ? values[0] : place(), 4);
        for (size_t i = 0; values.size() > 1 && i < values.size(); ++i)
            data += Little(values[i], 4);
    }
    return std::string("II*\0", 4) + Little(place(), 4) + data + directory + Little(0, 4);
}

} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Archives are written here from the format's own table of fields, so that reader and writer are two
// witnesses.
#include "description/Zip.h"

#include "DescriptionTestSupport.h"
#include "description/Limits.h"

#include <gmock/gmock.h>
#include <zlib.h>

#include <algorithm>

namespace KxGenApi
{
namespace
{

using testing::HasSubstr;

struct Entry
{
    std::string name;
    std::string content;
    bool isDeflated = false;
    uint16_t flags = 0;
    uint32_t declaredSize = 0xFFFFFFFF; // the true one if this
    uint32_t crcError = 0;
};

std::string Number(uint32_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

std::string Deflated(const std::string& content)
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

std::string Zip(const std::vector<Entry>& entries)
{
    std::string archive, directory;
    for (const Entry& entry : entries) {
        const std::string packed = entry.isDeflated ? Deflated(entry.content) : entry.content;
        const auto crc = static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(entry.content.data()),
                                                     static_cast<uInt>(entry.content.size())));
        const uint32_t size = entry.declaredSize == 0xFFFFFFFF ? static_cast<uint32_t>(entry.content.size())
                                                               : entry.declaredSize;
        const std::string common =
            Number(20, 2) + Number(entry.flags, 2) + Number(entry.isDeflated ? 8 : 0, 2) + Number(0, 4) +
            Number(crc ^ entry.crcError, 4) + Number(static_cast<uint32_t>(packed.size()), 4) +
            Number(size, 4) + Number(static_cast<uint32_t>(entry.name.size()), 2) + Number(0, 2);
        directory += "PK\x01\x02" + Number(20, 2) + common + Number(0, 2) + Number(0, 2) + Number(0, 2) +
                     Number(0, 4) + Number(static_cast<uint32_t>(archive.size()), 4) + entry.name;
        archive += "PK\x03\x04" + common + entry.name + packed;
    }
    const auto count = static_cast<uint32_t>(entries.size());
    return archive + directory + "PK\x05\x06" + Number(0, 4) + Number(count, 2) + Number(count, 2) +
           Number(static_cast<uint32_t>(directory.size()), 4) +
           Number(static_cast<uint32_t>(archive.size()), 4) + Number(0, 2);
}

const std::string kNode = Doc("<Node Name='N'/>");

TEST(Zip, IsRecognisedAndReadStoredOrDeflated)
{
    for (const bool isDeflated : {false, true}) {
        const std::string archive = Zip({{"camera.xml", kNode, isDeflated}});
        EXPECT_EQ(ReadDescription(archive)->FindNode("N"), 0u);
        EXPECT_EQ(ReadDescription(archive, ContentType::ZippedXml)->FindNode("N"), 0u);
        EXPECT_EQ(ReadDescription(archive + std::string(100000, '\0'))->FindNode("N"), 0u) << "padded";
        EXPECT_THAT(ErrorOf([&] { ReadDescription(archive, ContentType::Xml); }),
                    testing::StartsWith("Runtime: line 1"));
    }
    EXPECT_THAT(ErrorOf([] { ReadDescription(kNode, ContentType::ZippedXml); }),
                HasSubstr("zip archive has no directory"));
}

TEST(Zip, GivesTheFirstXmlOrElseTheFirst)
{
    EXPECT_EQ(Unzip(Zip({{"readme.txt", "r"}, {"a/B.XML", "x"}, {"c.xml", "y"}})), "x");
    EXPECT_EQ(Unzip(Zip({{"readme.txt", "r"}, {"xml", "x"}})), "r");
    EXPECT_EQ(Unzip(Zip({{std::string(600, 'n') + ".xml", "long"}})), "long");
    EXPECT_EQ(Unzip(Zip({{"a.xml", ""}})), "");
    EXPECT_EQ(ErrorOf([] {
                  ReadDescription(Zip({{"a.xml", ""}}));
              }),
              "Runtime: line 1, column 1: not well-formed XML: No document element found");
}

TEST(Zip, RefusesWhatIsBrokenOrTooLarge)
{
    const auto error = [](const std::string& archive) { return ErrorOf([&] { Unzip(archive); }); };
    EXPECT_EQ(error(Zip({})), "Runtime: zip archive has no directory, or a damaged one");
    EXPECT_EQ(error(Zip({{"a.xml", kNode, true, 1}})), "Runtime: zip archive is encrypted");
    EXPECT_EQ(error(Zip({{"a.xml", kNode, true, 0, 0xFFFFFFFF, 1}})), "Runtime: zip archive is damaged");
    EXPECT_EQ(error(Zip({{"a.xml", kNode, true, 0, 5}})), "Runtime: zip archive is damaged");
    EXPECT_EQ(error(Zip({{"a.xml", kNode, true, 0, 100000}})), "Runtime: zip archive is damaged");
    EXPECT_THAT(error(Zip({{"a.xml", kNode, true, 0, 0xFFFFFFF0}})),
                HasSubstr("4294967280 bytes in a zip archive exceed the limit of 67108864"));
    EXPECT_THAT(error(std::string(kMaxArchiveBytes + 1, 'P')), HasSubstr("exceed the limit"));
    // Cut anywhere, or with any byte changed, it is an error or the same text, and never a crash.
    const std::string archive = Zip({{"a.xml", kNode, true}});
    const auto expectHarmless = [](const std::string& changed, size_t i) {
        std::string content = kNode;
        ErrorOf([&] { content = Unzip(changed); });
        EXPECT_EQ(content, kNode) << i;
    };
    for (size_t i = 0; i < archive.size(); ++i) {
        expectHarmless(archive.substr(0, i), i);
        std::string changed = archive;
        changed[i] = static_cast<char>(changed[i] ^ 0x55);
        expectHarmless(changed, i);
    }
    EXPECT_NE(error(archive.substr(0, archive.size() - 22)), "nothing");
}

TEST(Zip, StopsAtTheLimitWhateverTheArchiveSays)
{
    const std::string bomb = Zip({{"a.xml", std::string(kMaxContentBytes + 100000, ' '), true, 0, 1000}});
    EXPECT_LT(bomb.size(), 200000u);
    const std::string error = ErrorOf([&] { Unzip(bomb); });
    EXPECT_TRUE(error == "Runtime: zip archive is damaged" ||
                error.find("exceed the limit") != std::string::npos)
        << error;
}

} // namespace
} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
#include "description/Zip.h"

#include "DescriptionTestSupport.h"
#include "ZipArchive.h"
#include "description/Limits.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using KxTest::Zip;
using testing::HasSubstr;

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

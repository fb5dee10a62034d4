// SPDX-License-Identifier: Apache-2.0
// Encodings, and which bytes are text at all.
#include "description/SourceText.h"

#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

const std::u16string kUnits = u"\u00B0C \u20AC \U0001F4F7";
const std::string kUtf8 = "\xC2\xB0"
                          "C \xE2\x82\xAC \xF0\x9F\x93\xB7";

std::string Utf16(std::u16string_view text, bool isBig)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        bytes += isBig ? high : low;
        bytes += isBig ? low : high;
    }
    return bytes;
}

std::string UnitOf(std::string_view content)
{
    return TextOf(*ReadDescription(std::string(content)), "I", Prop::Unit);
}

std::string WithUnit(std::string_view unit)
{
    return Doc("<Integer Name='I'><Value>1</Value><Unit>" + std::string(unit) + "</Unit></Integer>");
}

TEST(SourceText, IsReadInManyEncodings)
{
    EXPECT_EQ(UnitOf(WithUnit(kUtf8)), kUtf8);
    EXPECT_EQ(UnitOf("\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?>" + WithUnit(kUtf8)), kUtf8);
    const std::string ascii = WithUnit("@");
    const std::u16string start(ascii.begin(), ascii.begin() + static_cast<ptrdiff_t>(ascii.find('@')));
    const std::u16string end(ascii.begin() + static_cast<ptrdiff_t>(ascii.find('@')) + 1, ascii.end());
    const std::u16string text = start + kUnits + end;
    EXPECT_EQ(UnitOf(Utf16(u"\uFEFF" + text, false)), kUtf8);
    EXPECT_EQ(UnitOf(Utf16(u"\uFEFF" + text, true)), kUtf8);
    EXPECT_EQ(UnitOf(Utf16(text, false)), kUtf8);
    EXPECT_EQ(UnitOf(Utf16(text, true)), kUtf8);
    EXPECT_EQ(UnitOf("<?xml version='1.0' encoding='ISO-8859-1'?>" + WithUnit("\xB0\xB5")),
              "\xC2\xB0\xC2\xB5");
    EXPECT_EQ(UnitOf("<?xml version='1.0' encoding=\"Windows-1252\"?>" + WithUnit("\x80\xB5")),
              "\xE2\x82\xAC\xC2\xB5");
}

TEST(SourceText, RefusesWhatIsNoText)
{
    const auto error = [](std::string_view bytes) {
        return ErrorOf([&] { SourceText source{std::string(bytes)}; });
    };
    // 100 characters of good text ahead: the fault lies in the second block that is looked at.
    const std::string good(50, 'a');
    const std::string ahead = good + "\n" + good;
    const std::pair<std::string, unsigned> cases[] = {
        {"\x80", 0x80},
        {"\xC3(", 0xC3},
        {"\xC0\xAF", 0xC0},
        {"\xE2\x82", 0xE2},
        {"\xED\xA0\x80", 0xED},
        {"\xE0\x80\x80", 0xE0},
        {"\xF0\x8F\xBF\xBF", 0xF0},
        {"\xF4\x90\x80\x80", 0xF4},
        {"\xFF", 0xFF},
        {"\xEF\xBF\xBF", 0xEF},
        {"\x01", 1},
        {std::string(1, '\0') + "a", 0},
    };
    for (const auto& [bytes, first] : cases)
        for (const std::string& behind : {std::string(), std::string(200, 'b')}) {
            if (bytes.back() == '\0' && behind.empty())
                continue;
            EXPECT_EQ(error(ahead + bytes + behind), "Runtime: line 2, column 51: the byte " +
                                                         std::to_string(first) +
                                                         " is no character of UTF-8 text that XML allows");
        }
    for (const char* reference :
         {"&#0;", "&#3;", "&#x1F;", "&#xD800;", "&#xFFFF;", "&#1114112;", "&#9999999999;"})
        EXPECT_THAT(error(std::string("\n&#65;&#x20AC;&#10;&#;&#y;") + reference),
                    testing::StartsWith(std::string("Runtime: line 2, column 26: the reference '") +
                                        std::string(reference).substr(0, 12)));
    EXPECT_EQ(error("<?xml version='1.0' encoding='EBCDIC'?>"),
              "Runtime: encoding 'ebcdic' is not supported; use UTF-8");
    EXPECT_THAT(error(std::string("\xFF\xFE<", 3)), testing::HasSubstr("odd number of bytes"));
    EXPECT_THAT(error(Utf16(std::u16string(u"\uFEFFa") + char16_t(0xDC00), false)),
                testing::HasSubstr("half a character"));
    EXPECT_THAT(error(Utf16(std::u16string(u"\uFEFFa") + char16_t(0xD800), true)),
                testing::HasSubstr("half a character"));
}

TEST(SourceText, LocatesInAnyOrderAndCountsTags)
{
    const std::string text = "ab\n\n<c>" + std::string(100, 'x') + "\n<d>";
    const SourceText source{text};
    const auto locate = [&](size_t offset) {
        const Position position = source.Locate(offset);
        return std::pair(position.line, position.column);
    };
    using P = std::pair<uint32_t, uint32_t>;
    EXPECT_EQ(locate(0), P(1, 1));
    EXPECT_EQ(locate(2), P(1, 3));
    EXPECT_EQ(locate(3), P(2, 1));
    EXPECT_EQ(locate(108), P(4, 1));
    EXPECT_EQ(locate(5), P(3, 2)) << "going back";
    EXPECT_EQ(locate(5), P(3, 2));
    EXPECT_EQ(locate(100000), P(4, 4)) << "behind the end";
    EXPECT_EQ(source.TagCount(), 2u);
}

} // namespace
} // namespace KxGenApi

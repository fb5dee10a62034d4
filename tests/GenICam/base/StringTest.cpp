// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <type_traits>

using GenICam::gcstring;
using GenICam::gcstring_vector;
using GenICam::OutOfRangeException;

namespace
{
const char* const kNull = nullptr;
const char kWithNul[] = {'a', '\0', 'b'};
} // namespace

TEST(String, IsMadeFromAllKindsOfText)
{
    EXPECT_EQ(gcstring(), "");
    EXPECT_EQ(gcstring("Gain"), "Gain");
    EXPECT_EQ(gcstring("Gain", 2), "Ga");
    EXPECT_EQ(gcstring(3, 'x'), "xxx");
    EXPECT_EQ(gcstring(std::string("Gain")), "Gain");
    EXPECT_EQ(gcstring(L"Gain"), "Gain");
    gcstring assigned;
    EXPECT_EQ(assigned = "Width", "Width");
    EXPECT_EQ(assigned = L"Height", "Height");
    EXPECT_EQ(assigned = std::string("Offset"), "Offset");
    EXPECT_EQ(assigned.assign(2, 'y'), "yy");
    EXPECT_EQ(assigned.assign("Gamma", 3), "Gam");
}

TEST(String, NullStandsForEmptyText)
{
    gcstring text("x");
    EXPECT_TRUE(gcstring(kNull).empty());
    EXPECT_TRUE(gcstring(kNull, 7).empty());
    EXPECT_TRUE(gcstring(static_cast<const wchar_t*>(nullptr)).empty());
    EXPECT_EQ(text + kNull, "x");
    EXPECT_EQ(text.append(kNull, 4), "x");
    EXPECT_TRUE(gcstring() == kNull);
    EXPECT_TRUE(text > kNull);
    EXPECT_TRUE((text = kNull).empty());
}

TEST(String, KeepsNulsInside)
{
    const gcstring text(kWithNul, sizeof kWithNul);
    EXPECT_EQ(text.size(), 3u);
    EXPECT_NE(text, "a");
    EXPECT_EQ((text + text).size(), 6u);
    EXPECT_EQ(text.find('b'), 2u);
    EXPECT_EQ(text.substr(1).size(), 2u);
    std::ostringstream stream;
    stream << text;
    EXPECT_EQ(stream.str(), std::string(kWithNul, sizeof kWithNul));
}

TEST(String, ComparesBytesNeverAddresses)
{
    const gcstring one("abc");
    const std::string copy("abc");
    EXPECT_TRUE(one == copy.c_str());
    EXPECT_TRUE(copy.c_str() == one);
    EXPECT_FALSE(copy.c_str() != one);
    EXPECT_TRUE("abb" < one);
    EXPECT_TRUE(one < "abd");
    EXPECT_TRUE("abd" >= one);
    EXPECT_TRUE(one <= gcstring("abc"));
    EXPECT_FALSE(gcstring("ab") > one);
    EXPECT_LT(one.compare("b"), 0);
    EXPECT_GT(gcstring("\xff").compare(gcstring("a")), 0) << "bytes count as unsigned";
}

TEST(String, JoinsFromBothSides)
{
    const gcstring node("Gain");
    EXPECT_EQ("Std::" + node + '.' + "Max" + gcstring("!"), "Std::Gain.Max!");
    EXPECT_EQ('p' + node, "pGain");
    gcstring text = node;
    text += 'A';
    text += "uto";
    text += text;
    EXPECT_EQ(text, "GainAutoGainAuto");
    EXPECT_EQ(text.insert(4, "_").erase(5, 4), "Gain_GainAuto");
    text.resize(4);
    text.resize(6, '.');
    EXPECT_EQ(text, "Gain..");
    EXPECT_EQ(node, "Gain");
}

TEST(String, Finds)
{
    const gcstring text("GainRawGain");
    EXPECT_EQ(text.find('a'), 1u);
    EXPECT_EQ(text.find("Gain", 1), 7u);
    EXPECT_EQ(text.find(gcstring("Raw")), 4u);
    EXPECT_EQ(text.find("RawX", 0, 3), 4u);
    EXPECT_EQ(text.find(gcstring("Gaz"), 1, 2), 7u);
    EXPECT_EQ(text.find(gcstring("Gaz"), 0, 99), gcstring::npos);
    EXPECT_EQ(text.find("z"), gcstring::_npos());
    EXPECT_EQ(text.find("Gain", 100), GCSTRING_NPOS);
    EXPECT_EQ(text.find_first_of("wR"), 4u);
    EXPECT_EQ(text.find_first_not_of("Gain"), 4u);
    EXPECT_EQ(text.find_last_of('a'), 8u);
    EXPECT_EQ(text.find_last_of("a", 7), 5u);
    EXPECT_EQ(text.find_last_not_of('n'), 9u);
    EXPECT_EQ(text.find_last_of("xyz"), gcstring::_npos());
    EXPECT_EQ(text.substr(4, 3), "Raw");
    EXPECT_EQ(text.substr(text.size()), "");
    EXPECT_THROW(text.substr(12), OutOfRangeException);
    EXPECT_THROW(gcstring().erase(1), OutOfRangeException);
}

TEST(String, ConvertsUtf8BothWays)
{
    const gcstring text("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(std::wstring(text.w_str()), L"a\u00E4\u20AC\U0001F600");
    EXPECT_EQ(gcstring(L"a\u00E4\u20AC\U0001F600"), text);
    wchar_t buffer[3] = {L'?', L'?', L'?'};
    EXPECT_EQ(text.w_str(nullptr, 0), 5u);
    EXPECT_EQ(text.w_str(buffer, 3), 5u);
    EXPECT_EQ(std::wstring(buffer), L"a\u00E4");
}

TEST(String, ReplacesWhatIsNoUtf8)
{
    const std::pair<const char*, const wchar_t*> rows[] = {
        {"\xC3", L"\uFFFD"},                               // ends too early
        {"\xC3(", L"\uFFFD("},                             // follower missing
        {"\xC0\x80", L"\uFFFD\uFFFD"},                     // overlong NUL
        {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},           // overlong slash
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},           // surrogate
        {"\xF5\x80\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"}, // above the last character
        {"\x80", L"\uFFFD"},                               // follower alone
    };
    for (const auto& [bytes, expected] : rows)
        EXPECT_EQ(std::wstring(gcstring(bytes).w_str()), expected) << testing::PrintToString(bytes);
    const wchar_t surrogate[] = {static_cast<wchar_t>(0xD800), L'x', L'\0'};
    EXPECT_EQ(gcstring(surrogate), "\xEF\xBF\xBDx");
}

TEST(String, Streams)
{
    std::istringstream in("one two\nline;rest");
    gcstring word, line, part, rest, none("kept");
    in >> word;
    getline(in, line);
    getline(in, part, ';');
    getline(in, rest);
    EXPECT_EQ(word, "one");
    EXPECT_EQ(line, " two");
    EXPECT_EQ(part, "line");
    EXPECT_EQ(rest, "rest");
    EXPECT_FALSE(getline(in, none));
    std::ostringstream out;
    out << std::setw(5) << std::setfill('.') << gcstring("ab");
    EXPECT_EQ(out.str(), "...ab");
}

TEST(String, MovesWithoutThrowing)
{
    static_assert(std::is_nothrow_move_constructible_v<gcstring> &&
                  std::is_nothrow_move_assignable_v<gcstring>);
    static_assert(std::is_nothrow_move_constructible_v<gcstring_vector>);
    gcstring a("a"), b("b");
    swap(a, b);
    EXPECT_EQ(a + b, "ba");
    const std::string converted(a); // by way of `const char*`
    EXPECT_EQ(converted, "b");
}

TEST(StringVector, InsertsAndErasesByIndexAndPosition)
{
    gcstring_vector list;
    list.push_back("b");
    list.insert(0, "a");
    list.insert(list.end(), "d");
    list.insert(2, "c");
    EXPECT_TRUE(list.contains("c") && !list.contains("e"));
    EXPECT_EQ(list, (gcstring_vector{"a", "b", "c", "d"}));
    list.erase(size_t(1));
    EXPECT_EQ(*list.erase(list.begin()), "c");
    EXPECT_EQ(list, (gcstring_vector{"c", "d"}));
    list.pop_back();
    EXPECT_EQ(list.front(), "c");
    EXPECT_EQ(&list.front(), &list.back());
    list.resize(3, "x");
    EXPECT_EQ(list, (gcstring_vector{"c", "x", "x"}));
    list.assign(2, "y");
    EXPECT_EQ(list, gcstring_vector(2, "y"));
    list.erase(list.begin(), list.end());
    EXPECT_TRUE(list.empty());
}

TEST(StringVector, RefusesIndexesOutside)
{
    gcstring_vector list(2);
    EXPECT_THROW(list.at(2), OutOfRangeException);
    EXPECT_THROW(list.erase(size_t(2)), OutOfRangeException);
    EXPECT_THROW(list.insert(3, "x"), OutOfRangeException);
    list.clear();
    EXPECT_THROW(list.front(), OutOfRangeException);
    EXPECT_THROW(list.back(), OutOfRangeException);
    EXPECT_THROW(list.pop_back(), OutOfRangeException);
}

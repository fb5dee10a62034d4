// SPDX-License-Identifier: Apache-2.0
#include "description/SourceText.h"

#include "description/Diagnostics.h"
#include "description/Limits.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <utility>

namespace KxGenApi
{
namespace
{

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr size_t kBlock = 64;
constexpr size_t kSlice = 256 * kBlock; // stays in the processor's cache from one check to the next

// What Windows-1252 has in place of the control characters 0x80 to 0x9F.
constexpr uint16_t kWindows1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                       0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

bool StartsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

void AppendUtf8(std::string& out, uint32_t c)
{
    const auto put = [&out](uint32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x80)
        return put(c);
    if (c < 0x800)
        put(0xC0 | c >> 6);
    else {
        if (c < 0x10000)
            put(0xE0 | c >> 12);
        else {
            put(0xF0 | c >> 18);
            put(0x80 | (c >> 12 & 0x3F));
        }
        put(0x80 | (c >> 6 & 0x3F));
    }
    put(0x80 | (c & 0x3F));
}

std::string FromUtf16(std::string_view bytes, bool isBigEndian)
{
    if (bytes.size() % 2)
        Fail({}, "UTF-16 text has an odd number of bytes, " + std::to_string(bytes.size()));
    const auto unit = [&](size_t i) {
        const auto first = static_cast<unsigned char>(bytes[i]),
                   second = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<uint32_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i < bytes.size(); i += 2) {
        uint32_t c = unit(i);
        if (c >= 0xD800 && c < 0xE000) {
            const uint32_t low = i + 2 < bytes.size() ? unit(i + 2) : 0;
            if (c >= 0xDC00 || low < 0xDC00 || low >= 0xE000)
                Fail({}, "byte " + std::to_string(i) + " of the UTF-16 text begins half a character");
            c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
            i += 2;
        }
        AppendUtf8(text, c);
    }
    return text;
}

std::string FromLatin(std::string_view bytes, bool isWindows)
{
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        AppendUtf8(text, isWindows && c >= 0x80 && c < 0xA0 ? kWindows1252[c - 0x80] : c);
    }
    return text;
}

// Lower-case name of the encoding that the XML declaration tells, empty if it tells none.
std::string DeclaredEncoding(std::string_view text)
{
    const size_t begin = text.substr(0, 1024).find("<?xml");
    if (begin == std::string_view::npos)
        return {};
    const std::string_view declaration = text.substr(begin, text.substr(begin, 256).find("?>"));
    size_t name = declaration.find("encoding");
    name = name == std::string_view::npos ? name : declaration.find_first_of("'\"", name);
    if (name == std::string_view::npos)
        return {};
    const size_t end = declaration.find(declaration[name], name + 1);
    if (end == std::string_view::npos)
        return {};
    std::string encoding(declaration.substr(name + 1, end - name - 1));
    for (char& c : encoding)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return encoding;
}

// Whether XML allows a character.
bool IsCharacter(uint32_t c)
{
    return c >= 0x20 ? c < 0xD800 || (c >= 0xE000 && c <= 0x10FFFF && c != 0xFFFE && c != 0xFFFF)
                     : c == '\t' || c == '\n' || c == '\r';
}

// Length of the UTF-8 character at the start of a text that isn't empty, 0 if there is none. The characters
// that XML excludes count as none.
size_t CharacterLength(std::string_view text)
{
    const auto at = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const auto follows = [&](size_t i) { return (at(i) & 0xC0u) == 0x80u; };
    const unsigned first = at(0);
    if (first < 0x80)
        return IsCharacter(first) ? 1 : 0;
    if (first >= 0xC2 && first < 0xE0)
        return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first < 0xF0) {
        const bool isOverlong = first == 0xE0 && at(1) < 0xA0, isSurrogate = first == 0xED && at(1) >= 0xA0;
        const bool isExcluded = first == 0xEF && at(1) == 0xBF && at(2) >= 0xBE;
        return follows(1) && follows(2) && !isOverlong && !isSurrogate && !isExcluded ? 3 : 0;
    }
    if (first >= 0xF0 && first < 0xF5) {
        const bool isOverlong = first == 0xF0 && at(1) < 0x90, isBeyond = first == 0xF4 && at(1) >= 0x90;
        return follows(1) && follows(2) && follows(3) && !isOverlong && !isBeyond ? 4 : 0;
    }
    return 0;
}

// A vector of bytes, which GCC and clang turn into the instructions of the processor.
using Bytes = uint8_t __attribute__((vector_size(16)));

uint64_t SumOfBytes(const Bytes& bytes)
{
    uint64_t halves[2];
    std::memcpy(halves, &bytes, sizeof halves);
    constexpr uint64_t kOnes = 0x0101010101010101;
    return ((halves[0] + halves[1]) * kOnes) >> 56;
}

// Whether a block of kBlock bytes holds only ASCII characters that XML allows.
bool IsPlain(const char* block, size_t& tags)
{
    Bytes odd{}, tagCount{};
    for (size_t i = 0; i < kBlock; i += sizeof(Bytes)) {
        Bytes c;
        std::memcpy(&c, block + i, sizeof c);
        const auto isControl = (c < 0x20) & (c != '\n') & (c != '\r') & (c != '\t');
        odd |= reinterpret_cast<const Bytes&>(isControl) | (c & 0x80);
        const auto isTag = c == '<';
        tagCount += reinterpret_cast<const Bytes&>(isTag) & 1;
    }
    tags += SumOfBytes(tagCount);
    uint64_t halves[2];
    std::memcpy(halves, &odd, sizeof halves);
    return (halves[0] | halves[1]) == 0;
}

} // namespace

SourceText::SourceText(std::string content)
    : m_owned(std::move(content))
    , m_text(m_owned)
{
    Decode();
}

void SourceText::Decode()
{
    if (m_text.size() > kMaxContentBytes)
        FailLimit({}, m_text.size(), "bytes", kMaxContentBytes);
    const std::string_view start = m_text.substr(0, 4);
    const bool isBig = StartsWith(start, "\xFE\xFF"), isLittle = StartsWith(start, "\xFF\xFE");
    const bool isUtf16 = isBig || isLittle || StartsWith(start, std::string_view("\0<\0", 3)) ||
                         (start.size() == 4 && start[0] == '<' && start[1] == 0 && start[3] == 0);
    if (isUtf16)
        Own(FromUtf16(m_text.substr(isBig || isLittle ? 2 : 0), isBig || start[0] == 0));
    else {
        if (StartsWith(m_text, kUtf8Mark))
            m_text.remove_prefix(kUtf8Mark.size());
        const std::string encoding = DeclaredEncoding(m_text);
        const bool isWindows = encoding == "windows-1252" || encoding == "cp1252";
        if (isWindows || encoding == "iso-8859-1" || encoding == "latin1")
            Own(FromLatin(m_text, isWindows));
        else if (!encoding.empty() && encoding != "utf-8" && encoding != "utf8" && encoding != "us-ascii" &&
                 encoding != "ascii")
            Fail({}, "encoding " + Quoted(encoding) + " is not supported; use UTF-8");
    }
    // Files come out of cameras padded to the size of their memory.
    while (!m_text.empty() && m_text.back() == 0)
        m_text.remove_suffix(1);
    m_lineStarts.push_back(0);
    for (size_t begin = 0, checked = 0; begin < m_text.size(); begin += kSlice) {
        const size_t end = std::min(begin + kSlice, m_text.size());
        FindLines(begin, end);
        checked = CheckCharacters(checked, end);
        CheckReferences(begin, end);
    }
    if (m_tagCount > kMaxTags)
        FailLimit({}, m_tagCount, "tags", kMaxTags);
}

void SourceText::Own(std::string&& decoded)
{
    m_owned = std::move(decoded);
    m_text = m_owned;
}

// Returns where the next check begins: at the end, or behind the block that the end lies in.
size_t SourceText::CheckCharacters(size_t begin, size_t end)
{
    size_t i = begin;
    while (i < end) {
        if (m_text.size() - i >= kBlock && IsPlain(m_text.data() + i, m_tagCount)) {
            i += kBlock;
            continue;
        }
        // IsPlain has counted the tags of a full block; those of the rest are counted here.
        const size_t blockEnd = std::min(m_text.size(), i + kBlock);
        const bool isCounted = m_text.size() - i >= kBlock;
        const size_t blockBegin = i;
        while (i < blockEnd) {
            const size_t length = CharacterLength(m_text.substr(i));
            if (length == 0)
                Fail({Locate(i), {}, {}},
                     "the byte " +
                         std::to_string(static_cast<unsigned>(static_cast<unsigned char>(m_text[i]))) +
                         " is no character of UTF-8 text that XML allows");
            i += length;
        }
        if (!isCounted)
            m_tagCount +=
                static_cast<size_t>(std::count(m_text.begin() + static_cast<ptrdiff_t>(blockBegin),
                                               m_text.begin() + static_cast<ptrdiff_t>(blockEnd), '<'));
    }
    return i;
}

// The parser would let these characters in by their numbers. Those in comments and CDATA sections are refused
// as well, where they would be harmless, but nobody writes them there.
void SourceText::CheckReferences(size_t begin, size_t end) const
{
    constexpr std::string_view kStart = "&#";
    const std::string_view slice = m_text.substr(0, end + kStart.size() - 1);
    for (size_t at = slice.find(kStart, begin); at != std::string_view::npos; at = slice.find(kStart, at + 1))
    {
        std::string_view digits = m_text.substr(at + kStart.size(), 16);
        const bool isHex = !digits.empty() && digits.front() == 'x';
        digits.remove_prefix(isHex ? 1 : 0);
        uint32_t code = 0;
        const auto result =
            std::from_chars(digits.data(), digits.data() + digits.size(), code, isHex ? 16 : 10);
        if (result.ec == std::errc::invalid_argument)
            continue; // no reference
        if (result.ec != std::errc() || !IsCharacter(code))
            Fail({Locate(at), {}, {}}, "the reference " + Quoted(m_text.substr(at, 12)) +
                                           " stands for no character that XML allows");
    }
}

void SourceText::FindLines(size_t begin, size_t end)
{
    const char* const last = m_text.data() + end;
    for (const char* at = m_text.data() + begin;
         (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(last - at)))) != nullptr;)
        m_lineStarts.push_back(static_cast<uint32_t>(++at - m_text.data()));
}

Position SourceText::Locate(size_t offset) const
{
    offset = std::min(offset, m_text.size());
    if (offset < m_lineStarts[m_line])
        m_line = 0;
    // Questions come in ascending order as a rule, a few lines apart.
    while (m_line + 1 < m_lineStarts.size() && m_lineStarts[m_line + 1] <= offset)
        ++m_line;
    return {static_cast<uint32_t>(m_line + 1), static_cast<uint32_t>(offset - m_lineStarts[m_line]) + 1};
}

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>

#include <algorithm>
#include <cwchar>
#include <istream>
#include <ostream>

namespace GenICam
{
namespace
{
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

constexpr bool IsCharacter(char32_t code) noexcept
{
    return code <= kLastCodePoint && (code < 0xD800 || code > 0xDFFF);
}

void AppendUtf8(std::string& out, char32_t code)
{
    if (!IsCharacter(code))
        code = kReplacement;
    const auto byte = [&out](char32_t value) { out += static_cast<char>(static_cast<unsigned char>(value)); };
    if (code < 0x80)
        return byte(code);
    const int followers = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr char32_t kLead[] = {0, 0xC0, 0xE0, 0xF0};
    byte(kLead[followers] | (code >> (6 * followers)));
    for (int i = followers - 1; i >= 0; --i)
        byte(0x80 | ((code >> (6 * i)) & 0x3F));
}

/// Takes one character from `text` at `pos`, which moves behind it; a byte that begins none counts as one.
char32_t TakeUtf8(const std::string& text, size_t& pos)
{
    const auto at = [&text](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = at(pos++);
    if (lead < 0x80)
        return lead;
    const size_t followers = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - pos < followers)
        return kReplacement;
    char32_t code = lead & (0x3Fu >> followers);
    for (size_t i = 0; i < followers; ++i) {
        if ((at(pos + i) & 0xC0) != 0x80)
            return kReplacement;
        code = (code << 6) | (at(pos + i) & 0x3Fu);
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[followers] || !IsCharacter(code))
        return kReplacement;
    pos += followers;
    return code;
}
} // namespace

const size_t gcstring::npos;

gcstring& gcstring::assign(const wchar_t* text) { return assign(text, text ? std::wcslen(text) : 0); }

gcstring& gcstring::assign(const wchar_t* text, size_t length)
{
    std::string converted;
    for (size_t i = 0; text && i < length; ++i)
        AppendUtf8(converted, static_cast<char32_t>(text[i]));
    m_text = std::move(converted);
    return *this;
}

gcwchar gcstring::w_str() const
{
    std::wstring wide;
    wide.reserve(m_text.size());
    for (size_t pos = 0; pos < m_text.size();)
        wide += static_cast<wchar_t>(TakeUtf8(m_text, pos));
    return gcwchar(std::move(wide));
}

size_t gcstring::w_str(wchar_t* buffer, size_t capacity) const
{
    const gcwchar wide = w_str();
    if (buffer && capacity != 0) {
        const size_t count = std::min(wide.size(), capacity - 1);
        std::copy_n(wide.c_str(), count, buffer);
        buffer[count] = L'\0';
    }
    return wide.size() + 1;
}

void gcstring::RaisePosition(size_t offset) const
{
    throw OUT_OF_RANGE_EXCEPTION("Position = %zu must be equal or smaller than the text's length = %zu",
                                 offset, m_text.size());
}

void gcstring_vector::RaiseIndex(size_t index) const
{
    if (m_texts.empty())
        throw OUT_OF_RANGE_EXCEPTION("The list of texts is empty");
    throw OUT_OF_RANGE_EXCEPTION("Index = %zu must be smaller than the list's size = %zu", index,
                                 m_texts.size());
}

void ThrowBadAlloc(const char* sourceFileName, int sourceLine)
{
    throw BadAllocException("bad allocation", sourceFileName, sourceLine, "BadAllocException");
}

std::ostream& operator<<(std::ostream& stream, const gcstring& text)
{
    return stream << std::string_view(text.c_str(), text.size());
}

std::istream& operator>>(std::istream& stream, gcstring& text)
{
    std::string word;
    stream >> word;
    text = gcstring(std::move(word));
    return stream;
}

std::istream& getline(std::istream& stream, gcstring& text) { return getline(stream, text, '\n'); }

std::istream& getline(std::istream& stream, gcstring& text, char delimiter)
{
    std::string line;
    std::getline(stream, line, delimiter);
    text = gcstring(std::move(line));
    return stream;
}
} // namespace GenICam

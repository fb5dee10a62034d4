// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The text type of all GenApi interfaces.

#include <Base/GCTypes.h>

#include <cstring>
#include <iosfwd>
#include <string>
#include <utility>

/// "No position" in the results and "up to the end" in the arguments of gcstring.
#define GCSTRING_NPOS (static_cast<size_t>(-1))

namespace GenICam
{
/// Wide copy of a text, as gcstring::w_str returns it; lives as long as the object.
class gcwchar
{
public:
    gcwchar() = default;
    explicit gcwchar(std::wstring text) noexcept
        : m_text(std::move(text))
    {}

    const wchar_t* c_str() const noexcept { return m_text.c_str(); }
    size_t length() const noexcept { return m_text.size(); }
    size_t size() const noexcept { return m_text.size(); }
    operator const wchar_t*() const noexcept { return m_text.c_str(); }

private:
    std::wstring m_text;
};

/// A byte string, UTF-8 by convention. Programs may derive from it.
///
/// A null `const char*` stands for the empty text everywhere. Given a length, texts may contain NULs.
/// Positions beyond the end raise OutOfRangeException. Like std::string, one object must not be written by
/// one thread while another uses it. What std::bad_alloc or std::length_error the memory brings about passes
/// through.
class GCBASE_API gcstring
{
public:
    static const size_t npos = GCSTRING_NPOS;
    static size_t _npos() noexcept { return GCSTRING_NPOS; }

    gcstring() = default;
    gcstring(const char* text)
        : m_text(text ? text : "")
    {}
    gcstring(const char* text, size_t length) { assign(text, length); }
    gcstring(size_t count, char ch)
        : m_text(count, ch)
    {}
    explicit gcstring(const std::string& text)
        : m_text(text)
    {}
    explicit gcstring(std::string&& text) noexcept
        : m_text(std::move(text))
    {}
    /// Converts wide characters to UTF-8; what is no character becomes U+FFFD.
    explicit gcstring(const wchar_t* text) { assign(text); }
    explicit gcstring(const wchar_t* text, size_t length) { assign(text, length); }
    gcstring(const gcstring&) = default;
    gcstring(gcstring&&) noexcept = default;
    virtual ~gcstring() {}

    gcstring& operator=(const gcstring&) = default;
    gcstring& operator=(gcstring&&) noexcept = default;
    gcstring& operator=(const char* text) { return assign(text); }
    gcstring& operator=(const wchar_t* text) { return assign(text); }
    gcstring& operator=(const std::string& text) { return m_text = text, *this; }

    virtual gcstring& assign(const gcstring& text) { return m_text = text.m_text, *this; }
    virtual gcstring& assign(size_t count, char ch) { return m_text.assign(count, ch), *this; }
    gcstring& assign(const char* text) { return m_text = text ? text : "", *this; }
    gcstring& assign(const char* text, size_t length);
    gcstring& assign(const wchar_t* text);
    gcstring& assign(const wchar_t* text, size_t length);

    virtual gcstring& append(const gcstring& text) { return m_text += text.m_text, *this; }
    gcstring& append(const char* text) { return m_text += text ? text : "", *this; }
    gcstring& append(const char* text, size_t length);
    virtual gcstring& append(size_t count, char ch) { return m_text.append(count, ch), *this; }
    gcstring& operator+=(const gcstring& text) { return append(text); }
    gcstring& operator+=(const char* text) { return append(text); }
    gcstring& operator+=(char ch) { return m_text += ch, *this; }
    /// A new text where this one must not change.
    gcstring operator+=(const gcstring& text) const { return gcstring(m_text + text.m_text); }
    gcstring operator+=(char ch) const { return gcstring(m_text + ch); }

    /// Puts `text` before position `offset` (0 to size).
    gcstring& insert(size_t offset, const gcstring& text);
    /// Removes up to `count` bytes from `offset` (0 to size) on.
    virtual gcstring& erase(size_t offset = 0, size_t count = npos);
    void clear() noexcept { m_text.clear(); }
    /// Cuts the text, or lengthens it with `ch`.
    virtual void resize(size_t size) { m_text.resize(size); }
    void resize(size_t size, char ch) { m_text.resize(size, ch); }
    virtual void reserve(size_t capacity) { m_text.reserve(capacity); }
    virtual void swap(gcstring& other) { m_text.swap(other.m_text); }

    /// The text with a NUL behind it, valid until the object is changed.
    virtual const char* c_str() const { return m_text.c_str(); }
    operator const char*() const { return m_text.c_str(); }
    /// The text as wide characters; bytes that are no UTF-8 become U+FFFD.
    gcwchar w_str() const;
    /// Copies the wide text with its closing NUL into `buffer` of `capacity` characters, cut to what it can
    /// hold. Returns the number of characters needed, the NUL counted; `buffer` may be null to ask for it.
    size_t w_str(wchar_t* buffer, size_t capacity) const;

    virtual bool empty() const { return m_text.empty(); }
    virtual size_t length() const { return m_text.size(); }
    virtual size_t size() const { return m_text.size(); }
    size_t capacity() const noexcept { return m_text.capacity(); }
    virtual size_t max_size() const { return m_text.max_size(); }

    /// Bytewise order: negative, 0 or positive.
    virtual int compare(const gcstring& text) const { return m_text.compare(text.m_text); }
    int compare(const char* text) const { return m_text.compare(text ? text : ""); }

    /// Position of the first match at or behind `offset`, or npos.
    virtual size_t find(char ch, size_t offset = 0) const { return m_text.find(ch, offset); }
    virtual size_t find(const gcstring& text, size_t offset = 0) const
    {
        return m_text.find(text.m_text, offset);
    }
    size_t find(const gcstring& text, size_t offset, size_t count) const;
    size_t find(const char* text, size_t offset = 0) const { return m_text.find(text ? text : "", offset); }
    /// As above for the first `count` bytes of `text`.
    size_t find(const char* text, size_t offset, size_t count) const;
    /// Position of the first byte that is (not) among those of `set`, or npos.
    virtual size_t find_first_of(const gcstring& set, size_t offset = 0) const;
    virtual size_t find_first_not_of(const gcstring& set, size_t offset = 0) const;
    /// The last one at or before `offset`.
    virtual size_t find_last_of(const gcstring& set, size_t offset = npos) const
    {
        return m_text.find_last_of(set.m_text, offset);
    }
    virtual size_t find_last_of(char ch, size_t offset = npos) const { return m_text.rfind(ch, offset); }
    virtual size_t find_last_not_of(const gcstring& set, size_t offset = npos) const
    {
        return m_text.find_last_not_of(set.m_text, offset);
    }
    virtual size_t find_last_not_of(char ch, size_t offset = npos) const
    {
        return m_text.find_last_not_of(ch, offset);
    }
    /// Up to `count` bytes from `offset` (0 to size) on.
    virtual gcstring substr(size_t offset = 0, size_t count = npos) const;

private:
    [[noreturn]] void RaisePosition(size_t offset) const;
    void CheckPosition(size_t offset) const;

    std::string m_text;
};

inline gcstring& gcstring::assign(const char* text, size_t length)
{
    m_text.assign(text ? text : "", text ? length : 0);
    return *this;
}

inline gcstring& gcstring::append(const char* text, size_t length)
{
    m_text.append(text ? text : "", text ? length : 0);
    return *this;
}

inline gcstring& gcstring::insert(size_t offset, const gcstring& text)
{
    CheckPosition(offset);
    m_text.insert(offset, text.m_text);
    return *this;
}

inline gcstring& gcstring::erase(size_t offset, size_t count)
{
    CheckPosition(offset);
    m_text.erase(offset, count);
    return *this;
}

inline size_t gcstring::find(const gcstring& text, size_t offset, size_t count) const
{
    return m_text.find(text.c_str(), offset, count < text.size() ? count : text.size());
}

inline size_t gcstring::find(const char* text, size_t offset, size_t count) const
{
    return m_text.find(text ? text : "", offset, text ? count : 0);
}

inline size_t gcstring::find_first_of(const gcstring& set, size_t offset) const
{
    return m_text.find_first_of(set.m_text, offset);
}

inline size_t gcstring::find_first_not_of(const gcstring& set, size_t offset) const
{
    return m_text.find_first_not_of(set.m_text, offset);
}

inline gcstring gcstring::substr(size_t offset, size_t count) const
{
    CheckPosition(offset);
    return gcstring(m_text.substr(offset, count));
}

inline void gcstring::CheckPosition(size_t offset) const
{
    if (offset > m_text.size())
        RaisePosition(offset);
}

// One set of comparisons per pair of operands, so that the conversion to `const char*` never compares
// addresses.
// clang-format off
#define KXGC_COMPARE(op)                                                                                          \
    inline bool operator op(const gcstring& l, const gcstring& r) { return l.compare(r) op 0; }                   \
    inline bool operator op(const gcstring& l, const char* r) { return l.compare(r) op 0; }                       \
    inline bool operator op(const char* l, const gcstring& r) { return 0 op r.compare(l); }
KXGC_COMPARE(==)
KXGC_COMPARE(!=)
KXGC_COMPARE(<)
KXGC_COMPARE(<=)
KXGC_COMPARE(>)
KXGC_COMPARE(>=)
#undef KXGC_COMPARE
// clang-format on

inline gcstring operator+(gcstring left, const gcstring& right) { return std::move(left += right); }
inline gcstring operator+(gcstring left, const char* right) { return std::move(left += right); }
inline gcstring operator+(gcstring left, char right) { return std::move(left += right); }
inline gcstring operator+(const char* left, const gcstring& right)
{
    return std::move(gcstring(left) += right);
}
inline gcstring operator+(char left, const gcstring& right) { return std::move(gcstring(1, left) += right); }

inline void swap(gcstring& left, gcstring& right) { left.swap(right); }

/// Writes all bytes, NULs included, in the manner of std::string (field width and fill count).
GCBASE_API std::ostream& operator<<(std::ostream& stream, const gcstring& text);
/// Reads one word, as for std::string.
GCBASE_API std::istream& operator>>(std::istream& stream, gcstring& text);
/// Reads up to `delimiter` (a line), which is taken from the stream but not stored.
GCBASE_API std::istream& getline(std::istream& stream, gcstring& text);
GCBASE_API std::istream& getline(std::istream& stream, gcstring& text, char delimiter);

/// Raises BadAllocException.
[[noreturn]] GCBASE_API void ThrowBadAlloc(const char* sourceFileName, int sourceLine);
} // namespace GenICam

// Programs also call them by their global names.
using GenICam::operator<<;
using GenICam::operator>>;

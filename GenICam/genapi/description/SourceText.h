// SPDX-License-Identifier: Apache-2.0
// The text of a file: decoded to UTF-8, checked, and able to tell lines and columns.
#pragma once

#include "description/Description.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KxGenApi
{

class SourceText
{
public:
    /// Takes UTF-8, UTF-16 with byte order mark or recognisable by its first '<', ISO-8859-1 and Windows-1252
    /// (the last two where the XML declaration says so). Raises RuntimeException for other encodings, bytes
    /// that are no characters of the encoding, characters that XML doesn't allow, and for more text than the
    /// limits permit.
    explicit SourceText(std::string content);
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    std::string_view Text() const { return m_text; }
    /// The same, for a parser that overwrites it. Locate goes on telling the lines of the original.
    char* MutableText() { return m_owned.data() + (m_text.data() - m_owned.data()); }
    /// Hands over the memory of the text, which stays where it is.
    std::string Release() { return std::move(m_owned); }
    /// Number of '<' in the text: no smaller than the number of elements.
    size_t TagCount() const { return m_tagCount; }

    /// Line and column of a byte; columns count bytes. Fast when asked in ascending order.
    Position Locate(size_t offset) const;

private:
    void Decode();
    void Own(std::string&& decoded);
    size_t CheckCharacters(size_t begin, size_t end);
    void CheckReferences(size_t begin, size_t end) const;
    void FindLines(size_t begin, size_t end);

    std::string m_owned;
    std::string_view m_text;
    size_t m_tagCount = 0;
    std::vector<uint32_t> m_lineStarts;
    mutable size_t m_line = 0; // the one of the last question
};

} // namespace KxGenApi

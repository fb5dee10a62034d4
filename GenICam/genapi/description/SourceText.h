// SPDX-License-Identifier: Apache-2.0
// The text of a file: decoded to UTF-8, checked, and able to tell lines and columns.
#pragma once

#include "description/Description.h"

#include <string>
#include <string_view>

namespace KxGenApi
{

class SourceText
{
public:
    /// Takes UTF-8, UTF-16 with byte order mark or recognisable by its first '<', ISO-8859-1 and Windows-1252
    /// (the last two where the XML declaration says so). UTF-8 is not copied: `content` has to outlive this
    /// object. Raises RuntimeException for other encodings, bytes that are no characters of the encoding,
    /// characters that XML doesn't allow, and for more text than the limits permit.
    explicit SourceText(std::string_view content);
    /// The same for text that nobody else keeps.
    explicit SourceText(std::string&& content);
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    std::string_view Text() const { return m_text; }
    /// Number of '<' in the text: no smaller than the number of elements.
    size_t TagCount() const { return m_tagCount; }

    /// Line and column of a byte; columns count bytes. Fast when asked in ascending order.
    Position Locate(size_t offset) const;

private:
    void Decode();
    void Own(std::string&& decoded);
    void Check();
    void CheckReferences() const;

    std::string m_owned;
    std::string_view m_text;
    size_t m_tagCount = 0;

    // Where the last question ended.
    mutable size_t m_searched = 0;
    mutable size_t m_lineStart = 0;
    mutable uint32_t m_line = 1;
};

} // namespace KxGenApi

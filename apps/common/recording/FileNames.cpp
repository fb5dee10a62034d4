// SPDX-License-Identifier: Apache-2.0
#include "FileNames.h"

#include "SequenceWriter.h"

#include <Base/GCException.h>

#include <filesystem>
#include <regex>
#include <system_error>

namespace KxApps
{

FileNames::FileNames(const std::string& pattern, bool isOneImage)
{
    static const std::regex kNumber("([^%]*)%(?:0([1-9]))?d([^%]*)");
    std::error_code error;
    std::string names = pattern;
    if (std::filesystem::is_directory(pattern, error))
        names = (std::filesystem::path(pattern) / "frame-%06d.kxraw").string();
    std::smatch parts;
    if (std::regex_match(names, parts, kNumber)) {
        m_prefix = parts[1];
        m_digits = parts[2].matched ? static_cast<size_t>(parts[2].str()[0] - '0') : 1;
        m_suffix = parts[3];
    } else if (isOneImage && names.find('%') == std::string::npos) {
        m_prefix = names;
    } else {
        throw INVALID_ARGUMENT_EXCEPTION(
            "'%s' names one file: several images need a name with one %%d or %%04d "
            "for the number, a folder, or a %s file",
            pattern.c_str(), SequenceWriter::kEnding);
    }
    m_type = FileTypeOf(Of(0));
}

std::string FileNames::Of(uint64_t number) const
{
    if (m_digits == 0)
        return m_prefix;
    std::string digits = std::to_string(number);
    if (digits.size() < m_digits)
        digits.insert(0, m_digits - digits.size(), '0');
    return m_prefix + digits + m_suffix;
}

} // namespace KxApps

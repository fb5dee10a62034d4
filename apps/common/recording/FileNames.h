// SPDX-License-Identifier: Apache-2.0
// The names of a sequence's files.
#pragma once

#include "ImageFileType.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace KxApps
{

class FileNames
{
public:
    /// @param pattern a name with one %d or %04d for the number, or a folder, whose files are called
    /// frame-000000.kxraw and so on
    /// @param isOneImage whether the name needs no number
    /// Raises InvalidArgumentException for a name without a number and for an ending that names no file type.
    FileNames(const std::string& pattern, bool isOneImage);

    KxApi::EKxStillImageFileType_t Type() const { return m_type; }
    std::string Of(uint64_t number) const;

private:
    std::string m_prefix;
    std::string m_suffix;
    size_t m_digits = 0; // at least so many; none without a number
    KxApi::EKxStillImageFileType_t m_type = KxApi::KxStillImageFileType_Raw;
};

} // namespace KxApps

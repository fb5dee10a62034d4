// SPDX-License-Identifier: Apache-2.0
// Descriptions in zip archives.
#pragma once

#include <string>
#include <string_view>

namespace KxGenApi
{

/// Whether content begins like a zip archive.
bool IsZip(std::string_view content) noexcept;

/// The description in an archive: the first entry whose name ends in .xml, the first of all if there is none.
/// Raises RuntimeException for what is no archive, empty, encrypted, damaged or larger than the limits.
std::string Unzip(std::string_view archive);

} // namespace KxGenApi

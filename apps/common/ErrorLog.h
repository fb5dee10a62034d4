// SPDX-License-Identifier: Apache-2.0
// The last errors that users of the programs met, for whoever helps them later.
#pragma once

#include <string>

namespace KxApps
{

/// The file that takes them: "KxApi/errors.log" in XDG_STATE_HOME, or in ~/.local/state. Empty when the
/// variable KXAPI_ERROR_LOG is "off", or when there is no home.
std::string ErrorLogPath();

/// Adds a line: time, program, text; passwords and their like in it are blotted out. The same text twice in a
/// row is one line. With 200 lines the file becomes "errors.log.1" in place of the one before, and begins
/// anew. Several programs may write at once. What keeps it from being written, a full disk or a home that
/// can't be written to, is passed over in silence. Any thread.
/// @param program name and version
void LogError(const std::string& program, const std::string& text) noexcept;

/// What both files hold, the oldest line first.
std::string ReadErrorLog();

} // namespace KxApps

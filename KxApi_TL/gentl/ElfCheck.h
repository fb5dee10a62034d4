// SPDX-License-Identifier: Apache-2.0
// Whether a file can be given to the dynamic linker, which trusts what it maps.
#pragma once

#include <string>

namespace KxApi
{
namespace Detail
{

/// Why the file is no complete library of this machine's kind; empty when it is one. The linker would die by
/// SIGBUS on one that is cut short, and wait for ever on a FIFO. Reads headers only.
std::string FindElfFault(const std::string& path);

} // namespace Detail
} // namespace KxApi

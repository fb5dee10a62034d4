// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LoadedDescription.h"

#include <iosfwd>

namespace Kx
{

/// Prints every node on a line with tabulators between name, interface, access mode, visibility, caching,
/// value, and the properties of the description as name=value.
void PrintTable(std::ostream& out, const LoadedDescription& description);

/// Prints the same, and the facts about the device, as one JSON object.
void PrintJson(std::ostream& out, const LoadedDescription& description);

} // namespace Kx

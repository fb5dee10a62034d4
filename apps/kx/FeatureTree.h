// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LoadedDescription.h"

#include <iosfwd>

namespace Kx
{

/// Prints the features below Root with their values, units and access modes, indented by category.
void PrintTree(std::ostream& out, const LoadedDescription& description);

} // namespace Kx

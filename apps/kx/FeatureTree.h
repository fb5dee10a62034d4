// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <GenApi/GenApi.h>

#include <iosfwd>

namespace Kx
{

/// Prints the features below Root with their values, units and access modes, indented by category. Those
/// above the visibility are left out.
void PrintTree(std::ostream& out, GenApi::INode* root, GenApi::EVisibility visibility = GenApi::Invisible);

} // namespace Kx

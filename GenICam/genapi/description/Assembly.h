// SPDX-License-Identifier: Apache-2.0
// Last step of making a description, whatever its nodes come from.
#pragma once

#include "description/Description.h"
#include "description/TextArena.h"

#include <memory>
#include <string>
#include <vector>

namespace KxGenApi
{

struct DescriptionParts
{
    DeviceFacts device;
    std::vector<NodeData> nodes;
    NameIndex names; ///< of all nodes
    std::vector<Property> properties;
    TextArena text;     ///< what the string views point into
    std::string source; ///< and what else they do
};

/// Finds out what follows from nodes and properties. Raises RuntimeException for cycles.
std::shared_ptr<const Description> Assemble(DescriptionParts&& parts);

} // namespace KxGenApi

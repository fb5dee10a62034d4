// SPDX-License-Identifier: Apache-2.0
// Merges the XML of a second description into the tree of a first.
#pragma once

#include "description/SourceText.h"

#include <pugixml.hpp>

namespace KxGenApi
{

/// Adds the nodes of `injected` to `base` (both elements RegisterDescription). Where both define a node of
/// one kind, the one of greater MergePriority wins (the injected one of equals): its elements stay, the
/// other's are added where it says nothing, and the lists (pFeature, EnumEntry, pInvalidator, ...) are
/// united. Nodes of different kinds are replaced as a whole, and so are the entries of a StructReg, whose
/// MergePriority is that of the StructReg. Raises RuntimeException for too deeply nested groups.
void Inject(pugi::xml_node base, const pugi::xml_node& injected);

} // namespace KxGenApi

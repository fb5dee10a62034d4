// SPDX-License-Identifier: Apache-2.0
// How nodes of a description are related. These answers need no values.
#pragma once

#include "description/Description.h"

#include <GenApi/Types.h>

#include <vector>

namespace KxGenApi
{

/// Nodes related in that way, each once, in the order of discovery.
std::vector<NodeIndex> RelatedNodes(const Description& description, NodeIndex node, GenApi::ELinkType type);

/// The nodes that a selector selects: those it names and what shows them. What a selected selector merely
/// names is not among them.
std::vector<NodeIndex> SelectedNodes(const Description& description, NodeIndex node);

/// The selectors of a node, direct and indirect ones.
std::vector<NodeIndex> SelectingNodes(const Description& description, NodeIndex node);

/// Name of an element.
const char* NameOf(Prop id);

} // namespace KxGenApi

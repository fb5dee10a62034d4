// SPDX-License-Identifier: Apache-2.0
// From a node's kind to its class.
#pragma once

#include "runtime/Node.h"

namespace KxGenApi
{

/// Makes the node of that index.
std::unique_ptr<Node> MakeNode(NodeMap& map, NodeIndex index);

} // namespace KxGenApi

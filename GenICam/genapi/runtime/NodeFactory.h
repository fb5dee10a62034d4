// SPDX-License-Identifier: Apache-2.0
// From a node's kind to its class.
#pragma once

#include "runtime/Node.h"

namespace KxGenApi
{

class NodeMemory;

/// Makes the node of that index in the memory; its destructor is to be called before the memory goes.
Node* MakeNode(NodeMap& map, NodeIndex index, NodeMemory& memory);

} // namespace KxGenApi

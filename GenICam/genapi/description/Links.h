// SPDX-License-Identifier: Apache-2.0
// Third step of reading: what the references of all nodes mean together. No walk recurses, so that chains may
// be as long as files allow.
#pragma once

#include "description/Description.h"

#include <vector>

namespace KxGenApi
{

/// For each node a list of nodes: those of node i are targets[first[i]] to targets[first[i + 1] - 1].
struct Adjacency
{
    std::vector<uint32_t> first;
    std::vector<NodeIndex> targets;
};

/// A property that names a node, and what that means.
struct Reference
{
    NodeIndex from;
    NodeIndex to;
    uint8_t edges;
};

/// All references, ordered by `from`: those of node i are all[first[i]] to all[first[i + 1] - 1].
struct References
{
    std::vector<uint32_t> first;
    std::vector<Reference> all;
};

struct Edges
{
    Adjacency dependents;
    Adjacency selectors;
};

/// Sets isFeature of what the category Root reaches.
void MarkFeatures(std::vector<NodeData>& nodes, const std::vector<Property>& properties);

References CollectReferences(const std::vector<NodeData>& nodes, const std::vector<Property>& properties);

/// Raises RuntimeException with the chain of names if a node needs itself for its value or its list.
void CheckCycles(const std::vector<NodeData>& nodes, const References& references);

/// Who depends on whom and who selects whom.
Edges CollectEdges(const References& references);

} // namespace KxGenApi

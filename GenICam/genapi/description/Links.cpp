// SPDX-License-Identifier: Apache-2.0
#include "description/Links.h"

#include "description/Diagnostics.h"
#include "description/Prefault.h"
#include "description/Schema.h"

#include <algorithm>
#include <string>

namespace KxGenApi
{
namespace
{

constexpr size_t kLongestChain = 6; // names in a message

// Counts, then fills, then takes out what is there twice.
class AdjacencyBuilder
{
public:
    explicit AdjacencyBuilder(size_t nodes)
        : m_adjacency{std::vector<uint32_t>(nodes + 1), {}}
    {}

    void Count(NodeIndex from) { ++m_adjacency.first[from + 1]; }
    void EndCount()
    {
        for (size_t i = 1; i < m_adjacency.first.size(); ++i)
            m_adjacency.first[i] += m_adjacency.first[i - 1];
        m_adjacency.targets.resize(m_adjacency.first.back());
        m_fill.assign(m_adjacency.first.begin(), m_adjacency.first.end() - 1);
    }
    void Add(NodeIndex from, NodeIndex to) { m_adjacency.targets[m_fill[from]++] = to; }

    Adjacency Take()
    {
        std::vector<NodeIndex>& lastSeen = m_fill;
        std::fill(lastSeen.begin(), lastSeen.end(), kNoNode);
        uint32_t out = 0, begin = 0;
        for (NodeIndex from = 0; from + 1 < m_adjacency.first.size(); ++from) {
            const uint32_t end = m_adjacency.first[from + 1];
            for (uint32_t i = begin; i < end; ++i) {
                const NodeIndex to = m_adjacency.targets[i];
                if (lastSeen[to] == from)
                    continue;
                lastSeen[to] = from;
                m_adjacency.targets[out++] = to;
            }
            m_adjacency.first[from + 1] = out;
            begin = end;
        }
        m_adjacency.targets.resize(out);
        m_adjacency.targets.shrink_to_fit();
        return std::move(m_adjacency);
    }

private:
    Adjacency m_adjacency;
    std::vector<uint32_t> m_fill;
};

struct PathStep
{
    NodeIndex node;
    uint32_t next; // which of its references comes next
};

[[noreturn]] void FailCycle(const std::vector<PathStep>& path, NodeIndex closing,
                            const std::vector<NodeData>& nodes)
{
    size_t begin = path.size();
    while (path[--begin].node != closing) {
    }
    std::string chain;
    for (size_t i = begin; i < path.size(); ++i) {
        if (i - begin == kLongestChain) {
            chain += "... -> ";
            break;
        }
        chain += std::string(nodes[path[i].node].name.substr(0, 30)) + " -> ";
    }
    chain += nodes[closing].name.substr(0, 30);
    Fail({nodes[closing].position, nodes[closing].name, {}}, "its value depends on itself: " + chain);
}

} // namespace

void MarkFeatures(std::vector<NodeData>& nodes, const std::vector<Property>& properties)
{
    const auto root =
        std::find_if(nodes.begin(), nodes.end(), [](const NodeData& node) { return node.name == "Root"; });
    if (root == nodes.end() || root->type != NodeType::Category)
        return;
    std::vector<NodeIndex> open{static_cast<NodeIndex>(root - nodes.begin())};
    root->isFeature = true;
    while (!open.empty()) {
        const NodeData& node = nodes[open.back()];
        open.pop_back();
        for (uint32_t i = 0; i < node.propertyCount; ++i) {
            const Property& property = properties[node.firstProperty + i];
            if (property.id != Prop::pFeature || nodes[property.node].isFeature)
                continue;
            nodes[property.node].isFeature = true;
            open.push_back(property.node);
        }
    }
}

References CollectReferences(const std::vector<NodeData>& nodes, const std::vector<Property>& properties)
{
    References references;
    references.first.reserve(nodes.size() + 1);
    ReservePresent(references.all, properties.size() / 2);
    for (NodeIndex from = 0; from < nodes.size(); ++from) {
        references.first.push_back(static_cast<uint32_t>(references.all.size()));
        for (uint32_t i = 0; i < nodes[from].propertyCount; ++i) {
            const Property& property = properties[nodes[from].firstProperty + i];
            const bool isNamed = property.node != kNoNode || property.offsetNode != kNoNode;
            const uint8_t edges = isNamed ? InfoOf(property.id).edges : uint8_t{kNoEdge};
            if (edges == kNoEdge)
                continue;
            const bool isValue = property.part == RefPart::Value;
            const auto effective = static_cast<uint8_t>(isValue ? edges : edges & ~unsigned{kEvaluates});
            if (property.node != kNoNode)
                references.all.push_back({from, property.node, effective});
            if (property.offsetNode != kNoNode)
                references.all.push_back({from, property.offsetNode, effective});
        }
    }
    references.first.push_back(static_cast<uint32_t>(references.all.size()));
    return references;
}

void CheckCycles(const std::vector<NodeData>& nodes, const References& references)
{
    enum : uint8_t
    {
        kNew,
        kOnPath,
        kDone
    };
    std::vector<uint8_t> state(nodes.size(), kNew);
    std::vector<PathStep> path;
    // The next reference of a step that evaluates something, kNoNode after the last.
    const auto next = [&](PathStep& step) {
        while (step.next < references.first[step.node + 1]) {
            const Reference& reference = references.all[step.next++];
            if ((reference.edges & kEvaluates) != 0)
                return reference.to;
        }
        return kNoNode;
    };
    const auto enter = [&](NodeIndex node) {
        state[node] = kOnPath;
        path.push_back({node, references.first[node]});
    };
    for (NodeIndex start = 0; start < nodes.size(); ++start) {
        if (state[start] != kNew)
            continue;
        enter(start);
        while (!path.empty()) {
            const NodeIndex target = next(path.back());
            if (target == kNoNode) {
                state[path.back().node] = kDone;
                path.pop_back();
            } else if (state[target] == kOnPath)
                FailCycle(path, target, nodes);
            else if (state[target] == kNew)
                enter(target);
        }
    }
}

Edges CollectEdges(const References& references)
{
    AdjacencyBuilder dependents(references.first.size() - 1), selectors(references.first.size() - 1);
    // Once to count and once to fill; `add` gets the builder, the node whose list it is, and what goes there.
    const auto forEach = [&](const auto& add) {
        for (const Reference& reference : references.all) {
            if (reference.edges & kInvalidates)
                add(dependents, reference.to, reference.from);
            if (reference.edges & kSelects) {
                add(dependents, reference.from, reference.to);
                add(selectors, reference.to, reference.from);
            }
        }
    };
    forEach([](AdjacencyBuilder& builder, NodeIndex from, NodeIndex) { builder.Count(from); });
    dependents.EndCount();
    selectors.EndCount();
    forEach([](AdjacencyBuilder& builder, NodeIndex from, NodeIndex to) { builder.Add(from, to); });
    return {dependents.Take(), selectors.Take()};
}

} // namespace KxGenApi

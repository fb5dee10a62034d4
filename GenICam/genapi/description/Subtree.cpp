// SPDX-License-Identifier: Apache-2.0
#include "description/Assembly.h"
#include "description/Description.h"

#include <GenApi/Types.h>

#include <utility>

namespace KxGenApi
{
namespace
{

constexpr std::string_view kRootName = "Root";

// Whether a property is an element that became a node of its own, and not a reference to one.
bool IsPart(const Description& description, NodeIndex owner, const Property& property)
{
    switch (property.id) {
    case Prop::EnumEntry:
    case Prop::IntSwissKnife:
    case Prop::FormulaTo:
    case Prop::FormulaFrom:
        return property.node != kNoNode;
    case Prop::Constant:
    case Prop::Expression: {
        // The nodes of expressions list constants too, but those belong to the node that both are elements
        // of.
        const std::string_view name = description.Node(property.node).name,
                               ownerName = description.Node(owner).name;
        return name.size() == ownerName.size() + property.attribute.size() + 2 &&
               name.substr(1, ownerName.size()) == ownerName;
    }
    default:
        return false;
    }
}

// For each node the one it is an element of, kNoNode for most.
std::vector<NodeIndex> FindOwners(const Description& description)
{
    std::vector<NodeIndex> owners(description.NodeCount(), kNoNode);
    for (NodeIndex i = 0; i < description.NodeCount(); ++i)
        for (const Property& property : description.Properties(i))
            if (IsPart(description, i, property))
                owners[property.node] = i;
    return owners;
}

std::vector<bool> FindNeeded(const Description& description, NodeIndex root)
{
    const std::vector<NodeIndex> owners = FindOwners(description);
    std::vector<bool> isNeeded(description.NodeCount(), false);
    std::vector<NodeIndex> open;
    const auto need = [&](NodeIndex node) {
        if (node == kNoNode || isNeeded[node])
            return;
        isNeeded[node] = true;
        open.push_back(node);
    };
    need(root);
    while (!open.empty()) {
        const NodeIndex node = open.back();
        open.pop_back();
        need(owners[node]);
        for (const Property& property : description.Properties(node)) {
            need(property.node);
            need(property.offsetNode);
        }
    }
    return isNeeded;
}

void AddRoot(DescriptionParts& parts, NodeIndex listed)
{
    NodeData& root = parts.nodes.emplace_back();
    root.name = kRootName;
    root.type = NodeType::Category;
    root.nameSpace = GenApi::Standard;
    root.firstProperty = static_cast<uint32_t>(parts.properties.size());
    root.propertyCount = 1;
    Property& feature = parts.properties.emplace_back();
    feature.id = Prop::pFeature;
    feature.node = listed;
    feature.text = parts.nodes[listed].name;
}

} // namespace

std::shared_ptr<const Description> ExtractSubtree(const Description& description, NodeIndex root, bool rename)
{
    const std::vector<bool> isNeeded = FindNeeded(description, root);
    std::vector<NodeIndex> newIndex(description.NodeCount(), kNoNode);
    NodeIndex count = 0;
    for (NodeIndex i = 0; i < description.NodeCount(); ++i)
        if (isNeeded[i])
            newIndex[i] = count++;

    DescriptionParts parts;
    parts.device = description.Device();
    const auto moved = [&newIndex](NodeIndex node) { return node == kNoNode ? kNoNode : newIndex[node]; };
    for (NodeIndex i = 0; i < description.NodeCount(); ++i) {
        if (!isNeeded[i])
            continue;
        NodeData node = description.Node(i);
        const auto nameOf = [&](NodeIndex index, std::string_view name) {
            return rename && index == root ? kRootName : name;
        };
        node.name = parts.text.Copy(nameOf(i, node.name));
        node.isFeature = false;
        node.firstProperty = static_cast<uint32_t>(parts.properties.size());
        parts.nodes.push_back(node);
        for (Property property : description.Properties(i)) {
            property.text = nameOf(property.node, property.text);
            property.node = moved(property.node);
            property.offsetNode = moved(property.offsetNode);
            property.text = parts.text.Copy(property.text);
            property.attribute = parts.text.Copy(property.attribute);
            parts.properties.push_back(property);
        }
    }
    const NodeIndex oldRoot = description.FindNode(kRootName);
    if (!rename && (oldRoot == kNoNode || !isNeeded[oldRoot]))
        AddRoot(parts, newIndex[root]);
    for (NodeIndex i = 0; i < parts.nodes.size(); ++i)
        parts.names.Add(parts.nodes[i].name, i, [&](NodeIndex other) { return parts.nodes[other].name; });
    return Assemble(std::move(parts));
}

std::shared_ptr<const Description> EmptyDescription() { return Assemble(DescriptionParts()); }

} // namespace KxGenApi

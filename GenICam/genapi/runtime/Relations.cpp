// SPDX-License-Identifier: Apache-2.0
#include "runtime/Relations.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace KxGenApi
{
namespace
{

/// What an element that names a node means for the relations.
enum Role : unsigned
{
    kReads = 1,      // its value, limit, flag or address takes part in a read
    kWrites = 2,     // a write goes there
    kMakesStale = 4, // its change makes this one stale
    kShows = 8,      // this node presents the other one: a selector of the other selects it too
};

struct ElementFacts
{
    Prop id;
    const char* name;
    unsigned roles;
};

// clang-format off
constexpr ElementFacts kElements[] = {
    {Prop::ToolTip, "ToolTip", 0},
    {Prop::Description, "Description", 0},
    {Prop::DisplayName, "DisplayName", 0},
    {Prop::Visibility, "Visibility", 0},
    {Prop::DocuURL, "DocuURL", 0},
    {Prop::IsDeprecated, "IsDeprecated", 0},
    {Prop::EventID, "EventID", 0},
    {Prop::pIsImplemented, "pIsImplemented", kReads | kShows},
    {Prop::pIsAvailable, "pIsAvailable", kReads | kShows},
    {Prop::pIsLocked, "pIsLocked", kReads | kShows},
    {Prop::pBlockPolling, "pBlockPolling", kReads},
    {Prop::ImposedAccessMode, "ImposedAccessMode", 0},
    {Prop::ImposedVisibility, "ImposedVisibility", 0},
    {Prop::pError, "pError", 0},
    {Prop::pAlias, "pAlias", 0},
    {Prop::pCastAlias, "pCastAlias", 0},
    {Prop::Streamable, "Streamable", 0},
    {Prop::Value, "Value", 0},
    {Prop::pValue, "pValue", kReads | kWrites | kShows},
    {Prop::pValueCopy, "pValueCopy", kWrites | kShows},
    {Prop::pIndex, "pIndex", kReads | kShows},
    {Prop::ValueIndexed, "ValueIndexed", 0},
    {Prop::pValueIndexed, "pValueIndexed", kReads | kWrites | kShows},
    {Prop::ValueDefault, "ValueDefault", 0},
    {Prop::pValueDefault, "pValueDefault", kReads | kWrites | kShows},
    {Prop::Min, "Min", 0},
    {Prop::pMin, "pMin", kReads | kShows},
    {Prop::Max, "Max", 0},
    {Prop::pMax, "pMax", kReads | kShows},
    {Prop::Inc, "Inc", 0},
    {Prop::pInc, "pInc", kReads | kShows},
    {Prop::ValidValueSet, "ValidValueSet", 0},
    {Prop::Unit, "Unit", 0},
    {Prop::Representation, "Representation", 0},
    {Prop::DisplayNotation, "DisplayNotation", 0},
    {Prop::DisplayPrecision, "DisplayPrecision", 0},
    {Prop::PollingTime, "PollingTime", 0},
    {Prop::pSelected, "pSelected", 0},
    {Prop::Address, "Address", 0},
    {Prop::IntSwissKnife, "IntSwissKnife", kReads | kShows},
    {Prop::pAddress, "pAddress", kReads | kShows},
    {Prop::Length, "Length", 0},
    {Prop::pLength, "pLength", kReads | kShows},
    {Prop::AccessMode, "AccessMode", 0},
    {Prop::pPort, "pPort", kReads},
    {Prop::Cachable, "Cachable", 0},
    {Prop::pInvalidator, "pInvalidator", kMakesStale},
    {Prop::Sign, "Sign", 0},
    {Prop::Endianess, "Endianess", 0},
    {Prop::LSB, "LSB", 0},
    {Prop::MSB, "MSB", 0},
    {Prop::Bit, "Bit", 0},
    {Prop::pVariable, "pVariable", kReads | kShows},
    {Prop::Constant, "Constant", 0},
    {Prop::Expression, "Expression", 0},
    {Prop::Formula, "Formula", 0},
    {Prop::FormulaTo, "FormulaTo", 0},
    {Prop::FormulaFrom, "FormulaFrom", 0},
    {Prop::Slope, "Slope", 0},
    {Prop::IsLinear, "IsLinear", 0},
    {Prop::OnValue, "OnValue", 0},
    {Prop::OffValue, "OffValue", 0},
    {Prop::CommandValue, "CommandValue", 0},
    {Prop::pCommandValue, "pCommandValue", kReads | kShows},
    {Prop::EnumEntry, "EnumEntry", kReads},
    {Prop::EntryName, "EntryName", 0},
    {Prop::NumericValue, "NumericValue", 0},
    {Prop::Symbolic, "Symbolic", 0},
    {Prop::IsSelfClearing, "IsSelfClearing", 0},
    {Prop::pFeature, "pFeature", kReads},
    {Prop::ChunkID, "ChunkID", 0},
    {Prop::pChunkID, "pChunkID", kReads},
    {Prop::SwapEndianess, "SwapEndianess", 0},
    {Prop::CacheChunkData, "CacheChunkData", 0},
    {Prop::FeatureID, "FeatureID", 0},
    {Prop::Timeout, "Timeout", 0},
    {Prop::Other, "", 0},
};
// clang-format on

constexpr size_t kElementCount = static_cast<size_t>(Prop::Other) + 1;
static_assert(std::size(kElements) == kElementCount, "one row per element");

const ElementFacts& FactsOf(Prop id) { return kElements[static_cast<size_t>(id)]; }

/// A list in which each node stands once.
class NodeSet
{
public:
    explicit NodeSet(const Description& description)
        : m_seen(description.NodeCount(), false)
    {}

    bool Add(NodeIndex node)
    {
        if (node == kNoNode || m_seen[node])
            return false;
        m_seen[node] = true;
        m_list.push_back(node);
        return true;
    }

    size_t Size() const { return m_list.size(); }
    NodeIndex operator[](size_t i) const { return m_list[i]; }
    std::vector<NodeIndex> Take() { return std::move(m_list); }

private:
    std::vector<bool> m_seen;
    std::vector<NodeIndex> m_list;
};

bool Names(const Property& property, NodeIndex node)
{
    return property.node == node || property.offsetNode == node;
}

void AddReferences(const Description& description, NodeIndex node, unsigned roles, NodeSet& set)
{
    for (const Property& property : description.Properties(node)) {
        if ((FactsOf(property.id).roles & roles) == 0)
            continue;
        set.Add(property.node);
        if ((roles & kReads) != 0)
            set.Add(property.offsetNode);
    }
}

bool Shows(const Description& description, NodeIndex shower, NodeIndex shown)
{
    const Range<Property> properties = description.Properties(shower);
    return std::any_of(properties.begin(), properties.end(), [&](const Property& property) {
        return (FactsOf(property.id).roles & kShows) != 0 && Names(property, shown);
    });
}

void AddParents(const Description& description, NodeIndex node, NodeSet& set)
{
    for (NodeIndex other = 0; other < description.NodeCount(); ++other) {
        for (const Property& property : description.Properties(other)) {
            if (FactsOf(property.id).roles != 0 && Names(property, node))
                set.Add(other);
        }
    }
}

/// Extends the set by `next` of each member until nothing is new.
template <typename Next>
void Close(NodeSet& set, const Next& next)
{
    for (size_t i = 0; i < set.Size(); ++i)
        next(set[i]);
}

} // namespace

const char* NameOf(Prop id) { return FactsOf(id).name; }

std::vector<NodeIndex> RelatedNodes(const Description& description, NodeIndex node, GenApi::ELinkType type)
{
    NodeSet set(description);
    switch (type) {
    case GenApi::ctParentNodes:
        AddParents(description, node, set);
        break;
    case GenApi::ctReadingChildren:
        AddReferences(description, node, kReads, set);
        break;
    case GenApi::ctWritingChildren:
    case GenApi::ctValueChangingChildren:
        AddReferences(description, node, kWrites, set);
        break;
    case GenApi::ctInvalidatingChildren:
        AddReferences(description, node, kReads | kMakesStale, set);
        break;
    case GenApi::ctDependingNodes:
    case GenApi::ctTerminalNodes:
        break;
    }
    if (type == GenApi::ctDependingNodes) {
        const auto addDependents = [&](NodeIndex from) {
            for (const NodeIndex dependent : description.Dependents(from))
                set.Add(dependent);
        };
        addDependents(node);
        Close(set, addDependents);
    }
    if (type != GenApi::ctTerminalNodes)
        return set.Take();

    AddReferences(description, node, kWrites, set);
    Close(set, [&](NodeIndex from) { AddReferences(description, from, kWrites, set); });
    std::vector<NodeIndex> terminals;
    for (size_t i = 0; i < set.Size(); ++i) {
        if (description.Find(set[i], Prop::pPort) != nullptr ||
            description.Find(set[i], Prop::Value) != nullptr)
            terminals.push_back(set[i]);
    }
    return terminals;
}

std::vector<NodeIndex> SelectedNodes(const Description& description, NodeIndex node)
{
    NodeSet set(description);
    for (const Property& property : description.Properties(node)) {
        if (property.id == Prop::pSelected)
            set.Add(property.node);
    }
    Close(set, [&](NodeIndex selected) {
        for (const NodeIndex dependent : description.Dependents(selected)) {
            if (Shows(description, dependent, selected))
                set.Add(dependent);
        }
    });
    return set.Take();
}

std::vector<NodeIndex> SelectingNodes(const Description& description, NodeIndex node)
{
    // Down from the node over all that it is made of.
    NodeSet below(description);
    NodeSet selectors(description);
    below.Add(node);
    Close(below, [&](NodeIndex from) {
        for (const NodeIndex selector : description.Selectors(from))
            selectors.Add(selector);
        AddReferences(description, from, kShows, below);
    });
    return selectors.Take();
}

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
#include "runtime/NodeFactory.h"

#include "runtime/CategoryNode.h"
#include "runtime/ChoiceNodes.h"
#include "runtime/FormulaNodes.h"
#include "runtime/NodeMap.h"
#include "runtime/NodeMemory.h"
#include "runtime/PortNode.h"
#include "runtime/RegisterNodes.h"
#include "runtime/TextNodes.h"
#include "runtime/ValueNodes.h"

#include <iterator>

namespace KxGenApi
{
namespace
{

template <class T>
Node* Make(NodeMap& map, NodeIndex index, NodeMemory& memory)
{
    return memory.Make<T>(map, index);
}

using Maker = Node* (*)(NodeMap&, NodeIndex, NodeMemory&);

struct Row
{
    NodeType type;
    Maker make;
};

// clang-format off
constexpr Row kRows[] = {
    {NodeType::Node, Make<PlainNode>},
    {NodeType::Category, Make<CategoryNode>},
    {NodeType::Integer, Make<IntegerNode>},
    {NodeType::IntReg, Make<IntRegNode>},
    {NodeType::MaskedIntReg, Make<IntRegNode>},
    {NodeType::StructEntry, Make<IntRegNode>},
    {NodeType::IntConverter, Make<ConverterNode<int64_t>>},
    {NodeType::IntSwissKnife, Make<SwissKnifeNode<int64_t>>},
    {NodeType::Float, Make<FloatNode>},
    {NodeType::FloatReg, Make<FloatRegNode>},
    {NodeType::Converter, Make<ConverterNode<double>>},
    {NodeType::SwissKnife, Make<SwissKnifeNode<double>>},
    {NodeType::Boolean, Make<BooleanNode>},
    {NodeType::Command, Make<CommandNode>},
    {NodeType::Enumeration, Make<EnumerationNode>},
    {NodeType::EnumEntry, Make<EnumEntryNode>},
    {NodeType::String, Make<StringNode>},
    {NodeType::StringReg, Make<StringRegNode>},
    {NodeType::Register, Make<RegisterNode>},
    {NodeType::Port, Make<PortNode>},
    {NodeType::ConfRom, Make<Node>},        // the IIDC kinds carry properties for those who know them
    {NodeType::TextDesc, Make<Node>},
    {NodeType::IntKey, Make<Node>},
    {NodeType::AdvFeatureLock, Make<Node>},
    {NodeType::SmartFeature, Make<Node>},
};
// clang-format on

constexpr bool AreInOrder()
{
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (static_cast<size_t>(kRows[i].type) != i)
            return false;
    }
    return std::size(kRows) == static_cast<size_t>(NodeType::SmartFeature) + 1;
}
static_assert(AreInOrder(), "one row per kind, in the order of NodeType");

} // namespace

Node* MakeNode(NodeMap& map, NodeIndex index, NodeMemory& memory)
{
    return kRows[static_cast<size_t>(map.Described().Node(index).type)].make(map, index, memory);
}

} // namespace KxGenApi

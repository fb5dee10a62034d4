// SPDX-License-Identifier: Apache-2.0
#include "runtime/PropertyTexts.h"

#include "description/Schema.h"
#include "runtime/NodeMap.h"
#include "runtime/Relations.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <set>

namespace KxGenApi
{
namespace
{

constexpr uint32_t Bit(NodeType type) { return uint32_t{1} << static_cast<unsigned>(type); }

template <typename... Types>
constexpr uint32_t Bits(Types... types)
{
    return (Bit(types) | ...);
}

constexpr uint32_t kAll = ~uint32_t{0};
constexpr uint32_t kIntRegs = Bits(NodeType::IntReg, NodeType::MaskedIntReg, NodeType::StructEntry);
constexpr uint32_t kRegs = kIntRegs | Bits(NodeType::StringReg, NodeType::Register);
constexpr uint32_t kKnives = Bits(NodeType::SwissKnife, NodeType::IntSwissKnife);
constexpr uint32_t kConverters = Bits(NodeType::Converter, NodeType::IntConverter);
constexpr uint32_t kReals =
    Bits(NodeType::Float, NodeType::FloatReg, NodeType::SwissKnife, NodeType::Converter);

struct Default
{
    uint32_t types;
    const char* name;
    const char* text;
};

constexpr Default kDefaults[] = {
    {kAll, "ExposeStatic", "Yes"},
    {kAll, "ImposedAccessMode", "RW"},
    {kAll, "IsDeprecated", "No"},
    {kAll, "Streamable", "No"},
    {kAll, "Visibility", "Beginner"},
    {kRegs, "Cachable", "WriteThrough"},
    {kIntRegs, "Representation", "PureNumber"},
    {kIntRegs, "Sign", "Unsigned"},
    {Bits(NodeType::FloatReg), "Cachable", "WriteAround"},
    {kReals, "DisplayPrecision", "-1"},
    {Bits(NodeType::FloatReg, NodeType::SwissKnife), "DisplayNotation", "Automatic"},
    {Bits(NodeType::IntSwissKnife), "Representation", "PureNumber"},
    {Bits(NodeType::Boolean), "OnValue", "1"},
    {Bits(NodeType::Boolean), "OffValue", "0"},
    {Bits(NodeType::EnumEntry), "IsSelfClearing", "No"},
    {kConverters, "Slope", "Automatic"},
    {Bits(NodeType::Converter), "IsLinear", "No"},
    {Bits(NodeType::Port), "CacheChunkData", "No"},
    {Bits(NodeType::Port), "SwapEndianess", "No"},
};

/// Collects items.
class Items
{
public:
    void Add(std::string_view value, std::string_view attribute = {})
    {
        const char* const separator = m_found ? "\t" : "";
        m_text.value.append(separator).append(value);
        m_text.attribute.append(separator).append(attribute);
        m_found = true;
        m_hasAttribute = m_hasAttribute || !attribute.empty();
    }
    bool Take(PropertyText& text)
    {
        if (!m_hasAttribute)
            m_text.attribute.clear();
        text = std::move(m_text);
        return m_found;
    }

private:
    PropertyText m_text;
    bool m_found = false;
    bool m_hasAttribute = false;
};

std::string_view NameOfNode(const Node& node, NodeIndex index) { return node.Described().Node(index).name; }

// Parts of formulas are nodes of their own, which the formula names as it names any other.
std::string_view NameOfElement(const Property& property)
{
    switch (property.id) {
    case Prop::Constant:
    case Prop::Expression:
        return NameOf(Prop::pVariable);
    case Prop::EnumEntry:
        return "pEnumEntry";
    case Prop::Bit:
        return NameOf(Prop::LSB);
    case Prop::Other:
        return property.attribute;
    case Prop::EntryName:
        return {};
    default:
        return NameOf(property.id);
    }
}

bool IsIntegerLiteral(const Node& node, const Property& property)
{
    const ValueKind kind = InfoOf(property.id).kind;
    return kind == ValueKind::Integer || (kind == ValueKind::Number && Has(node.Type(), kIsNumber) &&
                                          !Has(node.Type(), kIsReal) && node.Type() != NodeType::Boolean);
}

void AddElement(const Node& node, const Property& property, Items& items)
{
    if (property.id == Prop::pIndex) {
        const std::string offset = property.offsetNode != kNoNode
                                       ? std::string(NameOfNode(node, property.offsetNode))
                                   : property.hasOffset ? std::to_string(property.index)
                                                        : std::string();
        return items.Add(property.text, offset);
    }
    const bool isIndexed = property.id == Prop::ValueIndexed || property.id == Prop::pValueIndexed;
    const std::string attribute = isIndexed ? std::to_string(property.index)
                                  : property.id == Prop::Other || property.id == Prop::EnumEntry
                                      ? std::string()
                                      : std::string(property.attribute);
    if (property.node != kNoNode)
        items.Add(NameOfNode(node, property.node), attribute);
    else if (IsIntegerLiteral(node, property))
        items.Add(std::to_string(property.integer), attribute);
    else
        items.Add(property.text, attribute);
}

/// What isn't an element: facts about the node, and its place among the others.
bool FindFact(const Node& node, const std::string& name, Items& items)
{
    const NodeData& data = node.Data();
    const Description& description = node.Described();
    const auto addNodes = [&](const std::vector<NodeIndex>& nodes) {
        for (const NodeIndex other : nodes)
            items.Add(NameOfNode(node, other));
        return true;
    };
    if (name == "DeviceName" && data.type != NodeType::EnumEntry)
        return items.Add(node.Map().GetDeviceName().c_str()), true;
    if (name == "IsFeature")
        return items.Add(data.isFeature ? "Yes" : "No"), true;
    if (name == "Name")
        return items.Add(data.name), true;
    if (name == "NameSpace")
        return items.Add(data.nameSpace == Standard ? "Standard" : "Custom"), true;
    if (name == "NodeType")
        return items.Add(
                   InfoOf(data.type == NodeType::StructEntry ? NodeType::MaskedIntReg : data.type).name),
               true;
    if (name == "pDependent")
        return addNodes(RelatedNodes(description, node.Index(), ctDependingNodes));
    if (name == "pSelecting") {
        const Range<NodeIndex> selectors = description.Selectors(node.Index());
        return addNodes({selectors.begin(), selectors.end()});
    }
    if (name == "pTerminal") {
        const bool isItself = data.type == NodeType::Node || node.Find(Prop::pPort) != nullptr ||
                              node.Find(Prop::Value) != nullptr;
        return addNodes(isItself ? std::vector<NodeIndex>{node.Index()}
                                 : RelatedNodes(description, node.Index(), ctTerminalNodes));
    }
    const bool isConverter = (kConverters & Bit(data.type)) != 0;
    if (isConverter && (name == "pSwissKnifeTo" || name == "pSwissKnifeFrom"))
        return items.Add(std::string(data.name) + (name == "pSwissKnifeTo" ? "_ConvertTo" : "_ConvertFrom")),
               true;
    if ((kKnives & Bit(data.type)) != 0 && name == "InputDirection") {
        const auto endsWith = [&](std::string_view end) {
            return data.synthetic && data.name.size() > end.size() &&
                   data.name.substr(data.name.size() - end.size()) == end;
        };
        return items.Add(endsWith("_ConvertTo") ? "To" : endsWith("_ConvertFrom") ? "From" : "None"), true;
    }
    return false;
}

constexpr const char* kFacts[] = {"DeviceName", "InputDirection", "IsFeature",      "Name",
                                  "NameSpace",  "NodeType",       "pDependent",     "pSelecting",
                                  "pTerminal",  "pSwissKnifeTo",  "pSwissKnifeFrom"};

const Default* FindDefault(const Node& node, std::string_view name)
{
    const auto found = std::find_if(std::begin(kDefaults), std::end(kDefaults), [&](const Default& row) {
        return (row.types & Bit(node.Type())) != 0 && name == row.name;
    });
    return found != std::end(kDefaults) ? found : nullptr;
}

} // namespace

std::vector<std::string> PropertyNamesOf(const Node& node)
{
    std::set<std::string> names;
    PropertyText ignored;
    for (const char* const fact : kFacts) {
        if (FindPropertyText(node, fact, ignored))
            names.insert(fact);
    }
    for (const Property& property : node.Properties()) {
        names.emplace(NameOfElement(property));
        if (property.id == Prop::Bit)
            names.insert(NameOf(Prop::MSB));
    }
    for (const Default& row : kDefaults) {
        if ((row.types & Bit(node.Type())) != 0)
            names.insert(row.name);
    }
    names.erase(""); // of an entry's name, which is an attribute
    return {names.begin(), names.end()};
}

bool FindPropertyText(const Node& node, const std::string& name, PropertyText& text)
{
    Items items;
    if (FindFact(node, name, items))
        return items.Take(text);
    for (const Property& property : node.Properties()) {
        if (!name.empty() &&
            (NameOfElement(property) == name || (property.id == Prop::Bit && name == NameOf(Prop::MSB))))
            AddElement(node, property, items);
    }
    if (items.Take(text))
        return true;
    const Default* const known = FindDefault(node, name);
    text = {known != nullptr ? known->text : "", ""};
    return known != nullptr;
}

} // namespace KxGenApi

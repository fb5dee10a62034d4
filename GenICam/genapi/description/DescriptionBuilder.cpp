// SPDX-License-Identifier: Apache-2.0
#include "description/DescriptionBuilder.h"

#include "description/Diagnostics.h"
#include "description/Limits.h"
#include "description/Literals.h"
#include "description/Prefault.h"
#include "description/XmlText.h"

#include <algorithm>
#include <utility>

namespace KxGenApi
{
namespace
{

struct NumberAttribute
{
    const char* name;
    uint16_t DeviceFacts::*member;
};

constexpr NumberAttribute kNumberAttributes[] = {
    {"SchemaMajorVersion", &DeviceFacts::schemaMajor},
    {"SchemaMinorVersion", &DeviceFacts::schemaMinor},
    {"SchemaSubMinorVersion", &DeviceFacts::schemaSubMinor},
    {"MajorVersion", &DeviceFacts::major},
    {"MinorVersion", &DeviceFacts::minor},
    {"SubMinorVersion", &DeviceFacts::subMinor},
};

struct TextAttribute
{
    const char* name;
    std::string DeviceFacts::*member;
};

constexpr TextAttribute kTextAttributes[] = {
    {"ModelName", &DeviceFacts::modelName},     {"VendorName", &DeviceFacts::vendorName},
    {"ToolTip", &DeviceFacts::toolTip},         {"StandardNameSpace", &DeviceFacts::standardNameSpace},
    {"ProductGuid", &DeviceFacts::productGuid}, {"VersionGuid", &DeviceFacts::versionGuid},
};

// What an entry takes over from its StructReg, as a rule at most: an estimate.
constexpr size_t kInheritedProperties = 8;

// Whether a formula uses a name: as a whole word, a suffix after a dot included.
bool Uses(std::string_view formula, std::string_view name)
{
    const auto isWordPart = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
               c == '.';
    };
    for (size_t at = formula.find(name); at != std::string_view::npos; at = formula.find(name, at + 1)) {
        const size_t end = at + name.size();
        if ((at == 0 || !isWordPart(formula[at - 1])) && (end == formula.size() || !isWordPart(formula[end])))
            return true;
    }
    return false;
}

DescriptionParts PartsOf(const SourceText& source)
{
    DescriptionParts parts;
    parts.text = TextArena(source.Text());
    return parts;
}

} // namespace

DescriptionBuilder::DescriptionBuilder(const pugi::xml_node& root, SourceText& source)
    : m_root(root)
    , m_source(source)
    , m_parts(PartsOf(source))
    , m_declarations(root, source, m_parts.text)
{}

std::shared_ptr<const Description> DescriptionBuilder::Build()
{
    ReadDevice();
    // Nearly every element becomes a property, those of a StructReg once per entry. Memory that stays
    // untouched costs nothing.
    const size_t elements = m_source.TagCount() / 2;
    m_parts.properties.reserve(
        std::min(elements + kInheritedProperties * m_declarations.EntryCount() + 16, kMaxProperties));
    Prefault(m_parts.properties.data(), elements * sizeof(Property));
    ReservePresent(m_parts.nodes, m_declarations.Count());
    m_parts.nodes.resize(m_declarations.Count());
    while (m_next < m_declarations.Count())
        ReadNext();
    m_parts.nodes.resize(m_mentioned);
    m_parts.names = m_declarations.ReleaseNames();
    m_parts.source = m_source.Release();
    return Assemble(std::move(m_parts));
}

void DescriptionBuilder::ReadDevice()
{
    DeviceFacts& device = m_parts.device;
    for (const TextAttribute& row : kTextAttributes)
        device.*row.member = m_root.attribute(row.name).value();
    for (const NumberAttribute& row : kNumberAttributes) {
        const pugi::xml_attribute attribute = m_root.attribute(row.name);
        if (!attribute)
            continue;
        const auto number = ParseInteger(Trimmed(attribute.value()));
        if (!number || *number < 0 || *number > UINT16_MAX)
            Fail({PositionOf(m_root, m_source), {}, m_root.name()},
                 std::string("has the attribute ") + row.name + "=" + Quoted(attribute.value()) +
                     ", which is no number from 0 to 65535",
                 Fault::Literal);
        device.*row.member = static_cast<uint16_t>(*number);
    }
}

NodeIndex DescriptionBuilder::Mention(DefinitionId id)
{
    Definition& definition = m_declarations[id];
    if (definition.index == kNoNode)
        definition.index = m_mentioned++;
    return definition.index;
}

void DescriptionBuilder::ReadNext()
{
    const DefinitionId id = m_next;
    if (m_declarations[id].origin == Origin::Struct)
        ReadStruct(id);
    else
        ReadNode(id);
}

void DescriptionBuilder::ReadNode(DefinitionId id)
{
    m_next = id + 1;
    Mention(id);
    const Definition& definition = m_declarations[id];
    Context context;
    context.id = id;
    context.name = definition.name;
    context.type = definition.type;
    context.rules = &RulesOf(definition.type);
    context.firstProperty = m_open.size();
    if (definition.type == NodeType::EnumEntry) {
        Property& name = m_open.emplace_back();
        name.id = Prop::EntryName;
        name.text = m_parts.text.Copy(definition.element.attribute("Name").value());
    }
    ReadChildren(context, definition.element);
    CheckComplete(context);
    FillParts(context, id + 1, m_next);
    CloseNode(context, definition.origin == Origin::Synthesized);
}

void DescriptionBuilder::ReadChildren(Context& context, const pugi::xml_node& element)
{
    if (!Trimmed(element.value()).empty())
        Fail(PlaceOf(context, element),
             "holds text between its elements: " + Quoted(Trimmed(element.value())));
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element)
            ReadProperty(context, child);
        else if (!Trimmed(child.value()).empty())
            Fail(PlaceOf(context, element),
                 "holds text between its elements: " + Quoted(Trimmed(child.value())));
    }
}

void DescriptionBuilder::CloseNode(const Context& context, bool isSynthetic)
{
    const Definition& definition = m_declarations[context.id];
    std::vector<Property>& properties = m_parts.properties;
    const size_t count = m_open.size() - context.firstProperty;
    NodeData& node = m_parts.nodes[definition.index];
    node.name = definition.name;
    node.type = definition.type;
    node.nameSpace = definition.nameSpace;
    node.synthetic = isSynthetic;
    node.firstProperty = static_cast<uint32_t>(properties.size());
    node.propertyCount = static_cast<uint32_t>(count);
    node.position = definition.position;
    if (properties.size() + count > kMaxProperties)
        FailLimit({node.position, node.name, {}}, properties.size() + count, "elements", kMaxProperties);
    const auto first = m_open.begin() + static_cast<ptrdiff_t>(context.firstProperty);
    properties.insert(properties.end(), first, m_open.end());
    m_open.erase(first, m_open.end());
}

// A StructReg is read once; each entry takes over what it doesn't say itself.
void DescriptionBuilder::ReadStruct(DefinitionId id)
{
    m_next = id + 1;
    const pugi::xml_node element = m_declarations[id].element;
    Context context;
    context.type = NodeType::StructEntry;
    context.name = element.attribute("Comment").value();
    context.rules = &StructRegRules();
    context.firstProperty = m_open.size();
    bool hasEntry = false;
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        if (FindNodeKind(child.name()) == &InfoOf(NodeType::StructEntry)) {
            ReadEntry(m_next, context.firstProperty);
            hasEntry = true;
            continue;
        }
        if (hasEntry && child.type() == pugi::node_element && LocalName(child.name()) != "Extension")
            Fail(PlaceOf(context, child), "must stand ahead of the StructEntry elements");
        if (child.type() == pugi::node_element)
            ReadProperty(context, child);
    }
    if (!hasEntry)
        Fail(PlaceOf(context, element), "has no StructEntry");
    m_open.resize(context.firstProperty);
}

void DescriptionBuilder::ReadEntry(DefinitionId id, size_t firstInherited)
{
    const size_t endInherited = m_open.size();
    m_next = id + 1;
    Mention(id);
    const Definition& definition = m_declarations[id];
    Context context;
    context.id = id;
    context.name = definition.name;
    context.type = definition.type;
    context.rules = &RulesOf(NodeType::StructEntry);
    context.firstProperty = endInherited;
    ReadChildren(context, definition.element);

    const NodeRules& complete = CompleteEntryRules();
    const uint64_t own = context.seenSlots;
    for (size_t i = firstInherited; i < endInherited; ++i) {
        // A copy: the vector may move while it grows.
        const Property inherited = m_open[i];
        const uint8_t slot = RulesOf(NodeType::StructEntry).slot[static_cast<size_t>(inherited.id)];
        const bool isOverridden = slot != NodeRules::kNotAllowed && (own >> slot & 1) != 0;
        if (!isOverridden || complete.Repeats(inherited.id))
            m_open.push_back(inherited);
    }
    const auto rank = [&complete](const Property& property) {
        return complete.rank[complete.slot[static_cast<size_t>(property.id)]];
    };
    std::stable_sort(m_open.begin() + static_cast<ptrdiff_t>(endInherited), m_open.end(),
                     [&](const Property& a, const Property& b) { return rank(a) < rank(b); });
    context.rules = &complete;
    context.seenSlots = 0;
    for (size_t i = endInherited; i < m_open.size(); ++i)
        context.seenSlots |= uint64_t{1} << complete.slot[static_cast<size_t>(m_open[i].id)];
    CheckComplete(context);
    CloseNode(context, false);
}

// Constants, expressions and the two directions of a converter are nodes of their own, whose content is known
// only when all of the node has been read.
void DescriptionBuilder::FillParts(const Context& context, DefinitionId firstPart, DefinitionId endPart)
{
    if (firstPart == endPart || !Has(context.type, kIsFormula))
        return;
    for (DefinitionId id = firstPart; id < endPart; ++id) {
        const Definition& part = m_declarations[id];
        const auto property =
            std::find_if(m_open.begin() + static_cast<ptrdiff_t>(context.firstProperty), m_open.end(),
                         [&](const Property& p) { return p.node == part.index && p.id != Prop::pVariable; });
        if (property->id != Prop::Constant) {
            FillFormula(context, id, property->text);
            continue;
        }
        Context own;
        own.id = id;
        own.firstProperty = m_open.size();
        Property value = *property;
        value.id = Prop::Value;
        value.node = kNoNode;
        value.attribute = {};
        m_open.push_back(value);
        CloseNode(own, true);
    }
}

void DescriptionBuilder::FillFormula(const Context& context, DefinitionId id, std::string_view formula)
{
    Context own;
    own.id = id;
    own.firstProperty = m_open.size();
    for (size_t i = context.firstProperty; i < own.firstProperty; ++i) {
        const Property property = m_open[i];
        // An expression that is not used would make circles where there are none.
        if (property.id == Prop::pVariable || property.id == Prop::Constant ||
            (property.id == Prop::Expression && Uses(formula, property.attribute)))
            m_open.push_back(property);
    }
    Property& text = m_open.emplace_back();
    text.id = Prop::Formula;
    text.text = formula;
    CloseNode(own, true);
}

} // namespace KxGenApi

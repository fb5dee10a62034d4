// SPDX-License-Identifier: Apache-2.0
// The part of DescriptionBuilder that reads one element of a node.
#include "description/DescriptionBuilder.h"
#include "description/Diagnostics.h"
#include "description/Literals.h"
#include "description/XmlText.h"

#include <GenApi/Types.h>

#include <cstring>

namespace KxGenApi
{
namespace
{

struct Suffix
{
    std::string_view text;
    RefPart part;
};

constexpr Suffix kSuffixes[] = {{"Value", RefPart::Value},
                                {"Min", RefPart::Min},
                                {"Max", RefPart::Max},
                                {"Inc", RefPart::Inc},
                                {"AccessMode", RefPart::AccessMode}};
constexpr std::string_view kEntrySuffix = "Entry.";

RefPart PartOf(std::string_view variable)
{
    const size_t dot = variable.find('.');
    if (dot == std::string_view::npos)
        return RefPart::Value;
    const std::string_view suffix = variable.substr(dot + 1);
    if (suffix.size() > kEntrySuffix.size() && suffix.substr(0, kEntrySuffix.size()) == kEntrySuffix)
        return RefPart::Entry;
    for (const Suffix& known : kSuffixes)
        if (known.text == suffix)
            return known.part;
    return RefPart::Unknown;
}

struct NameSpacePrefix
{
    std::string_view text;
    GenApi::ENameSpace nameSpace;
};

constexpr NameSpacePrefix kPrefixes[] = {{"Std::", GenApi::Standard}, {"Cust::", GenApi::Custom}};
bool IsOptional(const NodeRules& rules, Prop prop)
{
    return rules.lenient || !(rules.required >> rules.slot[static_cast<size_t>(prop)] & 1);
}

// The attributes that an element of ours may have.
bool IsAttributeAllowed(const PropertyInfo& info, std::string_view name)
{
    switch (info.kind) {
    case ValueKind::Variable:
    case ValueKind::Constant:
    case ValueKind::Expression:
        return name == "Name";
    case ValueKind::Node:
        return true; // checked with the node
    default:
        if (info.prop == Prop::pIndex)
            return name == "Offset" || name == "pOffset";
        return (info.prop == Prop::ValueIndexed || info.prop == Prop::pValueIndexed) && name == "Index";
    }
}

} // namespace

Place DescriptionBuilder::PlaceOf(const Context& context, const pugi::xml_node& element) const
{
    const bool isNodeItself = context.id != kNoDefinition && m_declarations[context.id].element == element;
    return {PositionOf(element, m_source), context.name, isNodeItself ? "" : element.name()};
}

std::string_view DescriptionBuilder::Text(const Context& context, const pugi::xml_node& element)
{
    // The place is made only when it is needed: the position costs more than the text.
    return element.first_child() ? TextOf(element, m_scratch, PlaceOf(context, element)) : element.value();
}

std::string_view DescriptionBuilder::Keep(std::string_view text)
{
    // Generated files tend to say the same in ToolTip and Description.
    if (text != m_lastKept)
        m_lastKept = m_parts.text.Copy(text);
    return m_lastKept;
}

void DescriptionBuilder::ReadProperty(Context& context, const pugi::xml_node& element)
{
    const std::string_view name = element.name();
    const PropertyInfo* info = FindProperty(name);
    const bool isMisplacedPart = info && context.rules->lenient && info->kind >= ValueKind::Constant &&
                                 !IsPart(context.type, info->prop);
    if (!info || isMisplacedPart) {
        if (LocalName(name) == "Extension")
            return;
        if (!context.rules->lenient)
            Fail(PlaceOf(context, element), "is unknown");
        Property& other = m_open.emplace_back();
        other.id = Prop::Other;
        other.attribute = m_parts.text.Copy(LocalName(name));
        other.text = Keep(Trimmed(element.text().get()));
        return;
    }
    CheckOrder(context, element, info->prop);
    Property property;
    property.id = info->prop;
    ReadAttributes(context, element, *info, property);
    if (info->kind == ValueKind::Word && IsOptional(*context.rules, info->prop) &&
        Trimmed(Text(context, element)).empty())
        return; // stands for the default of the schema, as if it weren't there
    ReadValue(context, element, *info, property);
    m_open.push_back(property);
}

void DescriptionBuilder::CheckOrder(Context& context, const pugi::xml_node& element, Prop prop)
{
    const NodeRules& rules = *context.rules;
    if (rules.lenient)
        return;
    const uint8_t slot = rules.slot[static_cast<size_t>(prop)];
    if (slot == NodeRules::kNotAllowed)
        Fail(PlaceOf(context, element),
             "is not allowed in a node of kind " + std::string(InfoOf(context.type).name));
    const uint64_t bit = uint64_t{1} << slot;
    if ((context.seenSlots & rules.once & bit) != 0)
        Fail(PlaceOf(context, element), "may stand only once, and excludes its alternatives");
    if (rules.rank[slot] < context.rank)
        Fail(PlaceOf(context, element), "must stand ahead of " + Quoted(context.lastElement));
    context.seenSlots |= bit;
    context.rank = rules.rank[slot];
    context.lastElement = InfoOf(prop).name;
}

void DescriptionBuilder::ReadAttributes(const Context& context, const pugi::xml_node& element,
                                        const PropertyInfo& info, Property& property)
{
    bool hasIndex = info.prop != Prop::ValueIndexed && info.prop != Prop::pValueIndexed;
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute;
         attribute = attribute.next_attribute())
    {
        const std::string_view name = attribute.name();
        if (!IsAttributeAllowed(info, name)) {
            if (!IsForeign(attribute))
                Fail(PlaceOf(context, element), "has the unknown attribute " + Quoted(name));
            continue;
        }
        const std::string_view value = Trimmed(attribute.value());
        if (name == "Name")
            property.attribute = m_parts.text.Copy(value);
        else if (name == "Index") {
            ReadInteger(context, element, value, property.index);
            hasIndex = true;
        } else if (name == "Offset") {
            ReadInteger(context, element, value, property.index);
            property.hasOffset = true;
        } else if (name == "pOffset") {
            const DefinitionId target = Resolve(value, context, element);
            CheckTarget(context, element, Target::Number, m_declarations[target].type);
            property.offsetNode = Mention(target);
        }
    }
    if (property.hasOffset && property.offsetNode != kNoNode)
        Fail(PlaceOf(context, element), "has both Offset and pOffset");
    if (!hasIndex)
        Fail(PlaceOf(context, element), "has no Index");
    if (info.kind == ValueKind::Variable && property.attribute.empty())
        Fail(PlaceOf(context, element), "has no Name");
}

void DescriptionBuilder::ReadValue(const Context& context, const pugi::xml_node& element,
                                   const PropertyInfo& info, Property& property)
{
    switch (info.kind) {
    case ValueKind::Text:
        property.text = Keep(Text(context, element));
        break;
    case ValueKind::Token:
        property.text = Keep(Trimmed(Text(context, element)));
        // The nodes of a converter's two formulas follow in the order of the file.
        if ((info.prop == Prop::FormulaTo || info.prop == Prop::FormulaFrom) &&
            Has(context.type, kIsConverter))
            property.node = Mention(m_next++);
        break;
    case ValueKind::Word: {
        const std::string_view text = Trimmed(Text(context, element));
        const Word* word = info.words->Find(text);
        if (!word)
            Fail(PlaceOf(context, element), "holds " + Quoted(text) + ", which is none of its words");
        property.integer = word->value;
        property.text = word->text;
        break;
    }
    case ValueKind::Integer:
        property.text = Keep(Trimmed(Text(context, element)));
        ReadInteger(context, element, property.text, property.integer);
        if (info.prop == Prop::Length && property.integer < 0)
            Fail(PlaceOf(context, element), "holds " + Quoted(property.text) + ", which is no length");
        break;
    case ValueKind::Real:
    case ValueKind::Number:
        ReadNumber(context, element, property);
        break;
    case ValueKind::Reference:
        ReadReference(context, element, info, property);
        break;
    case ValueKind::Variable:
        ReadVariable(context, element, property);
        break;
    case ValueKind::Constant:
        property.node = Mention(m_next++);
        ReadNumber(context, element, property);
        break;
    case ValueKind::Expression:
        property.node = Mention(m_next++);
        property.text = Keep(Trimmed(Text(context, element)));
        break;
    case ValueKind::Node: {
        const DefinitionId id = m_next;
        ReadNode(id);
        property.node = m_declarations[id].index;
        property.text = m_declarations[id].name;
        // A StructReg's own IntSwissKnife is a node like any other, shared by the entries.
        if (info.prop == Prop::IntSwissKnife && context.type == NodeType::StructEntry) {
            property.id = Prop::pAddress;
            property.attribute = {};
        }
        break;
    }
    }
}

void DescriptionBuilder::ReadNumber(const Context& context, const pugi::xml_node& element, Property& property)
{
    const bool isReal = Has(context.type, kIsReal) || property.id == Prop::NumericValue;
    if (Has(context.type, kIsText)) {
        property.text = Keep(Text(context, element));
        return;
    }
    property.text = Keep(Trimmed(Text(context, element)));
    if (isReal) {
        const auto real = ParseReal(property.text);
        if (!real)
            Fail(PlaceOf(context, element), "holds " + Quoted(property.text) + ", which is no number",
                 Fault::Literal);
        property.real = *real;
    } else if (context.type == NodeType::Boolean && (property.text == "true" || property.text == "false"))
        property.integer = property.text == "true";
    else
        ReadInteger(context, element, property.text, property.integer);
}

void DescriptionBuilder::ReadInteger(const Context& context, const pugi::xml_node& element,
                                     std::string_view text, int64_t& value)
{
    const auto integer = ParseInteger(text);
    if (!integer)
        Fail(PlaceOf(context, element), "holds " + Quoted(text) + ", which is no integer of 64 bits",
             Fault::Literal);
    value = *integer;
}

DefinitionId DescriptionBuilder::FindWithPrefix(std::string_view text) const
{
    for (const NameSpacePrefix& prefix : kPrefixes)
        if (text.substr(0, prefix.text.size()) == prefix.text) {
            const DefinitionId id = m_declarations.Find(text.substr(prefix.text.size()));
            return id != kNoDefinition && m_declarations[id].nameSpace == prefix.nameSpace ? id
                                                                                           : kNoDefinition;
        }
    return m_declarations.Find(text);
}

DefinitionId DescriptionBuilder::Resolve(std::string_view text, const Context& context,
                                         const pugi::xml_node& element)
{
    const DefinitionId id = FindWithPrefix(text);
    if (id == kNoDefinition)
        Fail(PlaceOf(context, element), "names " + Quoted(text) + ", which does not exist");
    return id;
}

void DescriptionBuilder::CheckTarget(const Context& context, const pugi::xml_node& element, Target target,
                                     NodeType type)
{
    const bool wantsText = target == Target::Value && Has(context.type, kIsText);
    const bool fits =
        target == Target::Any ||
        (target == Target::Port ? type == NodeType::Port : Has(type, wantsText ? kIsText : kIsNumber));
    if (!fits)
        Fail(PlaceOf(context, element), "names " + Quoted(Trimmed(Text(context, element))) +
                                            ", a node of kind " + std::string(InfoOf(type).name) +
                                            ", where " +
                                            (target == Target::Port ? "a Port"
                                             : wantsText            ? "a String"
                                                                    : "a number") +
                                            " is needed");
}

void DescriptionBuilder::ReadReference(const Context& context, const pugi::xml_node& element,
                                       const PropertyInfo& info, Property& property)
{
    const DefinitionId target = Resolve(Trimmed(Text(context, element)), context, element);
    CheckTarget(context, element, info.target, m_declarations[target].type);
    property.node = Mention(target);
    property.text = m_declarations[target].name;
}

void DescriptionBuilder::ReadVariable(const Context& context, const pugi::xml_node& element,
                                      Property& property)
{
    const DefinitionId target = Resolve(Trimmed(Text(context, element)), context, element);
    CheckTarget(context, element, Target::Number, m_declarations[target].type);
    property.node = Mention(target);
    property.text = m_declarations[target].name;
    property.part = PartOf(property.attribute);
}

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
#include "description/Declarations.h"

#include "description/Diagnostics.h"
#include "description/Limits.h"
#include "description/Literals.h"
#include "description/Prefault.h"
#include "description/XmlText.h"

#include <GenApi/Types.h>

#include <algorithm>
#include <utility>

namespace KxGenApi
{
namespace
{

// Of few files more than every fourth element is a node.
size_t ExpectedNodes(const SourceText& source) { return std::min(source.TagCount() / 8 + 16, kMaxNodes); }

} // namespace

bool IsPart(NodeType owner, Prop prop)
{
    switch (prop) {
    case Prop::EnumEntry:
        return owner == NodeType::Enumeration;
    case Prop::IntSwissKnife:
        return Has(owner, kIsRegister);
    case Prop::Constant:
    case Prop::Expression:
        return Has(owner, kIsFormula);
    case Prop::FormulaTo:
    case Prop::FormulaFrom:
        return Has(owner, kIsConverter);
    default:
        return false;
    }
}

Declarations::Declarations(const pugi::xml_node& root, const SourceText& source, TextArena& arena)
    : m_source(source)
    , m_arena(arena)
    , m_names(ExpectedNodes(source))
{
    m_definitions.reserve(ExpectedNodes(source));
    Prefault(m_definitions.data(),
             ExpectedNodes(source) / 2 * sizeof(Definition)); // what nearly all files need
    CollectChildren(root, 0);
}

Position Declarations::Locate(const pugi::xml_node& element) const { return PositionOf(element, m_source); }

void Declarations::CollectChildren(const pugi::xml_node& parent, unsigned depth)
{
    if (depth > kMaxNesting)
        FailLimit({Locate(parent), {}, parent.name()}, depth, "nested groups", kMaxNesting);
    if (!Trimmed(parent.value()).empty())
        Fail({Locate(parent), {}, parent.name()},
             "holds text between its elements: " + Quoted(Trimmed(parent.value())));
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
        if (child.type() != pugi::node_element) {
            if (!Trimmed(child.value()).empty())
                Fail({Locate(parent), {}, parent.name()},
                     "holds text between its elements: " + Quoted(Trimmed(child.value())));
            continue;
        }
        const NodeInfo* info = FindNodeKind(child.name());
        if (!info || info->type == NodeType::EnumEntry ||
            (info->type == NodeType::StructEntry && info->tag == Tag::Node))
        {
            if (LocalName(child.name()) == "Extension")
                continue;
            Fail({Locate(child), {}, child.name()}, "is no node that may stand here");
        }
        if (info->tag == Tag::Group)
            CollectChildren(child, depth + 1);
        else if (info->tag == Tag::StructReg)
            CollectStruct(child);
        else
            CollectNode(child, *info);
    }
}

void Declarations::CollectNode(const pugi::xml_node& element, const NodeInfo& info)
{
    // Copies lie close together: names are compared far more often than the text around them is read.
    const std::string_view name = m_arena.Join({ReadName(element)});
    Declare(name, element, info.type, Origin::Element, ReadNodeAttributes(element));
    CollectParts(element, info.type, name);
}

void Declarations::CollectStruct(const pugi::xml_node& element)
{
    ReadNodeAttributes(element);
    Declare({}, element, NodeType::StructEntry, Origin::Struct, GenApi::Custom);
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        const NodeInfo* const info = FindNodeKind(child.name());
        if (info && info->tag == Tag::Node &&
            (info->type == NodeType::IntSwissKnife || info->type == NodeType::StructEntry))
            CollectNode(child, *info);
    }
}

void Declarations::CollectParts(const pugi::xml_node& element, NodeType type, std::string_view owner)
{
    if (type != NodeType::Enumeration && !Has(type, kIsRegister) && !Has(type, kIsFormula))
        return;
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
        const PropertyInfo* const info = FindProperty(child.name());
        if (info && IsPart(type, info->prop))
            CollectPart(child, info->prop, type, owner);
    }
}

void Declarations::CollectPart(const pugi::xml_node& element, Prop prop, NodeType type,
                               std::string_view owner)
{
    if (prop == Prop::EnumEntry) {
        Declare(m_arena.Join({"EnumEntry_", owner, "_", ReadName(element)}), element, NodeType::EnumEntry,
                Origin::Element, ReadNodeAttributes(element));
        return;
    }
    const bool isReal = Has(type, kIsReal);
    const NodeType formulaType = isReal ? NodeType::SwissKnife : NodeType::IntSwissKnife;
    const NodeType valueType = isReal ? NodeType::Float : NodeType::Integer;
    const std::string_view name = prop == Prop::FormulaTo ? m_arena.Join({owner, "_ConvertTo"})
                                  : prop == Prop::FormulaFrom
                                      ? m_arena.Join({owner, "_ConvertFrom"})
                                      : m_arena.Join({"_", owner, "_", ReadName(element)});
    if (prop == Prop::IntSwissKnife) {
        ReadNodeAttributes(element);
        Declare(name, element, NodeType::IntSwissKnife, Origin::Synthesized, GenApi::Custom);
        CollectParts(element, NodeType::IntSwissKnife, name);
    } else
        Declare(name, element, prop == Prop::Constant ? valueType : formulaType, Origin::Synthesized,
                GenApi::Custom);
}

std::string_view Declarations::ReadName(const pugi::xml_node& element) const
{
    const std::string_view name = element.attribute("Name").value();
    if (name.empty())
        Fail({Locate(element), {}, element.name()}, "has no Name");
    if (name.size() > kMaxNameBytes)
        FailLimit({Locate(element), name, {}}, name.size(), "bytes of a name", kMaxNameBytes);
    for (const char c : name)
        if (static_cast<unsigned char>(c) <= ' ' || c == ':')
            Fail({Locate(element), {}, element.name()}, "has the Name " + Quoted(name) +
                                                            " with a character " + Quoted(std::string(1, c)) +
                                                            ", which no name may hold");
    return name;
}

uint8_t Declarations::ReadNodeAttributes(const pugi::xml_node& element) const
{
    uint8_t nameSpace = GenApi::Custom;
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute;
         attribute = attribute.next_attribute())
    {
        const std::string_view name = attribute.name();
        if (name == "Name" || name == "Comment" || name == "MergePriority" || name == "ExposeStatic")
            continue;
        const std::string_view value = attribute.value();
        if (name == "NameSpace" && (value == "Standard" || value == "Custom"))
            nameSpace = value == "Standard" ? GenApi::Standard : GenApi::Custom;
        else if (!IsForeign(attribute))
            Fail({Locate(element), element.attribute("Name").value(), element.name()},
                 "has the attribute " + std::string(name) + "=" + Quoted(value) + ", which is not allowed");
    }
    return nameSpace;
}

DefinitionId Declarations::Declare(std::string_view name, const pugi::xml_node& element, NodeType type,
                                   Origin origin, uint8_t nameSpace)
{
    const auto id = static_cast<DefinitionId>(m_definitions.size());
    if (id >= kMaxNodes)
        FailLimit({Locate(element), name, {}}, size_t{id} + 1, "nodes", kMaxNodes);
    Definition& definition = m_definitions.emplace_back();
    definition.name = name;
    definition.element = element;
    definition.position = Locate(element);
    definition.type = type;
    definition.origin = origin;
    definition.nameSpace = nameSpace;
    m_entryCount += type == NodeType::StructEntry && origin == Origin::Element ? 1 : 0;
    if (origin != Origin::Struct)
        AddName(id);
    return id;
}

void Declarations::AddName(DefinitionId id)
{
    const Definition& added = m_definitions[id];
    const NameIndex::Added place = m_names.Add(added.name, id, NameOf());
    if (place.collisions > kMaxNameCollisions)
        FailLimit({added.position, added.name, {}}, place.collisions, "colliding names", kMaxNameCollisions);
    if (place.equal == kNoDefinition)
        return;
    const Position& first = m_definitions[place.equal].position;
    Fail({added.position, added.name, {}}, "is defined a second time; the first definition is in line " +
                                               std::to_string(first.line) + ", column " +
                                               std::to_string(first.column));
}

DefinitionId Declarations::Find(std::string_view name) const { return m_names.Find(name, NameOf()); }

NameIndex Declarations::ReleaseNames()
{
    m_names.Renumber([this](DefinitionId id) { return m_definitions[id].index; });
    return std::move(m_names);
}

} // namespace KxGenApi

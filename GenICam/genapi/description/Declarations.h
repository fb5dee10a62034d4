// SPDX-License-Identifier: Apache-2.0
// First step of reading: which nodes there are. References can then be resolved wherever they stand.
#pragma once

#include "description/NameIndex.h"
#include "description/Schema.h"
#include "description/SourceText.h"
#include "description/TextArena.h"

#include <pugixml.hpp>

#include <string_view>
#include <vector>

namespace KxGenApi
{

/// What a node is made of.
enum class Origin : uint8_t
{
    Element,     ///< an element of its own, be it in a group, a StructReg or an Enumeration
    Struct,      ///< no node: a StructReg, whose entries follow
    Synthesized, ///< an element of another node, which fills it
};

struct Definition
{
    std::string_view name;
    pugi::xml_node element;
    NodeIndex index = kNoNode; ///< known after the first mention
    Position position;
    NodeType type = NodeType::Node;
    Origin origin = Origin::Element;
    uint8_t nameSpace = 0;
};

/// Whether an element of a node of that kind is a node itself.
bool IsPart(NodeType owner, Prop prop);

using DefinitionId = uint32_t;
constexpr DefinitionId kNoDefinition = NameIndex::kNone;

/// All nodes of a description in the order of the file: a node that another one contains comes after that one
/// and before what follows it.
class Declarations
{
public:
    /// Raises RuntimeException for unknown nodes, missing, broken and repeated names.
    Declarations(const pugi::xml_node& root, const SourceText& source, TextArena& arena);

    size_t Count() const { return m_definitions.size(); }
    /// How many of them are entries of a StructReg.
    size_t EntryCount() const { return m_entryCount; }
    Definition& operator[](DefinitionId id) { return m_definitions[id]; }
    const Definition& operator[](DefinitionId id) const { return m_definitions[id]; }

    /// By plain name; kNoDefinition if there is none.
    DefinitionId Find(std::string_view name) const;
    /// Hands over what finds the indices of the definitions by their names; to be called last.
    NameIndex ReleaseNames();

private:
    void CollectChildren(const pugi::xml_node& parent, unsigned depth);
    void CollectNode(const pugi::xml_node& element, const NodeInfo& info);
    void CollectStruct(const pugi::xml_node& element);
    void CollectParts(const pugi::xml_node& element, NodeType type, std::string_view owner);
    void CollectPart(const pugi::xml_node& element, Prop prop, NodeType type, std::string_view owner);

    std::string_view ReadName(const pugi::xml_node& element) const;
    uint8_t ReadNodeAttributes(const pugi::xml_node& element) const;
    DefinitionId Declare(std::string_view name, const pugi::xml_node& element, NodeType type, Origin origin,
                         uint8_t nameSpace);
    void AddName(DefinitionId id);
    auto NameOf() const
    {
        return [this](DefinitionId id) { return m_definitions[id].name; };
    }
    Position Locate(const pugi::xml_node& element) const;

    const SourceText& m_source;
    TextArena& m_arena;
    std::vector<Definition> m_definitions;
    NameIndex m_names;
    size_t m_entryCount = 0;
};

} // namespace KxGenApi

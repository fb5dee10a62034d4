// SPDX-License-Identifier: Apache-2.0
// Second step of reading: the properties of all nodes, with their references resolved.
#pragma once

#include "description/Assembly.h"
#include "description/Declarations.h"
#include "description/Description.h"
#include "description/Diagnostics.h"
#include "description/Schema.h"
#include "description/SourceText.h"
#include "description/TextArena.h"

#include <pugixml.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KxGenApi
{

class DescriptionBuilder
{
public:
    /// `root` is the element RegisterDescription of `source`.
    DescriptionBuilder(const pugi::xml_node& root, SourceText& source);

    /// Reads all, and takes the memory of the source. Call once.
    std::shared_ptr<const Description> Build();

private:
    /// The node that is being read.
    struct Context
    {
        DefinitionId id = kNoDefinition;
        std::string_view name;
        NodeType type = NodeType::Node;
        const NodeRules* rules = nullptr;
        uint64_t seenSlots = 0;
        uint8_t rank = 0;
        std::string_view lastElement;
        size_t firstProperty = 0; ///< in m_open
    };

    // DescriptionBuilder.cpp: nodes
    void ReadDevice();
    void ReadNext();
    void ReadNode(DefinitionId id);
    void ReadStruct(DefinitionId id);
    void ReadEntry(DefinitionId id, size_t firstInherited);
    void ReadChildren(Context& context, const pugi::xml_node& element);
    void CloseNode(const Context& context, bool isSynthetic);
    NodeIndex Mention(DefinitionId id);
    void FillParts(const Context& context, DefinitionId firstPart, DefinitionId endPart);
    void FillFormula(const Context& context, DefinitionId id, std::string_view formula);

    // PropertyReader.cpp: one element
    void ReadProperty(Context& context, const pugi::xml_node& element);
    void CheckOrder(Context& context, const pugi::xml_node& element, Prop prop);
    void ReadValue(const Context& context, const pugi::xml_node& element, const PropertyInfo& info,
                   Property& property);
    void ReadNumber(const Context& context, const pugi::xml_node& element, Property& property);
    void ReadInteger(const Context& context, const pugi::xml_node& element, std::string_view text,
                     int64_t& value);
    void ReadReference(const Context& context, const pugi::xml_node& element, const PropertyInfo& info,
                       Property& property);
    void ReadVariable(const Context& context, const pugi::xml_node& element, Property& property);
    void ReadAttributes(const Context& context, const pugi::xml_node& element, const PropertyInfo& info,
                        Property& property);
    DefinitionId Resolve(std::string_view text, const Context& context, const pugi::xml_node& element);
    DefinitionId FindWithPrefix(std::string_view text) const;
    void CheckTarget(const Context& context, const pugi::xml_node& element, Target target, NodeType type);

    // NodeChecks.cpp: the node as a whole
    void CheckComplete(const Context& context);
    void CheckBits(const Context& context);

    Place PlaceOf(const Context& context, const pugi::xml_node& element) const;
    std::string_view Text(const Context& context, const pugi::xml_node& element);
    std::string_view Keep(std::string_view text);

    pugi::xml_node m_root;
    SourceText& m_source;
    DescriptionParts m_parts;
    Declarations m_declarations;
    DefinitionId m_next = 0;      // the first one not read yet
    NodeIndex m_mentioned = 0;    // nodes that have an index
    std::vector<Property> m_open; // of the nodes that are being read, the innermost last
    std::string m_scratch;
    std::string_view m_lastKept;
};

} // namespace KxGenApi

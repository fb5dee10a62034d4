// SPDX-License-Identifier: Apache-2.0
// Small questions to the XML tree that every step of reading asks.
#pragma once

#include "description/Description.h"
#include "description/Diagnostics.h"
#include "description/SourceText.h"

#include <pugixml.hpp>

#include <string>
#include <string_view>

namespace KxGenApi
{

/// Name of an element without a name space prefix.
std::string_view LocalName(std::string_view name);

/// Whether an attribute belongs to XML itself or to another schema, so that it is none of ours.
bool IsForeign(const pugi::xml_attribute& attribute);

/// Text of an element that holds nothing but text, in pieces or in one. `scratch` serves where there are
/// several pieces. Raises RuntimeException if there are elements as well.
std::string_view TextOf(const pugi::xml_node& element, std::string& scratch, const Place& place);

/// Place of an element in the file; 0:0 for those injected from another.
Position PositionOf(const pugi::xml_node& element, const SourceText& source);

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
#include "description/XmlText.h"

#include <cstring>

namespace KxGenApi
{

std::string_view LocalName(std::string_view name)
{
    // find returns the largest number there is where there is no colon.
    return name.substr(name.find(':') + 1);
}

bool IsForeign(const pugi::xml_attribute& attribute)
{
    return std::strcmp(attribute.name(), "xmlns") == 0 || std::strchr(attribute.name(), ':');
}

std::string_view TextOf(const pugi::xml_node& element, std::string& scratch, const Place& place)
{
    // The parser keeps the first piece of text in the element itself.
    const pugi::xml_node first = element.first_child();
    if (!first)
        return element.value();
    scratch = element.value();
    for (pugi::xml_node child = first; child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element)
            Fail(place, "holds the element " + Quoted(child.name()) + " where only text may stand");
        scratch += child.value();
    }
    return scratch;
}

Position PositionOf(const pugi::xml_node& element, const SourceText& source)
{
    const ptrdiff_t offset = element.offset_debug();
    // The offset is that of the name; people look for the bracket.
    return offset <= 0 ? Position{} : source.Locate(static_cast<size_t>(offset) - 1);
}

} // namespace KxGenApi

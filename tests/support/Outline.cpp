// SPDX-License-Identifier: Apache-2.0
#include "Outline.h"

#include <cctype>
#include <stdexcept>

namespace KxTest
{
namespace
{

std::string_view Trimmed(std::string_view text)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.remove_suffix(1);
    return text;
}

/// Cuts off the first word and gives it back.
std::string_view TakeWord(std::string_view& text)
{
    text = Trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(" \t\n["));
    text.remove_prefix(word.size());
    return word;
}

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text)
        escaped += c == '\\'  ? ""
                   : c == '<' ? "&lt;"
                   : c == '>' ? "&gt;"
                   : c == '&' ? "&amp;"
                              : std::string(1, c);
    return escaped;
}

/// `[Name=A]` as ` Name="A"`; nothing without a bracket.
std::string TakeAttribute(std::string_view& text)
{
    if (text.empty() || text.front() != '[')
        return "";
    const size_t equals = text.find('='), end = text.find(']');
    if (equals == text.npos || end == text.npos || equals > end)
        throw std::logic_error("bad attribute in outline: " + std::string(text));
    const std::string attribute = ' ' + std::string(text.substr(1, equals - 1)) + "=\"" +
                                  std::string(text.substr(equals + 1, end - equals - 1)) + '"';
    text.remove_prefix(end + 1);
    return attribute;
}

std::string Element(std::string_view name, const std::string& attributes, std::string_view text)
{
    const std::string tag(name);
    return '<' + tag + attributes + '>' + Escaped(Trimmed(text)) + "</" + tag + '>';
}

std::string Leaf(std::string_view item)
{
    const std::string_view name = TakeWord(item);
    if (name.empty())
        return "";
    if (name == "Little" || name == "Big")
        return Element("Endianess", "", std::string(name) + "Endian");
    if (name == "at") {
        const std::string_view address = TakeWord(item), length = TakeWord(item), mode = TakeWord(item);
        return Element("Address", "", address) + Element("Length", "", length) +
               Element("AccessMode", "", mode) + Element("pPort", "", "Device");
    }
    const std::string attribute = TakeAttribute(item);
    return Element(name, attribute, item);
}

/// The items up to the closing brace, or to the end.
std::string Items(std::string_view& rest)
{
    std::string xml;
    for (;;) {
        size_t end = rest.find_first_of(";{}");
        while (end != rest.npos && end > 0 && rest[end - 1] == '\\')
            end = rest.find_first_of(";{}", end + 1);
        std::string_view item = Trimmed(rest.substr(0, end));
        const char delimiter = end == rest.npos ? '}' : rest[end];
        rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
        if (delimiter != '{') {
            xml += Leaf(item);
            if (delimiter == '}')
                return xml;
            continue;
        }
        const std::string kind(TakeWord(item));
        const std::string name(TakeWord(item));
        const std::string key = kind == "StructReg" ? "Comment" : "Name";
        const std::string attributes = ' ' + key + "=\"" + name + '"' + TakeAttribute(item);
        xml += '<' + kind + attributes + '>' + Items(rest) + "</" + kind + ">\n";
    }
}

} // namespace

std::string NodesAsXml(std::string_view outline)
{
    std::string xml;
    while (!Trimmed(outline).empty())
        xml += Items(outline);
    return xml;
}

std::string DescriptionAsXml(std::string_view outline)
{
    std::string nodes = NodesAsXml(outline);
    for (const auto& [start, node] : {std::pair{R"(<Category Name="Root")", R"(<Category Name="Root"/>)"},
                                      std::pair{R"(<Port Name="Device")", R"(<Port Name="Device"/>)"}})
        if (nodes.find(start) == nodes.npos)
            nodes += node;
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Model" VendorName="Vendor" ToolTip="Tip" StandardNameSpace="None"
 SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
 MajorVersion="2" MinorVersion="3" SubMinorVersion="4"
 ProductGuid="11111111-1111-1111-1111-111111111111" VersionGuid="22222222-2222-2222-2222-222222222222"
 xmlns="http://www.genicam.org/GenApi/Version_1_1"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
 xsi:schemaLocation="http://www.genicam.org/GenApi/Version_1_1 http://www.genicam.org/GenApi/GenApiSchema_Version_1_1.xsd">
)" + nodes +
           "</RegisterDescription>\n";
}

} // namespace KxTest

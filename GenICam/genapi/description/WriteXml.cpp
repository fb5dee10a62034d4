// SPDX-License-Identifier: Apache-2.0
#include "description/Description.h"
#include "description/Schema.h"

#include <GenApi/Types.h>

#include <algorithm>
#include <numeric>

namespace KxGenApi
{
namespace
{

constexpr std::string_view kNameSpaceUri = "http://www.genicam.org/GenApi/Version_1_1";

/// Elements, attributes and texts, escaped and indented.
class XmlWriter
{
public:
    void Open(std::string_view element)
    {
        EndTag(false);
        m_out.append(2 * m_depth++, ' ') += '<';
        m_out += element;
        m_isTagOpen = true;
    }
    void Attribute(std::string_view name, std::string_view value)
    {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        Escape(value);
        m_out += '"';
    }
    void Close(std::string_view element)
    {
        --m_depth;
        if (m_isTagOpen)
            return EndTag(true);
        m_out.append(2 * m_depth, ' ');
        CloseTag(element);
    }
    /// Closes the element as well.
    void Text(std::string_view element, std::string_view text)
    {
        --m_depth;
        m_isTagOpen = false;
        m_out += '>';
        Escape(text);
        CloseTag(element);
    }
    std::string Take() { return std::move(m_out); }

private:
    void EndTag(bool isEmpty)
    {
        if (m_isTagOpen)
            m_out += isEmpty ? "/>\n" : ">\n";
        m_isTagOpen = false;
    }
    void CloseTag(std::string_view element)
    {
        m_out += "</";
        m_out += element;
        m_out += ">\n";
    }
    // White space other than blanks is escaped too: readers would turn it into blanks or other line ends.
    void Escape(std::string_view text)
    {
        for (const char c : text)
            switch (c) {
            case '&':
                m_out += "&amp;";
                break;
            case '<':
                m_out += "&lt;";
                break;
            case '>':
                m_out += "&gt;";
                break;
            case '"':
                m_out += "&quot;";
                break;
            case '\r':
                m_out += "&#13;";
                break;
            case '\n':
                m_out += "&#10;";
                break;
            case '\t':
                m_out += "&#9;";
                break;
            default:
                m_out += c;
            }
    }

    std::string m_out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    size_t m_depth = 0;
    bool m_isTagOpen = false;
};

class DescriptionWriter
{
public:
    explicit DescriptionWriter(const Description& description)
        : m_description(description)
    {}

    std::string Write()
    {
        m_xml.Open("RegisterDescription");
        WriteDevice();
        // The order of the file, so that nodes get the same numbers again.
        std::vector<NodeIndex> order(m_description.NodeCount());
        std::iota(order.begin(), order.end(), NodeIndex{0});
        std::stable_sort(order.begin(), order.end(), [this](NodeIndex a, NodeIndex b) {
            const Position& first = m_description.Node(a).position;
            const Position& second = m_description.Node(b).position;
            return std::pair(first.line, first.column) < std::pair(second.line, second.column);
        });
        for (const NodeIndex node : order) {
            const NodeData& data = m_description.Node(node);
            if (data.type == NodeType::StructEntry)
                WriteStruct(node);
            else if (!data.synthetic && data.type != NodeType::EnumEntry)
                WriteNode(node, data.name);
        }
        m_xml.Close("RegisterDescription");
        return m_xml.Take();
    }

private:
    void WriteDevice()
    {
        const DeviceFacts& device = m_description.Device();
        m_xml.Attribute("ModelName", device.modelName);
        m_xml.Attribute("VendorName", device.vendorName);
        if (!device.toolTip.empty())
            m_xml.Attribute("ToolTip", device.toolTip);
        m_xml.Attribute("StandardNameSpace",
                        device.standardNameSpace.empty() ? "None" : device.standardNameSpace);
        m_xml.Attribute("SchemaMajorVersion", "1");
        m_xml.Attribute("SchemaMinorVersion", "1");
        m_xml.Attribute("SchemaSubMinorVersion", "0");
        m_xml.Attribute("MajorVersion", std::to_string(device.major));
        m_xml.Attribute("MinorVersion", std::to_string(device.minor));
        m_xml.Attribute("SubMinorVersion", std::to_string(device.subMinor));
        m_xml.Attribute("ProductGuid", device.productGuid);
        m_xml.Attribute("VersionGuid", device.versionGuid);
        m_xml.Attribute("xmlns", kNameSpaceUri);
    }

    void OpenNode(NodeIndex node, std::string_view name)
    {
        const NodeData& data = m_description.Node(node);
        m_xml.Open(InfoOf(data.type).name);
        m_xml.Attribute("Name", name);
        if (data.nameSpace == GenApi::Standard)
            m_xml.Attribute("NameSpace", "Standard");
    }

    void WriteNode(NodeIndex node, std::string_view name)
    {
        OpenNode(node, name);
        for (const Property& property : m_description.Properties(node))
            WriteProperty(property);
        m_xml.Close(InfoOf(m_description.Node(node).type).name);
    }

    // Each entry gets a StructReg of its own.
    void WriteStruct(NodeIndex node)
    {
        m_xml.Open("StructReg");
        m_xml.Attribute("Comment", m_description.Node(node).name);
        for (const Property& property : m_description.Properties(node))
            if (IsOfStruct(property.id))
                WriteProperty(property);
        OpenNode(node, m_description.Node(node).name);
        for (const Property& property : m_description.Properties(node))
            if (!IsOfStruct(property.id))
                WriteProperty(property);
        m_xml.Close(InfoOf(NodeType::StructEntry).name);
        m_xml.Close("StructReg");
    }

    // What tells where the register lies and how to get at it.
    static bool IsOfStruct(Prop prop)
    {
        const NodeRules& rules = StructRegRules();
        const auto rank = [&rules](Prop p) { return rules.rank[rules.slot[static_cast<size_t>(p)]]; };
        return rules.Allows(prop) && prop != Prop::Sign && rank(prop) >= rank(Prop::Address) &&
               rank(prop) <= rank(Prop::Endianess);
    }

    void WriteProperty(const Property& property)
    {
        if (property.id == Prop::EntryName)
            return; // the Name of the element
        if (property.id == Prop::EnumEntry || property.id == Prop::IntSwissKnife)
            return WriteNode(property.node, property.attribute);
        const std::string_view element =
            property.id == Prop::Other ? property.attribute : InfoOf(property.id).name;
        m_xml.Open(element);
        WriteAttributes(property);
        m_xml.Text(element, property.text);
    }

    void WriteAttributes(const Property& property)
    {
        switch (property.id) {
        case Prop::pVariable:
        case Prop::Constant:
        case Prop::Expression:
            m_xml.Attribute("Name", property.attribute);
            break;
        case Prop::ValueIndexed:
        case Prop::pValueIndexed:
            m_xml.Attribute("Index", std::to_string(property.index));
            break;
        case Prop::pIndex:
            if (property.hasOffset)
                m_xml.Attribute("Offset", std::to_string(property.index));
            if (property.offsetNode != kNoNode)
                m_xml.Attribute("pOffset", m_description.Node(property.offsetNode).name);
            break;
        default:
            break;
        }
    }

    const Description& m_description;
    XmlWriter m_xml;
};

} // namespace

std::string WriteXml(const Description& description) { return DescriptionWriter(description).Write(); }

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0

#include "Description.h"

#include "common/gentl/Error.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace KxProducer
{
namespace
{

constexpr const char* kVisibilities[] = {"Beginner", "Expert", "Guru", "Invisible"};
constexpr const char* kAccesses[] = {"RO", "RW", "WO"};
// Changes all settings at once.
constexpr char kSettingsLoader[] = "UserSetLoad";
constexpr const char* kElements[] = {"Category",    "Integer", "Float", "Boolean",
                                     "Enumeration", "Command", "String"};

std::string Escape(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

bool IsNode(const std::string& limit)
{
    return !limit.empty() && std::isalpha(static_cast<unsigned char>(limit[0]));
}

/// Writes the elements in the order that the standard's schema asks for.
class CWriter
{
public:
    CWriter(const CDescriptionHead& head, const CFeatureList& features, CRegisterMap& map)
        : m_head(head)
        , m_features(features)
        , m_map(map)
    {}

    std::string Write()
    {
        WriteHead();
        WriteCategory("Root", "", "");
        for (const CFeature& feature : m_features.All()) {
            if (feature.kind == EFeature::Category)
                WriteCategory(feature.name, feature.toolTip, feature.isCustom ? "Custom" : "Standard");
            else
                WriteFeature(feature);
        }
        for (const std::string& piece : m_features.RawPieces())
            m_text += WithAddresses(piece);
        m_text += "<Port Name=\"" + m_head.portName + "\"><Visibility>Invisible</Visibility></Port>\n";
        return m_text + "</RegisterDescription>\n";
    }

private:
    void WriteHead()
    {
        m_text =
            Format("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                   "<RegisterDescription ModelName=\"%s\" VendorName=\"Kestrix\" ToolTip=\"%s\" "
                   "StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
                   "SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" ",
                   NameOf(m_head.model).c_str(), Escape(m_head.toolTip).c_str());
        m_text +=
            Format("ProductGuid=\"8D2C10F4-5B3E-4A6A-9C01-%s\" VersionGuid=\"51E7A9C2-0D84-4F3B-B6D9-%s\" "
                   "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n",
                   m_head.guid.c_str(), m_head.guid.c_str());
    }

    /// Model names of the description are identifiers.
    static std::string NameOf(std::string model)
    {
        for (char& c : model) {
            if (!std::isalnum(static_cast<unsigned char>(c)))
                c = '_';
        }
        return model;
    }

    void Element(const char* name, const std::string& value)
    {
        if (!value.empty())
            m_text += Format("<%s>", name) + Escape(value) + Format("</%s>", name);
    }

    void Limit(const char* name, const std::string& value)
    {
        Element((IsNode(value) ? std::string("p") + name : std::string(name)).c_str(), value);
    }

    void WriteCategory(const std::string& name, const std::string& toolTip, const std::string& nameSpace)
    {
        m_text += "<Category Name=\"" + name + "\"" +
                  (nameSpace.empty() ? std::string() : " NameSpace=\"" + nameSpace + "\"") + ">";
        Element("ToolTip", toolTip);
        for (const std::string& feature : m_features.Shown(name))
            Element("pFeature", feature);
        m_text += "</Category>\n";
    }

    void WriteFeature(const CFeature& feature)
    {
        const char* const element = kElements[static_cast<size_t>(feature.kind)];
        m_text += Format("<%s Name=\"%s\" NameSpace=\"%s\">", element, feature.name.c_str(),
                         feature.isCustom ? "Custom" : "Standard");
        Element("ToolTip", feature.toolTip);
        Element("Description", feature.description);
        Element("Visibility", kVisibilities[static_cast<size_t>(feature.visibility)]);
        if (!feature.available.empty())
            Element("pIsAvailable", feature.name + "Available");
        if (!feature.locked.empty())
            Element("pIsLocked", feature.name + "Locked");
        if (feature.isStored && feature.access == EAccess::RW)
            Element("Streamable", "Yes");
        for (const CEntry& entry : feature.entries)
            WriteEntry(entry);
        Element("pValue", CFeatureList::RegisterOf(feature.name));
        if (feature.kind == EFeature::Command)
            Element("CommandValue", "1");
        if (feature.kind == EFeature::Boolean)
            m_text += "<OnValue>1</OnValue><OffValue>0</OffValue>";
        Limit("Min", feature.low);
        Limit("Max", feature.high);
        Limit("Inc", feature.step);
        Element("Unit", feature.unit);
        Element("Representation", feature.representation);
        for (const CFeature& other : m_features.All()) {
            if (std::count(other.selectors.begin(), other.selectors.end(), feature.name) != 0)
                Element("pSelected", other.name);
        }
        m_text += Format("</%s>\n", element);
        WriteCondition(feature.name + "Available", feature.available);
        WriteCondition(feature.name + "Locked", feature.locked);
        WriteRegister(feature);
    }

    void WriteEntry(const CEntry& entry)
    {
        m_text += Format("<EnumEntry Name=\"%s\" NameSpace=\"%s\">", entry.name.c_str(),
                         entry.isCustom ? "Custom" : "Standard");
        Element("ToolTip", entry.toolTip);
        Element("Value", std::to_string(entry.value));
        m_text += "</EnumEntry>";
    }

    void WriteCondition(const std::string& name, const std::string& formula)
    {
        if (formula.empty())
            return;
        m_text += "<IntSwissKnife Name=\"" + name + "\">";
        std::set<std::string> names;
        for (size_t i = 0; i < formula.size();) {
            size_t end = i;
            while (end < formula.size() && (std::isalnum(static_cast<unsigned char>(formula[end])) != 0))
                ++end;
            const std::string word = formula.substr(i, end - i);
            if (m_features.Find(word) && names.insert(word).second)
                m_text +=
                    "<pVariable Name=\"" + word + "\">" + CFeatureList::RegisterOf(word) + "</pVariable>";
            i = end + 1;
        }
        Element("Formula", formula);
        m_text += "</IntSwissKnife>\n";
    }

    void WriteRegister(const CFeature& feature)
    {
        const CRegister& entry = m_map.At(CFeatureList::RegisterOf(feature.name));
        const char* const element = entry.type == ERegister::Text   ? "StringReg"
                                    : entry.type == ERegister::Real ? "FloatReg"
                                                                    : "IntReg";
        m_text += Format("<%s Name=\"%s\"><Address>0x%llX</Address>", element, entry.name.c_str(),
                         static_cast<unsigned long long>(entry.address));
        size_t stride = entry.size * entry.count;
        for (const std::string& selector : feature.selectors) {
            stride /= m_features.CountOf(selector);
            m_text += Format("<pIndex Offset=\"%zu\">%s</pIndex>", stride,
                             CFeatureList::RegisterOf(selector).c_str());
        }
        m_text += Format("<Length>%zu</Length><AccessMode>%s</AccessMode>", entry.size,
                         kAccesses[static_cast<size_t>(entry.access)]);
        Element("pPort", m_head.portName);
        Element("Cachable",
                feature.isVolatile || feature.kind == EFeature::Command ? "NoCache" : "WriteThrough");
        if (feature.pollingMs > 0)
            Element("PollingTime", std::to_string(feature.pollingMs));
        for (const std::string& other : feature.invalidators)
            Element("pInvalidator", other);
        if (entry.isSetting && m_features.Find(kSettingsLoader))
            Element("pInvalidator", kSettingsLoader);
        if (entry.type == ERegister::Unsigned || entry.type == ERegister::Signed)
            Element("Sign", entry.type == ERegister::Signed ? "Signed" : "Unsigned");
        if (entry.type != ERegister::Text)
            Element("Endianess", m_map.GetByteOrder() == EByteOrder::Little ? "LittleEndian" : "BigEndian");
        m_text += Format("</%s>\n", element);
    }

    /// $(Name) becomes the address of a register, $PORT the port, $ORDER the byte order.
    std::string WithAddresses(const std::string& piece)
    {
        std::string text;
        for (size_t i = 0; i < piece.size();) {
            if (piece.compare(i, 5, "$PORT") == 0) {
                text += m_head.portName;
                i += 5;
            } else if (piece.compare(i, 6, "$ORDER") == 0) {
                text += m_map.GetByteOrder() == EByteOrder::Little ? "LittleEndian" : "BigEndian";
                i += 6;
            } else if (piece.compare(i, 2, "$(") == 0) {
                const size_t end = piece.find(')', i);
                text += Format("0x%llX", static_cast<unsigned long long>(
                                             m_map.At(piece.substr(i + 2, end - i - 2)).address));
                i = end + 1;
            } else {
                text += piece[i++];
            }
        }
        return text;
    }

    const CDescriptionHead& m_head;
    const CFeatureList& m_features;
    CRegisterMap& m_map;
    std::string m_text;
};

} // namespace

std::string WriteDescription(const CDescriptionHead& head, const CFeatureList& features, CRegisterMap& map)
{
    return CWriter(head, features, map).Write();
}

} // namespace KxProducer

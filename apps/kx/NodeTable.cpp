// SPDX-License-Identifier: Apache-2.0
#include "NodeTable.h"

#include "DescriptionCheck.h"
#include "NodeText.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <string>
#include <vector>

namespace Kx
{

namespace
{

struct PropertyText
{
    std::string name, value, attribute;
};

std::vector<std::string> SplitAtTabulators(const std::string& text)
{
    std::vector<std::string> parts;
    size_t from = 0;
    for (size_t to = 0; (to = text.find('\t', from)) != std::string::npos; from = to + 1)
        parts.push_back(text.substr(from, to - from));
    parts.push_back(text.substr(from));
    return parts;
}

// One row per element, also where a property has several.
std::vector<PropertyText> PropertiesOf(GenApi::INode& node)
{
    std::vector<PropertyText> properties;
    GenICam::gcstring_vector names;
    node.GetPropertyNames(names);
    for (const GenICam::gcstring& name : names) {
        GenICam::gcstring value;
        GenICam::gcstring attribute;
        if (!node.GetProperty(name, value, attribute))
            continue;
        const auto values = SplitAtTabulators(value.c_str());
        const auto attributes = SplitAtTabulators(attribute.c_str());
        for (size_t i = 0; i < values.size(); ++i)
            properties.push_back(
                {name.c_str(), values[i], i < attributes.size() ? attributes[i] : std::string()});
    }
    return properties;
}

nlohmann::ordered_json DeviceJson(const GenApi::CNodeMapRef& map)
{
    GenApi::Version_t schema = {};
    GenApi::Version_t device = {};
    map._GetSchemaVersion(schema);
    map._GetDeviceVersion(device);
    const auto text = [](const GenApi::Version_t& version) {
        return std::to_string(version.Major) + "." + std::to_string(version.Minor) + "." +
               std::to_string(version.SubMinor);
    };
    return {
        {"vendor", map._GetVendorName().c_str()},
        {"model", map._GetModelName().c_str()},
        {"toolTip", map._GetToolTip().c_str()},
        {"standardNameSpace", map._GetStandardNameSpace().c_str()},
        {"schemaVersion", text(schema)},
        {"version", text(device)},
        {"productGuid", map._GetProductGuid().c_str()},
        {"versionGuid", map._GetVersionGuid().c_str()},
    };
}

nlohmann::ordered_json NodeJson(GenApi::INode& node)
{
    nlohmann::ordered_json json = {
        {"name", node.GetName().c_str()},           {"interface", NameOf(node.GetPrincipalInterfaceType())},
        {"access", NameOf(node.GetAccessMode())},   {"visibility", NameOf(node.GetVisibility())},
        {"caching", NameOf(node.GetCachingMode())}, {"feature", node.IsFeature()},
    };
    const ValueText value = ReadValue(node);
    if (value.kind == ValueText::Kind::Value)
        json["value"] = value.text;
    else if (value.kind == ValueText::Kind::Raised)
        json["error"] = value.text;
    auto& properties = json["properties"] = nlohmann::ordered_json::array();
    for (const PropertyText& property : PropertiesOf(node)) {
        nlohmann::ordered_json row = {{"name", property.name}, {"value", property.value}};
        if (!property.attribute.empty())
            row["attribute"] = property.attribute;
        properties.push_back(std::move(row));
    }
    return json;
}

} // namespace

void PrintTable(std::ostream& out, const LoadedDescription& description)
{
    out << "# ";
    PrintHeadLine(out, description);
    out << "#name\tinterface\taccess\tvisibility\tcaching\tvalue\tproperties\n";
    for (GenApi::INode* const node : description.Nodes()) {
        const ValueText value = ReadValue(*node);
        out << node->GetName().c_str() << "\t" << NameOf(node->GetPrincipalInterfaceType()) << "\t"
            << NameOf(node->GetAccessMode()) << "\t" << NameOf(node->GetVisibility()) << "\t"
            << NameOf(node->GetCachingMode()) << "\t" << (value.kind == ValueText::Kind::Raised ? "! " : "")
            << OneLine(value.text);
        for (const PropertyText& property : PropertiesOf(*node))
            out << "\t" << property.name
                << (property.attribute.empty() ? "" : "[" + OneLine(property.attribute) + "]") << "="
                << OneLine(property.value);
        out << "\n";
    }
}

void PrintJson(std::ostream& out, const LoadedDescription& description)
{
    nlohmann::ordered_json json = {
        {"file", description.FileName()},
        {"loadMilliseconds", description.LoadMilliseconds()},
        {"device", DeviceJson(description.Map())},
        {"nodes", nlohmann::ordered_json::array()},
    };
    for (GenApi::INode* const node : description.Nodes())
        json["nodes"].push_back(NodeJson(*node));
    // JSON is UTF-8; registers may hold anything.
    out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

} // namespace Kx

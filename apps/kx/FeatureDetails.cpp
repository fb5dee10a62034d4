// SPDX-License-Identifier: Apache-2.0
#include "FeatureDetails.h"

#include "FeatureAccess.h"
#include "FeatureSetting.h"
#include "NodeText.h"

#include <ostream>

using Json = nlohmann::ordered_json;

namespace Kx
{

namespace
{

void AddLimits(Json& json, GenApi::INode& node)
{
    if (auto* const pInteger = dynamic_cast<GenApi::IInteger*>(&node)) {
        json["min"] = pInteger->GetMin();
        json["max"] = pInteger->GetMax();
        if (pInteger->GetIncMode() == GenApi::fixedIncrement)
            json["increment"] = pInteger->GetInc();
        if (pInteger->GetIncMode() == GenApi::listIncrement)
            for (const int64_t value : pInteger->GetListOfValidValues())
                json["values"].push_back(value);
    } else if (auto* const pFloat = dynamic_cast<GenApi::IFloat*>(&node)) {
        json["min"] = pFloat->GetMin();
        json["max"] = pFloat->GetMax();
        if (pFloat->GetIncMode() == GenApi::fixedIncrement)
            json["increment"] = pFloat->GetInc();
    } else if (auto* const pText = dynamic_cast<GenApi::IString*>(&node)) {
        json["maxLength"] = pText->GetMaxLength();
    } else if (auto* const pRegister = dynamic_cast<GenApi::IRegister*>(&node)) {
        json["length"] = pRegister->GetLength();
    }
}

std::string Joined(const Json& values)
{
    std::string text;
    for (const Json& value : values)
        text += (text.empty() ? "" : ", ") + (value.is_string() ? value.get<std::string>() : value.dump());
    return text;
}

} // namespace

Json DetailsOf(GenApi::INode& node)
{
    Json json = {{"name", node.GetName().c_str()}, {"type", NameOf(node.GetPrincipalInterfaceType())}};
    try {
        json["access"] = NameOf(node.GetAccessMode());
        const ValueText value = ReadValue(node);
        if (value.kind == ValueText::Kind::Value)
            json["value"] = value.text;
        else if (value.kind == ValueText::Kind::Raised)
            json["error"] = value.text;
        const std::string unit = UnitOf(node);
        if (!unit.empty())
            json["unit"] = unit;
        if (const std::string why = KxApps::WhyNotWritable(node); !why.empty())
            json["notWritable"] = why;
        if (auto* const pEnumeration = dynamic_cast<GenApi::IEnumeration*>(&node))
            json["entries"] = KxApps::EntriesOf(*pEnumeration);
        else if (GenApi::IsReadable(node.GetAccessMode()))
            AddLimits(json, node);
    } catch (const GenICam::GenericException& e) {
        json["error"] = e.GetDescription();
    }
    const GenICam::gcstring about = node.GetToolTip().empty() ? node.GetDescription() : node.GetToolTip();
    if (!about.empty())
        json["description"] = about.c_str();
    return json;
}

void PrintDetails(std::ostream& out, const Json& details)
{
    struct Row
    {
        const char* key;
        const char* label;
    };
    static constexpr Row kRows[] = {
        {"access", "access"},           {"notWritable", "can't be written"},
        {"entries", "entries"},         {"values", "values"},
        {"increment", "increment"},     {"maxLength", "longest text"},
        {"length", "length, bytes"},    {"error", "error"},
        {"description", "description"},
    };
    if (details.contains("min"))
        out << "  range: " << details["min"] << " to " << details["max"]
            << (details.contains("unit") ? " " + OneLine(details["unit"]) : "") << "\n";
    for (const Row& row : kRows)
        if (details.contains(row.key)) {
            const Json& value = details[row.key];
            out << "  " << row.label << ": "
                << OneLine(value.is_array() ? Joined(value) : Joined(Json::array({value}))) << "\n";
        }
}

} // namespace Kx

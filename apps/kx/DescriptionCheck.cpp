// SPDX-License-Identifier: Apache-2.0
#include "DescriptionCheck.h"

#include "Counted.h"
#include "NodeText.h"

#include <iomanip>
#include <ostream>

namespace Kx
{

namespace
{

void CheckFeature(GenApi::INode& node, DescriptionFacts& facts)
{
    ++facts.features;
    const ValueText value = ReadValue(node);
    switch (value.kind) {
    case ValueText::Kind::Value:
        ++facts.readable;
        break;
    case ValueText::Kind::None:
    case ValueText::Kind::NotReadable:
        ++facts.notReadable;
        break;
    case ValueText::Kind::Raised:
        facts.raising.push_back(node.GetName().c_str() + (": " + value.text));
        break;
    }
}

void PrintList(std::ostream& out, const std::vector<std::string>& lines)
{
    for (const std::string& line : lines)
        out << "  " << OneLine(line) << "\n";
}

} // namespace

DescriptionFacts Check(const LoadedDescription& description)
{
    DescriptionFacts facts;
    facts.nodes = description.Nodes().size();
    GenICam::gcstring_vector errors;
    description.Map()._ParseSwissKnifes(&errors);
    for (const GenICam::gcstring& error : errors)
        facts.badFormulas.emplace_back(error.c_str());
    for (GenApi::INode* const node : description.Nodes())
        if (node->IsFeature() && node->GetPrincipalInterfaceType() != GenApi::intfICategory)
            CheckFeature(*node, facts);
    return facts;
}

void PrintHeadLine(std::ostream& out, const LoadedDescription& description)
{
    const GenApi::CNodeMapRef& map = description.Map();
    GenApi::Version_t schema = {};
    map._GetSchemaVersion(schema);
    out << description.FileName() << ": " << OneLine(map._GetVendorName().c_str()) << " "
        << OneLine(map._GetModelName().c_str()) << ", schema " << schema.Major << "." << schema.Minor << ", "
        << KxApps::Counted(description.Nodes().size(), "node") << ", loaded in " << std::fixed
        << std::setprecision(2) << description.LoadMilliseconds() << " ms\n";
}

void PrintSummary(std::ostream& out, const LoadedDescription& description, const DescriptionFacts& facts)
{
    PrintHeadLine(out, description);
    out << "features: " << facts.features << ", of which " << facts.readable << " read, " << facts.notReadable
        << " not readable, " << facts.raising.size()
        << (facts.raising.size() == 1 ? " raises an exception\n" : " raise an exception\n");
    PrintList(out, facts.raising);
    if (facts.badFormulas.empty())
        out << "formulas: all compile\n";
    else
        out << "formulas: " << facts.badFormulas.size()
            << (facts.badFormulas.size() == 1 ? " does not compile\n" : " do not compile\n");
    PrintList(out, facts.badFormulas);
}

} // namespace Kx

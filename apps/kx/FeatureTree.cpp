// SPDX-License-Identifier: Apache-2.0
#include "FeatureTree.h"

#include "NodeText.h"

#include <ostream>
#include <set>
#include <string>

namespace Kx
{

namespace
{

constexpr size_t kMaxShown = 100; // longer values are cut, they would hide the tree

std::string Shown(GenApi::INode& node)
{
    const ValueText value = ReadValue(node);
    switch (value.kind) {
    case ValueText::Kind::None:
        return {};
    case ValueText::Kind::NotReadable:
        return " = ?";
    case ValueText::Kind::Raised:
        return " ! " + OneLine(value.text);
    case ValueText::Kind::Value:
        break;
    }
    std::string text = OneLine(value.text);
    if (text.size() > kMaxShown)
        text = text.substr(0, kMaxShown) + "...";
    const std::string unit = OneLine(UnitOf(node));
    return " = " + text + (unit.empty() ? "" : " " + unit);
}

/// A feature that can't be asked shows why, and ends no list.
std::string Line(GenApi::INode& node)
{
    try {
        return Shown(node) + " [" + NameOf(node.GetAccessMode()) + "]";
    } catch (const GenICam::GenericException& e) {
        return " ! " + OneLine(e.GetDescription());
    }
}

class TreePrinter
{
public:
    TreePrinter(std::ostream& out, GenApi::EVisibility visibility)
        : m_out(out)
        , m_visibility(visibility)
    {}

    void Print(GenApi::INode& node, size_t depth)
    {
        m_out << std::string(2 * depth, ' ') << node.GetName().c_str();
        if (const auto category = dynamic_cast<GenApi::ICategory*>(&node))
            PrintCategory(node, *category, depth);
        else
            m_out << Line(node) << "\n";
    }

private:
    void PrintCategory(GenApi::INode& node, const GenApi::ICategory& category, size_t depth)
    {
        // A category may be listed in several others: shown out once, a file can't make the tree grow without
        // bound.
        if (!m_shown.insert(&node).second) {
            m_out << "/ (see above)\n";
            return;
        }
        m_out << "/\n";
        GenApi::FeatureList_t features;
        category.GetFeatures(features);
        for (GenApi::IValue* const feature : features)
            if (GenApi::IsVisible(feature->GetNode()->GetVisibility(), m_visibility))
                Print(*feature->GetNode(), depth + 1);
    }

    std::ostream& m_out;
    GenApi::EVisibility m_visibility;
    std::set<const GenApi::INode*> m_shown;
};

} // namespace

void PrintTree(std::ostream& out, GenApi::INode* root, GenApi::EVisibility visibility)
{
    if (root)
        TreePrinter(out, visibility).Print(*root, 0);
    else
        out << "(no category \"Root\")\n";
}

} // namespace Kx

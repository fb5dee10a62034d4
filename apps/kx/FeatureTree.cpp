// SPDX-License-Identifier: Apache-2.0
#include "FeatureTree.h"

#include "FeatureDetails.h"
#include "NodeText.h"

#include <ostream>
#include <set>
#include <string>
#include <vector>

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

// Walks the features that are shown. A category may be listed in several others: it is walked once, so that a
// file can't make the tree grow without bound.
class TreePrinter
{
public:
    explicit TreePrinter(const FeatureChoice& choice)
        : m_choice(choice)
    {}

    std::string Text(GenApi::INode& node, size_t depth)
    {
        const std::string head = std::string(2 * depth, ' ') + node.GetName().c_str();
        const auto category = dynamic_cast<GenApi::ICategory*>(&node);
        if (!category)
            return IsChosen(node) ? head + Line(node) + "\n" : "";
        if (!m_shown.insert(&node).second)
            return m_choice.filter ? "" : head + "/ (see above)\n";
        std::string text;
        for (GenApi::INode* const child : Children(*category))
            text += Text(*child, depth + 1);
        return text.empty() && m_choice.filter ? "" : head + "/\n" + text;
    }

    void List(GenApi::ICategory& category, nlohmann::ordered_json& list)
    {
        if (!m_shown.insert(category.GetNode()).second)
            return;
        for (GenApi::INode* const child : Children(category)) {
            if (child->GetPrincipalInterfaceType() == GenApi::intfICategory) {
                List(dynamic_cast<GenApi::ICategory&>(*child), list);
            } else if (IsChosen(*child)) {
                list.push_back(DetailsOf(*child));
                list.back()["category"] = category.GetNode()->GetName().c_str();
                list.back()["visibility"] = NameOf(child->GetVisibility());
            }
        }
    }

private:
    std::vector<GenApi::INode*> Children(const GenApi::ICategory& category) const
    {
        GenApi::FeatureList_t features;
        category.GetFeatures(features);
        std::vector<GenApi::INode*> children;
        for (GenApi::IValue* const feature : features)
            if (GenApi::IsVisible(feature->GetNode()->GetVisibility(), m_choice.visibility))
                children.push_back(feature->GetNode());
        return children;
    }
    bool IsChosen(GenApi::INode& node) const
    {
        return !m_choice.filter || m_choice.filter(node.GetName().c_str());
    }

    const FeatureChoice& m_choice;
    std::set<const GenApi::INode*> m_shown;
};

} // namespace

void PrintTree(std::ostream& out, GenApi::INode* root, const FeatureChoice& choice)
{
    if (root)
        out << TreePrinter(choice).Text(*root, 0);
    else
        out << "(no category \"Root\")\n";
}

nlohmann::ordered_json ListFeatures(GenApi::INode* root, const FeatureChoice& choice)
{
    auto list = nlohmann::ordered_json::array();
    if (const auto category = dynamic_cast<GenApi::ICategory*>(root))
        TreePrinter(choice).List(*category, list);
    return list;
}

} // namespace Kx

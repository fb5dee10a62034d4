// SPDX-License-Identifier: Apache-2.0
#include "FeatureAccess.h"

#include <sstream>

namespace KxApps
{

namespace
{

std::string Property(GenApi::INode& node, const char* name)
{
    GenICam::gcstring value, attribute;
    return node.GetProperty(name, value, attribute) ? value.c_str() : "";
}

/// The node that a property names, null when there is none.
GenApi::INode* NodeOf(GenApi::INode& node, const char* property)
{
    const std::string name = Property(node, property);
    return name.empty() ? nullptr : node.GetNodeMap()->GetNode(name.c_str());
}

bool IsTrue(GenApi::INode& node)
{
    if (auto* const pBoolean = dynamic_cast<GenApi::IBoolean*>(&node))
        return pBoolean->GetValue();
    auto* const pInteger = dynamic_cast<GenApi::IInteger*>(&node);
    return pInteger && pInteger->GetValue() != 0;
}

/// The values that a formula is made of, since its own name tells users little.
std::string Variables(GenApi::INode& node)
{
    std::string text;
    std::istringstream names(Property(node, "pVariable"));
    for (std::string name; std::getline(names, name, '\t');)
        if (auto* const pValue = dynamic_cast<GenApi::IValue*>(node.GetNodeMap()->GetNode(name.c_str())))
            text += (text.empty() ? " (" : ", ") + name + "=" + pValue->ToString().c_str();
    return text.empty() ? text : text + ")";
}

struct Cause
{
    const char* property;
    bool isTrue; ///< the value of the node with which it takes the access away
    const char* text;
};

constexpr Cause kCauses[] = {
    {"pIsImplemented", false, "the camera doesn't have it: "},
    {"pIsAvailable", false, "it isn't available while "},
    {"pIsLocked", true, "it is locked while "},
};

/// What takes the access away, of the node itself.
std::string OwnCause(GenApi::INode& node)
{
    for (const Cause& cause : kCauses) {
        GenApi::INode* const pNode = NodeOf(node, cause.property);
        if (pNode && IsTrue(*pNode) == cause.isTrue)
            return cause.text + std::string(pNode->GetName().c_str()) + " is " + (cause.isTrue ? "1" : "0") +
                   Variables(*pNode);
    }
    for (const char* const property : {"ImposedAccessMode", "AccessMode"})
        if (Property(node, property) == "RO")
            return "it can only be read";
    return {};
}

} // namespace

std::string WhyNotWritable(GenApi::INode& node)
{
    constexpr int kMaxDepth = 8; // of values behind values
    if (GenApi::IsWritable(node.GetAccessMode()))
        return {};
    GenApi::INode* pNode = &node;
    for (int depth = 0; pNode && depth < kMaxDepth; ++depth, pNode = NodeOf(*pNode, "pValue")) {
        std::string cause = OwnCause(*pNode);
        if (!cause.empty())
            return cause;
    }
    switch (node.GetAccessMode()) {
    case GenApi::NI:
        return "the camera doesn't have it";
    case GenApi::NA:
        return "it isn't available as the camera is set now";
    default:
        return "it can only be read, or somebody else controls the camera";
    }
}

} // namespace KxApps

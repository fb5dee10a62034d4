// SPDX-License-Identifier: Apache-2.0
// The elements of a node as texts, with defaults where the description gives none.
#pragma once

#include <Base/GCString.h>

#include <string>
#include <vector>

namespace KxGenApi
{

class Node;

/// One property; several items are separated by tabulators in both texts.
struct PropertyText
{
    std::string value;
    std::string attribute;
};

/// Names of all properties of a node, in the order of their characters.
std::vector<std::string> PropertyNamesOf(const Node& node);

/// The property of that name; false if the node has none.
bool FindPropertyText(const Node& node, const std::string& name, PropertyText& text);

} // namespace KxGenApi

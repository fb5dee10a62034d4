// SPDX-License-Identifier: Apache-2.0
// Lists of nodes and features.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiNamespace.h>

#include <vector>

namespace GenApi
{

struct INode;
struct IValue;

/// A list of pointers that do not own what they point to. Standard interface: a vector with the members named
/// below.
template <typename T>
class TPointerList : public std::vector<T*>
{
public:
    using std::vector<T*>::vector;
};

/// Nodes; the node map owns them.
using node_vector = TPointerList<INode>;
using NodeList_t = node_vector;

/// Features, as categories and selectors list them; the node map owns them.
using value_vector = TPointerList<IValue>;
using FeatureList_t = value_vector;

/// Texts.
using StringList_t = GenICam::gcstring_vector;

} // namespace GenApi

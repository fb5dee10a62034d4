// SPDX-License-Identifier: Apache-2.0
// Lists of nodes and features.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>
#include <GenApi/Types.h>

#include <cstddef>
#include <vector>

namespace GenApi
{

/// A list of pointers that do not own what they point to: a vector with the standard's additional index forms
/// of insert and erase.
template <typename T>
class TPointerList : public std::vector<T*>
{
public:
    typedef typename std::vector<T*>::iterator iterator;

    using std::vector<T*>::vector;
    using std::vector<T*>::erase;
    using std::vector<T*>::insert;

    void erase(size_t index) { std::vector<T*>::erase(this->begin() + static_cast<std::ptrdiff_t>(index)); }
    void insert(size_t index, T* const& value)
    {
        std::vector<T*>::insert(this->begin() + static_cast<std::ptrdiff_t>(index), value);
    }
};

/// Nodes; the node map owns them.
typedef TPointerList<INode> node_vector;
typedef node_vector NodeList_t;

/// Features, as categories and selectors list them; the node map owns them.
typedef TPointerList<IValue> value_vector;
typedef value_vector FeatureList_t;

} // namespace GenApi

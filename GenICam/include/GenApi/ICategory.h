// SPDX-License-Identifier: Apache-2.0
// A group of features.
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IValue.h>

namespace GenApi
{

/// A category lists features, among them other categories. Any thread.
struct GENAPI_DECL_ABSTRACT ICategory : virtual public IValue
{
    /// Replaces the list by the direct features, in the order of the description.
    virtual void GetFeatures(FeatureList_t& Features) const = 0;
};

/// Reference to a category.
template <class T>
class CCategoryRefT : public CValueRefT<T>
{
public:
    void GetFeatures(FeatureList_t& Features) const override { this->Target().GetFeatures(Features); }
};
typedef CCategoryRefT<ICategory> CCategoryRef;

} // namespace GenApi

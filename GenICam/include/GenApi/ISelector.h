// SPDX-License-Identifier: Apache-2.0
// Features that choose which instance other features stand for.
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IBase.h>
#include <GenApi/Reference.h>

namespace GenApi
{

/// Relation between a selector and the features it selects. Any thread.
struct GENAPI_DECL_ABSTRACT ISelector : virtual public IBase
{
    /// Whether this node selects anything.
    virtual bool IsSelector() const = 0;

    /// Appends the nodes that this one names as selected, and all that are made of those. What a selected
    /// selector selects in its turn is asked of that one; CSelectorSet follows such chains.
    virtual void GetSelectedFeatures(FeatureList_t& list) const = 0;

    /// Appends the selectors of this feature and of the nodes that it is made of.
    virtual void GetSelectingFeatures(FeatureList_t& list) const = 0;
};

/// Reference to the relations of a selector.
template <class T>
class CSelectorRefT : public CBaseRefT<T>
{
public:
    bool IsSelector() const override { return this->Target().IsSelector(); }
    void GetSelectedFeatures(FeatureList_t& list) const override { this->Target().GetSelectedFeatures(list); }
    void GetSelectingFeatures(FeatureList_t& list) const override
    {
        this->Target().GetSelectingFeatures(list);
    }
};
typedef CSelectorRefT<ISelector> CSelectorRef;

} // namespace GenApi

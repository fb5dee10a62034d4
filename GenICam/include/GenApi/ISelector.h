// SPDX-License-Identifier: Apache-2.0
// Features that choose which instance other features stand for.
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IBase.h>

namespace GenApi
{

/// Relation between a selector and the features it selects. Any thread.
struct GENAPI_DECL_ABSTRACT ISelector : virtual public IBase
{
    /// Whether this node selects anything.
    virtual bool IsSelector() const = 0;

    /// Appends the features that this one selects, those of selected selectors included.
    virtual void GetSelectedFeatures(FeatureList_t& list) const = 0;

    /// Appends the selectors of this feature, indirect ones included.
    virtual void GetSelectingFeatures(FeatureList_t& list) const = 0;
};

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
#include "runtime/CategoryNode.h"

#include "runtime/Change.h"

#include <Base/GCException.h>

#include <algorithm>

namespace KxGenApi
{

EVisibility CategoryNode::GetVisibility() const
{
    // It is as visible as the most visible thing in it.
    EVisibility visibility = Invisible;
    for (const Property& property : Properties()) {
        if (property.id == Prop::pFeature)
            visibility = std::min(visibility, Map().NodeAt(property.node).GetVisibility());
    }
    return Combine(visibility, ImposedVisibility());
}

gcstring CategoryNode::ToString(bool, bool)
{
    const Call call(*this, "ToString");
    RequireReadable();
    return GetDisplayName();
}

void CategoryNode::FromString(const gcstring&, bool)
{
    throw ACCESS_EXCEPTION_NODE("FromString", NameText())("Node is not writable.");
}

void CategoryNode::GetFeatures(FeatureList_t& Features) const
{
    Features.clear();
    for (const Property& property : Properties()) {
        if (property.id != Prop::pFeature)
            continue;
        if (IValue* const value = dynamic_cast<IValue*>(&Map().NodeAt(property.node)))
            Features.push_back(value);
    }
}

EAccessMode CategoryNode::ComputeAccessMode() const
{
    // Flags of its own do not count: a category is there as long as anything in it is.
    for (const Property& property : Properties()) {
        if (property.id == Prop::pFeature && IsImplemented(Map().NodeAt(property.node).AccessMode()))
            return Combine(RO, ImposedAccessMode());
    }
    return NI;
}

} // namespace KxGenApi

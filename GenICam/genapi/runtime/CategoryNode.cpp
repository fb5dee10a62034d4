// SPDX-License-Identifier: Apache-2.0
#include "runtime/CategoryNode.h"

#include "runtime/Change.h"

#include <Base/GCException.h>

#include <algorithm>

namespace KxGenApi
{

// Each category once, however often it is listed.
EVisibility CategoryNode::FindVisibility(std::map<const CategoryNode*, EVisibility>& known) const
{
    const auto [place, isNew] = known.emplace(this, Invisible);
    if (!isNew)
        return place->second;
    const Level level(*this);
    EVisibility visibility = Invisible;
    for (const Property& property : Properties()) {
        if (property.id != Prop::pFeature)
            continue;
        const Node& feature = Map().NodeAt(property.node);
        const auto* const category = dynamic_cast<const CategoryNode*>(&feature);
        visibility =
            std::min(visibility, category ? category->FindVisibility(known) : feature.GetVisibility());
    }
    return place->second = Combine(visibility, ImposedVisibility());
}

EVisibility CategoryNode::GetVisibility() const
{
    // It is as visible as the most visible thing in it.
    const Call call(*this, "GetVisibility");
    std::map<const CategoryNode*, EVisibility> known;
    return FindVisibility(known);
}

gcstring CategoryNode::ToString(bool, bool)
{
    const Call call(*this, "ToString");
    RequireReadable();
    return GetDisplayName();
}

void CategoryNode::FromString(const gcstring&, bool Verify)
{
    const Call call(*this, "FromString");
    RequireWritable(Verify); // it never is; unverified there is nothing to write
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
    // A category is there as long as anything in it is; whether it is available or locked has no meaning.
    if (IsMissing())
        return NI;
    for (const Property& property : Properties()) {
        if (property.id == Prop::pFeature && IsImplemented(Map().NodeAt(property.node).AccessMode()))
            return Combine(RO, ImposedAccessMode());
    }
    return NI;
}

} // namespace KxGenApi

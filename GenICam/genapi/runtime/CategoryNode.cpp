// SPDX-License-Identifier: Apache-2.0
#include "runtime/CategoryNode.h"

#include "runtime/Change.h"

#include <Base/GCException.h>

namespace KxGenApi
{

EVisibility CategoryNode::GetVisibility() const
{
    return Find(Prop::pFeature) != nullptr ? Node::GetVisibility() : Invisible; // an empty one is of no use
}

gcstring CategoryNode::ToString(bool, bool)
{
    const Call call(*this, "ToString");
    RequireReadable();
    return GetName();
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

EAccessMode CategoryNode::OwnAccessMode() const
{
    for (const Property& property : Properties()) {
        if (property.id == Prop::pFeature && IsImplemented(Map().NodeAt(property.node).AccessMode()))
            return RO;
    }
    return NI;
}

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
#include "runtime/ValueNodes.h"

#include "runtime/Change.h"

namespace KxGenApi
{

NumberLimits::NumberLimits(const Node& node)
{
    for (const Property& property : node.Properties()) {
        switch (property.id) {
        case Prop::Min:
        case Prop::pMin:
            min = NumberLink(property);
            break;
        case Prop::Max:
        case Prop::pMax:
            max = NumberLink(property);
            break;
        case Prop::Inc:
        case Prop::pInc:
            inc = NumberLink(property);
            break;
        default:
            break;
        }
    }
}

EAccessMode NumberLimits::AccessMode(const Node& node) const
{
    EAccessMode mode = RW;
    for (const NumberLink* const link : {&min, &max, &inc}) {
        if (!link->IsReference())
            continue;
        const EAccessMode ofLimit = link->Target(node).AccessMode();
        if (!IsReadable(ofLimit))
            mode = Combine(mode, Combine(NA, ofLimit));
    }
    return mode;
}

int64_t IntegerNode::IntegerInc()
{
    const Level level(*this);
    if (m_limits.inc)
        return m_limits.inc.Integer(*this);
    Node* const target = m_slots.Target();
    return target != nullptr ? target->IntegerInc() : 1;
}

bool FloatNode::HasRealInc()
{
    const Level level(*this);
    if (m_limits.inc)
        return true;
    Node* const target = m_slots.Target();
    return target != nullptr && target->HasRealInc();
}

double FloatNode::RealInc()
{
    const Level level(*this);
    if (m_limits.inc)
        return m_limits.inc.Get<double>(*this);
    Node* const target = m_slots.Target();
    return target != nullptr && target->HasRealInc() ? target->RealInc() : FloatBase::RealInc();
}

} // namespace KxGenApi

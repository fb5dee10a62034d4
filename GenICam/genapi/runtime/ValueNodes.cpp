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

// -------------------------------------------------------------------------------------------------- Integer

IntegerNode::IntegerNode(NodeMap& map, NodeIndex index)
    : IntegerBase(map, index)
    , m_slots(*this)
    , m_limits(*this)
{}

int64_t IntegerNode::IntegerMin()
{
    const Level level(*this);
    if (m_limits.min)
        return m_limits.min.Integer(*this);
    return m_slots.Min();
}

int64_t IntegerNode::IntegerMax()
{
    const Level level(*this);
    if (m_limits.max)
        return m_limits.max.Integer(*this);
    return m_slots.Max();
}

int64_t IntegerNode::IntegerInc()
{
    const Level level(*this);
    if (m_limits.inc)
        return m_limits.inc.Integer(*this);
    Node* const target = m_slots.Target();
    return target != nullptr ? target->IntegerInc() : 1;
}

// ---------------------------------------------------------------------------------------------------- Float

FloatNode::FloatNode(NodeMap& map, NodeIndex index)
    : FloatBase(map, index)
    , m_slots(*this)
    , m_limits(*this)
{}

double FloatNode::RealMin()
{
    const Level level(*this);
    if (m_limits.min)
        return m_limits.min.Real(*this);
    return m_slots.Min();
}

double FloatNode::RealMax()
{
    const Level level(*this);
    if (m_limits.max)
        return m_limits.max.Real(*this);
    return m_slots.Max();
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
        return m_limits.inc.Real(*this);
    Node* const target = m_slots.Target();
    return target != nullptr && target->HasRealInc() ? target->RealInc() : FloatBase::RealInc();
}

} // namespace KxGenApi

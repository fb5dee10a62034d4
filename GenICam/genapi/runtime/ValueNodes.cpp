// SPDX-License-Identifier: Apache-2.0
#include "runtime/ValueNodes.h"

#include "runtime/Change.h"

#include <limits>

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
    Node* const target = m_slots.Target();
    return target != nullptr ? target->IntegerMin() : std::numeric_limits<int64_t>::min();
}

int64_t IntegerNode::IntegerMax()
{
    const Level level(*this);
    if (m_limits.max)
        return m_limits.max.Integer(*this);
    Node* const target = m_slots.Target();
    return target != nullptr ? target->IntegerMax() : std::numeric_limits<int64_t>::max();
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
    Node* const target = m_slots.Target();
    return target != nullptr ? target->RealMin() : std::numeric_limits<double>::lowest();
}

double FloatNode::RealMax()
{
    const Level level(*this);
    if (m_limits.max)
        return m_limits.max.Real(*this);
    Node* const target = m_slots.Target();
    return target != nullptr ? target->RealMax() : std::numeric_limits<double>::max();
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

// SPDX-License-Identifier: Apache-2.0
#include "runtime/ValueSlots.h"

#include "runtime/Change.h"

#include <Base/GCException.h>

#include <algorithm>
#include <limits>

namespace KxGenApi
{
template <typename Number>
ValueSlots<Number>::ValueSlots(Node& owner)
    : m_owner(owner)
{
    for (const Property& property : owner.Properties()) {
        switch (property.id) {
        case Prop::pIndex:
            m_index = NumberLink(property);
            break;
        case Prop::Value:
        case Prop::pValue:
            Take(property, 0);
            break;
        case Prop::ValueIndexed:
        case Prop::pValueIndexed:
            Take(property, property.index);
            break;
        case Prop::ValueDefault:
        case Prop::pValueDefault:
            Take(property, 0);
            m_hasDefault = true;
            break;
        case Prop::pValueCopy:
            m_copies.push_back(NumberLink(property));
            break;
        default:
            break;
        }
    }
}

template <typename Number>
void ValueSlots<Number>::Take(const Property& property, int64_t index)
{
    Slot slot;
    slot.index = index;
    slot.link = NumberLink(property);
    if (slot.link.IsLiteral())
        slot.literal = NumberKind<Number>::Literal(property);
    m_slots.push_back(slot);
}

template <typename Number>
const typename ValueSlots<Number>::Slot& ValueSlots<Number>::Current() const
{
    if (!m_index)
        return m_slots.front(); // the description is checked to have one
    const int64_t index = m_index.Integer(m_owner);
    const size_t indexed = m_slots.size() - (m_hasDefault ? 1 : 0);
    for (size_t i = 0; i < indexed; ++i) {
        if (m_slots[i].index == index)
            return m_slots[i];
    }
    if (!m_hasDefault) {
        throw OUT_OF_RANGE_EXCEPTION_NODE(m_owner.Map().EntryText().c_str(), m_owner.NameText())(
            "There is no value for the index %lld and no default", static_cast<long long>(index));
    }
    return m_slots.back();
}

template <typename Number>
Node* ValueSlots<Number>::Target() const
{
    const Slot& slot = Current();
    return slot.link.IsReference() ? &slot.link.Target(m_owner) : nullptr;
}

template <typename Number>
Number ValueSlots<Number>::Read(ReadOptions options)
{
    const Slot& slot = Current();
    return slot.link.IsReference() ? NumberKind<Number>::Read(slot.link.Target(m_owner), options)
                                   : slot.literal;
}

template <typename Number>
void ValueSlots<Number>::Write(Number value, bool verify, Change& change)
{
    Slot& slot = Current();
    if (slot.link.IsReference()) {
        NumberKind<Number>::Write(slot.link.Target(m_owner), value, verify, change);
    } else {
        slot.literal = value;
        change.Invalidate(m_owner.Index());
    }
    for (const NumberLink& copy : m_copies)
        NumberKind<Number>::Write(copy.Target(m_owner), value, verify, change);
}

template <typename Number>
Number ValueSlots<Number>::Min()
{
    Node* const target = Target();
    Number min = target != nullptr ? NumberKind<Number>::Min(*target) : std::numeric_limits<Number>::lowest();
    for (const NumberLink& copy : m_copies)
        min = std::max(min, NumberKind<Number>::Min(copy.Target(m_owner)));
    return min;
}

template <typename Number>
Number ValueSlots<Number>::Max()
{
    Node* const target = Target();
    Number max = target != nullptr ? NumberKind<Number>::Max(*target) : std::numeric_limits<Number>::max();
    for (const NumberLink& copy : m_copies)
        max = std::min(max, NumberKind<Number>::Max(copy.Target(m_owner)));
    return max;
}

template <typename Number>
EAccessMode ValueSlots<Number>::AccessMode() const
{
    if (m_index && !IsReadable(m_index.Target(m_owner).AccessMode()))
        return Combine(NA, m_index.Target(m_owner).AccessMode());
    const Node* const target = Target();
    return target != nullptr ? target->AccessMode() : RW;
}

template <typename Number>
bool ValueSlots<Number>::RefusesWrites() const
{
    const Node* const target = Target();
    return (target != nullptr && target->RefusesWrites()) ||
           std::any_of(m_copies.begin(), m_copies.end(),
                       [&](const NumberLink& copy) { return copy.Target(m_owner).RefusesWrites(); });
}

template <typename Number>
ECachingMode ValueSlots<Number>::CachingMode() const
{
    ECachingMode mode = NumberKind<Number>::kCaching;
    for (const Slot& slot : m_slots) {
        if (slot.link.IsReference())
            mode = Combine(mode, slot.link.Target(m_owner).CachingMode());
    }
    const auto isUncached = [&](const NumberLink& link) {
        return link.Target(m_owner).CachingMode() == NoCache;
    };
    if ((m_index && isUncached(m_index)) || std::any_of(m_copies.begin(), m_copies.end(), isUncached))
        return NoCache;
    return mode;
}

template class ValueSlots<int64_t>;
template class ValueSlots<double>;

} // namespace KxGenApi

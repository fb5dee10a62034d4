// SPDX-License-Identifier: Apache-2.0
// Integer and Float: features with limits of their own over a value that is elsewhere.
#pragma once

#include "runtime/NumberNode.h"
#include "runtime/ValueSlots.h"

namespace KxGenApi
{

/// Limits that the description gives for a feature.
struct NumberLimits
{
    explicit NumberLimits(const Node& node);

    /// What nodes that give limits leave of the access mode: without its limits a feature can't be used.
    EAccessMode AccessMode(const Node& node) const;

    NumberLink min, max, inc;
};

/// What Integer and Float have in common.
template <typename Number>
class ValueNode : public NumberKind<Number>::Base
{
    using Base = typename NumberKind<Number>::Base;

public:
    using Base::operator=;

    ValueNode(NodeMap& map, NodeIndex index)
        : Base(map, index)
        , m_slots(*this)
        , m_limits(*this)
    {}

protected:
    EAccessMode OwnAccessMode() const override
    {
        return Combine(m_slots.AccessMode(), m_limits.AccessMode(*this));
    }
    ECachingMode OwnCachingMode() const override { return m_slots.CachingMode(); }
    bool OwnRefusesWrites() const override { return m_slots.RefusesWrites(); }
    Number Lowest() override
    {
        return m_limits.min ? m_limits.min.template Get<Number>(*this) : m_slots.Min();
    }
    Number Highest() override
    {
        return m_limits.max ? m_limits.max.template Get<Number>(*this) : m_slots.Max();
    }
    Number Fetch(ReadOptions options) override { return m_slots.Read(options); }
    void Store(Number value, bool verify, Change& change) override { m_slots.Write(value, verify, change); }
    const Node* Origin() const override { return m_slots.Target(); }

    ValueSlots<Number> m_slots;
    NumberLimits m_limits;
};

class IntegerNode final : public ValueNode<int64_t>
{
public:
    using ValueNode::ValueNode;
    using ValueNode::operator=;

    int64_t IntegerInc() override;
};

class FloatNode final : public ValueNode<double>
{
public:
    using ValueNode::ValueNode;
    using ValueNode::operator=;

    bool HasRealInc() override;
    double RealInc() override;
};

} // namespace KxGenApi

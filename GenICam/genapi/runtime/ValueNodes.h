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

class IntegerNode final : public IntegerBase
{
public:
    IntegerNode(NodeMap& map, NodeIndex index);
    using IntegerBase::operator=;

    int64_t IntegerMin() override;
    int64_t IntegerMax() override;
    int64_t IntegerInc() override;

protected:
    EAccessMode OwnAccessMode() const override
    {
        return Combine(m_slots.AccessMode(), m_limits.AccessMode(*this));
    }
    ECachingMode OwnCachingMode() const override { return m_slots.CachingMode(WriteThrough); }
    int64_t Fetch(ReadOptions options) override { return m_slots.Read(options); }
    void Store(int64_t value, bool verify, Change& change) override { m_slots.Write(value, verify, change); }
    const Node* Origin() const override { return m_slots.Target(); }

private:
    ValueSlots<int64_t> m_slots;
    NumberLimits m_limits;
};

class FloatNode final : public FloatBase
{
public:
    FloatNode(NodeMap& map, NodeIndex index);
    using FloatBase::operator=;

    double RealMin() override;
    double RealMax() override;
    bool HasRealInc() override;
    double RealInc() override;

protected:
    EAccessMode OwnAccessMode() const override
    {
        return Combine(m_slots.AccessMode(), m_limits.AccessMode(*this));
    }
    ECachingMode OwnCachingMode() const override { return m_slots.CachingMode(WriteAround); }
    double Fetch(ReadOptions options) override { return m_slots.Read(options); }
    void Store(double value, bool verify, Change& change) override { m_slots.Write(value, verify, change); }
    const Node* Origin() const override { return m_slots.Target(); }

private:
    ValueSlots<double> m_slots;
    NumberLimits m_limits;
};

} // namespace KxGenApi

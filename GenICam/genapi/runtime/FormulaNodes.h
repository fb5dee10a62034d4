// SPDX-License-Identifier: Apache-2.0
// SwissKnife and Converter nodes of both kinds.
#pragma once

#include "runtime/FormulaStore.h"
#include "runtime/NumberNode.h"

#include <vector>

namespace KxGenApi
{

/// The variables of a node's formulas, and the evaluation.
template <typename Number>
class FormulaLinks
{
public:
    explicit FormulaLinks(const Node& owner);

    /// What the variables leave of the access mode: NI or NA if one is so, else all.
    EAccessMode AccessMode() const;
    ECachingMode CachingMode(ECachingMode best) const;

    /// Value of a formula. @param from, to values of FROM and TO, for the formulas of converters
    Number Evaluate(Prop which, ReadOptions options, Number from = 0, Number to = 0);

private:
    const CompiledFormula<Number>& Compiled(Prop which);

    const Node& m_owner;
    std::vector<Link> m_variables;
    bool m_takesInput = false;
    const CompiledFormula<Number>* m_formulas[2] = {nullptr, nullptr};
};

class IntSwissKnifeNode final : public IntegerBase
{
public:
    IntSwissKnifeNode(NodeMap& map, NodeIndex index);
    using IntegerBase::operator=;

    int64_t IntegerMin() override;
    int64_t IntegerMax() override;
    int64_t IntegerInc() override { return 1; }

protected:
    EAccessMode OwnAccessMode() const override { return Combine(m_links.AccessMode(), RO); }
    ECachingMode OwnCachingMode() const override { return m_links.CachingMode(WriteThrough); }
    int64_t Fetch(ReadOptions options) override;
    void Store(int64_t, bool, Change&) override;

private:
    FormulaLinks<int64_t> m_links;
    const Prop m_which;
};

class SwissKnifeNode final : public FloatBase
{
public:
    SwissKnifeNode(NodeMap& map, NodeIndex index);
    using FloatBase::operator=;

    double RealMin() override;
    double RealMax() override;

protected:
    EAccessMode OwnAccessMode() const override { return Combine(m_links.AccessMode(), RO); }
    ECachingMode OwnCachingMode() const override { return m_links.CachingMode(WriteAround); }
    double Fetch(ReadOptions options) override;
    void Store(double, bool, Change&) override;

private:
    FormulaLinks<double> m_links;
    const Prop m_which;
};

/// IntConverter.
class IntConverterNode final : public IntegerBase
{
public:
    IntConverterNode(NodeMap& map, NodeIndex index);
    using IntegerBase::operator=;

    int64_t IntegerMin() override;
    int64_t IntegerMax() override;
    int64_t IntegerInc() override { return 1; }

protected:
    EAccessMode OwnAccessMode() const override;
    ECachingMode OwnCachingMode() const override;
    int64_t Fetch(ReadOptions options) override;
    void Store(int64_t value, bool verify, Change& change) override;
    const Node* Origin() const override { return &m_target.Target(*this); }

private:
    int64_t Limit(bool lower);

    FormulaLinks<int64_t> m_links;
    Link m_target;
};

/// Converter.
class ConverterNode final : public FloatBase
{
public:
    ConverterNode(NodeMap& map, NodeIndex index);
    using FloatBase::operator=;

    double RealMin() override;
    double RealMax() override;

protected:
    EAccessMode OwnAccessMode() const override;
    ECachingMode OwnCachingMode() const override;
    double Fetch(ReadOptions options) override;
    void Store(double value, bool verify, Change& change) override;
    const Node* Origin() const override { return &m_target.Target(*this); }

private:
    double Limit(bool lower);

    FormulaLinks<double> m_links;
    Link m_target;
};

} // namespace KxGenApi

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
    [[noreturn]] void Raise(Prop which, const char* why) const;

    const Node& m_owner;
    std::vector<Link> m_variables;
    const CompiledFormula<Number>* m_formulas[2] = {nullptr, nullptr};
};

/// IntSwissKnife and SwissKnife, and the helper nodes of converters.
template <typename Number>
class SwissKnifeNode final : public NumberKind<Number>::Base
{
    using Base = typename NumberKind<Number>::Base;

public:
    using Base::operator=;

    SwissKnifeNode(NodeMap& map, NodeIndex index);

protected:
    EAccessMode OwnAccessMode() const override { return Combine(m_links.AccessMode(), RO); }
    ECachingMode OwnCachingMode() const override { return m_links.CachingMode(NumberKind<Number>::kCaching); }
    Number Lowest() override { return std::numeric_limits<Number>::lowest(); }
    Number Highest() override { return std::numeric_limits<Number>::max(); }
    Number Fetch(ReadOptions options) override { return m_links.Evaluate(m_which, options); }
    void Store(Number, bool, Change&) override;
    bool OwnRefusesWrites() const override { return true; }

private:
    FormulaLinks<Number> m_links;
    const Prop m_which; // the helper nodes carry FormulaTo or FormulaFrom
};

/// IntConverter and Converter.
template <typename Number>
class ConverterNode final : public NumberKind<Number>::Base
{
    using Base = typename NumberKind<Number>::Base;

public:
    using Base::operator=;

    ConverterNode(NodeMap& map, NodeIndex index);

protected:
    EAccessMode OwnAccessMode() const override;
    ECachingMode OwnCachingMode() const override;
    Number Lowest() override { return Limit(true); }
    Number Highest() override { return Limit(false); }
    Number Fetch(ReadOptions options) override;
    void Store(Number value, bool verify, Change& change) override;
    const Node* Origin() const override { return &Target(); }
    bool OwnRefusesWrites() const override { return Target().RefusesWrites(); }

private:
    Node& Target() const { return m_target.Target(*this); }
    Number FromTarget(Number value, ReadOptions options = ReadOptions());
    Number Limit(bool lower);

    FormulaLinks<Number> m_links;
    Link m_target;
    ESlope m_slope;
};

} // namespace KxGenApi

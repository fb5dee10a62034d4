// SPDX-License-Identifier: Apache-2.0
#include "runtime/FormulaNodes.h"

#include "runtime/Change.h"

#include <Base/GCException.h>

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>

namespace KxGenApi
{

// --------------------------------------------------------------------------------------------- FormulaLinks

template <typename Number>
FormulaLinks<Number>::FormulaLinks(const Node& owner)
    : m_owner(owner)
{
    for (const Property& property : owner.Properties()) {
        if (property.id == Prop::pVariable)
            m_variables.push_back(Link(property));
    }
}

template <typename Number>
EAccessMode FormulaLinks<Number>::AccessMode() const
{
    EAccessMode mode = RW; // a variable that can only be written is found out at reading
    for (const Link& variable : m_variables) {
        const EAccessMode other = variable.Target(m_owner).AccessMode();
        if (!IsAvailable(other))
            mode = Combine(mode, other);
    }
    return mode;
}

template <typename Number>
ECachingMode FormulaLinks<Number>::CachingMode(ECachingMode best) const
{
    ECachingMode mode = best;
    for (const Link& variable : m_variables) {
        if (variable.Target(m_owner).CachingMode() == NoCache)
            mode = NoCache; // a value that is read anew each time makes a new result each time
    }
    return mode;
}

template <typename Number>
const CompiledFormula<Number>& FormulaLinks<Number>::Compiled(Prop which)
{
    const CompiledFormula<Number>*& known = m_formulas[which == Prop::FormulaFrom ? 1 : 0];
    if (known == nullptr)
        known = &m_owner.Map().Formulas().template Get<Number>(m_owner.Described(), m_owner.Index(), which);
    return *known;
}

template <typename Number>
void FormulaLinks<Number>::Raise(Prop which, const char* why) const
{
    const Property* const text = m_owner.Find(which);
    const std::string_view formula = text != nullptr ? text->text : std::string_view();
    throw LOGICAL_ERROR_EXCEPTION_NODE(m_owner.Map().EntryText().c_str(), m_owner.NameText())(
        "Formula '%.*s' of '%s': %s", static_cast<int>(std::min<size_t>(formula.size(), 80)), formula.data(),
        m_owner.NameText(), why);
}

template <typename Number>
Number FormulaLinks<Number>::Evaluate(Prop which, ReadOptions options, Number from, Number to)
{
    const CompiledFormula<Number>& compiled = Compiled(which);
    if (!compiled.formula)
        Raise(which, compiled.error.c_str());

    constexpr size_t kFew = 14;
    std::array<Number, kFew + 2> few;
    std::vector<Number> many;
    Number* values = few.data();
    const size_t count = m_variables.size();
    if (count > kFew) {
        many.resize(count + 2);
        values = many.data();
    }
    for (size_t i = 0; i < count; ++i) {
        const Link& variable = m_variables[i];
        values[i] = compiled.formula->Uses(i)
                        ? ReadVariable<Number>(m_owner, variable.Source(), variable.Target(m_owner), options)
                        : Number(0);
    }
    values[count] = from;
    values[count + 1] = to;
    try {
        return compiled.formula->Evaluate(values);
    } catch (const FormulaError& error) {
        Raise(which, error.what());
    }
}

template class FormulaLinks<int64_t>;
template class FormulaLinks<double>;

// ----------------------------------------------------------------------------------------------- SwissKnives

namespace
{

Prop FormulaOf(const Node& node)
{
    for (const Prop id : {Prop::Formula, Prop::FormulaTo}) {
        if (node.Find(id) != nullptr)
            return id;
    }
    return Prop::FormulaFrom;
}

} // namespace

template <typename Number>
SwissKnifeNode<Number>::SwissKnifeNode(NodeMap& map, NodeIndex index)
    : Base(map, index)
    , m_links(*this)
    , m_which(FormulaOf(*this))
{}

template <typename Number>
void SwissKnifeNode<Number>::Store(Number, bool, Change&)
{
    throw ACCESS_EXCEPTION_NODE(this->EntryText().c_str(), this->NameText())("Node is not writable.");
}

template class SwissKnifeNode<int64_t>;
template class SwissKnifeNode<double>;

// ------------------------------------------------------------------------------------------------ converters

template <typename Number>
ConverterNode<Number>::ConverterNode(NodeMap& map, NodeIndex index)
    : Base(map, index)
    , m_links(*this)
    , m_target(*this->Find(Prop::pValue)) // the description is checked to have one
{
    const Property* const slope = this->Find(Prop::Slope);
    m_slope = slope != nullptr ? static_cast<ESlope>(slope->integer) : _UndefinedESlope;
}

template <typename Number>
EAccessMode ConverterNode<Number>::OwnAccessMode() const
{
    return Combine(m_links.AccessMode(), Target().AccessMode());
}

template <typename Number>
ECachingMode ConverterNode<Number>::OwnCachingMode() const
{
    return Combine(m_links.CachingMode(WriteAround), Target().CachingMode());
}

template <typename Number>
Number ConverterNode<Number>::FromTarget(Number value, ReadOptions options)
{
    return m_links.Evaluate(Prop::FormulaFrom, options, 0, value);
}

template <typename Number>
Number ConverterNode<Number>::Fetch(ReadOptions options)
{
    return FromTarget(NumberKind<Number>::Read(Target(), options), options);
}

template <typename Number>
void ConverterNode<Number>::Store(Number value, bool verify, Change& change)
{
    const Number raw = m_links.Evaluate(Prop::FormulaTo, ReadOptions(), value, 0);
    NumberKind<Number>::Write(Target(), raw, verify, change);
}

template <typename Number>
Number ConverterNode<Number>::Limit(bool lower)
{
    const auto converted = [&](bool ofMin) {
        return FromTarget(ofMin ? NumberKind<Number>::Min(Target()) : NumberKind<Number>::Max(Target()));
    };
    // A formula may leave the range of the type, on the side where that makes sense as a limit at all.
    const auto clamped = [&](Number limit) {
        return lower ? std::max(limit, std::numeric_limits<Number>::lowest())
                     : std::min(limit, std::numeric_limits<Number>::max());
    };
    switch (m_slope) {
    case Increasing:
        return clamped(converted(lower));
    case Decreasing:
        return clamped(converted(!lower));
    case Varying:
        return lower ? std::numeric_limits<Number>::lowest() : std::numeric_limits<Number>::max();
    case _UndefinedESlope:
        if (std::is_same_v<Number, int64_t>)
            return 0; // an IntConverter without a slope has no limits that anything could pass
        break;
    case Automatic:
        break;
    }
    return clamped(lower ? std::min(converted(true), converted(false))
                         : std::max(converted(true), converted(false)));
}

template class ConverterNode<int64_t>;
template class ConverterNode<double>;

} // namespace KxGenApi

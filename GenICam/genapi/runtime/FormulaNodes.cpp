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
Number FormulaLinks<Number>::Evaluate(Prop which, ReadOptions options, Number from, Number to)
{
    const CompiledFormula<Number>& compiled = Compiled(which);
    const auto fail = [&](const char* why) {
        const Property* const text = m_owner.Find(which);
        const std::string_view formula = text != nullptr ? text->text : std::string_view();
        throw LOGICAL_ERROR_EXCEPTION_NODE(m_owner.Map().EntryText().c_str(), m_owner.NameText())(
            "Formula '%.*s' of '%s': %s", static_cast<int>(std::min<size_t>(formula.size(), 80)),
            formula.data(), m_owner.NameText(), why);
    };
    if (!compiled.formula)
        fail(compiled.error.c_str());

    constexpr size_t kFew = 14;
    std::array<Number, kFew + 2> few;
    std::vector<Number> many;
    Number* values = few.data();
    if (m_variables.size() > kFew) {
        many.resize(m_variables.size() + 2);
        values = many.data();
    }
    for (size_t i = 0; i < m_variables.size(); ++i) {
        if (!compiled.formula->Uses(i)) {
            values[i] = 0;
            continue;
        }
        Node& node = m_variables[i].Target(m_owner);
        const RefPart part = m_variables[i].Source().part;
        if constexpr (std::is_same_v<Number, int64_t>)
            values[i] = ReadIntegerPart(node, part, options);
        else
            values[i] = ReadRealPart(node, part, options);
    }
    values[m_variables.size()] = from;
    values[m_variables.size() + 1] = to;
    try {
        return compiled.formula->Evaluate(values);
    } catch (const FormulaError& error) {
        fail(error.what());
        throw;
    }
}

template class FormulaLinks<int64_t>;
template class FormulaLinks<double>;

namespace
{

/// The formula of a SwissKnife; the helper nodes of a converter carry the converter's.
Prop FormulaOf(const Node& node)
{
    for (const Prop id : {Prop::Formula, Prop::FormulaTo}) {
        if (node.Find(id) != nullptr)
            return id;
    }
    return Prop::FormulaFrom;
}

Link LinkOf(const Node& node, Prop id)
{
    const Property* const property = node.Find(id);
    return property != nullptr ? Link(*property) : Link();
}

ESlope SlopeOf(const Node& node)
{
    const Property* const slope = node.Find(Prop::Slope);
    return slope != nullptr ? static_cast<ESlope>(slope->integer) : _UndefinedESlope;
}

} // namespace

// ----------------------------------------------------------------------------------------------- SwissKnives

IntSwissKnifeNode::IntSwissKnifeNode(NodeMap& map, NodeIndex index)
    : IntegerBase(map, index)
    , m_links(*this)
    , m_which(FormulaOf(*this))
{}

int64_t IntSwissKnifeNode::IntegerMin() { return std::numeric_limits<int64_t>::min(); }

int64_t IntSwissKnifeNode::IntegerMax() { return std::numeric_limits<int64_t>::max(); }

int64_t IntSwissKnifeNode::Fetch(ReadOptions options) { return m_links.Evaluate(m_which, options); }

void IntSwissKnifeNode::Store(int64_t, bool, Change&)
{
    throw KXNODE_ERROR(AccessException)("Node is not writable.");
}

SwissKnifeNode::SwissKnifeNode(NodeMap& map, NodeIndex index)
    : FloatBase(map, index)
    , m_links(*this)
    , m_which(FormulaOf(*this))
{}

double SwissKnifeNode::RealMin() { return std::numeric_limits<double>::lowest(); }

double SwissKnifeNode::RealMax() { return std::numeric_limits<double>::max(); }

double SwissKnifeNode::Fetch(ReadOptions options) { return m_links.Evaluate(m_which, options); }

void SwissKnifeNode::Store(double, bool, Change&)
{
    throw KXNODE_ERROR(AccessException)("Node is not writable.");
}

// ----------------------------------------------------------------------------------------------- converters

IntConverterNode::IntConverterNode(NodeMap& map, NodeIndex index)
    : IntegerBase(map, index)
    , m_links(*this)
    , m_target(LinkOf(*this, Prop::pValue))
{}

EAccessMode IntConverterNode::OwnAccessMode() const
{
    return Combine(m_links.AccessMode(), m_target.Target(*this).AccessMode());
}

ECachingMode IntConverterNode::OwnCachingMode() const
{
    return Combine(m_links.CachingMode(WriteAround), m_target.Target(*this).CachingMode());
}

int64_t IntConverterNode::Fetch(ReadOptions options)
{
    return m_links.Evaluate(Prop::FormulaFrom, options, 0, m_target.Target(*this).ReadInteger(options));
}

void IntConverterNode::Store(int64_t value, bool verify, Change& change)
{
    const int64_t raw = m_links.Evaluate(Prop::FormulaTo, ReadOptions(), value, 0);
    m_target.Target(*this).WriteInteger(raw, verify, change);
}

int64_t IntConverterNode::IntegerMin() { return Limit(true); }

int64_t IntConverterNode::IntegerMax() { return Limit(false); }

int64_t IntConverterNode::Limit(bool lower)
{
    const Level level(*this);
    Node& target = m_target.Target(*this);
    const auto converted = [&](bool ofMin) {
        const int64_t raw = ofMin ? target.IntegerMin() : target.IntegerMax();
        return m_links.Evaluate(Prop::FormulaFrom, ReadOptions(), 0, raw);
    };
    switch (SlopeOf(*this)) {
    case Increasing:
        return converted(lower);
    case Decreasing:
        return converted(!lower);
    case Automatic:
        return lower ? std::min(converted(true), converted(false))
                     : std::max(converted(true), converted(false));
    case Varying:
        return lower ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
    case _UndefinedESlope:
        break;
    }
    return 0; // without a slope the limits are not known, and nothing passes them
}

ConverterNode::ConverterNode(NodeMap& map, NodeIndex index)
    : FloatBase(map, index)
    , m_links(*this)
    , m_target(LinkOf(*this, Prop::pValue))
{}

EAccessMode ConverterNode::OwnAccessMode() const
{
    return Combine(m_links.AccessMode(), m_target.Target(*this).AccessMode());
}

ECachingMode ConverterNode::OwnCachingMode() const
{
    return Combine(m_links.CachingMode(WriteAround), m_target.Target(*this).CachingMode());
}

double ConverterNode::Fetch(ReadOptions options)
{
    return m_links.Evaluate(Prop::FormulaFrom, options, 0, m_target.Target(*this).ReadReal(options));
}

void ConverterNode::Store(double value, bool verify, Change& change)
{
    const double raw = m_links.Evaluate(Prop::FormulaTo, ReadOptions(), value, 0);
    m_target.Target(*this).WriteReal(raw, verify, change);
}

double ConverterNode::RealMin() { return Limit(true); }

double ConverterNode::RealMax() { return Limit(false); }

double ConverterNode::Limit(bool lower)
{
    const Level level(*this);
    Node& target = m_target.Target(*this);
    const auto converted = [&](bool ofMin) {
        const double raw = ofMin ? target.RealMin() : target.RealMax();
        return m_links.Evaluate(Prop::FormulaFrom, ReadOptions(), 0, raw);
    };
    switch (SlopeOf(*this)) {
    case Increasing:
        return converted(lower);
    case Decreasing:
        return converted(!lower);
    case Varying:
        return lower ? std::numeric_limits<double>::lowest() : std::numeric_limits<double>::max();
    case Automatic:
    case _UndefinedESlope:
        break;
    }
    return lower ? std::min(converted(true), converted(false)) : std::max(converted(true), converted(false));
}

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
// A number that the description gives by a literal or by naming a node, such as Max and pMax.
#pragma once

#include "runtime/NumberKind.h"

namespace KxGenApi
{

/// Nearest integer, halves away from zero; RuntimeException with the node's name if int64 can't hold it.
int64_t RoundToInteger(const Node& node, double value);

[[noreturn]] void RaiseUnknownPart(const Node& owner, const Property& variable);

/// The number that a formula's variable means, such as the maximum of its target. RuntimeException for a part
/// that the target has not.
template <typename Number>
Number ReadVariable(const Node& owner, const Property& variable, Node& target, ReadOptions options)
{
    using Kind = NumberKind<Number>;
    switch (variable.part) {
    case RefPart::Min:
        return Kind::Min(target);
    case RefPart::Max:
        return Kind::Max(target);
    case RefPart::Inc:
        return Kind::Inc(target);
    case RefPart::AccessMode:
        return Kind::FromInteger(target.AccessMode());
    case RefPart::Entry:
        return Kind::FromInteger(target.EntryInteger(
            variable.attribute.substr(variable.attribute.find('.', variable.attribute.find('.') + 1) + 1)));
    case RefPart::Unknown:
        RaiseUnknownPart(owner, variable);
    case RefPart::Value:
        break;
    }
    return Kind::Read(target, options);
}

/// A literal or a reference. `from` is the node that it belongs to.
class NumberLink
{
public:
    NumberLink() = default;
    explicit NumberLink(const Property& property)
        : m_link(property)
    {}

    /// Whether the description gives it at all.
    explicit operator bool() const { return static_cast<bool>(m_link); }
    bool IsReference() const { return m_link && m_link.Source().node != kNoNode; }
    bool IsLiteral() const { return m_link && m_link.Source().node == kNoNode; }
    const Property& Source() const { return m_link.Source(); }
    Node& Target(const Node& from) const { return m_link.Target(from); }

    template <typename Number>
    Number Get(const Node& from, ReadOptions options = ReadOptions()) const
    {
        return IsReference() ? NumberKind<Number>::Read(Target(from), options)
                             : NumberKind<Number>::Literal(Source());
    }
    int64_t Integer(const Node& from, ReadOptions options = ReadOptions()) const
    {
        return Get<int64_t>(from, options);
    }

private:
    Link m_link;
};

} // namespace KxGenApi

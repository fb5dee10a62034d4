// SPDX-License-Identifier: Apache-2.0
// A number that the description gives by a literal or by naming a node, such as Max and pMax.
#pragma once

#include "runtime/Node.h"

namespace KxGenApi
{

/// Nearest integer, halves away from zero; RuntimeException with the node's name if int64 can't hold it.
int64_t RoundToInteger(const Node& node, double value);

/// The number that a variable's reference means, such as the maximum of its target.
int64_t ReadIntegerPart(Node& target, RefPart part, ReadOptions options);
double ReadRealPart(Node& target, RefPart part, ReadOptions options);

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

    int64_t Integer(const Node& from, ReadOptions options = ReadOptions()) const
    {
        return IsReference() ? Target(from).ReadInteger(options) : Source().integer;
    }
    double Real(const Node& from, ReadOptions options = ReadOptions()) const
    {
        return IsReference() ? Target(from).ReadReal(options) : Source().real;
    }

private:
    Link m_link;
};

/// The caching mode of something made of both: the less cached one.
inline ECachingMode Combine(ECachingMode a, ECachingMode b)
{
    if (a == NoCache || b == NoCache)
        return NoCache;
    return a == WriteAround || b == WriteAround ? WriteAround : WriteThrough;
}

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
// Where the value of an Integer or Float node is: in the node itself, in another node, or in one of several
// that an index chooses among.
#pragma once

#include "runtime/NumberLink.h"

#include <vector>

namespace KxGenApi
{

/// Literals are values of their own, which can be written; they belong to one map.
template <typename Number>
class ValueSlots
{
public:
    explicit ValueSlots(Node& owner);

    Number Read(ReadOptions options);
    void Write(Number value, bool verify, Change& change);
    /// The limits that all nodes which are written share; those of the type if the node itself holds the
    /// value.
    Number Min();
    Number Max();
    EAccessMode AccessMode() const;
    /// Whether a node that is written refuses every write.
    bool RefusesWrites() const;
    ECachingMode CachingMode() const;

    /// The node that gives the value at present, null if the node itself does.
    Node* Target() const;

private:
    struct Slot
    {
        int64_t index = 0;
        NumberLink link;
        Number literal{};
    };

    void Take(const Property& property, int64_t index);
    const Slot& Current() const;
    Slot& Current() { return const_cast<Slot&>(static_cast<const ValueSlots&>(*this).Current()); }

    Node& m_owner;
    NumberLink m_index;
    std::vector<Slot> m_slots; // without an index there is one; the default, if any, is the last
    bool m_hasDefault = false;
    std::vector<NumberLink> m_copies; // written after the value itself, in the order of the description
};

extern template class ValueSlots<int64_t>;
extern template class ValueSlots<double>;

} // namespace KxGenApi

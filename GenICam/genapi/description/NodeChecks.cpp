// SPDX-License-Identifier: Apache-2.0
// The part of DescriptionBuilder that looks at a node as a whole.
#include "description/DescriptionBuilder.h"
#include "description/Diagnostics.h"

#include <GenApi/Types.h>

#include <algorithm>

namespace KxGenApi
{

void DescriptionBuilder::CheckComplete(const Context& context)
{
    const NodeRules& rules = *context.rules;
    if (rules.lenient)
        return;
    const uint64_t missing = rules.required & ~context.seenSlots;
    if (missing) {
        size_t slot = 0;
        while (!(missing >> slot & 1))
            ++slot;
        std::string names;
        for (size_t prop = 0; prop < kPropCount; ++prop)
            if (rules.slot[prop] == slot)
                names += (names.empty() ? "" : " or ") + std::string(InfoOf(static_cast<Prop>(prop)).name);
        Fail(PlaceOf(context, m_declarations[context.id].element), "has no " + names);
    }
    if (context.type == NodeType::MaskedIntReg || context.type == NodeType::StructEntry)
        CheckBits(context);
    const auto has = [&](Prop prop) {
        return std::any_of(m_open.begin() + static_cast<ptrdiff_t>(context.firstProperty), m_open.end(),
                           [prop](const Property& property) { return property.id == prop; });
    };
    if ((context.type == NodeType::Integer || context.type == NodeType::Float) && !has(Prop::pIndex) &&
        (has(Prop::ValueIndexed) || has(Prop::pValueIndexed) || has(Prop::ValueDefault) ||
         has(Prop::pValueDefault)))
        Fail(PlaceOf(context, m_declarations[context.id].element), "has indexed values but no pIndex");
}

void DescriptionBuilder::CheckBits(const Context& context)
{
    const auto find = [&](Prop prop) -> const Property* {
        const auto found =
            std::find_if(m_open.begin() + static_cast<ptrdiff_t>(context.firstProperty), m_open.end(),
                         [prop](const Property& property) { return property.id == prop; });
        return found == m_open.end() ? nullptr : &*found;
    };
    const Place place = PlaceOf(context, m_declarations[context.id].element);
    const Property* const lsb = find(Prop::LSB);
    const Property* const msb = find(Prop::MSB);
    const Property* const bit = find(Prop::Bit);
    if (bit ? lsb || msb : !lsb || !msb)
        Fail(place, "needs either Bit or LSB and MSB");
    const int64_t first = bit ? bit->integer : lsb->integer, last = bit ? bit->integer : msb->integer;
    const bool isBig = find(Prop::Endianess)->integer == GenApi::BigEndian;
    if (isBig ? first < last : last < first)
        Fail(place, "has LSB " + std::to_string(first) + " and MSB " + std::to_string(last) +
                        ", which is the wrong way " + "round for " + (isBig ? "BigEndian" : "LittleEndian"));
    const Property* const length = find(Prop::Length);
    const int64_t highest = std::max(first, last), lowest = std::min(first, last);
    if (lowest < 0 || highest > 63 || (length && highest / 8 >= length->integer))
        Fail(place, "has bit " + std::to_string(lowest < 0 ? lowest : highest) +
                        " outside of its length of " + (length ? std::to_string(length->integer) : "8") +
                        " bytes");
}

} // namespace KxGenApi

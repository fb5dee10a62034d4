// SPDX-License-Identifier: Apache-2.0
// Events that follow one another in a message.
#pragma once

#include "ByteOrder.h"

#include <Base/GCException.h>

#include <cstddef>
#include <cstdint>

namespace KxGenApi
{

/// Begin and length of an event in a message.
struct EventItem
{
    const uint8_t* begin;
    size_t length;
    uint16_t id;
};

/// Calls `deliver` for each event of a payload. An event begins with its size and its ID, 16 bits each, in
/// the byte order `Bytes`; size 0 stands for all the rest. The whole payload is checked before the first
/// call, so that a broken message delivers nothing: RuntimeException.
template <class Bytes, class Deliver>
void ForEachSizedEvent(const uint8_t* payload, size_t length, size_t smallest, Deliver deliver)
{
    const auto at = [=](size_t pos) {
        const size_t left = length - pos;
        if (left < smallest)
            throw RUNTIME_EXCEPTION(
                "Event message: %zu bytes at %zu are too few for an event of at least %zu", left, pos,
                smallest);
        const size_t told = Bytes::template Get<uint16_t>(payload + pos);
        const size_t size = told == 0 ? left : told;
        if (size < smallest || size > left)
            throw RUNTIME_EXCEPTION("Event message: size %zu of the event at %zu must be %zu to %zu", size,
                                    pos, smallest, left);
        return EventItem{payload + pos, size, Bytes::template Get<uint16_t>(payload + pos + 2)};
    };
    size_t pos = 0;
    do
        pos += at(pos).length;
    while (pos < length);
    for (pos = 0; pos < length;) {
        const EventItem item = at(pos);
        deliver(item);
        pos += item.length;
    }
}

} // namespace KxGenApi

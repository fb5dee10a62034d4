// SPDX-License-Identifier: Apache-2.0
#include "EventItems.h"

#include <GenApi/EventAdapterGEV.h>

namespace GenApi
{
namespace
{
using GEVBytes = KxGenApi::BigEndianBytes;

constexpr uint8_t kExtendedIds = 0x10;

static_assert(sizeof(GVCP_REQUEST_HEADER) == 8 && sizeof(GVCP_EVENT_ITEM) == 16);
static_assert(sizeof(GVCP_EVENT_ITEM_EXTENDED_ID) == 24 && sizeof(GVCP_EVENTDATA_REQUEST_EXTENDED_ID) == 36);

uint32_t LengthOf(const GVCP_REQUEST_HEADER& header)
{
    const auto bytes = reinterpret_cast<const uint8_t*>(&header.Length);
    return static_cast<uint32_t>(sizeof header) + GEVBytes::Get<uint16_t>(bytes);
}
} // namespace

CEventAdapterGEV::CEventAdapterGEV(INodeMap* pNodeMap)
    : CEventAdapter(pNodeMap)
{}

void CEventAdapterGEV::DeliverMessage(const uint8_t msg[], uint32_t numBytes)
{
    constexpr size_t kHead = sizeof(GVCP_REQUEST_HEADER);
    if (!msg || numBytes < kHead)
        throw RUNTIME_EXCEPTION("Event message: %u bytes are fewer than the %zu of its head", numBytes,
                                kHead);
    const uint16_t command = GEVBytes::Get<uint16_t>(msg + 2);
    const size_t length = GEVBytes::Get<uint16_t>(msg + 4);
    if (msg[0] != COMMAND_MAGIC)
        throw RUNTIME_EXCEPTION("Event message: begins with 0x%02x instead of 0x%02x", msg[0], COMMAND_MAGIC);
    if (length > numBytes - kHead)
        throw RUNTIME_EXCEPTION("Event message: length %zu exceeds the %zu bytes behind the head", length,
                                numBytes - kHead);
    const size_t itemSize =
        (msg[1] & kExtendedIds) != 0 ? sizeof(GVCP_EVENT_ITEM_EXTENDED_ID) : sizeof(GVCP_EVENT_ITEM);
    const uint8_t* const payload = msg + kHead;

    if (command == GVCP_EVENTDATA_CMD) {
        KxGenApi::ForEachSizedEvent<GEVBytes>(payload, length, itemSize,
                                              [this](const KxGenApi::EventItem& item) {
                                                  DeliverEvent(uint64_t(item.id), item.begin, item.length);
                                              });
        return;
    }
    if (command != GVCP_EVENT_CMD)
        throw RUNTIME_EXCEPTION("Event message: command 0x%04x is no event", command);
    if (length == 0 || length % itemSize != 0)
        throw RUNTIME_EXCEPTION("Event message: length %zu must be a multiple of an event's %zu bytes",
                                length, itemSize);
    for (size_t pos = 0; pos < length; pos += itemSize)
        DeliverEvent(uint64_t(GEVBytes::Get<uint16_t>(payload + pos + 2)), payload + pos, itemSize);
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENT_REQUEST* pMessage)
{
    DeliverMessage(reinterpret_cast<const uint8_t*>(pMessage), pMessage ? LengthOf(pMessage->Header) : 0);
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENTDATA_REQUEST* pMessage)
{
    DeliverMessage(reinterpret_cast<const uint8_t*>(pMessage), pMessage ? LengthOf(pMessage->Header) : 0);
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENT_REQUEST_EXTENDED_ID* pMessage)
{
    DeliverMessage(reinterpret_cast<const uint8_t*>(pMessage), pMessage ? LengthOf(pMessage->Header) : 0);
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENTDATA_REQUEST_EXTENDED_ID* pMessage)
{
    DeliverMessage(reinterpret_cast<const uint8_t*>(pMessage), pMessage ? LengthOf(pMessage->Header) : 0);
}

} // namespace GenApi

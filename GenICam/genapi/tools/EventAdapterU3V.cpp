// SPDX-License-Identifier: Apache-2.0
#include "EventItems.h"

#include <GenApi/EventAdapterU3V.h>

namespace GenApi
{
namespace
{
using U3VBytes = KxGenApi::LittleEndianBytes;

static_assert(sizeof(U3V_COMMAND_HEADER) == 12 && sizeof(U3V_EVENT_DATA) == 12);
} // namespace

CEventAdapterU3V::CEventAdapterU3V(INodeMap* pNodeMap)
    : CEventAdapter(pNodeMap)
{}

void CEventAdapterU3V::DeliverMessage(const uint8_t msg[], uint32_t numBytes)
{
    constexpr size_t kHead = sizeof(U3V_COMMAND_HEADER);
    if (!msg || numBytes < kHead)
        throw RUNTIME_EXCEPTION("Event message: %u bytes are fewer than the %zu of its head", numBytes,
                                kHead);
    const uint32_t prefix = U3VBytes::Get<uint32_t>(msg);
    const uint16_t command = U3VBytes::Get<uint16_t>(msg + 6);
    const size_t length = U3VBytes::Get<uint16_t>(msg + 8);
    if (prefix != U3V_EVENT_PREFIX)
        throw RUNTIME_EXCEPTION("Event message: begins with 0x%08x instead of 0x%08x", prefix,
                                U3V_EVENT_PREFIX);
    if (command != U3V_EVENT_CMD_ID)
        throw RUNTIME_EXCEPTION("Event message: command 0x%04x is no event", command);
    if (length > numBytes - kHead)
        throw RUNTIME_EXCEPTION("Event message: length %zu exceeds the %zu bytes behind the head", length,
                                numBytes - kHead);
    KxGenApi::ForEachSizedEvent<U3VBytes>(msg + kHead, length, sizeof(U3V_EVENT_DATA),
                                          [this](const KxGenApi::EventItem& item) {
                                              DeliverEvent(uint64_t(item.id), item.begin, item.length);
                                          });
}

void CEventAdapterU3V::DeliverEventMessage(const U3V_EVENT_MESSAGE* pEvent)
{
    const auto bytes = reinterpret_cast<const uint8_t*>(pEvent);
    DeliverMessage(bytes,
                   bytes ? uint32_t(sizeof(U3V_COMMAND_HEADER)) + U3VBytes::Get<uint16_t>(bytes + 8) : 0);
}

} // namespace GenApi

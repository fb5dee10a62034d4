// SPDX-License-Identifier: Apache-2.0
#include "EventItems.h"

#include <GenApi/EventAdapter1394.h>
#include <GenApi/EventAdapterCL.h>

namespace GenApi
{
namespace
{
using CLBytes = KxGenApi::BigEndianBytes;

static_assert(sizeof(CL_COMMAND_HEADER) == CL_COMMAND_HEADER_SIZE && sizeof(CL_EVENT_DATA) == 12);
static_assert(sizeof(CL_EVENT_MESSAGE) == CL_EVENT_BASIC_SIZE);
} // namespace

CEventAdapterCL::CEventAdapterCL(INodeMap* pNodeMap)
    : CEventAdapter(pNodeMap)
{}

void CEventAdapterCL::DeliverMessage(const uint8_t msg[], uint32_t numBytes)
{
    if (!msg || numBytes < CL_COMMAND_HEADER_SIZE)
        throw RUNTIME_EXCEPTION("Event message: %u bytes are fewer than the %u of its head", numBytes,
                                CL_COMMAND_HEADER_SIZE);
    const uint16_t preamble = CLBytes::Get<uint16_t>(msg);
    const uint16_t command = CLBytes::Get<uint16_t>(msg + 10);
    const uint16_t length = CLBytes::Get<uint16_t>(msg + 12);
    if (preamble != CL_EVENT_PREAMBLE)
        throw RUNTIME_EXCEPTION("Event message: begins with 0x%04x instead of 0x%04x", preamble,
                                CL_EVENT_PREAMBLE);
    if (command != CL_EVENT_CMD_ID)
        throw RUNTIME_EXCEPTION("Event message: command 0x%04x is no event", command);
    if (length > numBytes - CL_COMMAND_HEADER_SIZE)
        throw RUNTIME_EXCEPTION("Event message: length %u exceeds the %u bytes behind the head", length,
                                numBytes - CL_COMMAND_HEADER_SIZE);
    DeliverEventData(reinterpret_cast<const CL_EVENT_DATA*>(msg + CL_COMMAND_HEADER_SIZE), length);
}

void CEventAdapterCL::DeliverEventData(const CL_EVENT_DATA* pEventData, uint16_t length)
{
    if (!pEventData)
        throw RUNTIME_EXCEPTION("Event message: there are no data");
    KxGenApi::ForEachSizedEvent<CLBytes>(reinterpret_cast<const uint8_t*>(pEventData), length,
                                         sizeof(CL_EVENT_DATA), [this](const KxGenApi::EventItem& item) {
                                             DeliverEvent(uint64_t(item.id), item.begin, item.length);
                                         });
}

CEventAdapter1394::CEventAdapter1394(INodeMap* pNodeMap)
    : CEventAdapter(pNodeMap)
{}

void CEventAdapter1394::DeliverMessage(const uint8_t[], uint32_t) {}

void CEventAdapter1394::DeliverEventMessage(EventData1394&, uint32_t) {}

} // namespace GenApi

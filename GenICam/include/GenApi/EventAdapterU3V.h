// SPDX-License-Identifier: Apache-2.0
// Delivery of USB3 Vision event messages.
#pragma once

#include <GenApi/EventAdapter.h>

namespace GenApi
{

/// Mark at the beginning of a message on the event channel ("U3VE"), and the command code of an event.
constexpr uint32_t U3V_EVENT_PREFIX = 0x45563355;
constexpr uint16_t U3V_EVENT_CMD_ID = 0x0C00;

/// The same as the control protocol names it, and sizes of head and message.
constexpr uint16_t GENCP_EVENT_CMD_ID = 0x0C00;
constexpr uint32_t GENCP_COMMAND_HEADER_SIZE = 12;
constexpr uint32_t GENCP_EVENT_BASIC_SIZE = 24;

// The parts of an event message as they pass the bus: packed, least significant byte first.
#pragma pack(push, 1)

/// Head of a message. Length is that of what follows.
struct U3V_COMMAND_HEADER
{
    uint32_t Prefix;
    uint16_t Flags;
    uint16_t CommandId;
    uint16_t Length;
    uint16_t ReqId;
};

/// An event; its data follow.
struct U3V_EVENT_DATA
{
    uint16_t Reserved; ///< bytes of this event with its data, if several events follow; else 0
    uint16_t EventId;
    uint64_t Timestamp;
};

/// A message of one event.
struct U3V_EVENT_MESSAGE
{
    U3V_COMMAND_HEADER CommandHeader;
    U3V_EVENT_DATA EventData;
};

#pragma pack(pop)

/// Event messages of the event channel, with one event or several whose sizes stand in them. Address 0 of an
/// event's port is the first byte behind the message's head, so the timestamp lies at 4 and the data at 12.
class GENAPI_DECL CEventAdapterU3V : public CEventAdapter
{
public:
    CEventAdapterU3V(INodeMap* pNodeMap = nullptr);

    void DeliverMessage(const uint8_t msg[], uint32_t numBytes) override;

    /// The same for a message that has been received as a whole: its head's length is believed.
    void DeliverEventMessage(const U3V_EVENT_MESSAGE* pEvent);
};

} // namespace GenApi

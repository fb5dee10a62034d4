// SPDX-License-Identifier: Apache-2.0
// Delivery of GigE Vision event messages.
#pragma once

#include <GenApi/EventAdapter.h>

namespace GenApi
{

/// First byte of the control protocol's messages, and the command codes of those with events.
constexpr uint8_t COMMAND_MAGIC = 0x42;
enum GVCP_MESSAGE_TAGS
{
    TAG_EVENT_CMD = 0x00C0,
    TAG_EVENTDATA_CMD = 0x00C2
};
constexpr uint16_t GVCP_EVENT_CMD = TAG_EVENT_CMD;
constexpr uint16_t GVCP_EVENTDATA_CMD = TAG_EVENTDATA_CMD;

// The parts of an event message as they pass the network: packed, most significant byte first.
#pragma pack(push, 1)

/// Head of a control message. Length is that of what follows.
struct GVCP_REQUEST_HEADER
{
    uint8_t Magic; ///< 0x42
    uint8_t Flags; ///< 0x10 tells that block IDs have 64 bits
    uint16_t Command;
    uint16_t Length;
    uint16_t ReqId;
};

/// What all events begin with.
struct GVCP_EVENT_ITEM_BASIC
{
    uint16_t ReservedOrEventSize;
    uint16_t EventId;
};

/// One event with a 16-bit block ID.
struct GVCP_EVENT_ITEM
{
    uint16_t ReservedOrEventSize; ///< bytes of this event with its data, if several events with data follow;
                                  ///< else 0
    uint16_t EventId;
    uint16_t StreamChannelId;
    uint16_t BlockId;
    uint32_t TimestampHigh;
    uint32_t TimestampLow;
};

/// One event with a 64-bit block ID.
struct GVCP_EVENT_ITEM_EXTENDED_ID
{
    uint16_t ReservedOrEventSize;
    uint16_t EventId;
    uint16_t StreamChannelId;
    uint16_t BlockId;
    uint32_t BlockId64High;
    uint32_t BlockId64Low;
    uint32_t TimestampHigh;
    uint32_t TimestampLow;
};

/// A message of one or more events without data.
struct GVCP_EVENT_REQUEST
{
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM Items[1];
};

/// A message of an event with data.
struct GVCP_EVENTDATA_REQUEST
{
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM Event;
    uint32_t Data[1];
};

/// The same with 64-bit block IDs.
struct GVCP_EVENT_REQUEST_EXTENDED_ID
{
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM_EXTENDED_ID Items[1];
};
struct GVCP_EVENTDATA_REQUEST_EXTENDED_ID
{
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM_EXTENDED_ID Event;
    uint32_t Data[1];
};

#pragma pack(pop)

/// Event messages of the control protocol: EVENT with any number of events, EVENTDATA with one event and its
/// data, or with several whose sizes stand in them; block IDs of 16 and of 64 bits. Address 0 of an event's
/// port is the first byte of its item, so the timestamp lies at 8 (with 64-bit block IDs at 16), the data at
/// 16 (24).
class GENAPI_DECL CEventAdapterGEV : public CEventAdapter
{
public:
    CEventAdapterGEV(INodeMap* pNodeMap = nullptr);

    void DeliverMessage(const uint8_t msg[], uint32_t numBytes) override;

    /// The same for a message that has been received as a whole: its head's length is believed.
    void DeliverEventMessage(const GVCP_EVENT_REQUEST* pEvent);
    void DeliverEventMessage(const GVCP_EVENTDATA_REQUEST* pEventData);
    void DeliverEventMessage(const GVCP_EVENT_REQUEST_EXTENDED_ID* pEvent);
    void DeliverEventMessage(const GVCP_EVENTDATA_REQUEST_EXTENDED_ID* pEventData);
};

} // namespace GenApi

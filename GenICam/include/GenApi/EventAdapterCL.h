// SPDX-License-Identifier: Apache-2.0
// Delivery of Camera Link event messages.
#pragma once

#include <GenApi/EventAdapter.h>

namespace GenApi
{

/// Mark at the beginning of a message, the command code of an event, and sizes of head and message.
constexpr uint16_t CL_EVENT_PREAMBLE = 0x0100;
constexpr uint16_t CL_EVENT_CMD_ID = 0x0C00;
constexpr uint32_t CL_COMMAND_HEADER_SIZE = 16;
constexpr uint32_t CL_EVENT_BASIC_SIZE = 28;

// The parts of an event message as they pass the line: packed, most significant byte first.
#pragma pack(push, 1)

/// Head of a message. Length is that of what follows.
struct CL_COMMAND_HEADER
{
    uint16_t Preamble;
    uint16_t CcdCrc16;
    uint16_t ScdCrc16;
    uint16_t ChannelId;
    uint16_t Flags;
    uint16_t CommandId;
    uint16_t Length;
    uint16_t ReqId;
};

/// An event; its data follow.
struct CL_EVENT_DATA
{
    uint16_t ReservedOrEventSize; ///< bytes of this event with its data, if several events follow; else 0
    uint16_t EventId;
    uint64_t Timestamp;
};
struct CL_EVENT_DATA1
{
    uint16_t ReservedOrEventSize;
    uint16_t EventId;
    uint64_t Timestamp;
    uint8_t Data[1];
};

/// A message of one event.
struct CL_EVENT_MESSAGE
{
    CL_COMMAND_HEADER CommandHeader;
    union {
        CL_EVENT_DATA EventData;
    };
};

#pragma pack(pop)

/// Event messages with one event or several whose sizes stand in them. Address 0 of an event's port is the
/// first byte behind the message's head, so the timestamp lies at 4 and the data at 12. The checksums are
/// left to those who received the message.
class GENAPI_DECL CEventAdapterCL : public CEventAdapter
{
public:
    CEventAdapterCL(INodeMap* pNodeMap = nullptr);

    void DeliverMessage(const uint8_t msg[], uint32_t numBytes) override;
    /// The same for what follows the head, of `length` bytes.
    void DeliverEventData(const CL_EVENT_DATA* pEventData, uint16_t length);
};

} // namespace GenApi

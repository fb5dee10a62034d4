// SPDX-License-Identifier: Apache-2.0
// Event messages of the IEEE 1394 bus.
#pragma once

#include <GenApi/EventAdapter.h>

namespace GenApi
{

struct EventData1394;

/// Kept for programs that make one: the format of these messages is nowhere public, so they are taken and
/// nothing is delivered.
class GENAPI_DECL CEventAdapter1394 : public CEventAdapter
{
public:
    explicit CEventAdapter1394(INodeMap* pNodeMap = nullptr);

    void DeliverMessage(const uint8_t msg[], uint32_t numBytes) override;
    void DeliverEventMessage(EventData1394& Event, uint32_t numBytes);
};

} // namespace GenApi

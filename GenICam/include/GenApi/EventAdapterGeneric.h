// SPDX-License-Identifier: Apache-2.0
// Delivery of events whose ID comes beside the message, as GenTL producers give them.
#pragma once

#include <Base/GCString.h>
#include <GenApi/EventAdapter.h>

namespace GenApi
{

/// Event messages that are nothing but the data of one event.
class GENAPI_DECL CEventAdapterGeneric : public CEventAdapter
{
public:
    CEventAdapterGeneric(INodeMap* pNodeMap = nullptr);

    /// Delivers the data of the event of that ID, given in hexadecimal digits or as a number. Raises
    /// RuntimeException for an ID that is no hexadecimal number.
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes, const GenICam::gcstring& EventID);
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes, uint64_t EventID);
    /// Does nothing: such a message doesn't tell its ID.
    void DeliverMessage(const uint8_t msg[], uint32_t numBytes) override;
};

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
#include "HexId.h"

#include <Base/GCException.h>
#include <GenApi/EventAdapterGeneric.h>

namespace GenApi
{

CEventAdapterGeneric::CEventAdapterGeneric(INodeMap* pNodeMap)
    : CEventAdapter(pNodeMap)
{}

void CEventAdapterGeneric::DeliverMessage(const uint8_t msg[], uint32_t numBytes,
                                          const GenICam::gcstring& EventID)
{
    const auto id = KxGenApi::NormalizeHexId(EventID.c_str());
    if (!id)
        throw RUNTIME_EXCEPTION("Event ID '%s' is no hexadecimal number", EventID.c_str());
    DeliverEvent(GenICam::gcstring(*id), msg, numBytes);
}

void CEventAdapterGeneric::DeliverMessage(const uint8_t msg[], uint32_t numBytes, uint64_t EventID)
{
    DeliverEvent(EventID, msg, numBytes);
}

void CEventAdapterGeneric::DeliverMessage(const uint8_t[], uint32_t) {}

} // namespace GenApi

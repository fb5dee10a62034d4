// SPDX-License-Identifier: Apache-2.0
// Events.

#include "Call.h"
#include "Info.h"
#include "common/modules/EventQueue.h"
#include "common/modules/Module.h"

namespace GenTL
{
extern "C" {

using namespace KxProducer;

GC_API GCRegisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID, EVENT_HANDLE* phEvent)
{
    return LockedCall(
        [&] { Needed(phEvent) = Handles().Get<CModule>(hEventSrc)->RegisterEvent(iEventID)->GetHandle(); });
}

GC_API GCUnregisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID)
{
    return LockedCall([&] { Handles().Get<CModule>(hEventSrc)->UnregisterEvent(iEventID); });
}

GC_API EventGetData(EVENT_HANDLE hEvent, void* pBuffer, size_t* piSize, uint64_t iTimeout)
{
    return Call([&] { Handles().Get<CEventQueue>(hEvent)->Get(pBuffer, piSize, iTimeout); });
}

GC_API EventGetDataInfo(EVENT_HANDLE hEvent, const void* pInBuffer, size_t iInSize,
                        EVENT_DATA_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pOutBuffer,
                        size_t* piOutSize)
{
    return Call([&] {
        const auto queue = Handles().Get<CEventQueue>(hEvent);
        const std::string block(&Needed(static_cast<const char*>(pInBuffer)), iInSize);
        ReturnInfo(EventBlockInfo(queue->GetType(), block, iInfoCmd), piType, pOutBuffer, piOutSize);
    });
}

GC_API EventGetInfo(EVENT_HANDLE hEvent, EVENT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                    size_t* piSize)
{
    return Call([&] {
        const auto queue = Handles().Get<CEventQueue>(hEvent);
        const bool isBuffer = queue->GetType() == EVENT_NEW_BUFFER;
        switch (iInfoCmd) {
        case EVENT_EVENT_TYPE:
            return ReturnInfo(Int32Info(queue->GetType()), piType, pBuffer, piSize);
        case EVENT_NUM_IN_QUEUE:
            return ReturnInfo(SizeInfo(queue->GetWaiting()), piType, pBuffer, piSize);
        case EVENT_NUM_FIRED:
            return ReturnInfo(UInt64Info(queue->GetFired()), piType, pBuffer, piSize);
        case EVENT_SIZE_MAX:
            return ReturnInfo(SizeInfo(isBuffer ? sizeof(EVENT_NEW_BUFFER_DATA) : CEventQueue::kMaxBlock),
                              piType, pBuffer, piSize);
        case EVENT_INFO_DATA_SIZE_MAX:
            return ReturnInfo(SizeInfo(isBuffer ? sizeof(void*) : CEventQueue::kMaxBlock), piType, pBuffer,
                              piSize);
        default:
            FailUnknownInfo(iInfoCmd);
        }
    });
}

GC_API EventFlush(EVENT_HANDLE hEvent)
{
    return Call([&] { Handles().Get<CEventQueue>(hEvent)->Flush(); });
}

GC_API EventKill(EVENT_HANDLE hEvent)
{
    return Call([&] { Handles().Get<CEventQueue>(hEvent)->Kill(); });
}

} // extern "C"
} // namespace GenTL

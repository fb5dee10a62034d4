// SPDX-License-Identifier: Apache-2.0
// Streams and buffers. What is called for each image does without the producer's lock.

#include "Call.h"
#include "Info.h"
#include "common/modules/Stream.h"

#include <algorithm>

namespace KxProducer
{
namespace
{

/// Answers a list of questions about a buffer, each with its own result. The structures are packed: members
/// may lie anywhere.
template <class Entry, class Ask>
GenTL::GC_ERROR AnswerStacked(GenTL::DS_HANDLE hDataStream, GenTL::BUFFER_HANDLE hBuffer, Entry* pInfoStacked,
                              size_t iNumInfos, Ask&& ask)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        const auto buffer = stream->Find(hBuffer);
        Needed(pInfoStacked);
        for (size_t i = 0; i < iNumInfos; ++i) {
            Entry entry = pInfoStacked[i];
            GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
            size_t size = entry.iSize;
            entry.iResult =
                Call([&] { ReturnInfo(ask(*stream, *buffer, entry), &type, entry.pBuffer, &size); });
            entry.iType = type;
            entry.iSize = size;
            pInfoStacked[i] = entry;
        }
    });
}

} // namespace
} // namespace KxProducer

namespace GenTL
{
extern "C" {

using namespace KxProducer;

GC_API DSClose(DS_HANDLE hDataStream)
{
    return LockedCall([&] { Handles().Get<CStream>(hDataStream)->Close(); });
}

GC_API DSGetParentDev(DS_HANDLE hDataStream, DEV_HANDLE* phDevice)
{
    return LockedCall([&] { Needed(phDevice) = Handles().Get<CStream>(hDataStream)->GetParentHandle(); });
}

GC_API DSAnnounceBuffer(DS_HANDLE hDataStream, void* pBuffer, size_t iSize, void* pPrivate,
                        BUFFER_HANDLE* phBuffer)
{
    return Call([&] {
        Needed(phBuffer);
        Needed(static_cast<char*>(pBuffer));
        *phBuffer = Handles().Get<CStream>(hDataStream)->Announce(pBuffer, iSize, pPrivate)->GetHandle();
    });
}

GC_API DSAllocAndAnnounceBuffer(DS_HANDLE hDataStream, size_t iSize, void* pPrivate, BUFFER_HANDLE* phBuffer)
{
    return Call([&] {
        Needed(phBuffer);
        *phBuffer = Handles().Get<CStream>(hDataStream)->Announce(nullptr, iSize, pPrivate)->GetHandle();
    });
}

GC_API DSAnnounceCompositeBuffer(DS_HANDLE hDataStream, size_t, void**, size_t*, void*, BUFFER_HANDLE*)
{
    return Call([&] {
        Handles().Get<CStream>(hDataStream);
        Fail(GC_ERR_NOT_IMPLEMENTED, "Buffers of several segments are not supported");
    });
}

GC_API DSRevokeBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, void** pBuffer, void** pPrivate)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        stream->Revoke(stream->Find(hBuffer), pBuffer, pPrivate);
    });
}

GC_API DSQueueBuffer(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        stream->Queue(stream->Find(hBuffer));
    });
}

GC_API DSFlushQueue(DS_HANDLE hDataStream, ACQ_QUEUE_TYPE iOperation)
{
    return Call([&] { Handles().Get<CStream>(hDataStream)->Flush(iOperation); });
}

GC_API DSStartAcquisition(DS_HANDLE hDataStream, ACQ_START_FLAGS iStartFlags, uint64_t iNumToAcquire)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        if (iStartFlags != ACQ_START_FLAGS_DEFAULT)
            Fail(GC_ERR_NOT_IMPLEMENTED, "There is no way %d to start", iStartFlags);
        stream->Start(iNumToAcquire);
    });
}

GC_API DSStopAcquisition(DS_HANDLE hDataStream, ACQ_STOP_FLAGS iStopFlags)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        // An image takes so little time that both ways wait for it.
        if (iStopFlags != ACQ_STOP_FLAGS_DEFAULT && iStopFlags != ACQ_STOP_FLAGS_KILL)
            Fail(GC_ERR_NOT_IMPLEMENTED, "There is no way %d to stop", iStopFlags);
        stream->Stop();
    });
}

GC_API DSGetInfo(DS_HANDLE hDataStream, STREAM_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                 size_t* piSize)
{
    return Call(
        [&] { ReturnInfo(Handles().Get<CStream>(hDataStream)->GetInfo(iInfoCmd), piType, pBuffer, piSize); });
}

GC_API DSGetBufferID(DS_HANDLE hDataStream, uint32_t iIndex, BUFFER_HANDLE* phBuffer)
{
    return Call([&] { Needed(phBuffer) = Handles().Get<CStream>(hDataStream)->GetBuffer(iIndex); });
}

GC_API DSGetBufferInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, BUFFER_INFO_CMD iInfoCmd,
                       INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        ReturnInfo(stream->GetBufferInfo(*stream->Find(hBuffer), iInfoCmd), piType, pBuffer, piSize);
    });
}

GC_API DSGetBufferInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                              DS_BUFFER_INFO_STACKED* pInfoStacked, size_t iNumInfos)
{
    return AnswerStacked(hDataStream, hBuffer, pInfoStacked, iNumInfos,
                         [](CStream& stream, const CBuffer& buffer, const DS_BUFFER_INFO_STACKED& entry) {
                             return stream.GetBufferInfo(buffer, entry.iInfoCmd);
                         });
}

GC_API DSGetBufferChunkData(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, SINGLE_CHUNK_DATA* pChunkData,
                            size_t* piNumChunks)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        const std::vector<SINGLE_CHUNK_DATA> chunks = stream->GetChunks(*stream->Find(hBuffer));
        if (pChunkData) {
            if (Needed(piNumChunks) < chunks.size())
                Fail(GC_ERR_BUFFER_TOO_SMALL, "There are %zu chunks, the list has room for %zu",
                     chunks.size(), *piNumChunks);
            std::copy(chunks.begin(), chunks.end(), pChunkData);
        }
        Needed(piNumChunks) = chunks.size();
    });
}

} // extern "C"
} // namespace GenTL

namespace KxProducer
{
namespace
{

GenTL::GC_ERROR RefuseFlows(GenTL::DS_HANDLE hDataStream)
{
    return Call([&] {
        Handles().Get<CStream>(hDataStream);
        Fail(GenTL::GC_ERR_NO_DATA, "There are no flows");
    });
}

} // namespace
} // namespace KxProducer

namespace GenTL
{
extern "C" {

using namespace KxProducer;

GC_API DSGetNumBufferParts(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t* piNumParts)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        Needed(piNumParts) = stream->GetPartCount(*stream->Find(hBuffer));
    });
}

GC_API DSGetBufferPartInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t iPartIndex,
                           BUFFER_PART_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                           size_t* piSize)
{
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        ReturnInfo(stream->GetPartInfo(*stream->Find(hBuffer), iPartIndex, iInfoCmd), piType, pBuffer,
                   piSize);
    });
}

GC_API DSGetBufferPartInfoStacked(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer,
                                  DS_BUFFER_PART_INFO_STACKED* pInfoStacked, size_t iNumInfos)
{
    return AnswerStacked(
        hDataStream, hBuffer, pInfoStacked, iNumInfos,
        [](CStream& stream, const CBuffer& buffer, const DS_BUFFER_PART_INFO_STACKED& entry) {
            return stream.GetPartInfo(buffer, entry.iPartIndex, entry.iInfoCmd);
        });
}

GC_API DSGetNumFlows(DS_HANDLE hDataStream, uint32_t*) { return RefuseFlows(hDataStream); }

GC_API DSGetFlowInfo(DS_HANDLE hDataStream, uint32_t, FLOW_INFO_CMD, INFO_DATATYPE*, void*, size_t*)
{
    return RefuseFlows(hDataStream);
}

GC_API DSGetNumBufferSegments(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t* piNumSegments)
{
    return Call([&] {
        Handles().Get<CStream>(hDataStream)->Find(hBuffer);
        Needed(piNumSegments) = 1;
    });
}

GC_API DSGetBufferSegmentInfo(DS_HANDLE hDataStream, BUFFER_HANDLE hBuffer, uint32_t iSegmentIndex,
                              SEGMENT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    // The one segment is the buffer.
    static constexpr BUFFER_INFO_CMD kSame[] = {BUFFER_INFO_BASE, BUFFER_INFO_SIZE, BUFFER_INFO_IS_INCOMPLETE,
                                                BUFFER_INFO_SIZE_FILLED, BUFFER_INFO_DATA_SIZE};
    return Call([&] {
        const auto stream = Handles().Get<CStream>(hDataStream);
        const auto buffer = stream->Find(hBuffer);
        if (iSegmentIndex != 0)
            Fail(GC_ERR_INVALID_INDEX, "There is one segment, none with index %u", iSegmentIndex);
        if (iInfoCmd < SEGMENT_INFO_BASE || iInfoCmd > SEGMENT_INFO_DATA_SIZE)
            FailUnknownInfo(iInfoCmd);
        ReturnInfo(stream->GetBufferInfo(*buffer, kSame[iInfoCmd]), piType, pBuffer, piSize);
    });
}

} // extern "C"
} // namespace GenTL

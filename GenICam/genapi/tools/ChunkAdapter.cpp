// SPDX-License-Identifier: Apache-2.0
#include "HexId.h"

#include <Base/GCException.h>
#include <GenApi/ChunkAdapter.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>

#include <algorithm>

namespace GenApi
{
namespace
{
/// What stands for IDs of more than 64 bits, which no chunk of these formats has: such a port gets none.
constexpr uint64_t kTooLong = UINT64_MAX;
} // namespace

CChunkAdapter::CChunkAdapter(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : m_ppChunkPorts(&m_ports)
    , m_MaxChunkCacheSize(MaxChunkCacheSize)
{
    if (pNodeMap)
        CChunkAdapter::AttachNodeMap(pNodeMap);
}

CChunkAdapter::~CChunkAdapter() = default;

void CChunkAdapter::AttachNodeMap(INodeMap* pNodeMap)
{
    DetachNodeMap();
    if (!pNodeMap)
        return;
    NodeList_t nodes;
    pNodeMap->GetNodes(nodes);
    m_nodeMap = pNodeMap;
    for (INode* const node : nodes) {
        auto port = std::make_unique<CChunkPort>();
        if (node->GetPrincipalInterfaceType() == intfIPort && port->AttachPort(dynamic_cast<IPort*>(node)))
            m_slots.push_back({std::move(port), 0, false});
    }
    for (const CSlot& slot : m_slots)
        m_ports.push_back(slot.port.get());
}

void CChunkAdapter::DetachNodeMap()
{
    m_ports.clear();
    m_slots.clear();
    m_nodeMap = nullptr;
}

uint64_t CChunkAdapter::ToNumber(const GenICam::gcstring& chunkId)
{
    const auto id = KxGenApi::NormalizeHexId(chunkId.c_str());
    const auto number = id ? KxGenApi::HexIdToNumber(*id) : std::nullopt;
    if (!number)
        throw RUNTIME_EXCEPTION(
            "Invalid chunk ID delivered: '%s' is no hexadecimal number of up to 16 digits", chunkId.c_str());
    return *number;
}

void CChunkAdapter::AttachChunks(uint8_t* pBuffer, const NextChunk& next,
                                 AttachStatistics_t* pAttachStatistics)
{
    AttachStatistics_t statistics{static_cast<int>(m_slots.size()), 0, 0};
    {
        // Readers see the old buffer or the new one, never some of each.
        const AutoLock lock(GetLock());
        for (CSlot& slot : m_slots)
            slot.id = KxGenApi::HexIdToNumber(slot.port->GetChunkID().c_str()).value_or(kTooLong);
        ForgetChunks();
        std::sort(m_slots.begin(), m_slots.end(), [](const CSlot& l, const CSlot& r) { return l.id < r.id; });
        for (CChunk chunk{}; next(chunk); ++statistics.NumChunks) {
            if (AttachToPorts(pBuffer, chunk))
                ++statistics.NumAttachedChunks;
        }
    }
    if (pAttachStatistics)
        *pAttachStatistics = statistics;
    InvalidatePorts();
}

bool CChunkAdapter::AttachToPorts(uint8_t* pBuffer, const CChunk& chunk)
{
    bool attached = false;
    auto slot = std::lower_bound(m_slots.begin(), m_slots.end(), chunk.id,
                                 [](const CSlot& l, uint64_t id) { return l.id < id; });
    for (; slot != m_slots.end() && slot->id == chunk.id; ++slot) {
        // Of several chunks with one ID the last one counts.
        if (slot->attached || (slot->id == kTooLong && slot->port->GetChunkIDLength() > 8))
            continue;
        AttachChunk(*slot->port, pBuffer, chunk);
        slot->attached = attached = true;
    }
    return attached;
}

void CChunkAdapter::AttachChunk(CChunkPort& port, uint8_t* pBuffer, const CChunk& chunk)
{
    const bool fits = m_MaxChunkCacheSize < 0 || chunk.length <= m_MaxChunkCacheSize - m_cacheSize;
    const bool keep = port.CacheChunkData() && fits;
    port.AttachChunk(pBuffer, chunk.offset, chunk.length, keep);
    m_cacheSize += keep ? chunk.length : 0;
}

CLock& CChunkAdapter::GetLock() const
{
    if (!m_nodeMap)
        throw LOGICAL_ERROR_EXCEPTION("A buffer can't be attached without a node map");
    return m_nodeMap->GetLock();
}

void CChunkAdapter::ForgetChunks()
{
    for (CSlot& slot : m_slots) {
        slot.port->DetachChunk();
        slot.port->ClearCache();
        slot.attached = false;
    }
    m_cacheSize = 0;
}

void CChunkAdapter::RefuseBuffer()
{
    ForgetChunks();
    InvalidatePorts();
}

void CChunkAdapter::InvalidatePorts()
{
    for (const CSlot& slot : m_slots)
        slot.port->InvalidateNode();
}

void CChunkAdapter::DetachBuffer()
{
    for (const CSlot& slot : m_slots)
        slot.port->DetachChunk();
    InvalidatePorts();
}

void CChunkAdapter::UpdateBuffer(uint8_t* pBaseAddress)
{
    if (!m_nodeMap)
        throw LOGICAL_ERROR_EXCEPTION("A buffer can't be attached without a node map");
    if (!pBaseAddress)
        throw INVALID_ARGUMENT_EXCEPTION("The buffer must not be null");
    {
        const AutoLock lock(m_nodeMap->GetLock());
        for (const CSlot& slot : m_slots)
            slot.port->UpdateBuffer(pBaseAddress);
    }
    InvalidatePorts();
}

void CChunkAdapter::ClearCaches()
{
    for (const CSlot& slot : m_slots)
        slot.port->ClearCache();
    m_cacheSize = 0;
    InvalidatePorts();
}

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
#include "HexId.h"

#include <Base/GCException.h>
#include <GenApi/ChunkPort.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>

#include <cstring>

namespace GenApi
{
namespace
{
/// Text of a property; empty if the node has none.
GenICam::gcstring GetPropertyText(INode& node, const char* name)
{
    GenICam::gcstring value, attribute;
    node.GetProperty(name, value, attribute);
    return value;
}
} // namespace

CChunkPort::CChunkPort(IPort* pPort) { AttachPort(pPort); }

CChunkPort::~CChunkPort()
{
    try {
        DetachPort();
    } catch (...) {
        // Callbacks of the node may throw; the port is gone from it all the same.
    }
}

bool CChunkPort::AttachPort(IPort* pPort)
{
    DetachPort();
    INode* const node = dynamic_cast<INode*>(pPort);
    IPortConstruct* const port = dynamic_cast<IPortConstruct*>(pPort);
    if (!node || !port)
        return false;
    const auto id = KxGenApi::NormalizeHexId(GetPropertyText(*node, "ChunkID").c_str());
    INode* const idNode = id ? nullptr : node->GetNodeMap()->GetNode(GetPropertyText(*node, "pChunkID"));
    if (!id && !idNode)
        return false;
    m_id = id.value_or(std::string());
    m_idNode = idNode;
    m_cacheWanted = GetPropertyText(*node, "CacheChunkData") == "Yes";
    m_node = node;
    m_port = port;
    port->SetPortImpl(this);
    return true;
}

void CChunkPort::DetachPort()
{
    if (!m_node)
        return;
    IPortConstruct* const port = m_port;
    DetachChunk();
    ClearCache();
    m_node = nullptr;
    m_port = nullptr;
    m_idNode = nullptr;
    m_id.clear();
    m_cacheWanted = false;
    port->SetPortImpl(nullptr);
}

GenICam::gcstring CChunkPort::GetChunkID() const
{
    if (!m_idNode)
        return GenICam::gcstring(m_id);
    if (const auto integer = dynamic_cast<IInteger*>(m_idNode))
        return GenICam::gcstring(KxGenApi::ToHexId(static_cast<uint64_t>(integer->GetValue())));
    const auto value = dynamic_cast<IValue*>(m_idNode);
    const GenICam::gcstring text = value ? value->ToString() : GenICam::gcstring();
    const auto id = KxGenApi::NormalizeHexId(text.c_str());
    if (!id)
        throw RUNTIME_EXCEPTION("Node '%s': '%s' is no chunk ID", m_idNode->GetName().c_str(), text.c_str());
    return GenICam::gcstring(*id);
}

int CChunkPort::GetChunkIDLength() const { return static_cast<int>((GetChunkID().size() + 1) / 2); }

bool CChunkPort::CheckChunkID(uint64_t ChunkID) const
{
    return m_node && GetChunkID() == KxGenApi::ToHexId(ChunkID).c_str();
}

bool CChunkPort::CheckChunkID(const uint8_t* pChunkIDBuffer, int ChunkIDLength) const
{
    return m_node && pChunkIDBuffer && ChunkIDLength > 0 &&
           GetChunkID() == KxGenApi::ToHexId(pChunkIDBuffer, static_cast<size_t>(ChunkIDLength)).c_str();
}

void CChunkPort::AttachChunk(uint8_t* pBaseAddress, int64_t ChunkOffset, int64_t Length, bool Cache)
{
    if (!m_node)
        throw LOGICAL_ERROR_EXCEPTION("A chunk port without a node can't take a chunk");
    if (!pBaseAddress || ChunkOffset < 0 || Length < 0)
        throw INVALID_ARGUMENT_EXCEPTION("%lld bytes at %lld are no chunk", static_cast<long long>(Length),
                                         static_cast<long long>(ChunkOffset));
    const AutoLock lock(m_node->GetNodeMap()->GetLock());
    m_buffer = pBaseAddress;
    m_offset = ChunkOffset;
    m_length = Length;
    m_cached = Cache;
    m_copy.clear();
    if (Cache)
        m_copy.assign(pBaseAddress + ChunkOffset, pBaseAddress + ChunkOffset + Length);
}

void CChunkPort::DetachChunk()
{
    if (!m_node)
        return;
    const AutoLock lock(m_node->GetNodeMap()->GetLock());
    m_buffer = nullptr;
}

void CChunkPort::UpdateBuffer(uint8_t* pBaseAddress)
{
    if (!m_node || !pBaseAddress)
        return;
    const AutoLock lock(m_node->GetNodeMap()->GetLock());
    if (!m_buffer)
        return;
    m_buffer = pBaseAddress;
    if (m_cached)
        std::memcpy(m_copy.data(), pBaseAddress + m_offset, m_copy.size());
}

void CChunkPort::ClearCache()
{
    if (!m_node)
        return;
    const AutoLock lock(m_node->GetNodeMap()->GetLock());
    m_cached = false;
    m_copy.clear();
}

void CChunkPort::InvalidateNode()
{
    if (m_node)
        m_node->InvalidateNode();
}

EAccessMode CChunkPort::GetAccessMode() const { return m_buffer || m_cached ? RW : NA; }

CLock& CChunkPort::GetLock() const
{
    if (!m_node)
        throw LOGICAL_ERROR_EXCEPTION("A chunk port without a node has no lock");
    return m_node->GetNodeMap()->GetLock();
}

void CChunkPort::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    if (Address == CHUNK_BASE_ADDRESS_REGISTER && Length == CHUNK_BASE_ADDRESS_REGISTER_LEN) {
        const auto place = reinterpret_cast<uint64_t>(At(0, 0));
        std::memcpy(pBuffer, &place, sizeof place);
        return;
    }
    if (Address == CHUNK_LENGTH_REGISTER && Length == CHUNK_LENGTH_REGISTER_LEN) {
        At(0, 0); // raises without a chunk
        std::memcpy(pBuffer, &m_length, sizeof m_length);
        return;
    }
    const uint8_t* const bytes = At(Address, Length);
    if (Length != 0)
        std::memcpy(pBuffer, bytes, static_cast<size_t>(Length));
}

void CChunkPort::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    uint8_t* const bytes = At(Address, Length);
    if (Length != 0)
        std::memcpy(bytes, pBuffer, static_cast<size_t>(Length));
}

uint8_t* CChunkPort::At(int64_t address, int64_t length)
{
    if (!m_buffer && !m_cached)
        throw ACCESS_EXCEPTION("Chunk 0x%s is not in the buffer", m_id.c_str());
    if (address < 0 || length < 0 || address > m_length || length > m_length - address)
        throw OUT_OF_RANGE_EXCEPTION(
            "Address = %lld with Length = %lld lies outside the %lld bytes of chunk 0x%s",
            static_cast<long long>(address), static_cast<long long>(length), static_cast<long long>(m_length),
            m_id.c_str());
    return (m_cached ? m_copy.data() : m_buffer + m_offset) + address;
}

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// A chunk of an image buffer, as a port of the node map.
#pragma once

#include <Base/GCString.h>
#include <GenApi/IChunkPort.h>
#include <GenApi/PortImpl.h>
#include <GenApi/Synch.h>

#include <string>
#include <vector>

namespace GenApi
{

/// Stands behind a port node with a ChunkID and serves the bytes of that chunk, in the buffer itself or from
/// a copy. The buffer must live as long as it is attached. The node map must outlive the port, or DetachPort
/// be called before. Any thread, except that attaching and detaching the node must not coincide with anything
/// else.
class GENAPI_DECL CChunkPort : public CPortImpl
{
public:
    /// @param pPort as for AttachPort.
    CChunkPort(IPort* pPort = nullptr);
    CChunkPort(const CChunkPort&) = delete;
    CChunkPort& operator=(const CChunkPort&) = delete;
    ~CChunkPort() override;

    EInterfaceType GetPrincipalInterfaceType() const { return intfIPort; }

    /// Takes over a port node; false if it is null, no port node, or without ChunkID and pChunkID.
    bool AttachPort(IPort* pPort);
    /// Lets go of the node.
    void DetachPort();
    /// The node, null if there is none.
    INode* GetNode() const { return m_node; }

    /// The node's chunk, in lower-case hexadecimal digits without leading zeros. It is read from the node map
    /// where the description gives it as a reference, and raises what that raises.
    GenICam::gcstring GetChunkID() const;
    /// Length of the node's chunk ID in bytes.
    int GetChunkIDLength() const;
    /// Whether the node's chunk is that one: given by number, or by its bytes with the most significant one
    /// first.
    bool CheckChunkID(uint64_t ChunkID) const;
    bool CheckChunkID(const uint8_t* pChunkIDBuffer, int ChunkIDLength) const;
    /// Whether the description wants the chunk's bytes to be kept beyond the buffer (CacheChunkData).
    bool CacheChunkData() const { return m_cacheWanted; }

    /// Serves the Length bytes at ChunkOffset in a buffer; call InvalidateNode when all chunks are attached.
    /// @param Cache serves a copy, which outlives the buffer.
    void AttachChunk(uint8_t* pBaseAddress, int64_t ChunkOffset, int64_t Length, bool Cache);
    /// Forgets the buffer, not the copy.
    void DetachChunk();
    /// Goes on with another buffer of the same layout.
    void UpdateBuffer(uint8_t* pBaseAddress);
    /// Forgets the copy.
    void ClearCache();
    /// Invalidates the node, which fires its callbacks and those of all that depends on it.
    void InvalidateNode();

    /// RW while there is a chunk, else NA. The registers of IChunkPort.h tell where it is.
    EAccessMode GetAccessMode() const override;
    /// Both raise AccessException without a chunk, OutOfRangeException outside it.
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

protected:
    /// The lock of the node map; LogicalErrorException without a node.
    CLock& GetLock() const;

private:
    uint8_t* At(int64_t address, int64_t length);

    INode* m_node = nullptr;
    IPortConstruct* m_port = nullptr;
    INode* m_idNode = nullptr; // pChunkID
    std::string m_id;
    bool m_cacheWanted = false;
    // Protected by the node map's lock. The chunk is in the copy if m_cached, else in the buffer if that
    // isn't null.
    uint8_t* m_buffer = nullptr;
    int64_t m_offset = 0;
    int64_t m_length = 0;
    std::vector<uint8_t> m_copy;
    bool m_cached = false;
};

} // namespace GenApi

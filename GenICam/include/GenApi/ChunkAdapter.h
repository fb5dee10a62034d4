// SPDX-License-Identifier: Apache-2.0
// Showing the chunks of image buffers in a node map.
#pragma once

#include <GenApi/ChunkPort.h>
#include <GenApi/GenApiLinkage.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace GenApi
{

/// What AttachBuffer found.
typedef struct AttachStatistics_t
{
    int NumChunkPorts;     ///< ports with a chunk ID in the node map
    int NumChunks;         ///< chunks in the buffer
    int NumAttachedChunks; ///< chunks that a port serves now
} AttachStatistics_t;

/// Gives the ports of a node map that have a ChunkID the chunks of a buffer. Buffers come from a device and
/// are not believed: nothing outside of them is read. A buffer must live until it is detached or another one
/// attached. The node map must outlive the adapter, or DetachNodeMap be called before. Any thread, one call
/// at a time.
class GENAPI_DECL CChunkAdapter
{
public:
    CChunkAdapter(const CChunkAdapter&) = delete;
    CChunkAdapter& operator=(const CChunkAdapter&) = delete;
    virtual ~CChunkAdapter();

    /// Takes over all ports that have a ChunkID; a map attached before is let go.
    virtual void AttachNodeMap(INodeMap* pNodeMap);
    /// Lets the ports go; they are without implementation then.
    virtual void DetachNodeMap();

    /// Whether a buffer has the form of the transport standard.
    virtual bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) = 0;

    /// Shows the chunks of a buffer and fires the callbacks of all chunk ports. Ports whose chunk isn't there
    /// become NA. Of several chunks with one ID the last one counts. Raises RuntimeException, and shows
    /// nothing, for a buffer that breaks the form, LogicalErrorException without a node map.
    virtual void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                              AttachStatistics_t* pAttachStatistics = nullptr) = 0;

    /// Lets go of the buffer. Chunks that the description wants to be kept stay, all others become NA.
    virtual void DetachBuffer();

    /// Goes on with another buffer that has the very layout of the attached one, which is faster than
    /// AttachBuffer.
    virtual void UpdateBuffer(uint8_t* pBaseAddress);

    /// Forgets the chunks that were kept.
    void ClearCaches();

protected:
    /// @param MaxChunkCacheSize bytes of one buffer that may be kept beyond it; negative is no limit.
    explicit CChunkAdapter(INodeMap* pNodeMap = nullptr, int64_t MaxChunkCacheSize = -1);

    /// Place of a chunk in its buffer.
    struct CChunk
    {
        uint64_t id;
        int64_t offset;
        int64_t length;
    };
    /// Gives the chunks of a buffer from the last to the first; false when there are no more.
    using NextChunk = std::function<bool(CChunk&)>;

    /// Attaches the chunks of a buffer, whose places have been checked.
    void AttachChunks(uint8_t* pBuffer, const NextChunk& next, AttachStatistics_t* pAttachStatistics);
    /// Lets go of the present buffer and of the chunks that were kept, because the next one can't be shown.
    void RefuseBuffer();
    /// Numeric form of a chunk ID in hexadecimal digits; RuntimeException if it is none or too long.
    static uint64_t ToNumber(const GenICam::gcstring& chunkId);

    /// Keeps or drops the copies of a chunk's port as the description and the limit of the cache want it.
    void AttachChunk(CChunkPort& port, uint8_t* pBuffer, const CChunk& chunk);
    /// The lock of the node map; LogicalErrorException without one.
    CLock& GetLock() const;
    /// Forgets all chunks, with the lock held; fires the callbacks of all ports.
    void ForgetChunks();
    void InvalidatePorts();

    /// The ports that serve a node, owned; programs that attach in their own way walk them.
    std::vector<CChunkPort*>* m_ppChunkPorts;
    /// Bytes of one buffer that may be kept beyond it; negative is no limit.
    int64_t m_MaxChunkCacheSize;

private:
    struct CSlot
    {
        std::unique_ptr<CChunkPort> port;
        uint64_t id;   // read anew for each buffer, as it may depend on other nodes
        bool attached; // by the present buffer
    };

    bool AttachToPorts(uint8_t* pBuffer, const CChunk& chunk);

    INodeMap* m_nodeMap = nullptr;
    int64_t m_cacheSize = 0;    // bytes kept of the present buffer
    std::vector<CSlot> m_slots; // sorted by id while a buffer is being attached
    std::vector<CChunkPort*> m_ports;
};

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// The buffers of an acquisition.
#pragma once

#include "CStreamHandle.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// Bytes that a buffer of the stream needs as the device is set now. Raises RuntimeException when that isn't
/// told or can't be true.
size_t PayloadSize(const CStreamHandle& stream, const GenApi::INodeMap& remoteMap);

/// Allocates buffers and makes them known to the producer. One thread at a time.
class CBufferPool
{
public:
    explicit CBufferPool(std::shared_ptr<CStreamHandle> stream)
        : m_keeper(std::move(stream))
        , m_stream(*m_keeper)
    {}
    CBufferPool(const CBufferPool&) = delete;
    CBufferPool& operator=(const CBufferPool&) = delete;

    /// Announces at least `count` buffers and queues all. Where the producer takes no memory but its own, the
    /// buffers lie there, unless the application has asked for memory of its own. Raises
    /// CKxGenTLErrorException, BadAllocException, RuntimeException; what has been announced by then wants
    /// Revoke.
    void Announce(uint32_t count, size_t size, const std::shared_ptr<CBufferMemory>& memory,
                  const std::shared_ptr<CChunkView>& chunks);

    /// Takes all buffers back from the producer, which must not be filling any more, and lets them go.
    /// @param keepAll keeps the memory until the stream is closed, since the producer isn't to be trusted.
    void Revoke(bool keepAll) noexcept;

    /// The buffer of a handle, null for a handle that isn't of this pool.
    std::shared_ptr<CStreamBuffer> Find(GenTL::BUFFER_HANDLE hBuffer) const;

    size_t Count() const { return m_buffers.size(); }

    const std::unordered_map<GenTL::BUFFER_HANDLE, std::shared_ptr<CStreamBuffer>>& All() const
    {
        return m_buffers;
    }

private:
    void AnnounceOne(size_t size, size_t alignment, const std::shared_ptr<CBufferMemory>& memory,
                     const std::shared_ptr<CChunkView>& chunks);
    void Add(GenTL::BUFFER_HANDLE hBuffer, std::shared_ptr<CStreamBuffer> buffer);

    bool m_takesNoMemory = false; // the producer, of others
    const std::shared_ptr<CStreamHandle> m_keeper;
    CStreamHandle& m_stream;
    std::unordered_map<GenTL::BUFFER_HANDLE, std::shared_ptr<CStreamBuffer>> m_buffers;
};

} // namespace Detail
} // namespace KxApi

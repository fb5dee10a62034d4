// SPDX-License-Identifier: Apache-2.0
// The chunk nodes of a device, as they show the images of a stream.
#pragma once

#include <KxSDKCommon/KxMutex.h>

#include <memory>

namespace KxApi
{
namespace Detail
{

class CStreamBuffer;
class CTransportDevice;

/// Shared by a stream and its buffers, which may outlive it. Any thread; what is attached is guarded by the
/// lock of the node map.
class CChunkView
{
public:
    explicit CChunkView(std::shared_ptr<CTransportDevice> device);
    CChunkView(const CChunkView&) = delete;
    CChunkView& operator=(const CChunkView&) = delete;
    ~CChunkView();

    /// Lets the nodes show the buffer's chunks; nothing after Close. Raises RuntimeException when they are
    /// broken.
    void Attach(const CStreamBuffer& buffer);
    /// Lets the nodes show nothing, if they show the buffer's chunks.
    void Detach(const CStreamBuffer& buffer) noexcept;
    /// Lets the device go.
    void Close() noexcept;

private:
    class CNodes;

    std::shared_ptr<CNodes> Nodes() const;

    mutable CKxMutex m_mutex;                                 // nothing is taken while holding it
    std::shared_ptr<CNodes> m_nodes KXGC_GUARDED_BY(m_mutex); // null after Close
};

} // namespace Detail
} // namespace KxApi

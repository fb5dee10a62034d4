// SPDX-License-Identifier: Apache-2.0

#include "CChunkView.h"

#include "CStreamBuffer.h"
#include "CTransportDevice.h"

#include <Base/GCException.h>
#include <Base/GCSynch.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterGeneric.h>
#include <GenApi/ChunkAdapterU3V.h>
#include <GenApi/INodeMap.h>

#include <atomic>
#include <cstdint>
#include <utility>

namespace KxApi
{
namespace Detail
{

class CChunkView::CNodes
{
public:
    explicit CNodes(std::shared_ptr<CTransportDevice> device)
        : m_device(std::move(device))
    {}

    void Attach(const CStreamBuffer& buffer)
    {
        GenApi::INodeMap& map = *m_device->GetIKxRemotePort()->GetINodeMap();
        const GenICam::AutoLock lock(map.GetLock());
        const CBufferContent& content = buffer.Content();
        auto* const base = static_cast<uint8_t*>(buffer.Base());
        const auto length = static_cast<int64_t>(content.sizeFilled);
        m_shown = nullptr;
        if (content.areChunksListed) {
            const auto& list = buffer.Chunks();
            Generic(map).AttachBuffer(base, length, list.data(), static_cast<int64_t>(list.size()));
        } else {
            OfTransport(map).AttachBuffer(base, length);
        }
        m_shown = &buffer;
    }

    void Detach(const CStreamBuffer* buffer) noexcept
    try {
        if (!m_adapter.load())
            return;
        const GenICam::AutoLock lock(m_device->GetIKxRemotePort()->GetINodeMap()->GetLock());
        if (!m_shown || (buffer && m_shown != buffer))
            return;
        m_shown = nullptr;
        m_adapter.load()->DetachBuffer();
    } catch (...) {
        // Out of a callback that the application registered at a chunk node; the nodes are detached all the
        // same.
    }

private:
    GenApi::CChunkAdapterGeneric& Generic(GenApi::INodeMap& map)
    {
        if (!m_generic) {
            m_generic = std::make_unique<GenApi::CChunkAdapterGeneric>(&map);
            m_adapter = m_generic.get();
        }
        return *m_generic;
    }

    /// For producers that don't list the chunks: the transport standards have them found from the end.
    GenApi::CChunkAdapter& OfTransport(GenApi::INodeMap& map)
    {
        if (m_ofTransport)
            return *m_ofTransport;
        const GenICam::gcstring type = m_device->GetIKxDeviceInfo()->GetTLType();
        if (type == "GEV")
            m_ofTransport = std::make_unique<GenApi::CChunkAdapterGEV>(&map);
        else if (type == "U3V")
            m_ofTransport = std::make_unique<GenApi::CChunkAdapterU3V>(&map);
        else
            throw RUNTIME_EXCEPTION(
                "The producer does not tell where the chunks of a buffer are, nor does the "
                "transport technology '%s'",
                type.c_str());
        m_adapter = m_ofTransport.get();
        return *m_ofTransport;
    }

    const std::shared_ptr<CTransportDevice> m_device; // before the adapters, which let its nodes go
    std::unique_ptr<GenApi::CChunkAdapterGeneric> m_generic;
    std::unique_ptr<GenApi::CChunkAdapter> m_ofTransport;
    std::atomic<GenApi::CChunkAdapter*> m_adapter{nullptr}; // that of the two which is there
    const CStreamBuffer* m_shown = nullptr;
};

CChunkView::CChunkView(std::shared_ptr<CTransportDevice> device)
    : m_nodes(std::make_shared<CNodes>(std::move(device)))
{}

CChunkView::~CChunkView() = default;

std::shared_ptr<CChunkView::CNodes> CChunkView::Nodes() const
{
    const CKxMutexLock lock(m_mutex);
    return m_nodes;
}

void CChunkView::Attach(const CStreamBuffer& buffer)
{
    if (const std::shared_ptr<CNodes> nodes = Nodes())
        nodes->Attach(buffer);
}

void CChunkView::Detach(const CStreamBuffer& buffer) noexcept
{
    if (const std::shared_ptr<CNodes> nodes = Nodes())
        nodes->Detach(&buffer);
}

void CChunkView::Close() noexcept
{
    std::shared_ptr<CNodes> nodes;
    {
        const CKxMutexLock lock(m_mutex);
        nodes = std::move(m_nodes);
    }
    if (nodes)
        nodes->Detach(nullptr);
}

} // namespace Detail
} // namespace KxApi

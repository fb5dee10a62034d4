// SPDX-License-Identifier: Apache-2.0
#include "modules/Stream.h"

#include "modules/ArvFrame.h"
#include "modules/Device.h"
#include "net/StreamFilter.h"

namespace KxAravis
{
namespace
{

constexpr guint64 kNoNumber = UINT64_MAX;

/// Filling leaves the number and time of the image before in a buffer where the packet that tells the new
/// ones is lost.
void Forget(ArvBuffer& buffer)
{
    arv_buffer_set_frame_id(&buffer, kNoNumber);
    arv_buffer_set_timestamp(&buffer, 0);
}

} // namespace

CStream::CStream(std::shared_ptr<CDevice> device, const std::string& id)
    : KxProducer::CStream(id, {id, device->Facts().model, KxProducer::TlType(device->Facts().technology),
                               "TLDataStream", "StreamPort"})
    , m_device(std::move(device))
{
    DescribePort({"KxAravis_Stream", "Stream of " + m_device->Facts().model, "StreamPort", "300000000001"},
                 KxProducer::ConventionName(m_device->Facts().technology));
}

CStream::~CStream() { OnStop(); }

void CStream::Close()
{
    KxProducer::CStream::Close();
    m_device->Detach(*this);
}

void* CStream::GetParentHandle() const { return m_device->GetHandle(); }
const char* CStream::TlType() const { return KxProducer::TlType(m_device->Facts().technology); }
size_t CStream::PayloadSize() { return m_device->PayloadSize(); }

ArvBuffer& CStream::ArvBufferOf(const BufferPtr& buffer)
{
    if (!buffer->driver) // made at the first use, for the memory stays
        buffer->driver =
            std::shared_ptr<ArvBuffer>(arv_buffer_new_full(buffer->size, buffer->base, buffer.get(), nullptr),
                                       [](ArvBuffer* pBuffer) { g_object_unref(pBuffer); });
    return *static_cast<ArvBuffer*>(buffer->driver.get());
}

void CStream::OnStart()
{
    {
        const std::lock_guard<std::mutex> lock(m_driverMutex);
        CArvError error;
        m_underruns = 0;
        m_lastNumber = 0;
        m_usual = UsualImageOf(m_device->Arv());
        m_stream.reset(arv_device_create_stream(&m_device->Arv(), &CStream::OnArvEvent, this, &error));
        error.Check("Camera '" + m_device->Facts().id + "' can't stream");
        m_pFilling = m_stream.get();
        if (!m_stream)
            KxProducer::Fail(GenTL::GC_ERR_IO, "Camera '%s' can't stream", m_device->Facts().id.c_str());
        FilterPackets();
    }
    PushAll();
}

void CStream::OnStop()
{
    const std::lock_guard<std::mutex> lock(m_driverMutex);
    if (!m_stream)
        return;
    m_stream.reset(); // which ends its thread
    TakeBackAll();
}

void CStream::Recall()
{
    const std::lock_guard<std::mutex> lock(m_driverMutex);
    if (!m_stream)
        return;
    arv_stream_stop_thread(m_stream.get(), TRUE);
    TakeBackAll();
    arv_stream_start_thread(m_stream.get());
    FilterPackets();
}

void CStream::FilterPackets()
{
    if (ARV_IS_GV_STREAM(m_stream.get()))
        DropAbsurdPackets(arv_gv_stream_get_port(ARV_GV_STREAM(m_stream.get())));
}

void CStream::OnInput() { PushAll(); }

void CStream::PushAll()
{
    const std::lock_guard<std::mutex> lock(m_driverMutex);
    if (!m_stream)
        return;
    while (const BufferPtr buffer = Take()) {
        {
            const std::lock_guard<std::mutex> pushed(m_pushedMutex);
            m_pushed[buffer.get()] = buffer;
        }
        ArvBuffer& arvBuffer = ArvBufferOf(buffer);
        Forget(arvBuffer);
        g_object_ref(&arvBuffer); // pushing gives a reference away
        arv_stream_push_buffer(m_stream.get(), &arvBuffer);
    }
}

void CStream::TakeBackAll()
{
    std::map<const void*, BufferPtr> pushed;
    {
        const std::lock_guard<std::mutex> lock(m_pushedMutex);
        pushed.swap(m_pushed);
    }
    for (const auto& [pKey, buffer] : pushed)
        Return(buffer);
}

void CStream::OnArvEvent(void* pStream, ArvStreamCallbackType eType, ArvBuffer* pBuffer)
{
    if (eType == ARV_STREAM_CALLBACK_TYPE_BUFFER_DONE && pBuffer)
        static_cast<CStream*>(pStream)->OnFilled();
}

void CStream::OnFilled()
{
    while (ArvBuffer* const pPopped = arv_stream_try_pop_buffer(m_pFilling)) {
        const GPtr<ArvBuffer> arvBuffer(pPopped);
        BufferPtr buffer;
        {
            const std::lock_guard<std::mutex> lock(m_pushedMutex);
            const auto place = m_pushed.find(arv_buffer_get_user_data(pPopped));
            if (place == m_pushed.end())
                continue;
            buffer = std::move(place->second);
            m_pushed.erase(place);
        }
        if (ResultOf(*pPopped) == EArvBuffer::Nothing)
            Return(buffer);
        else
            Complete(buffer, NumberedFrameOf(*pPopped));
    }
    CountUnderruns();
}

KxProducer::CFrameInfo CStream::NumberedFrameOf(ArvBuffer& buffer)
{
    KxProducer::CFrameInfo frame = FrameOf(buffer, m_usual, m_device->Facts().technology == ETechnology::GEV);
    // The next one's number shows how many came not at all. GigE cameras begin by 1, and of others none is
    // lost.
    if (frame.frameId == kNoNumber)
        frame.frameId = m_lastNumber + 1;
    m_lastNumber = frame.frameId;
    return frame;
}

void CStream::CountUnderruns()
{
    guint64 completed = 0, failures = 0, underruns = 0;
    arv_stream_get_statistics(m_pFilling, &completed, &failures, &underruns);
    for (; m_underruns < underruns; ++m_underruns)
        CountLost();
}

} // namespace KxAravis

// SPDX-License-Identifier: Apache-2.0
// The stream of a camera.
#pragma once

#include "common/modules/Stream.h"
#include "modules/ArvFrame.h"
#include "modules/Glib.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace KxAravis
{

class CDevice;

/// Buffers go to the library beneath as they are, and come back filled; nothing is copied.
///
/// Buffers that wait to be filled are all with that library while the stream grabs. It has no way to take one
/// back but to stop, so that is what Recall does.
class CStream final : public KxProducer::CStream
{
public:
    CStream(std::shared_ptr<CDevice> device, const std::string& id);
    ~CStream() override;

    void Close() override;
    void* GetParentHandle() const override;

protected:
    const char* TlType() const override;
    size_t PayloadSize() override;
    bool DefinesPayloadSize() const override { return false; }
    size_t MaxChunks() const override { return kMaxChunks; }
    void OnStart() override;
    void OnStop() override;
    void OnInput() override;
    void Recall() override;

private:
    static constexpr size_t kMaxChunks = 1024;

    static void OnArvEvent(void* pStream, ArvStreamCallbackType eType, ArvBuffer* pBuffer);
    void OnFilled();
    void PushAll();
    void FilterPackets(); // with m_driverMutex held
    /// The buffers that were pushed and haven't come back wait again.
    void TakeBackAll();
    /// The image of a buffer, also of one that came without its number.
    KxProducer::CFrameInfo NumberedFrameOf(ArvBuffer& buffer);
    void CountUnderruns();
    static ArvBuffer& ArvBufferOf(const BufferPtr& buffer);

    const std::shared_ptr<CDevice> m_device;
    std::mutex m_driverMutex; // of starting, stopping and pushing; never taken in the library's thread
    GPtr<ArvStream> m_stream; // guarded by it
    // The same for the library's thread, which lives no longer, but until the end of the stream's
    // destruction.
    ArvStream* m_pFilling = nullptr;
    std::mutex m_pushedMutex; // a leaf
    // Guarded by it; by the addresses of the buffers, which the library beneath hands back.
    std::map<const void*, BufferPtr> m_pushed;
    CUsualImage m_usual;       // set before the library's thread begins
    uint64_t m_underruns = 0;  // of that thread
    uint64_t m_lastNumber = 0; // the same
};

} // namespace KxAravis

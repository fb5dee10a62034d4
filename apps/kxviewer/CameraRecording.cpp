// SPDX-License-Identifier: Apache-2.0
#include "CameraRecording.h"

#include "CameraView.h"
#include "ImageDecoder.h"

#include <KxApi_GUI/IKxImageDisplayWnd.h>

#include <algorithm>
#include <thread>

using namespace KxApi;

namespace
{

// Acquisition and display need processors too.
unsigned WriterCount() { return std::max(std::thread::hardware_concurrency() / 2, 1U); }

} // namespace

CameraRecording& CameraRecording::Of(CameraView& view)
{
    auto* const pPresent = view.findChild<CameraRecording*>(QString(), Qt::FindDirectChildrenOnly);
    return pPresent ? *pPresent : *new CameraRecording(view); // the view's child
}

CameraRecording::CameraRecording(CameraView& view)
    : QObject(&view)
    , m_view(view)
{
    connect(&view, &CameraView::SessionBegan, this, &CameraRecording::OnSessionBegan);
    connect(&view, &CameraView::SessionEnds, this, &CameraRecording::OnSessionEnds);
    OnSessionBegan();
}

CameraRecording::~CameraRecording() = default;

void CameraRecording::OnSessionBegan()
{
    if (m_view.Session())
        m_view.Session()->SetTap(this);
    if (m_ring) { // of another camera
        m_ring->Clear();
        m_ring->Resume();
    }
    emit CameraChanged();
}

void CameraRecording::OnSessionEnds()
{
    m_view.Session()->SetTap(nullptr);
    if (!m_bOfRing)
        Stop();
    if (m_ring)
        m_ring->Hold(); // what it has stays to be looked at
    emit CameraChanged();
}

void CameraRecording::OnImage(IKxStreamImage& image)
{
    std::shared_ptr<KxApps::Recorder> recorder;
    std::shared_ptr<KxApps::ImageRing> ring;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        if (!m_bOfRing)
            recorder = m_recorder;
        ring = m_ring;
    }
    try {
        if (recorder)
            recorder->Add(image);
        if (ring)
            ring->Add(image);
    } catch (const GenICam::GenericException&)
    { // NOLINT(bugprone-empty-catch): no memory; the recorder counts
    }
}

bool CameraRecording::CanRecord() const { return m_view.Session() != nullptr; }

size_t CameraRecording::PayloadSize() const
{
    try {
        return m_view.Session() ? m_view.Session()->GetStream().GetPayloadSize() : 0;
    } catch (const GenICam::GenericException&) {
        return 0; // nobody tells: memory is got as images come
    }
}

void CameraRecording::Begin(KxApps::RecordingOptions options, bool bOfRing)
{
    options.output.writerCount = WriterCount();
    auto recorder = std::make_shared<KxApps::Recorder>(std::move(options));
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_recorder = std::move(recorder);
    m_bOfRing = bOfRing;
}

void CameraRecording::Start(KxApps::RecordingOptions options)
{
    options.expectedBytes = PayloadSize();
    Begin(std::move(options), false);
}

void CameraRecording::SaveRing(KxApps::RecordingOptions options)
{
    Begin(std::move(options), true);
    for (KxApps::StoredImagePtr& image : m_ring->Images())
        m_recorder->Add(std::move(image));
    m_recorder->Stop();
}

void CameraRecording::Stop()
{
    if (m_recorder)
        m_recorder->Stop();
}

bool CameraRecording::IsBusy() const
{
    if (!m_recorder)
        return false;
    const KxApps::RecordingState eState = m_recorder->Status().state;
    return eState == KxApps::RecordingState::Recording || eState == KxApps::RecordingState::Finishing;
}

void CameraRecording::SetRing(double dSeconds, uint64_t nMaxBytes)
{
    std::shared_ptr<KxApps::ImageRing> ring;
    if (dSeconds > 0)
        ring = std::make_shared<KxApps::ImageRing>(dSeconds, nMaxBytes, PayloadSize());
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_ring.swap(ring);
}

void CameraRecording::HoldRing(bool bHold)
{
    if (bHold && m_ring)
        m_ring->Hold();
    if (m_view.Session())
        m_view.Session()->SetShowsImages(!bHold);
    if (!bHold && m_ring)
        m_ring->Resume();
}

void CameraRecording::ShowOfRing(const KxApps::StoredImage& image)
{
    KxApps::ImageDecoder decoder;
    m_view.Window().RegisterIKxImage(image.IsEncoded() ? decoder.Decode(image.Data(), image.Size())
                                                       : &image.Image());
}

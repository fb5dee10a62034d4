// SPDX-License-Identifier: Apache-2.0
// The recording and the ring of one camera view.
#pragma once

#include "ImageRing.h"
#include "ImageTap.h"
#include "Recorder.h"

#include <QObject>
#include <memory>
#include <mutex>

class CameraView;

/// Belongs to the view, so that a recording goes on while another view is in front. GUI thread.
class CameraRecording : public QObject, private ImageTap
{
    Q_OBJECT

public:
    /// The one of the view, which is made at the first call.
    static CameraRecording& Of(CameraView& view);
    ~CameraRecording() override;

    /// Whether there is a camera whose images could be recorded.
    bool CanRecord() const;
    /// Saves the images that come from now on. Raises what the output objects to.
    void Start(KxApps::RecordingOptions options);
    /// Saves the images of the ring.
    void SaveRing(KxApps::RecordingOptions options);
    void Stop();
    /// Whether images are taken or still to be written.
    bool IsBusy() const;
    /// Of the present recording or the last one; null before the first.
    const KxApps::Recorder* GetRecorder() const { return m_recorder.get(); }
    bool IsOfRing() const { return m_bOfRing; }

    /// Keeps the last seconds in memory, 0 to keep none.
    void SetRing(double dSeconds, uint64_t nMaxBytes);
    /// Null when there is none.
    const KxApps::ImageRing* Ring() const { return m_ring.get(); }
    /// Holds the ring to be looked at, or lets it and the live image go on.
    void HoldRing(bool bHold);
    /// Shows one of the ring's images in the view's window.
    void ShowOfRing(const KxApps::StoredImage& image);

signals:
    /// A camera came or is about to go.
    void CameraChanged();

private:
    explicit CameraRecording(CameraView& view);
    void OnImage(KxApi::IKxStreamImage& image) override;
    void Begin(KxApps::RecordingOptions options, bool bOfRing);
    void OnSessionBegan();
    void OnSessionEnds();
    size_t PayloadSize() const;

    CameraView& m_view;
    std::mutex m_mutex; // for the two pointers, which the stream's thread reads
    std::shared_ptr<KxApps::Recorder> m_recorder;
    std::shared_ptr<KxApps::ImageRing> m_ring;
    bool m_bOfRing = false;
};

// SPDX-License-Identifier: Apache-2.0
// An open camera whose images go into an image window.
#pragma once

#include "Cameras.h"
#include "ImageDecoder.h"
#include "ImageTap.h"
#include "RateMeter.h"

#include <KxApi_TL/IKxStream.h>

#include <QObject>
#include <QString>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace KxApi
{
struct IKxImageDisplayWnd;
}

/// GUI thread; images are handed to the window in the stream's own thread, which is told by signals here.
class CameraSession : public QObject, private KxApi::IKxStreamCallback
{
    Q_OBJECT

public:
    /// Opens the camera and sets features ("Name=Value", in this order). Images go into the window, which has
    /// to outlive this. Raises exceptions that name the camera or the feature.
    CameraSession(const KxApps::Camera& camera, const std::vector<std::string>& settings,
                  KxApi::IKxImageDisplayWnd& window);
    ~CameraSession() override;

    /// Acquires so many images, kKxEndless without end; nothing while it acquires. Raises what the camera
    /// objects to.
    void Start(uint64_t nImages);
    void Stop();
    bool IsAcquiring() const { return m_stream->IsAcquiring(); }

    KxApi::CKxStreamStatistics GetStatistics() const { return m_stream->GetStatistics(); }
    KxApi::IKxDevice& GetDevice() { return *m_device; }
    KxApi::IKxStream& GetStream() { return *m_stream; }
    const KxApps::Camera& GetCamera() const { return m_camera; }
    QString GetName() const { return m_strName; }
    /// Images and bytes a second over the last second.
    RateMeter::Rates GetRates() const { return m_rates.Get(); }

    /// Who else gets the images, null for nobody; not owned. A call of it that runs is waited for.
    void SetTap(ImageTap* pTap);
    /// Whether images go into the window, as they do at first. One that is just going there is waited for.
    void SetShowsImages(bool bShow);

signals:
    /// The last of the images that Start was asked for has come.
    void Finished();
    /// Something went wrong; with bEnded the acquisition is over.
    void Failed(const QString& strText, bool bEnded);

private:
    void OnImage(KxApi::IKxStreamImage* pImage) override;
    void Show(KxApi::IKxStreamImage& image);
    void OnError(const GenICam::GenericException& error, bool bEnded) override;

    KxApi::IKxImageDisplayWnd& m_window;
    const KxApps::Camera m_camera;
    RateMeter m_rates;
    QString m_strName;
    uint64_t m_nWanted = 0;
    uint64_t m_nCome = 0; // of the stream's thread while it acquires
    std::mutex m_tapMutex;
    ImageTap* m_pTap = nullptr;
    KxApps::ImageDecoder m_decoder; // of the stream's thread
    std::mutex m_showMutex;
    bool m_bShowsImages = true;
    KxApps::Device m_device;
    KxApi::CKxAutoPtr<KxApi::IKxStreamReleasable, KxApi::IKxStream> m_stream;
};

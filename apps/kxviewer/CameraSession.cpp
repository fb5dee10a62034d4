// SPDX-License-Identifier: Apache-2.0
#include "CameraSession.h"

#include "FeatureSetting.h"

#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_TL/IKxPort.h>

#include <algorithm>

using namespace KxApi;

CameraSession::CameraSession(const KxApps::Camera& camera, const std::vector<std::string>& settings,
                             IKxImageDisplayWnd& window)
    : m_window(window)
    , m_camera(camera)
    , m_strName(QString::fromUtf8(camera.pInfo->GetDisplayName().c_str()))
    , m_device(KxApps::Cameras::Open(camera, KxDeviceAccess_Control))
{
    if (!settings.empty()) {
        GenApi::INodeMap* const pNodeMap = m_device->GetIKxRemotePort()->GetINodeMap();
        KxApps::Apply(KxApps::ParseSettings(*pNodeMap, settings));
    }
    m_stream.Reset(m_device->OpenIKxStream(0));
}

CameraSession::~CameraSession()
{
    m_stream.Reset(); // ends the acquisition while all that its callback uses is there
}

void CameraSession::Start(uint64_t nImages)
{
    if (IsAcquiring())
        return;
    m_nWanted = nImages;
    m_nCome = 0;
    m_rates.Clear();
    m_stream->StartAcquisition(this, nImages);
}

void CameraSession::Stop() { m_stream->StopAcquisition(); }

void CameraSession::SetTap(ImageTap* pTap)
{
    const std::lock_guard<std::mutex> guard(m_tapMutex);
    m_pTap = pTap;
}

void CameraSession::SetShowsImages(bool bShow)
{
    const std::lock_guard<std::mutex> guard(m_showMutex);
    m_bShowsImages = bShow;
}

void CameraSession::Show(IKxStreamImage& image)
{
    const std::lock_guard<std::mutex> guard(m_showMutex);
    if (!m_bShowsImages)
        return;
    try {
        IKxImage* const pPixels = m_decoder.Pixels(image);
        if (pPixels->GetImageBuffer()) // chunks alone have none
            m_window.RegisterIKxImage(pPixels);
    } catch (const GenICam::GenericException& e) {
        emit Failed(QString::fromUtf8(e.GetDescription()), false);
    }
}

void CameraSession::OnImage(IKxStreamImage* pImage)
{
    m_rates.Add(std::max(pImage->GetImageLinePitch() * pImage->GetImageHeight(), pImage->GetEncodedSize()));
    {
        const std::lock_guard<std::mutex> guard(m_tapMutex);
        if (m_pTap)
            m_pTap->OnImage(*pImage);
    }
    Show(*pImage);
    if (++m_nCome == m_nWanted)
        emit Finished();
}

void CameraSession::OnError(const GenICam::GenericException& error, bool bEnded)
{
    emit Failed(QString::fromUtf8(error.GetDescription()), bEnded);
}

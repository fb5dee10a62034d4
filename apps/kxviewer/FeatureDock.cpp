// SPDX-License-Identifier: Apache-2.0
#include "FeatureDock.h"

#include "CameraView.h"
#include "FeaturePanel.h"

#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxSystem.h>

using namespace KxApi;

namespace
{

QString TextOf(const GenICam::gcstring& strText) { return QString::fromUtf8(strText.c_str()); }

QVector<FeatureMapEntry> MapsOfCamera(CameraSession& session)
{
    IKxDevice& device = session.GetDevice();
    IKxInterface& interface = *device.GetIKxInterface();
    const QString strCamera = TextOf(device.GetIKxDeviceInfo()->GetID());
    const QString strModel = TextOf(device.GetIKxDeviceInfo()->GetModel());
    const auto entry = [&](const char* szTitle, const char* szModule, std::function<IKxPort*()> getPort) {
        return FeatureMapEntry{szTitle, strModel + "/" + szModule, strCamera, szModule,
                               [getPort = std::move(getPort)] { return getPort()->GetINodeMap(); }};
    };
    return {
        entry("Camera", "remote", [&] { return device.GetIKxRemotePort(); }),
        entry("Host side of the camera", "local", [&] { return device.GetIKxLocalPort(); }),
        entry("Stream", "stream", [&] { return session.GetStream().GetIKxPort(); }),
        entry("Interface", "interface", [&] { return interface.GetIKxPort(); }),
        entry("System", "system", [&] { return interface.GetIKxSystem()->GetIKxPort(); }),
    };
}

} // namespace

FeatureDock::FeatureDock(QWidget* pParent)
    : ViewerDock("Features", "features", pParent)
    , m_pPanel(new FeaturePanel(this))
{
    setWidget(m_pPanel);
}

void FeatureDock::Follow(CameraView& view)
{
    Unfollow();
    m_pView = &view;
    connect(&view, &CameraView::SessionEnds, this, [this] {
        m_pPanel->SetMaps({});
        m_bOffered = false;
    });
    connect(&view, &CameraView::SessionBegan, this, &FeatureDock::Offer);
    Offer();
}

void FeatureDock::Unfollow()
{
    if (m_pView)
        m_pView->disconnect(this);
    m_pView = nullptr;
    m_bOffered = false;
    m_pPanel->SetMaps({});
}

void FeatureDock::Offer()
{
    m_bOffered = m_pView && isVisible();
    if (!m_bOffered)
        return;
    QVector<FeatureMapEntry> maps;
    if (CameraSession* const pSession = m_pView->Session())
        maps = MapsOfCamera(*pSession);
    maps.append({"Image window", "ImageWindow", {}, {}, [this] { return m_pView->Window().GetINodeMap(); }});
    maps.append(
        {"This window", "NodeMapWindow", {}, {}, [this] { return m_pPanel->Window().GetINodeMap(); }});
    m_pPanel->SetMaps(maps);
}

void FeatureDock::showEvent(QShowEvent* pEvent)
{
    ViewerDock::showEvent(pEvent);
    if (!m_bOffered)
        Offer();
}

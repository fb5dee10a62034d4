// SPDX-License-Identifier: Apache-2.0
#include "FeatureDock.h"

#include "CameraView.h"
#include "FeaturePanel.h"
#include "FeatureText.h"

#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxSystem.h>

#include <QCoreApplication>
#include <QVBoxLayout>

using namespace KxApi;

namespace
{

QVector<FeatureMapEntry> MapsOfCamera(CameraSession& session)
{
    IKxDevice& device = session.GetDevice();
    IKxInterface& interface = *device.GetIKxInterface();
    const QString strCamera = TextOf(device.GetIKxDeviceInfo()->GetID());
    const QString strModel = TextOf(device.GetIKxDeviceInfo()->GetModel());
    const auto entry = [&](const QString& strTitle, const char* szModule, std::function<IKxPort*()> getPort) {
        return FeatureMapEntry{strTitle, strModel + "/" + szModule, strCamera, szModule,
                               [getPort = std::move(getPort)] { return getPort()->GetINodeMap(); }};
    };
    return {
        entry(FeatureDock::tr("Camera"), "remote", [&] { return device.GetIKxRemotePort(); }),
        entry(FeatureDock::tr("Host side of the camera"), "local", [&] { return device.GetIKxLocalPort(); }),
        entry(FeatureDock::tr("Stream"), "stream", [&] { return session.GetStream().GetIKxPort(); }),
        entry(FeatureDock::tr("Interface"), "interface", [&] { return interface.GetIKxPort(); }),
        entry(FeatureDock::tr("System"), "system", [&] { return interface.GetIKxSystem()->GetIKxPort(); }),
    };
}

} // namespace

FeatureDock::FeatureDock(QWidget* pParent)
    : ViewerDock(tr("Features"), "features", pParent)
    , m_pPlace(new QWidget(this))
{
    auto* const pLayout = new QVBoxLayout(m_pPlace);
    pLayout->setContentsMargins(0, 0, 0, 0);
    SetContents(m_pPlace);
}

void FeatureDock::Follow(CameraView& view)
{
    Unfollow();
    m_pView = &view;
    connect(&view, &CameraView::SessionEnds, this, [this] { LetGo(); });
    connect(&view, &CameraView::SessionBegan, this, &FeatureDock::Offer);
    Offer();
}

void FeatureDock::Unfollow()
{
    if (m_pView)
        m_pView->disconnect(this);
    m_pView = nullptr;
    LetGo();
}

void FeatureDock::LetGo()
{
    if (m_pPanel)
        m_pPanel->SetMaps({});
    m_bOffered = false;
}

void FeatureDock::Offer()
{
    m_bOffered = m_pView && isVisible();
    if (!m_bOffered)
        return;
    if (!m_pPanel) {
        m_pPanel = new FeaturePanel(this);
        m_pPlace->layout()->addWidget(m_pPanel);
    }
    QVector<FeatureMapEntry> maps;
    if (CameraSession* const pSession = m_pView->Session())
        maps = MapsOfCamera(*pSession);
    maps.append(
        {tr("Image window"), "ImageWindow", {}, {}, [this] { return m_pView->Window().GetINodeMap(); }});
    maps.append(
        {tr("This window"), "NodeMapWindow", {}, {}, [this] { return m_pPanel->Window().GetINodeMap(); }});
    m_pPanel->SetMaps(maps);
}

void FeatureDock::showEvent(QShowEvent* pEvent)
{
    ViewerDock::showEvent(pEvent);
    if (!m_bOffered)
        Offer();
}

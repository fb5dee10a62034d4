// SPDX-License-Identifier: Apache-2.0
#include "CameraCommands.h"

#include "CameraRegion.h"
#include "CameraView.h"
#include "FeatureFile.h"

#include <KxApi_TL/IKxPort.h>

#include <QDir>
#include <QFileInfo>

using namespace KxApi;

namespace
{

GenApi::INodeMap& MapOf(CameraSession& session)
{
    return *session.GetDevice().GetIKxRemotePort()->GetINodeMap();
}

/// Features that the images depend on are locked while the camera acquires. It goes on afterwards, whether
/// the call has raised or not.
template <typename Call>
auto WhileStopped(CameraSession& session, Call call)
{
    const bool bAcquired = session.IsAcquiring();
    if (bAcquired)
        session.Stop();
    try {
        auto result = call();
        if (bAcquired)
            session.Start(kKxEndless);
        return result;
    } catch (const GenICam::GenericException&) {
        if (bAcquired && !session.IsAcquiring())
            session.Start(kKxEndless);
        throw;
    }
}

} // namespace

void SaveFeatureSet(CameraSession& session, const QString& strFile)
{
    const QString strFolder = QFileInfo(strFile).absolutePath();
    if (!QDir().mkpath(strFolder))
        throw RUNTIME_EXCEPTION("the folder '%s' can't be made", strFolder.toUtf8().constData());
    Kx::SaveFeatures(MapOf(session), strFile.toStdString());
}

void LoadFeatureSet(CameraSession& session, const QString& strFile)
{
    WhileStopped(session, [&] {
        Kx::LoadFeatures(MapOf(session), strFile.toStdString());
        return true;
    });
}

QRect SetRegionToSelection(CameraView& view)
{
    const std::optional<QRect> part = SelectedPixels(view.Window());
    if (!part)
        throw RUNTIME_EXCEPTION("no rectangle is selected: draw one with the drawing tools, then select it");
    return WhileStopped(*view.Session(), [&] { return NarrowRegion(MapOf(*view.Session()), *part); });
}

QRect SetRegionFull(CameraView& view)
{
    return WhileStopped(*view.Session(), [&] { return FullRegion(MapOf(*view.Session())); });
}

bool CanBeTriggered(CameraSession& session)
{
    try {
        const GenApi::CEnumerationPtr pMode(MapOf(session).GetNode("TriggerMode"));
        return session.IsAcquiring() && GenApi::IsWritable(MapOf(session).GetNode("TriggerSoftware")) &&
               (!pMode || !GenApi::IsReadable(pMode) || pMode->ToString() != "Off");
    } catch (const GenICam::GenericException&) {
        return false;
    }
}

void Trigger(CameraSession& session)
{
    const GenApi::CCommandPtr pTrigger(MapOf(session).GetNode("TriggerSoftware"));
    if (!pTrigger)
        throw RUNTIME_EXCEPTION("the camera has no software trigger");
    pTrigger->Execute();
}

void TakeSingleImage(CameraSession& session)
{
    session.Stop();
    session.Start(1);
}

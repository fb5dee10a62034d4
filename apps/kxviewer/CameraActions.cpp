// SPDX-License-Identifier: Apache-2.0
#include "ActionRows.h"
#include "CameraCommands.h"
#include "FileDialog.h"
#include "MainWindow.h"
#include "ViewerSettings.h"

using namespace KxApi;

namespace
{

constexpr const char* kNotSaved = QT_TRANSLATE_NOOP("Actions", "The features can't be saved.");
constexpr const char* kNotLoaded = QT_TRANSLATE_NOOP("Actions", "Not all features could be set.");

QString RegionText(const QRect& region)
{
    return ActionText(QT_TRANSLATE_NOOP("Actions", "Region of the camera: %1 x %2 at %3, %4"))
        .arg(region.width())
        .arg(region.height())
        .arg(region.x())
        .arg(region.y());
}

} // namespace

void ActionRows::AddFeatureSet(const char* szId, const char* szText, bool bSave, FeatureSetKey eKey)
{
    const auto call = [&window = m_window, bSave, eKey] {
        CameraSession& session = *window.View().Session();
        const QString strFile = FeatureSetFile(*session.GetCamera().pInfo, eKey);
        bSave ? SaveFeatureSet(session, strFile) : LoadFeatureSet(session, strFile);
        window.Tell(ActionText(bSave ? QT_TRANSLATE_NOOP("Actions", "Saved %1")
                                     : QT_TRANSLATE_NOOP("Actions", "Set the features of %1"))
                        .arg(strFile));
    };
    m_rows.push_back({szId, ActionMenu::Camera, szText, "", ActionBar::None,
                      Try(bSave ? kNotSaved : kNotLoaded, call), m_hasCamera});
}

void ActionRows::AddFeatureFile(const char* szId, const char* szText, const char* szTitle, bool bSave)
{
    const auto call = [&window = m_window, szTitle, bSave] {
        const QString strFile =
            ChooseFile(&window, bSave ? FileChoice::Save : FileChoice::Open, ActionText(szTitle), "features",
                       {ActionText(QT_TRANSLATE_NOOP("Actions", "Features (*.txt)"))});
        if (strFile.isEmpty())
            return;
        CameraSession& session = *window.View().Session();
        bSave ? SaveFeatureSet(session, strFile) : LoadFeatureSet(session, strFile);
    };
    m_rows.push_back({szId, ActionMenu::Camera, szText, "", ActionBar::None,
                      Try(bSave ? kNotSaved : kNotLoaded, call), m_hasCamera});
}

void ActionRows::AddFeatureSets()
{
    AddFeatureSet("saveSerial", QT_TRANSLATE_NOOP("Actions", "&Save features of this camera"), true,
                  FeatureSetKey::Serial);
    AddFeatureSet("loadSerial", QT_TRANSLATE_NOOP("Actions", "&Load features of this camera"), false,
                  FeatureSetKey::Serial);
    AddFeatureSet("saveModel", QT_TRANSLATE_NOOP("Actions", "Save features for this &model"), true,
                  FeatureSetKey::Model);
    AddFeatureSet("loadModel", QT_TRANSLATE_NOOP("Actions", "Load features for this m&odel"), false,
                  FeatureSetKey::Model);
    AddFeatureFile("saveFeatures", QT_TRANSLATE_NOOP("Actions", "Save features to a &file..."),
                   QT_TRANSLATE_NOOP("Actions", "Save features"), true);
    AddFeatureFile("loadFeatures", QT_TRANSLATE_NOOP("Actions", "Load features from a f&ile..."),
                   QT_TRANSLATE_NOOP("Actions", "Load features"), false);
    m_rows.push_back(
        {"loadAtOpen",
         ActionMenu::Camera,
         QT_TRANSLATE_NOOP("Actions", "Load saved features when a camera is o&pened"),
         "",
         ActionBar::None,
         [] { ViewerSettings().setValue(kLoadAtOpen, !ViewerSettings().value(kLoadAtOpen).toBool()); },
         {},
         [] { return ViewerSettings().value(kLoadAtOpen).toBool(); }});
}

void ActionRows::AddRegion()
{
    MainWindow& window = m_window;
    constexpr const char* kNoRegion = QT_TRANSLATE_NOOP("Actions", "The region can't be set.");
    m_rows.push_back(
        {"regionSet", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "Set camera &region to selection"),
         "Ctrl+R", ActionBar::Drawing,
         Try(kNoRegion, [&window] { window.Tell(RegionText(SetRegionToSelection(window.View()))); }),
         m_hasCamera});
    m_rows.push_back(
        {"regionFull", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "F&ull region of the camera"),
         "Ctrl+Shift+R", ActionBar::Drawing,
         Try(kNoRegion, [&window] { window.Tell(RegionText(SetRegionFull(window.View()))); }), m_hasCamera});
    Separator(ActionMenu::Keys, ActionBar::Drawing);
}

void ActionRows::AddCamera()
{
    MainWindow& window = m_window;
    m_rows.push_back({"connect", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "&Choose a camera..."),
                      "Ctrl+O", ActionBar::Acquisition, [&window] { window.Choose({}); },
                      [&window] { return window.CanChoose(); }});
    m_rows.push_back({"disconnect", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "Clos&e the camera"),
                      "Ctrl+W", ActionBar::Acquisition, [&window] { window.CloseView(window.View()); },
                      m_hasCamera});
    Separator(ActionMenu::Camera, ActionBar::Acquisition);
    AddFeatureSets();
    Separator(ActionMenu::Camera);
    AddRegion();
}

// SPDX-License-Identifier: Apache-2.0
#include "ViewerActions.h"

#include "Appearance.h"
#include "CameraCommands.h"
#include "HelpPage.h"
#include "ImageZoom.h"
#include "MainWindow.h"
#include "SnapshotFile.h"
#include "ViewerSettings.h"

#include <KxApi_GUI/IKxDrawingTool.h>

#include <QCoreApplication>
#include <QFileDialog>
#include <QStandardPaths>

using namespace KxApi;

namespace
{

constexpr unsigned int kGridLines = 7;
constexpr double kArrowStep = 0.1; // of what is visible
constexpr double kPageStep = 0.9;

QString Translated(const char* szText) { return QCoreApplication::translate("Actions", szText); }

QString TextOf(const QRect& region)
{
    return Translated(QT_TRANSLATE_NOOP("Actions", "Region of the camera: %1 x %2 at %3, %4"))
        .arg(region.width())
        .arg(region.height())
        .arg(region.x())
        .arg(region.y());
}

QString ChooseFile(MainWindow& window, bool bSave, const char* szTitle, const QString& strFolderKey,
                   const QString& strFolder, const QStringList& filters)
{
    QFileDialog dialog(&window, Translated(szTitle), ViewerSettings::Folder(strFolderKey, strFolder));
    dialog.setAcceptMode(bSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(bSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    // The ending goes with the chosen type, unless another one is typed.
    const auto suffix = [&](const QString& strFilter) {
        dialog.setDefaultSuffix(strFilter.section("(*.", 1).section(QRegExp("[ )]"), 0, 0));
    };
    suffix(filters.first());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, suffix);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    QString strFile = dialog.selectedFiles().value(0);
    ViewerSettings::RememberFolderOf(strFolderKey, strFile);
    return strFile;
}

/// The rows of a window, menu by menu. Calls of the rows may raise.
class Rows
{
public:
    explicit Rows(MainWindow& window)
        : m_window(window)
    {}

    std::vector<ActionRow> Take()
    {
        AddCamera(); // in the order of the toolbars
        AddAcquisition();
        AddFile();
        AddView();
        AddTools();
        AddHelp();
        return std::move(m_rows);
    }

private:
    using Condition = std::function<bool()>;

    /// @param szTried what a failure is told as, in the user's words
    std::function<void()> Try(const char* szTried, std::function<void()> call) const
    {
        return
            [&window = m_window, szTried, call = std::move(call)] { window.Try(Translated(szTried), call); };
    }
    void Separator(ActionMenu eMenu, ActionBar eBar = ActionBar::None)
    {
        ActionRow row;
        row.eMenu = eMenu;
        row.eBar = eBar;
        m_rows.push_back(row);
    }
    void AddZoomKey(const char* szId, const char* szText, const char* szKeys, double dPagesX, double dPagesY)
    {
        m_rows.push_back({szId,
                          ActionMenu::Keys,
                          szText,
                          "",
                          ActionBar::None,
                          [&window = m_window, dPagesX, dPagesY] {
                              ImageZoom(window.View().Window()).Scroll(dPagesX, dPagesY);
                          },
                          {},
                          {},
                          szKeys});
    }

    void AddFile();
    void AddView();
    void AddCamera();
    void AddAcquisition();
    void AddTools();
    void AddDrawing();
    void AddHelp();

    MainWindow& m_window;
    std::vector<ActionRow> m_rows;
    const Condition m_hasImage = [&window = m_window] { return window.View().Window().HasImage(); };
    const Condition m_hasCamera = [&window = m_window] { return window.View().Session() != nullptr; };
};

void Rows::AddFile()
{
    MainWindow& window = m_window;
    m_rows.push_back({"snapshot", ActionMenu::File, QT_TRANSLATE_NOOP("Actions", "Save a s&napshot"),
                      "Ctrl+S; F12", ActionBar::Acquisition,
                      Try(QT_TRANSLATE_NOOP("Actions", "The image can't be saved."),
                          [&window] {
                              const QString strFile = SaveSnapshot(window.View());
                              window.Tell(Translated(QT_TRANSLATE_NOOP("Actions", "Saved %1")).arg(strFile));
                          }),
                      m_hasImage});
    m_rows.push_back({"saveAs", ActionMenu::File, QT_TRANSLATE_NOOP("Actions", "Save image &as..."),
                      "Ctrl+Shift+S", ActionBar::None,
                      Try(QT_TRANSLATE_NOOP("Actions", "The image can't be saved."),
                          [&window] {
                              const QString strFile = ChooseFile(
                                  window, true, QT_TRANSLATE_NOOP("Actions", "Save image"), "pictures",
                                  QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
                                  ImageFileFilters());
                              if (!strFile.isEmpty())
                                  SaveImageAs(window.View(), strFile);
                          }),
                      m_hasImage});
    m_rows.push_back(
        {"copy",
         ActionMenu::File,
         QT_TRANSLATE_NOOP("Actions", "&Copy image"),
         "",
         ActionBar::None,
         Try(QT_TRANSLATE_NOOP("Actions", "The image can't be copied."),
             [&window] { SetIKxImageToClipboard(window.View().Window().GetConvertedIKxImage()); }),
         m_hasImage,
         {},
         "Ctrl+C"});
    Separator(ActionMenu::File);
    m_rows.push_back({"quit", ActionMenu::File, QT_TRANSLATE_NOOP("Actions", "&Quit"), "Ctrl+Q",
                      ActionBar::None, [&window] { window.close(); }});
}

void Rows::AddView()
{
    MainWindow& window = m_window;
    const auto zoom = [&window] { return ImageZoom(window.View().Window()); };
    m_rows.push_back({"zoomFit",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "&Fit to the window"),
                      "Ctrl+0",
                      ActionBar::Image,
                      [=] { zoom().Fit(); },
                      {},
                      [=] { return zoom().IsFit(); },
                      "F"});
    m_rows.push_back({"zoomFull",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "Zoom &100 %"),
                      "Ctrl+1",
                      ActionBar::Image,
                      [=] { zoom().Set(1); },
                      {},
                      {},
                      "1"});
    m_rows.push_back({"zoomIn",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "Zoom &in"),
                      "Ctrl++",
                      ActionBar::Image,
                      [=] { zoom().In(); },
                      {},
                      {},
                      "+; ="});
    m_rows.push_back({"zoomOut",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "Zoom &out"),
                      "Ctrl+-",
                      ActionBar::Image,
                      [=] { zoom().Out(); },
                      {},
                      {},
                      "-"});
    AddZoomKey("scrollLeft", QT_TRANSLATE_NOOP("Actions", "Scroll left"), "Left", -kArrowStep, 0);
    AddZoomKey("scrollRight", QT_TRANSLATE_NOOP("Actions", "Scroll right"), "Right", kArrowStep, 0);
    AddZoomKey("scrollUp", QT_TRANSLATE_NOOP("Actions", "Scroll up"), "Up", 0, -kArrowStep);
    AddZoomKey("scrollDown", QT_TRANSLATE_NOOP("Actions", "Scroll down"), "Down", 0, kArrowStep);
    AddZoomKey("pageUp", QT_TRANSLATE_NOOP("Actions", "Page up"), "PgUp", 0, -kPageStep);
    AddZoomKey("pageDown", QT_TRANSLATE_NOOP("Actions", "Page down"), "PgDown", 0, kPageStep);
    AddZoomKey("pageLeft", QT_TRANSLATE_NOOP("Actions", "Page left"), "Ctrl+PgUp", -kPageStep, 0);
    AddZoomKey("pageRight", QT_TRANSLATE_NOOP("Actions", "Page right"), "Ctrl+PgDown", kPageStep, 0);
    Separator(ActionMenu::View, ActionBar::Image);
    m_rows.push_back({"markExposure",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "Mark over- and under-&exposure"),
                      "Ctrl+E",
                      ActionBar::Image,
                      [&window] { window.SetMarksExposure(!window.View().Marks().MarksExposure()); },
                      {},
                      [&window] { return window.View().Marks().MarksExposure(); }});
    m_rows.push_back({"pixelValues",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "&Values in the pixels from 3200 %"),
                      "Ctrl+P",
                      ActionBar::Image,
                      [&window] { window.SetWritesValues(!window.View().Marks().WritesValues()); },
                      {},
                      [&window] { return window.View().Marks().WritesValues(); }});
    m_rows.push_back(
        {"grid",
         ActionMenu::View,
         QT_TRANSLATE_NOOP("Actions", "&Grid over the image"),
         "Ctrl+G",
         ActionBar::Image,
         [&window] {
             IKxDrawingTool& tool = *window.View().Window().GetIKxDrawingTool();
             const unsigned int nLines = tool.GetGridHLineCount() > 0 ? 0 : kGridLines;
             tool.SetGridHLineCount(nLines);
             tool.SetGridVLineCount(nLines);
         },
         {},
         [&window] { return window.View().Window().GetIKxDrawingTool()->GetGridHLineCount() > 0; }});
    Separator(ActionMenu::View, ActionBar::Image);
    m_rows.push_back({"tile",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "Cameras &side by side"),
                      "Ctrl+T",
                      ActionBar::Image,
                      [&window] { window.Area().SetTiled(!window.Area().IsTiled()); },
                      {},
                      [&window] { return window.Area().IsTiled(); }});
    m_rows.push_back({"fullScreen",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "F&ull screen"),
                      "F11",
                      ActionBar::Image,
                      [&window] { window.setWindowState(window.windowState() ^ Qt::WindowFullScreen); },
                      {},
                      [&window] { return window.isFullScreen(); }});
    m_rows.push_back({"leaveFullScreen", ActionMenu::Keys,
                      QT_TRANSLATE_NOOP("Actions", "Leave the full screen"), "Esc", ActionBar::None,
                      [&window] { window.setWindowState(window.windowState() & ~Qt::WindowFullScreen); },
                      [&window] { return window.isFullScreen(); }});
    m_rows.push_back({"dark",
                      ActionMenu::View,
                      QT_TRANSLATE_NOOP("Actions", "&Dark colours"),
                      "",
                      ActionBar::None,
                      [&window] { window.SetDarkColours(!IsDark()); },
                      {},
                      IsDark});
    Separator(ActionMenu::View);
}

void Rows::AddCamera()
{
    MainWindow& window = m_window;
    m_rows.push_back({"connect", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "&Choose a camera..."),
                      "Ctrl+O", ActionBar::Acquisition, [&window] { window.Choose({}); },
                      [&window] { return window.CanChoose(); }});
    m_rows.push_back({"disconnect", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "C&lose the camera"),
                      "Ctrl+W", ActionBar::Acquisition, [&window] { window.CloseView(window.View()); },
                      m_hasCamera});
    Separator(ActionMenu::Camera, ActionBar::Acquisition);
    const auto set = [&window](const char* szTried, bool bSave, FeatureSetKey eKey) {
        return [&window, szTried, bSave, eKey] {
            window.Try(Translated(szTried), [&] {
                CameraSession& session = *window.View().Session();
                const QString strFile = FeatureSetFile(*session.GetCamera().pInfo, eKey);
                bSave ? SaveFeatureSet(session, strFile) : LoadFeatureSet(session, strFile);
                window.Tell(Translated(bSave ? QT_TRANSLATE_NOOP("Actions", "Saved %1")
                                             : QT_TRANSLATE_NOOP("Actions", "Set the features of %1"))
                                .arg(strFile));
            });
        };
    };
    constexpr const char* kNotSaved = QT_TRANSLATE_NOOP("Actions", "The features can't be saved.");
    constexpr const char* kNotLoaded = QT_TRANSLATE_NOOP("Actions", "Not all features could be set.");
    const QString strHome = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QStringList filters{Translated(QT_TRANSLATE_NOOP("Actions", "Features (*.txt)"))};
    m_rows.push_back({"saveSerial", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "&Save features of this camera"), "", ActionBar::None,
                      set(kNotSaved, true, FeatureSetKey::Serial), m_hasCamera});
    m_rows.push_back({"loadSerial", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "&Load features of this camera"), "", ActionBar::None,
                      set(kNotLoaded, false, FeatureSetKey::Serial), m_hasCamera});
    m_rows.push_back({"saveModel", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "Save features for this &model"), "", ActionBar::None,
                      set(kNotSaved, true, FeatureSetKey::Model), m_hasCamera});
    m_rows.push_back({"loadModel", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "Load features for this m&odel"), "", ActionBar::None,
                      set(kNotLoaded, false, FeatureSetKey::Model), m_hasCamera});
    m_rows.push_back({"saveFeatures", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "Save features to a &file..."), "", ActionBar::None,
                      Try(kNotSaved,
                          [&window, strHome, filters] {
                              const QString strFile =
                                  ChooseFile(window, true, QT_TRANSLATE_NOOP("Actions", "Save features"),
                                             "features", strHome, filters);
                              if (!strFile.isEmpty())
                                  SaveFeatureSet(*window.View().Session(), strFile);
                          }),
                      m_hasCamera});
    m_rows.push_back({"loadFeatures", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "Load features from a f&ile..."), "", ActionBar::None,
                      Try(kNotLoaded,
                          [&window, strHome, filters] {
                              const QString strFile =
                                  ChooseFile(window, false, QT_TRANSLATE_NOOP("Actions", "Load features"),
                                             "features", strHome, filters);
                              if (!strFile.isEmpty())
                                  LoadFeatureSet(*window.View().Session(), strFile);
                          }),
                      m_hasCamera});
    m_rows.push_back(
        {"loadAtOpen",
         ActionMenu::Camera,
         QT_TRANSLATE_NOOP("Actions", "Load saved features when a camera is o&pened"),
         "",
         ActionBar::None,
         [] { ViewerSettings().setValue(kLoadAtOpen, !ViewerSettings().value(kLoadAtOpen).toBool()); },
         {},
         [] { return ViewerSettings().value(kLoadAtOpen).toBool(); }});
    Separator(ActionMenu::Camera);
    constexpr const char* kNoRegion = QT_TRANSLATE_NOOP("Actions", "The region can't be set.");
    m_rows.push_back({"regionSet", ActionMenu::Camera,
                      QT_TRANSLATE_NOOP("Actions", "Set camera &region to selection"), "Ctrl+R",
                      ActionBar::Drawing,
                      Try(kNoRegion, [&window] { window.Tell(TextOf(SetRegionToSelection(window.View()))); }),
                      m_hasCamera});
    m_rows.push_back(
        {"regionFull", ActionMenu::Camera, QT_TRANSLATE_NOOP("Actions", "F&ull region of the camera"),
         "Ctrl+Shift+R", ActionBar::Drawing,
         Try(kNoRegion, [&window] { window.Tell(TextOf(SetRegionFull(window.View()))); }), m_hasCamera});
    Separator(ActionMenu::Keys, ActionBar::Drawing);
}

void Rows::AddAcquisition()
{
    MainWindow& window = m_window;
    const auto isIdle = [&window] {
        const CameraSession* const pSession = window.View().Session();
        return pSession && !pSession->IsAcquiring();
    };
    const auto isAcquiring = [&window] {
        const CameraSession* const pSession = window.View().Session();
        return pSession && pSession->IsAcquiring();
    };
    m_rows.push_back({"start", ActionMenu::Acquisition, QT_TRANSLATE_NOOP("Actions", "&Start"), "F5",
                      ActionBar::Acquisition, [&window] { window.Start(kKxEndless); }, isIdle});
    m_rows.push_back({"stop", ActionMenu::Acquisition, QT_TRANSLATE_NOOP("Actions", "S&top"), "Shift+F5",
                      ActionBar::Acquisition,
                      Try(QT_TRANSLATE_NOOP("Actions", "The acquisition didn't stop as it should."),
                          [&window] { window.View().Session()->Stop(); }),
                      isAcquiring});
    m_rows.push_back({"single", ActionMenu::Acquisition, QT_TRANSLATE_NOOP("Actions", "S&ingle image"), "F6",
                      ActionBar::Acquisition,
                      Try(QT_TRANSLATE_NOOP("Actions", "The acquisition can't be started."),
                          [&window] { TakeSingleImage(*window.View().Session()); }),
                      m_hasCamera});
    m_rows.push_back(
        {"trigger",
         ActionMenu::Acquisition,
         QT_TRANSLATE_NOOP("Actions", "Software t&rigger"),
         "F7",
         ActionBar::Acquisition,
         Try(QT_TRANSLATE_NOOP("Actions", "The camera can't be triggered."),
             [&window] { Trigger(*window.View().Session()); }),
         [&window] { return window.View().Session() && CanBeTriggered(*window.View().Session()); },
         {},
         "Space"});
    Separator(ActionMenu::Acquisition, ActionBar::Acquisition);
}

void Rows::AddDrawing()
{
    // The places are the numbers of the feature's entries.
    constexpr std::pair<const char*, const char*> kTools[] = {
        {"draw0", QT_TRANSLATE_NOOP("Actions", "No tool: drag the image")},
        {"draw1", QT_TRANSLATE_NOOP("Actions", "Select")},
        {"draw2", QT_TRANSLATE_NOOP("Actions", "Line")},
        {"draw3", QT_TRANSLATE_NOOP("Actions", "Rectangle")},
        {"draw4", QT_TRANSLATE_NOOP("Actions", "Ellipse")},
        {"draw5", QT_TRANSLATE_NOOP("Actions", "Text")},
        {"draw6", QT_TRANSLATE_NOOP("Actions", "Angle")},
        {"draw7", QT_TRANSLATE_NOOP("Actions", "Polygon")},
        {"draw8", QT_TRANSLATE_NOOP("Actions", "Perpendicular")},
        {"draw9", QT_TRANSLATE_NOOP("Actions", "Arc")},
        {"draw10", QT_TRANSLATE_NOOP("Actions", "Bezier curve")},
        {"draw11", QT_TRANSLATE_NOOP("Actions", "Freehand")},
        {"draw12", QT_TRANSLATE_NOOP("Actions", "Cross")},
    };
    int64_t nType = 0;
    for (const auto& [szId, szText] : kTools) {
        m_rows.push_back({szId,
                          ActionMenu::Tools,
                          szText,
                          "",
                          ActionBar::Drawing,
                          [&window = m_window, nType] { window.SetDrawingTool(nType); },
                          {},
                          [&window = m_window, nType] { return window.GetDrawingTool() == nType; }});
        ++nType;
    }
}

void Rows::AddTools()
{
    MainWindow& window = m_window;
    AddDrawing();
    Separator(ActionMenu::Tools);
    m_rows.push_back({"resetLayout", ActionMenu::Tools,
                      QT_TRANSLATE_NOOP("Actions", "Put docks and toolbars &back"), "", ActionBar::None,
                      [&window] { window.ResetLayout(); }});
}

void Rows::AddHelp()
{
    MainWindow& window = m_window;
    m_rows.push_back({"help", ActionMenu::Help, QT_TRANSLATE_NOOP("Actions", "&Mouse and keys"), "F1",
                      ActionBar::Image, [&window] { ShowHelp(&window, window.Actions()); }});
    m_rows.push_back({"about", ActionMenu::Help, QT_TRANSLATE_NOOP("Actions", "&About the viewer"), "",
                      ActionBar::None, [&window] { ShowAbout(&window); }});
}

} // namespace

std::vector<ActionRow> ViewerActions(MainWindow& window) { return Rows(window).Take(); }

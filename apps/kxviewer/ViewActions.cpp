// SPDX-License-Identifier: Apache-2.0
#include "ActionRows.h"
#include "Appearance.h"
#include "ImageZoom.h"
#include "MainWindow.h"

#include <KxApi_GUI/IKxDrawingTool.h>

using namespace KxApi;

namespace
{

constexpr unsigned int kGridLines = 7;
constexpr double kArrowStep = 0.1; // of what is visible
constexpr double kPageStep = 0.9;

} // namespace

void ActionRows::AddZoomKey(const char* szId, const char* szText, const char* szKeys, double dPagesX,
                            double dPagesY)
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

void ActionRows::AddZoom()
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
}

void ActionRows::AddMarks()
{
    MainWindow& window = m_window;
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
}

void ActionRows::AddView()
{
    MainWindow& window = m_window;
    AddZoom();
    Separator(ActionMenu::View, ActionBar::Image);
    AddMarks();
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

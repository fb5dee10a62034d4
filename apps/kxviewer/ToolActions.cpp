// SPDX-License-Identifier: Apache-2.0
#include "ActionRows.h"
#include "HelpPage.h"
#include "MainWindow.h"

using namespace KxApi;

void ActionRows::AddDrawing()
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

void ActionRows::AddTools()
{
    MainWindow& window = m_window;
    AddDrawing();
    Separator(ActionMenu::Tools);
    m_rows.push_back({"resetLayout", ActionMenu::Tools,
                      QT_TRANSLATE_NOOP("Actions", "Put docks and toolbars &back"), "", ActionBar::None,
                      [&window] { window.ResetLayout(); }});
}

void ActionRows::AddHelp()
{
    MainWindow& window = m_window;
    m_rows.push_back({"help", ActionMenu::Help, QT_TRANSLATE_NOOP("Actions", "&Mouse and keys"), "F1",
                      ActionBar::Image, [&window] { ShowHelp(&window, window.Actions()); }});
    m_rows.push_back({"about", ActionMenu::Help, QT_TRANSLATE_NOOP("Actions", "&About the viewer"), "",
                      ActionBar::None, [&window] { ShowAbout(&window); }});
}

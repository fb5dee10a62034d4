// SPDX-License-Identifier: Apache-2.0
#include "ActionRows.h"
#include "DiagnosticArchive.h"
#include "FileDialog.h"
#include "HelpPage.h"
#include "MainWindow.h"
#include "SnapshotFile.h"

using namespace KxApi;

void ActionRows::AddDrawing()
{
    // The places are the numbers of the feature's entries.
    constexpr std::pair<const char*, const char*> kTools[] = {
        {"draw0", QT_TRANSLATE_NOOP("Actions", "&No tool: drag the image")},
        {"draw1", QT_TRANSLATE_NOOP("Actions", "&Select")},
        {"draw2", QT_TRANSLATE_NOOP("Actions", "&Line")},
        {"draw3", QT_TRANSLATE_NOOP("Actions", "&Rectangle")},
        {"draw4", QT_TRANSLATE_NOOP("Actions", "&Ellipse")},
        {"draw5", QT_TRANSLATE_NOOP("Actions", "&Text")},
        {"draw6", QT_TRANSLATE_NOOP("Actions", "&Angle")},
        {"draw7", QT_TRANSLATE_NOOP("Actions", "&Polygon")},
        {"draw8", QT_TRANSLATE_NOOP("Actions", "Perpen&dicular")},
        {"draw9", QT_TRANSLATE_NOOP("Actions", "Ar&c")},
        {"draw10", QT_TRANSLATE_NOOP("Actions", "Be&zier curve")},
        {"draw11", QT_TRANSLATE_NOOP("Actions", "&Freehand")},
        {"draw12", QT_TRANSLATE_NOOP("Actions", "Cr&oss")},
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
    auto* const pArchive = new DiagnosticArchive(DiagnosticArchive::Tool(), &window);
    constexpr const char* kNoArchive = QT_TRANSLATE_NOOP("Actions", "The diagnostic archive can't be made.");
    QObject::connect(pArchive, &DiagnosticArchive::Made, &window, [&window](const QString& strFile) {
        window.Tell(ActionText(QT_TRANSLATE_NOOP("Actions", "Saved %1")).arg(strFile));
    });
    QObject::connect(pArchive, &DiagnosticArchive::Failed, &window, [&window](const QString& strWhy) {
        window.Try(ActionText(kNoArchive),
                   [&] { throw RUNTIME_EXCEPTION("%s", strWhy.toUtf8().constData()); });
    });
    QObject::connect(pArchive, &DiagnosticArchive::Cancelled, &window, [&window] {
        window.Tell(ActionText(QT_TRANSLATE_NOOP("Actions", "No diagnostic archive was made")));
    });
    m_rows.push_back(
        {"diagnostics", ActionMenu::Help, QT_TRANSLATE_NOOP("Actions", "&Diagnostic archive..."), "",
         ActionBar::None,
         Try(kNoArchive,
             [&window, pArchive] {
                 const QString strFile =
                     ChooseFile(&window, FileChoice::Save,
                                ActionText(QT_TRANSLATE_NOOP("Actions", "Save diagnostic archive")),
                                "diagnostics", {ActionText(QT_TRANSLATE_NOOP("Actions", "Archives (*.zip)"))},
                                "kxviewer" + FileTime() + ".zip");
                 if (strFile.isEmpty())
                     return;
                 pArchive->Make(strFile, window.Area().Views());
             }),
         [pArchive] { return !pArchive->IsBusy(); }});
    m_rows.push_back({"about", ActionMenu::Help, QT_TRANSLATE_NOOP("Actions", "&About the viewer"), "",
                      ActionBar::None, [&window] { ShowAbout(&window); }});
}

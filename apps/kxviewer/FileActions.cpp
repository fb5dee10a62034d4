// SPDX-License-Identifier: Apache-2.0
#include "ActionRows.h"
#include "FileDialog.h"
#include "MainWindow.h"
#include "SnapshotFile.h"

using namespace KxApi;

void ActionRows::AddFile()
{
    MainWindow& window = m_window;
    m_rows.push_back({"snapshot", ActionMenu::File, QT_TRANSLATE_NOOP("Actions", "Save a s&napshot"),
                      "Ctrl+S; F12", ActionBar::Acquisition,
                      Try(QT_TRANSLATE_NOOP("Actions", "The image can't be saved."),
                          [&window] {
                              const QString strFile = SaveSnapshot(window.View());
                              window.Tell(ActionText(QT_TRANSLATE_NOOP("Actions", "Saved %1")).arg(strFile));
                          }),
                      m_hasImage});
    m_rows.push_back({"saveAs", ActionMenu::File, QT_TRANSLATE_NOOP("Actions", "Save image &as..."),
                      "Ctrl+Shift+S", ActionBar::None,
                      Try(QT_TRANSLATE_NOOP("Actions", "The image can't be saved."),
                          [&window] {
                              const QString strFile =
                                  ChooseFile(&window, FileChoice::Save,
                                             ActionText(QT_TRANSLATE_NOOP("Actions", "Save image")),
                                             "pictures", ImageFileFilters(), SnapshotName(window.View()));
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

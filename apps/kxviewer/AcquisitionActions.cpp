// SPDX-License-Identifier: Apache-2.0
#include "ActionRows.h"
#include "CameraCommands.h"
#include "MainWindow.h"

using namespace KxApi;

void ActionRows::AddAcquisition()
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

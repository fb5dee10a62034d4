// SPDX-License-Identifier: Apache-2.0
#include "ViewerActions.h"

#include "ActionRows.h"
#include "MainWindow.h"

#include <QCoreApplication>

QString ActionText(const char* szText) { return QCoreApplication::translate("Actions", szText); }

ActionRows::ActionRows(MainWindow& window)
    : m_window(window)
    , m_hasImage([&window] { return window.View().Window().HasImage(); })
    , m_hasCamera([&window] { return window.View().Session() != nullptr; })
{}

std::function<void()> ActionRows::Try(const char* szTried, std::function<void()> call) const
{
    return [&window = m_window, szTried, call = std::move(call)] { window.Try(ActionText(szTried), call); };
}

void ActionRows::Separator(ActionMenu eMenu, ActionBar eBar)
{
    ActionRow row;
    row.eMenu = eMenu;
    row.eBar = eBar;
    m_rows.push_back(row);
}

std::vector<ActionRow> ViewerActions(MainWindow& window)
{
    ActionRows rows(window);
    rows.AddCamera(); // in the order of the toolbars
    rows.AddAcquisition();
    rows.AddFile();
    rows.AddView();
    rows.AddTools();
    rows.AddHelp();
    return rows.Take();
}

// SPDX-License-Identifier: Apache-2.0
// What the user can do, as rows of a table from which menus, toolbars, keys and the help page are made.
#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <functional>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

enum class ActionMenu
{
    File,
    View,
    Camera,
    Acquisition,
    Tools,
    Help,
    Keys, ///< no menu: a key alone
};

enum class ActionBar
{
    None,
    Acquisition,
    Image,
    Drawing,
};

struct ActionRow
{
    const char* szId = nullptr; ///< null for a separator
    ActionMenu eMenu = ActionMenu::Keys;
    const char* szText = ""; ///< of the translations' context "Actions"
    const char* szKeys = ""; ///< portable names, parted by "; "
    ActionBar eBar = ActionBar::None;
    std::function<void()> call = {};
    std::function<bool()> isEnabled = {}; ///< none: always
    std::function<bool()> isChecked = {}; ///< none: it can't be checked
    const char* szImageKeys = "";         ///< further keys, for as long as an image has the focus
};

/// The actions of a main window. GUI thread.
class ActionTable : public QObject
{
public:
    /// Makes menus, toolbars and keys. Keys for the image work in the widget.
    ActionTable(QMainWindow& window, QWidget& image, std::vector<ActionRow> rows);

    /// Brings enabled and checked actions up to date.
    void Update();

    /// Gives an action that something else has made and keeps up to date a place in menu and toolbar (behind
    /// the action "behind"), keys, and a line in the help.
    void Adopt(QAction& action, ActionMenu eMenu, ActionBar eBar, const QString& strBehind,
               const char* szKeys);

    QAction* Find(const QString& strId) const { return m_actions.value(strId); }
    QMenu* Menu(ActionMenu eMenu) const { return m_menus[static_cast<size_t>(eMenu)]; }
    QToolBar* Bar(ActionBar eBar) const { return m_bars[static_cast<size_t>(eBar)]; }

    /// A page of the help: what each action does and its keys, as HTML.
    QString KeysAsHtml() const;

private:
    void MakeMenusAndBars(QMainWindow& window);
    void AddSeparator(const ActionRow& row);
    void Add(const ActionRow& row, QMainWindow& window, QWidget& image);

    const std::vector<ActionRow> m_rows;
    std::vector<QMenu*> m_menus;
    std::vector<QToolBar*> m_bars;
    QHash<QString, QAction*> m_actions;
    std::vector<QAction*> m_adopted;
};

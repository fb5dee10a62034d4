// SPDX-License-Identifier: Apache-2.0
#include "ActionTable.h"

#include "ActionIcons.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>

namespace
{

constexpr const char* kMenus[] = {
    QT_TRANSLATE_NOOP("Actions", "&File"),   QT_TRANSLATE_NOOP("Actions", "&View"),
    QT_TRANSLATE_NOOP("Actions", "&Camera"), QT_TRANSLATE_NOOP("Actions", "&Acquisition"),
    QT_TRANSLATE_NOOP("Actions", "&Tools"),  QT_TRANSLATE_NOOP("Actions", "&Help"),
};

struct BarRow
{
    const char* szName;
    const char* szTitle;
    Qt::ToolBarArea eArea;
};

constexpr BarRow kBars[] = {
    {"acquisition", QT_TRANSLATE_NOOP("Actions", "Acquisition"), Qt::TopToolBarArea},
    {"image", QT_TRANSLATE_NOOP("Actions", "Image"), Qt::TopToolBarArea},
    {"drawing", QT_TRANSLATE_NOOP("Actions", "Drawing"), Qt::LeftToolBarArea},
};

QString TranslatedAction(const char* szText) { return QCoreApplication::translate("Actions", szText); }

/// A menu's text without its mark for the key and without dots.
QString Plain(QString strText) { return strText.remove('&').remove("..."); }

/// None for an empty text, of which Qt makes a key without a name.
QList<QKeySequence> KeysFrom(const char* szKeys)
{
    return *szKeys ? QKeySequence::listFromString(szKeys) : QList<QKeySequence>();
}

QString KeysOf(const ActionRow& row)
{
    const auto keys = KeysFrom(row.szKeys) + KeysFrom(row.szImageKeys);
    return QKeySequence::listToString(keys, QKeySequence::NativeText);
}

} // namespace

ActionTable::ActionTable(QMainWindow& window, QWidget& image, std::vector<ActionRow> rows)
    : QObject(&window)
    , m_rows(std::move(rows))
{
    MakeMenusAndBars(window);
    for (const ActionRow& row : m_rows) {
        if (row.szId)
            Add(row, window, image);
        else
            AddSeparator(row);
    }
    Update();
}

void ActionTable::MakeMenusAndBars(QMainWindow& window)
{
    for (const char* const szTitle : kMenus)
        m_menus.push_back(window.menuBar()->addMenu(TranslatedAction(szTitle)));
    m_menus.push_back(nullptr); // Keys
    m_bars.push_back(nullptr);  // None
    for (const BarRow& row : kBars) {
        auto* const pBar = new QToolBar(TranslatedAction(row.szTitle), &window);
        pBar->setObjectName(row.szName);
        pBar->setAccessibleName(pBar->windowTitle());
        window.addToolBar(row.eArea, pBar);
        m_bars.push_back(pBar);
    }
}

void ActionTable::AddSeparator(const ActionRow& row)
{
    if (QMenu* const pMenu = Menu(row.eMenu))
        pMenu->addSeparator();
    if (QToolBar* const pBar = Bar(row.eBar))
        pBar->addSeparator();
}

void ActionTable::Add(const ActionRow& row, QMainWindow& window, QWidget& image)
{
    auto* const pAction = new QAction(MakeActionIcon(row.szId), TranslatedAction(row.szText), &window);
    pAction->setObjectName(row.szId);
    pAction->setShortcuts(KeysFrom(row.szKeys));
    pAction->setCheckable(static_cast<bool>(row.isChecked));
    const QString strKeys = KeysOf(row);
    const QString strPlain = Plain(pAction->text());
    pAction->setToolTip(strKeys.isEmpty() ? strPlain : QString("%1 (%2)").arg(strPlain, strKeys));
    window.addAction(pAction); // its keys work in full screen too, without a menu bar
    for (const QKeySequence& key : KeysFrom(row.szImageKeys))
        connect(new QShortcut(key, &image, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
                &QShortcut::activated, pAction, &QAction::trigger);
    connect(pAction, &QAction::triggered, this, [this, call = row.call] {
        call();
        Update();
    });
    if (QMenu* const pMenu = Menu(row.eMenu))
        pMenu->addAction(pAction);
    if (QToolBar* const pBar = Bar(row.eBar))
        pBar->addAction(pAction);
    m_actions.insert(row.szId, pAction);
}

void ActionTable::Adopt(QAction& action, ActionMenu eMenu, ActionBar eBar, const QString& strBehind,
                        const char* szKeys)
{
    const auto insert = [&](QWidget& list) {
        const auto actions = list.actions();
        list.insertAction(actions.value(actions.indexOf(Find(strBehind)) + 1), &action);
    };
    action.setIcon(MakeActionIcon(action.objectName().toLatin1().constData()));
    action.setShortcuts(KeysFrom(szKeys));
    insert(*Menu(eMenu));
    insert(*Bar(eBar));
    static_cast<QWidget*>(parent())->addAction(&action);
    m_adopted.push_back(&action);
}

void ActionTable::Update()
{
    for (const ActionRow& row : m_rows) {
        QAction* const pAction = row.szId ? Find(row.szId) : nullptr;
        if (!pAction)
            continue;
        pAction->setEnabled(!row.isEnabled || row.isEnabled());
        if (row.isChecked)
            pAction->setChecked(row.isChecked());
    }
}

QString ActionTable::KeysAsHtml() const
{
    QString strHtml = "<table cellspacing='6'>";
    const auto add = [&](const QString& strKeys, const QAction& action) {
        if (!strKeys.isEmpty())
            strHtml += QString("<tr><td><b>%1</b></td><td>%2</td></tr>")
                           .arg(strKeys.toHtmlEscaped(), Plain(action.text()).toHtmlEscaped());
    };
    for (const ActionRow& row : m_rows) {
        if (row.szId)
            add(KeysOf(row), *Find(row.szId));
    }
    for (const QAction* const pAction : m_adopted)
        add(QKeySequence::listToString(pAction->shortcuts(), QKeySequence::NativeText), *pAction);
    return strHtml + "</table>";
}

// SPDX-License-Identifier: Apache-2.0
#include "nodemap/DisplayNodeMapPartDlg_qt.h"

#include "frame/ConnectGuarded_qt.h"
#include "ui_DisplayNodeMapPartDlg_qt.h"

#include <Base/GCBadAlloc.h>

#include <QSignalBlocker>
#include <QTimerEvent>

namespace KxApi
{
namespace
{

constexpr int kPollingInterval = 1000; // ms

struct CLevelRow
{
    GenApi::EVisibility eVisibility;
    const char* szName;
    const char* szMenu;
};

constexpr CLevelRow kLevels[] = {
    {GenApi::Beginner, QT_TRANSLATE_NOOP("KxApi::CDisplayNodeMapPartDlg", "Beginner"),
     QT_TRANSLATE_NOOP("KxApi::CDisplayNodeMapPartDlg", "&Beginner")},
    {GenApi::Expert, QT_TRANSLATE_NOOP("KxApi::CDisplayNodeMapPartDlg", "Expert"),
     QT_TRANSLATE_NOOP("KxApi::CDisplayNodeMapPartDlg", "&Expert")},
    {GenApi::Guru, QT_TRANSLATE_NOOP("KxApi::CDisplayNodeMapPartDlg", "Guru"),
     QT_TRANSLATE_NOOP("KxApi::CDisplayNodeMapPartDlg", "&Guru")},
};

} // namespace

CDisplayNodeMapPartDlg::CDisplayNodeMapPartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bWithMenuBar)
    : CBaseDialogEx(pParent, pDlgParent)
    , m_pNodeMapDlgParent(dynamic_cast<ICDisplayNodeMapDlgParent*>(pDlgParent))
    , m_pUi(GenICam::GuardBadAlloc([] { return std::make_unique<Ui_CDisplayNodeMapPartDlg>(); }))
{
    GenICam::GuardBadAlloc([&] {
        m_pUi->setupUi(this);
        // Shares of the height, whatever that is; sizes would be widened to what the page takes at least.
        m_pUi->splitter->setStretchFactor(0, 90);
        m_pUi->splitter->setStretchFactor(1, 10);
        for (const CLevelRow& row : kLevels)
            m_pUi->cmbVisibility->addItem(tr(row.szName), static_cast<int>(row.eVisibility));
        m_pUi->nodeMapPropertyGridCtrl->SetICDisplayNodeMapDlgParent(m_pNodeMapDlgParent);
        BuildMenu();
        BuildBars({m_pUi->widgetMenu, m_pUi->layoutMenuBar, m_pUi->widgetStatus, m_pUi->layoutStatusBar},
                  bWithMenuBar);
        ConnectSignals();
        ConnectTools();
    });
}

CDisplayNodeMapPartDlg::~CDisplayNodeMapPartDlg()
{
    EndPart();
    StopPollingTimer();
    m_pUi->nodeMapPropertyGridCtrl->clearTree(nullptr);
}

IKxNodeMapDisplayWndInside& CDisplayNodeMapPartDlg::Window() const
{
    return *m_pNodeMapDlgParent->GetIKxNodeMapDisplayWndInside();
}

void CDisplayNodeMapPartDlg::BuildMenu()
{
    const auto add = [this](QMenu& menu, const QString& strText, bool bCheckable, const auto& call) {
        QAction* const pAction = menu.addAction(strText);
        pAction->setCheckable(bCheckable);
        ConnectGuarded(this, pAction, &QAction::triggered,
                       [call, pAction](bool bChecked) { call(*pAction, bChecked); });
        return pAction;
    };
    m_menuView.setTitle(tr("&View"));
    m_pActionAlphabetic = add(m_menuView, tr("&Alphabetic Mode"), true,
                              [this](QAction&, bool bChecked) { doSetAlphabeticMode(bChecked); });
    m_pActionExpand = add(m_menuView, tr("&Expand"), false, [this](QAction&, bool) { Window().Expand(); });
    m_pActionCollapse =
        add(m_menuView, tr("&Collapse"), false, [this](QAction&, bool) { Window().Collapse(); });
    add(m_menuView, tr("&Refresh"), false, [this](QAction&, bool) { Window().Refresh(); });
    m_pActionPolling = add(m_menuView, tr("&Polling"), true,
                           [this](QAction&, bool bChecked) { Window().SetEnablePolling(bChecked); });
    m_menuVisibility.setTitle(tr("&Visibility"));
    m_menuView.addMenu(&m_menuVisibility);
    for (const CLevelRow& row : kLevels)
        add(m_menuVisibility, tr(row.szMenu), true, [this](QAction& action, bool) {
            onSubmenuVisibility(action);
        })->setData(static_cast<int>(row.eVisibility));
    m_pActionDescription = add(m_menuView, tr("&Description"), true,
                               [this](QAction&, bool bChecked) { doSetDescriptionVisible(bChecked); });
    m_menuView.addSeparator();
    AddStatusBarAction(m_menuView);
    m_objMenuBar.addMenu(&m_menuView);
}

void CDisplayNodeMapPartDlg::ConnectSignals()
{
    using Dlg = CDisplayNodeMapPartDlg;
    ConnectGuarded(this, this, &Dlg::setWidgetVisibleSignal,
                   [this](int nTool, bool bVisible) { setWidgetVisible(nTool, bVisible); });
    ConnectGuarded(this, this, &Dlg::doSetVisibilitySignal, [this](int nLevel) { doSetVisibility(nLevel); });
    ConnectGuarded(this, this, &Dlg::doExpandSignal, [this] { doExpand(); });
    ConnectGuarded(this, this, &Dlg::doCollapseSignal, [this] { doCollapse(); });
    ConnectGuarded(this, this, &Dlg::doRefreshSignal, [this] { doRefresh(); });
    ConnectGuarded(this, this, &Dlg::doSetEnablePollingSignal, [this](bool b) { doSetEnablePolling(b); });
    ConnectGuarded(this, this, &Dlg::doSetAlphabeticModeSignal, [this](bool b) { doSetAlphabeticMode(b); });
    ConnectGuarded(this, this, &Dlg::doSetDescriptionVisibleSignal,
                   [this](bool b) { doSetDescriptionVisible(b); });
    ConnectGuarded(this, this, &Dlg::doSetFilterTextSignal,
                   [this](const QString& strText) { doSetFilterText(strText); });
    ConnectGuarded(this, this, &Dlg::doSetEnableFilterSignal, [this](bool b) { doSetEnableFilter(b); });
    ConnectGuarded(this, this, &Dlg::doSetEnableRegularExpressionSignal,
                   [this](bool b) { doSetEnableRegularExpression(b); });
}

void CDisplayNodeMapPartDlg::ConnectTools()
{
    const auto onClick = [this](QToolButton* pButton, const auto& call) {
        ConnectGuarded(this, pButton, &QToolButton::clicked, [call] { call(); });
    };
    onClick(m_pUi->tbtnAlphabeticTrue, [this] { Window().SetAlphabeticMode(true); });
    onClick(m_pUi->tbtnAlphabeticFalse, [this] { Window().SetAlphabeticMode(false); });
    onClick(m_pUi->tbtnExpandAllTrue, [this] { Window().Expand(); });
    onClick(m_pUi->tbtnExpandAllFalse, [this] { Window().Collapse(); });
    onClick(m_pUi->tbtnRefresh, [this] { Window().Refresh(); });

    const auto onCheck = [this](QCheckBox* pBox, const auto& call) {
        ConnectGuarded(this, pBox, &QCheckBox::clicked, [call](bool bChecked) { call(bChecked); });
    };
    onCheck(m_pUi->chkPolling, [this](bool bChecked) { Window().SetEnablePolling(bChecked); });
    onCheck(m_pUi->chkFilter, [this](bool bChecked) { Window().SetEnableFilter(bChecked); });
    onCheck(m_pUi->chkRegex, [this](bool bChecked) { Window().SetEnableRegularExpression(bChecked); });

    ConnectGuarded(this, m_pUi->cmbVisibility, QOverload<int>::of(&QComboBox::currentIndexChanged),
                   [this](int nIndex) {
                       const int nLevel = m_pUi->cmbVisibility->itemData(nIndex).toInt();
                       Window().SetVisibility(static_cast<GenApi::EVisibility>(nLevel));
                   });
    ConnectGuarded(this, m_pUi->txtFilter, &QLineEdit::textEdited,
                   [this](const QString& strText) { Window().SetFilterText(ToGcstring(strText)); });
    ConnectGuarded(this, m_pUi->nodeMapPropertyGridCtrl, &QTreeWidget::itemSelectionChanged,
                   [this] { ShowDescription(); });
}

void CDisplayNodeMapPartDlg::initDialog()
{
    IKxNodeMapDisplayWndInside& window = Window();
    doSetAlphabeticMode(window.GetAlphabeticMode());
    doSetVisibility(window.GetVisibility());
    ShowBars();
    doSetEnablePolling(window.GetEnablePolling());
    doSetEnableFilter(window.GetEnableFilter());
    setWidgetVisible(ToolAlphabetic, window.GetVisibleAlphabeticMode());
    setWidgetVisible(ToolExpand, window.GetVisibleExpand());
    setWidgetVisible(ToolCollapse, window.GetVisibleExpand()); // on purpose: one setting for both
    setWidgetVisible(ToolRefresh, window.GetVisibleRefresh());
    setWidgetVisible(ToolPolling, window.GetVisiblePolling());
    setWidgetVisible(ToolVisibility, window.GetVisibleVisibility());
    setWidgetVisible(ToolDescription, window.GetVisibleDescription());
    setWidgetVisible(ToolFilter, window.GetVisibleFilter());
    doRefresh();
}

void CDisplayNodeMapPartDlg::onClosed()
{
    StopPollingTimer();
    CNodeMapQtPropertyGridCtrl& grid = *m_pUi->nodeMapPropertyGridCtrl;
    const QSignalBlocker blocker(grid); // the page isn't made anew
    grid.hide();
    grid.clearSelection();
    grid.clearTree(nullptr);
    grid.clear();
}

void CDisplayNodeMapPartDlg::setWidgetVisible(int nTool, bool bVisible)
{
    const struct
    {
        int nTool;
        QWidget* pWidget;
    } rows[] = {
        {ToolAlphabetic, m_pUi->tbtnAlphabeticTrue},
        {ToolAlphabetic, m_pUi->tbtnAlphabeticFalse},
        {ToolExpand, m_pUi->tbtnExpandAllTrue},
        {ToolCollapse, m_pUi->tbtnExpandAllFalse},
        {ToolRefresh, m_pUi->tbtnRefresh},
        {ToolPolling, m_pUi->chkPolling},
        {ToolVisibility, m_pUi->labelVisibility},
        {ToolVisibility, m_pUi->cmbVisibility},
        {ToolFilter, m_pUi->chkFilter},
        {ToolFilter, m_pUi->chkRegex},
        {ToolFilter, m_pUi->txtFilter},
    };
    for (const auto& row : rows) {
        if (row.nTool == nTool)
            row.pWidget->setVisible(bVisible);
    }
    if (nTool == ToolDescription) {
        m_pActionDescription->setChecked(bVisible);
        ShowDescription();
    }
}

void CDisplayNodeMapPartDlg::ShowDescription()
{
    m_pUi->nodeMapPropertyGridCtrl->EnableDescriptionAreaAndUpdateDisplay(Window().GetVisibleDescription(),
                                                                          m_pUi->txtDescription);
}

void CDisplayNodeMapPartDlg::doSetVisibility(int nVisibility)
{
    m_pUi->cmbVisibility->setCurrentIndex(m_pUi->cmbVisibility->findData(nVisibility));
    const bool bKnown = nVisibility == GenApi::Expert || nVisibility == GenApi::Guru;
    for (QAction* const pAction : m_menuVisibility.actions())
        pAction->setChecked(pAction->data().toInt() == (bKnown ? nVisibility : GenApi::Beginner));
    m_pUi->nodeMapPropertyGridCtrl->OnVisibilityChanged();
}

void CDisplayNodeMapPartDlg::onSubmenuVisibility(QAction& action)
{
    for (QAction* const pAction : m_menuVisibility.actions())
        pAction->setChecked(pAction == &action);
    Window().SetVisibility(static_cast<GenApi::EVisibility>(action.data().toInt()));
}

void CDisplayNodeMapPartDlg::doSetAlphabeticMode(bool bAlphabetic)
{
    CNodeMapQtPropertyGridCtrl& grid = *m_pUi->nodeMapPropertyGridCtrl;
    m_pActionAlphabetic->setChecked(bAlphabetic);
    m_pActionExpand->setEnabled(!bAlphabetic);
    m_pActionCollapse->setEnabled(!bAlphabetic);
    m_pUi->tbtnExpandAllTrue->setEnabled(!bAlphabetic);
    m_pUi->tbtnExpandAllFalse->setEnabled(!bAlphabetic);
    if (grid.IsCategoryTree() != bAlphabetic)
        return;
    grid.SetCategoryTree(!bAlphabetic);
    grid.SetSorted(bAlphabetic);
    if (grid.isVisible())
        grid.AddAllNode();
}

void CDisplayNodeMapPartDlg::doSetDescriptionVisible(bool bVisible)
{
    Window().SetVisibleDescription(bVisible);
}

void CDisplayNodeMapPartDlg::doExpand() { m_pUi->nodeMapPropertyGridCtrl->expandAll(); }
void CDisplayNodeMapPartDlg::doCollapse() { m_pUi->nodeMapPropertyGridCtrl->collapseAll(); }
void CDisplayNodeMapPartDlg::doRefresh() { m_pUi->nodeMapPropertyGridCtrl->RefreshAll(nullptr); }

void CDisplayNodeMapPartDlg::doSetFilterText(const QString& strText)
{
    if (m_pUi->txtFilter->text() != strText) // the cursor stays where the user types
        m_pUi->txtFilter->setText(strText);
    m_pUi->nodeMapPropertyGridCtrl->setFilterTextValue(strText);
}

void CDisplayNodeMapPartDlg::doSetEnableFilter(bool bEnable)
{
    m_pUi->chkRegex->setEnabled(bEnable);
    m_pUi->txtFilter->setEnabled(bEnable);
    m_pUi->chkFilter->setChecked(bEnable);
    m_pUi->nodeMapPropertyGridCtrl->setFilterEnableFilter(bEnable);
}

void CDisplayNodeMapPartDlg::doSetEnableRegularExpression(bool bEnable)
{
    m_pUi->chkRegex->setChecked(bEnable);
    m_pUi->nodeMapPropertyGridCtrl->setFilterEnableRegex(bEnable);
}

void CDisplayNodeMapPartDlg::doSetEnablePolling(bool bEnable)
{
    m_pActionPolling->setChecked(bEnable);
    m_pUi->chkPolling->setChecked(bEnable);
    if (bEnable)
        StartPollingTimer();
    else
        StopPollingTimer();
}

void CDisplayNodeMapPartDlg::StartPollingTimer()
{
    StopPollingTimer();
    m_nPollingTimer = startTimer(kPollingInterval, Qt::CoarseTimer);
}

void CDisplayNodeMapPartDlg::StopPollingTimer()
{
    if (m_nPollingTimer != 0)
        killTimer(std::exchange(m_nPollingTimer, 0));
}

void CDisplayNodeMapPartDlg::timerEvent(QTimerEvent* pEvent)
{
    if (m_nPollingTimer == 0 || m_nPollingTimer != pEvent->timerId())
        CBaseDialogEx::timerEvent(pEvent);
    else
        Guarded([this] { Poll(); });
}

void CDisplayNodeMapPartDlg::Poll()
{
    const CNodeMapQtPropertyGridCtrl::CBatch batch(*m_pUi->nodeMapPropertyGridCtrl);
    for (const CNodeInfo& info : m_pNodeMapDlgParent->CopyNodeInfo()) {
        if (info.pNode)
            GenApi::CNodeMapPtr(info.pNode->GetNodeMap())->Poll(kPollingInterval);
    }
    m_pUi->nodeMapPropertyGridCtrl->RefreshSelfClearingNode();
}

} // namespace KxApi

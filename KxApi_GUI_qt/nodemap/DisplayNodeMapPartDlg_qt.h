// SPDX-License-Identifier: Apache-2.0
// The dialog of the node-map window.
#pragma once

#include "frame/BaseDialog_qt.h"
#include "nodemap/ICDisplayNodeMapDlgParent.h"

#include <QString>
#include <memory>

class QAction;
class QTimerEvent;
class Ui_CDisplayNodeMapPartDlg;

namespace KxApi
{

/// Tools, the grid, and below it the page about the chosen row. GUI thread.
///
/// What the user does with a tool goes to the window as a setting, and comes back by a signal.
class CDisplayNodeMapPartDlg final : public CBaseDialogEx
{
    Q_OBJECT

public:
    /// What setWidgetVisible shows or hides.
    enum ETool : int
    {
        ToolAlphabetic = 1,
        ToolExpand = 2,
        ToolCollapse = 3,
        ToolRefresh = 4,
        ToolPolling = 5,
        ToolVisibility = 6,
        ToolDescription = 7, ///< the page, which is made anew
        ToolFilter = 8,
    };

    /// @param pDlgParent an ICDisplayNodeMapDlgParent, which outlives the dialog. Raises BadAllocException.
    CDisplayNodeMapPartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bWithMenuBar);
    ~CDisplayNodeMapPartDlg() override;

signals:
    void setWidgetVisibleSignal(int itemWidget, bool isVisible);
    void doSetVisibilitySignal(int eVisibility);
    void doExpandSignal();
    void doCollapseSignal();
    void doRefreshSignal();
    void doSetEnablePollingSignal(bool value);
    void doSetAlphabeticModeSignal(bool value);
    void doSetDescriptionVisibleSignal(bool value);
    void onSubmenuVisibilitySignal(bool value);
    void doSetFilterTextSignal(QString& str_value);
    void doSetEnableFilterSignal(bool value);
    void doSetEnableRegularExpressionSignal(bool value);

protected:
    void initDialog() override;
    void onClosed() override;
    void timerEvent(QTimerEvent* pEvent) override;

private:
    void BuildMenu();
    void ConnectTools();
    void ConnectSignals();

    // These follow the signals of their names.
    void setWidgetVisible(int nTool, bool bVisible);
    void doSetVisibility(int nVisibility);
    void doExpand();
    void doCollapse();
    void doRefresh();
    void doSetEnablePolling(bool bEnable);
    void doSetAlphabeticMode(bool bAlphabetic);
    void doSetDescriptionVisible(bool bVisible);
    void onSubmenuVisibility(QAction& action);
    void doSetFilterText(const QString& strText);
    void doSetEnableFilter(bool bEnable);
    void doSetEnableRegularExpression(bool bEnable);

    void ShowDescription();
    void StartPollingTimer();
    void StopPollingTimer();
    void Poll();
    IKxNodeMapDisplayWndInside& Window() const;

    ICDisplayNodeMapDlgParent* const m_pNodeMapDlgParent;
    int m_nPollingTimer = 0; // 0 for none
    std::unique_ptr<Ui_CDisplayNodeMapPartDlg> m_pUi;
    QMenu m_menuView;
    QMenu m_menuVisibility;
    QAction* m_pActionAlphabetic = nullptr;
    QAction* m_pActionExpand = nullptr;
    QAction* m_pActionCollapse = nullptr;
    QAction* m_pActionPolling = nullptr;
    QAction* m_pActionDescription = nullptr;
};

} // namespace KxApi

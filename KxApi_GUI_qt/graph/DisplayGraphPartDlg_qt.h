// SPDX-License-Identifier: Apache-2.0
// What is on the screen of a graph window.
#pragma once

#include "frame/BaseDialog_qt.h"
#include "graph/IDisplayGraphWidgetParent.h"

#include <GenApi/Synch.h>

#include <QMenu>
#include <memory>

class Ui_CDisplayGraphPartDlg;

namespace KxApi
{

struct IKxGraphDisplayWndInside;

/// The plot with its scroll bars, menus, context menu and status bar. GUI thread.
class CDisplayGraphPartDlg final : public CBaseDialogEx, public IDisplayGraphWidgetParent
{
    Q_OBJECT

public:
    /// @param pDlgParent the window, which has the form ICDisplayGraphDlgParent and outlives the dialog.
    /// Raises BadAllocException.
    CDisplayGraphPartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bCreateMenuBar);
    CDisplayGraphPartDlg(const CDisplayGraphPartDlg&) = delete;
    CDisplayGraphPartDlg& operator=(const CDisplayGraphPartDlg&) = delete;
    ~CDisplayGraphPartDlg() override;

    /// There are new data.
    void OnUpdateGraphData();
    /// Shows changed settings: the widget gets the size that they ask for, and is painted.
    void OnUpdateDrawSetting();
    void OnRefreshIntervalUpdated();
    /// In force with the next OnUpdateDrawSetting.
    void setTranslucent(bool bTranslucent) { m_bTranslucentRequested = bTranslucent; }

    void setScrollBarH(int nPosition);
    void setScrollBarV(int nPosition);

    ICDisplayGraphDlgParent* GetICDisplayGraphDlgParent() const override;

protected:
    void initDialog() override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    IKxGraphDisplayWndInside* Window() const;
    void BuildMenus(bool bCreateMenuBar);
    void ConnectScrollArea();
    void doShowContextMenu(const QPoint& pos);
    void doCopyToClipboard();
    void doSaveImage();
    void doSaveGraph();
    void doNotifyScrollChanges();
    void NoteScrollState();
    QSize RoomForPlot() const;

    const std::unique_ptr<Ui_CDisplayGraphPartDlg> m_pUi;
    QMenu m_objContextMenu{this};
    QMenu m_objMenuSave{this};
    QString m_strLastImageFolder;
    QString m_strLastGraphFolder;
    bool m_bTranslucentApplied = false;
    bool m_bTranslucentRequested = false;
};

} // namespace KxApi

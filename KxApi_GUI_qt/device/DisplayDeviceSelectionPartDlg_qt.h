// SPDX-License-Identifier: Apache-2.0
// The dialog of the device selection window.
#pragma once

#include "device/DeviceInfoRows_qt.h"
#include "device/DeviceList_qt.h"
#include "frame/BaseDialog_qt.h"

#include <Base/GCException.h>
#include <GenApi/Synch.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <memory>

class QTableWidget;
class QTreeWidgetItem;
class Ui_CDisplayDeviceSelectionPartDlg;

namespace KxApi
{

class CInterfaceDlg;
class CWorkerDeviceDetection;
struct ICDisplayDeviceSelectionDlgParent;

/// A tree of systems, interfaces and devices, tables of facts about what is selected in it, and buttons. A
/// worker looks for changes from the first show until the dialog is destroyed, since the closing may still be
/// refused. GUI thread, but for doUpdate and doTellFailure.
///
/// While one of the two dialogs for an interface's settings is open, the worker rests, and a close waits for
/// its end.
class CDisplayDeviceSelectionPartDlg final : public CBaseDialogEx
{
    Q_OBJECT

public:
    /// @param pDlgParent an ICDisplayDeviceSelectionDlgParent, which outlives the dialog. Raises
    /// BadAllocException.
    CDisplayDeviceSelectionPartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bWithMenuBar);
    ~CDisplayDeviceSelectionPartDlg() override KXGC_NO_THREAD_SAFETY_ANALYSIS;

    QMenuBar* getMenu() override;

    /// Something changed: the tree is brought up to date when the GUI thread comes to it. Any thread.
    void doUpdate();
    /// The search for changes has failed, which becomes the window's error event. Any thread.
    void doTellFailure(const GenICam::GenericException& e);

    /// Whether devices are listed that can't be accessed.
    void setShowAllDevice(bool bShow);

signals:
    void onUpdateDeviceListSignal();

public slots:
    void setStatusBarVisible(bool value) override;

protected:
    void showEvent(QShowEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;

private slots:
    void onUpdateDeviceList();
    void onAccessibleToggled(bool checked);
    void onShowStatusBarToggled(bool checked);
    void on_treeDevice_itemSelectionChanged();
    void on_btnSetIP_clicked();
    void on_btnOK_clicked();
    void on_btnCancel_clicked();
    void on_treeDevice_itemDoubleClicked(QTreeWidgetItem* pItem, int nColumn);
    void on_chkShowAllDevices_toggled(bool checked);
    void on_btnDeviceDiscovery_clicked();

private:
    ICDisplayDeviceSelectionDlgParent& Parent() const;
    void CreateMenu();
    void ApplySettings();
    void StartWorker();

    void UpdateDisplayDeviceTree();
    void ShowDeviceList(CDeviceList list);
    void BuildTree();
    void ClearDeviceList();
    void SelectRow(CDeviceListItemData* pRow);

    void UpdateDisplayInfo();
    // These take null for nothing.
    void UpdateDisplaySystemInfo(IKxSystem* pSystem);
    void UpdateDisplayInterfaceInfo(IKxInterface* pInterface);
    void UpdateDisplayDeviceInfo(const CDeviceListItemData* pRow);

    void UpdateData(bool bSave);
    /// Runs the dialog of a button, unless the update before it disables that.
    void RunInterfaceDlg(CInterfaceDlg& dialog, const QWidget& button) KXGC_NO_THREAD_SAFETY_ANALYSIS;

    CDeviceList m_vecItemData;
    CDeviceListItemData* m_pSelected = nullptr; // one of these; null for none
    std::unique_ptr<CWorkerDeviceDetection> m_pWorker;
    // Held by the worker while it calls the systems, and while a dialog for an interface is open. What may be
    // taken with it held: the locks of systems and node maps.
    GenApi::CLock m_objLock;
    CInterfaceDlg* m_pInterfaceDlg = nullptr; // the one that is open
    // Put off until it isn't open any more.
    bool m_bCloseWanted = false;
    bool m_bUpdateWanted = false;

    // What the tables show.
    CInfoRows m_vecSystemRows;
    CInfoRows m_vecInterfaceRows;
    CInfoRows m_vecDeviceRows;

    std::unique_ptr<Ui_CDisplayDeviceSelectionPartDlg> m_pUi;
    QMenuBar m_objMenuBar;
    QMenu m_menuView;
    QAction m_actAccessible;
    QAction m_actStatusBar;
};

} // namespace KxApi

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
#include <QTimer>
#include <map>
#include <memory>
#include <utility>

class QPushButton;
class QTableWidget;
class QTreeWidgetItem;
class Ui_CDisplayDeviceSelectionPartDlg;

namespace KxApi
{

class CDeviceSearch;
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

    /// Something changed: the tree is brought up to date when the GUI thread comes to it. Any thread.
    void doUpdate();
    /// A producer that was busy can be asked now: the tables are brought up to date likewise. Any thread.
    void doUpdateFacts();
    /// The search for changes has failed, which becomes the window's error event. Any thread.
    void doTellFailure(const GenICam::GenericException& e);

    /// Whether devices are listed that can't be accessed.
    void setShowAllDevice(bool bShow);

signals:
    void onUpdateDeviceListSignal();

protected:
    void initDialog() override;
    void closeEvent(QCloseEvent* pEvent) override;

private slots:
    void onUpdateDeviceList();
    void onAccessibleToggled(bool checked);
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
    void StartWorker();

    void UpdateDisplayDeviceTree();
    void ShowDeviceList(CDeviceList list);
    void BuildTree();
    void ClearDeviceList();
    void SelectRow(CDeviceListItemData* pRow);

    void UpdateDisplayInfo();
    // These take null for nothing.
    void UpdateDisplaySystemInfo(IKxSystem* pSystem);
    void UpdateDisplayInterfaceInfo(const CDeviceListItemData* pRow);
    void UpdateDisplayDeviceInfo(const CDeviceListItemData* pRow);

    void UpdateData(bool bSave);
    /// The facts of a row's interface, or of its device: as asked now, or while the producer is busy with a
    /// search, as they were the last time.
    template <class Ask>
    const CGevFacts& FactsOf(const CDeviceListItemData& row, const GenICam::gcstring& strID, Ask ask);

    /// Runs the dialog of a button, once no search is under way; the search is asked to hurry.
    void RunInterfaceDlg(QPushButton& button);
    /// With the search's lock held; gives it back. Nothing when the update before it disables the button.
    void RunInterfaceDlgLocked(CInterfaceDlg& dialog, const QWidget& button) KXGC_NO_THREAD_SAFETY_ANALYSIS;
    void TryInterfaceDlg() KXGC_NO_THREAD_SAFETY_ANALYSIS;
    void ForgetWantedDlg();

    CDeviceList m_vecItemData;
    CDeviceListItemData* m_pSelected = nullptr; // one of these; null for none
    std::shared_ptr<CDeviceSearch> m_pSearch;   // with the worker, from the first show on
    std::unique_ptr<CWorkerDeviceDetection> m_pWorker;
    // By interface and ID of the device, which is empty for the interface itself.
    std::map<std::pair<const IKxInterface*, GenICam::gcstring>, CGevFacts> m_mapFacts;
    CInterfaceDlg* m_pInterfaceDlg = nullptr; // the one that is open
    QPushButton* m_pWantedDlg = nullptr;      // whose dialog opens when the round under way has ended
    QTimer m_objTimerWantedDlg;
    // Put off until it isn't open any more.
    bool m_bCloseWanted = false;
    bool m_bUpdateWanted = false;

    // What the tables show.
    CInfoRows m_vecSystemRows;
    CInfoRows m_vecInterfaceRows;
    CInfoRows m_vecDeviceRows;

    std::unique_ptr<Ui_CDisplayDeviceSelectionPartDlg> m_pUi;
    QMenu m_menuView;
    QAction m_actAccessible;
};

} // namespace KxApi

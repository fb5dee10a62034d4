// SPDX-License-Identifier: Apache-2.0
#include "device/DisplayDeviceSelectionPartDlg_qt.h"

#include "device/DeviceDiscoveryCommandOptionDlg_qt.h"
#include "device/DisplayDeviceSelectionForceIPDlg_qt.h"
#include "device/ICDisplayDeviceSelectionDlgParent.h"
#include "device/WorkerDeviceDetection_qt.h"
#include "ui_DisplayDeviceSelectionPartDlg_qt.h"

#include <Base/GCBadAlloc.h>
#include <KxApi_TL/IKxInterface.h>

#include <QCloseEvent>
#include <QPixmap>
#include <QPointer>
#include <QScrollBar>
#include <QSignalBlocker>
#include <map>
#include <utility>

namespace KxApi
{
namespace
{

constexpr int kRetryMs = 20; // how soon a dialog that waits for the search opens after it

void InitListCtrl(QTableWidget& table)
{
    table.setColumnCount(2);
    table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table.horizontalHeader()->hide();
    table.verticalHeader()->hide();
    // The colours of the facts are made for a light ground, whatever the user's palette.
    QPalette light = table.palette();
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::AlternateBase, QColor(247, 247, 247));
    light.setColor(QPalette::Text, Qt::black);
    table.setPalette(light);
    // Long values take several lines, and the others no more than they need.
    table.verticalHeader()->setMinimumSectionSize(table.fontMetrics().height() + 2);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

/// Of a text that may not fit. It may look like markup, which it isn't.
QString ToToolTip(const QString& strText)
{
    return QStringLiteral("<qt>%1</qt>").arg(strText.toHtmlEscaped());
}

void AddItemToListCtrl(QTableWidget& table, const CInfoRow& row)
{
    const int nRow = table.rowCount();
    table.insertRow(nRow);
    const auto add = [&](int nColumn, const QString& strText, Qt::GlobalColor eColor) {
        auto* const pItem = new QTableWidgetItem(strText);
        pItem->setFlags(pItem->flags() & ~Qt::ItemIsEditable);
        pItem->setForeground(QBrush(eColor));
        pItem->setToolTip(ToToolTip(strText));
        table.setItem(nRow, nColumn, pItem);
    };
    add(0, row.strName, Qt::black);
    add(1, row.strValue, row.eColor);
}

/// Shows rows in place of those that are shown; the same ones again cost nothing, and don't flicker.
void ShowRows(QTableWidget& table, CInfoRows& vecShown, CInfoRows vecRows)
{
    if (vecRows == vecShown)
        return;
    vecShown = std::move(vecRows);
    table.setUpdatesEnabled(false);
    table.clearContents();
    table.setRowCount(0);
    for (const CInfoRow& row : vecShown)
        AddItemToListCtrl(table, row);
    table.setUpdatesEnabled(true);
}

QVariant ToVariant(CDeviceListItemData* pRow) { return QVariant::fromValue(static_cast<void*>(pRow)); }

CDeviceListItemData* RowOf(const QTreeWidgetItem& item)
{
    return static_cast<CDeviceListItemData*>(item.data(0, Qt::UserRole).value<void*>());
}

} // namespace

CDisplayDeviceSelectionPartDlg::CDisplayDeviceSelectionPartDlg(QWidget* pParent, IDlgParent* pDlgParent,
                                                               bool bWithMenuBar)
    : CBaseDialogEx(pParent, pDlgParent)
    , m_pUi(GenICam::GuardBadAlloc([] { return std::make_unique<Ui_CDisplayDeviceSelectionPartDlg>(); }))
{
    GenICam::GuardBadAlloc([&] {
        m_pUi->setupUi(this);
        BuildBars({m_pUi->widgetMenu, m_pUi->layoutMenuBar, m_pUi->widgetStatus, m_pUi->layoutStatusBar},
                  bWithMenuBar);
        for (QTableWidget* const pTable : {m_pUi->tableSystem, m_pUi->tableInterface, m_pUi->tableDevice})
            InitListCtrl(*pTable);
        CreateMenu();
        for (QPushButton* const pButton : {m_pUi->btnSetIP, m_pUi->btnDeviceDiscovery, m_pUi->btnOK})
            pButton->setEnabled(false);
        connect(this, &CDisplayDeviceSelectionPartDlg::onUpdateDeviceListSignal, this,
                &CDisplayDeviceSelectionPartDlg::onUpdateDeviceList);
        connect(&m_objTimerWantedDlg, &QTimer::timeout, this,
                [this] { Guarded([this] { TryInterfaceDlg(); }); });
    });
}

CDisplayDeviceSelectionPartDlg::~CDisplayDeviceSelectionPartDlg()
{
    EndPart();
    if (m_pSearch)
        m_pSearch->Detach();
    if (m_pInterfaceDlg) {
        // The parent widget went while that dialog was open: the worker may wait for the lock.
        m_pInterfaceDlg->reject();
        m_pSearch->m_objLock.Unlock();
    }
    CWorkerDeviceDetection::EndSoon(std::move(m_pWorker));
    ClearDeviceList();
}

ICDisplayDeviceSelectionDlgParent& CDisplayDeviceSelectionPartDlg::Parent() const
{
    return dynamic_cast<ICDisplayDeviceSelectionDlgParent&>(*m_pDlgParent);
}

void CDisplayDeviceSelectionPartDlg::CreateMenu()
{
    m_menuView.setTitle(tr("&View"));
    m_actAccessible.setText(tr("Show not &accessible devices"));
    m_actAccessible.setCheckable(true);
    m_menuView.addAction(&m_actAccessible);
    AddStatusBarAction(m_menuView);
    m_objMenuBar.addMenu(&m_menuView);
    connect(&m_actAccessible, &QAction::toggled, this, &CDisplayDeviceSelectionPartDlg::onAccessibleToggled);
}

void CDisplayDeviceSelectionPartDlg::doUpdate() { emit onUpdateDeviceListSignal(); }

void CDisplayDeviceSelectionPartDlg::doUpdateFacts()
{
    Post([this] { UpdateDisplayInfo(); });
}

void CDisplayDeviceSelectionPartDlg::doTellFailure(const GenICam::GenericException& e)
{
    Post([this, e] { m_pDlgParent->OnException(e); });
}

void CDisplayDeviceSelectionPartDlg::setShowAllDevice(bool bShow) { onAccessibleToggled(bShow); }

void CDisplayDeviceSelectionPartDlg::initDialog()
{
    UpdateDisplayDeviceTree();
    ShowBars();
    StartWorker();
}

void CDisplayDeviceSelectionPartDlg::StartWorker()
{
    if (m_pWorker)
        return;
    std::vector<IKxSystem*> vecSystems;
    Parent().GetSystems(vecSystems);
    m_pSearch = std::make_shared<CDeviceSearch>(this, vecSystems);
    m_pWorker = std::make_unique<CWorkerDeviceDetection>(m_pSearch);
    m_pWorker->Start();
}

void CDisplayDeviceSelectionPartDlg::closeEvent(QCloseEvent* pEvent)
{
    if (!m_pInterfaceDlg) {
        CBaseDialogEx::closeEvent(pEvent);
        return;
    }
    // This dialog's own code is on the stack below the open one.
    m_bCloseWanted = true;
    m_pInterfaceDlg->reject();
    pEvent->ignore();
}

void CDisplayDeviceSelectionPartDlg::UpdateDisplayDeviceTree()
{
    std::vector<IKxSystem*> vecSystems;
    Parent().GetSystems(vecSystems);
    ShowDeviceList(ListDevices(vecSystems, m_pUi->chkShowAllDevices->isChecked()));
    UpdateDisplayInfo();
}

void CDisplayDeviceSelectionPartDlg::ShowDeviceList(CDeviceList list)
{
    // What the slot of a changed selection does is done at the end for all.
    const QSignalBlocker blocker(m_pUi->treeDevice);
    if (AreSameRows(list, m_vecItemData)) {
        SelectRow(m_pSelected);
        return;
    }
    const CDeviceListItemData selected = m_pSelected ? *m_pSelected : CDeviceListItemData();
    QScrollBar& scrollBar = *m_pUi->treeDevice->verticalScrollBar();
    const int nScrolled = scrollBar.value();
    m_pUi->treeDevice->setUpdatesEnabled(false);
    ClearDeviceList();
    m_vecItemData = std::move(list);
    BuildTree();
    for (const auto& pRow : m_vecItemData) {
        if (pRow->IsSameThing(selected)) {
            SelectRow(pRow.get());
            break;
        }
    }
    scrollBar.setValue(nScrolled);
    m_pUi->treeDevice->setUpdatesEnabled(true);
}

void CDisplayDeviceSelectionPartDlg::BuildTree()
{
    // Rows of a kind share their icon, which is then read once. Dialogs share its pixmap, and what Qt keeps
    // scaled of it: an icon of the file would be another one for each of them.
    std::map<const char*, QIcon> mapIcons;
    const auto iconOf = [&](const char* szIcon) {
        const auto found = mapIcons.find(szIcon);
        return found != mapIcons.end()
                   ? found->second
                   : mapIcons.emplace(szIcon, QIcon(QPixmap(QString::fromLatin1(szIcon)))).first->second;
    };
    QList<QTreeWidgetItem*> listSystems;
    QTreeWidgetItem* pInterfaceItem = nullptr;
    for (const auto& pRow : m_vecItemData) {
        pRow->pItem = new QTreeWidgetItem;
        pRow->pItem->setText(0, pRow->strText);
        pRow->pItem->setToolTip(0, ToToolTip(pRow->strText));
        if (pRow->szIcon)
            pRow->pItem->setIcon(0, iconOf(pRow->szIcon));
        pRow->pItem->setData(0, Qt::UserRole, ToVariant(pRow.get()));
        // A device stands behind its interface.
        if (pRow->IsDevice() && pInterfaceItem)
            pInterfaceItem->addChild(pRow->pItem);
        else if (pRow->pInterface)
            listSystems.back()->addChild(pInterfaceItem = pRow->pItem);
        else
            listSystems.append(pRow->pItem);
    }
    m_pUi->treeDevice->addTopLevelItems(listSystems);
    m_pUi->treeDevice->expandAll();
}

void CDisplayDeviceSelectionPartDlg::ClearDeviceList()
{
    m_pSelected = nullptr;
    m_vecItemData.clear();
    const QSignalBlocker blocker(m_pUi->treeDevice);
    m_pUi->treeDevice->clear();
}

void CDisplayDeviceSelectionPartDlg::SelectRow(CDeviceListItemData* pRow)
{
    m_pSelected = pRow;
    if (pRow && !pRow->pItem->isSelected())
        m_pUi->treeDevice->setCurrentItem(pRow->pItem);
}

void CDisplayDeviceSelectionPartDlg::UpdateDisplayInfo()
{
    UpdateDisplaySystemInfo(m_pSelected ? m_pSelected->pSystem : nullptr);
    UpdateDisplayInterfaceInfo(m_pSelected);
    UpdateDisplayDeviceInfo(m_pSelected);
}

template <class Ask>
const CGevFacts& CDisplayDeviceSelectionPartDlg::FactsOf(const CDeviceListItemData& row,
                                                         const GenICam::gcstring& strID, Ask ask)
{
    CGevFacts& facts = m_mapFacts[{row.pInterface, strID}];
    const auto update = [&] { facts = ask(); };
    if (m_pSearch)
        m_pSearch->AskProducer(row.pSystem, update);
    else
        update();
    return facts;
}

void CDisplayDeviceSelectionPartDlg::UpdateDisplaySystemInfo(IKxSystem* pSystem)
{
    CInfoRows vecRows;
    Guarded([&] {
        if (pSystem)
            vecRows = ViewSystem(*pSystem);
    });
    ShowRows(*m_pUi->tableSystem, m_vecSystemRows, std::move(vecRows));
}

void CDisplayDeviceSelectionPartDlg::UpdateDisplayInterfaceInfo(const CDeviceListItemData* pRow)
{
    CInterfaceView view;
    Guarded([&] {
        if (pRow && pRow->pInterface)
            view = ViewInterface(*pRow->pInterface,
                                 FactsOf(*pRow, {}, [&] { return AskInterface(*pRow->pInterface); }));
    });
    ShowRows(*m_pUi->tableInterface, m_vecInterfaceRows, std::move(view.rows));
    m_pUi->btnDeviceDiscovery->setEnabled(view.bDiscovery);
}

void CDisplayDeviceSelectionPartDlg::UpdateDisplayDeviceInfo(const CDeviceListItemData* pRow)
{
    CDeviceView view;
    Guarded([&] {
        const std::optional<uint32_t> nIndex = pRow ? FindDevice(*pRow) : std::nullopt;
        if (nIndex)
            view = ViewDevice(*pRow->pInterface, *nIndex, FactsOf(*pRow, pRow->strID, [&] {
                return AskDevice(*pRow->pInterface, *nIndex);
            }));
    });
    ShowRows(*m_pUi->tableDevice, m_vecDeviceRows, std::move(view.rows));
    m_pUi->btnSetIP->setEnabled(view.bForceIP);
    m_pUi->btnOK->setEnabled(view.bSelectable);
}

void CDisplayDeviceSelectionPartDlg::UpdateData(bool bSave)
{
    IKxInterface* pInterface = nullptr;
    const IKxDeviceInfo* pDeviceInfo = nullptr;
    if (bSave && m_pSelected) {
        pInterface = m_pSelected->pInterface;
        if (const std::optional<uint32_t> nIndex = FindDevice(*m_pSelected))
            pDeviceInfo = pInterface->GetIKxDeviceInfo(*nIndex);
    }
    Parent().SetSelectedDeviceInfo(pInterface, pDeviceInfo);
}

void CDisplayDeviceSelectionPartDlg::RunInterfaceDlg(QPushButton& button)
{
    if (m_pInterfaceDlg)
        return;
    m_pWantedDlg = &button;
    m_pSearch->m_bLockWanted = true;
    setCursor(Qt::BusyCursor);
    m_objTimerWantedDlg.start(kRetryMs);
    TryInterfaceDlg();
}

void CDisplayDeviceSelectionPartDlg::ForgetWantedDlg()
{
    m_objTimerWantedDlg.stop();
    m_pWantedDlg = nullptr;
    unsetCursor();
    if (m_pSearch)
        m_pSearch->m_bLockWanted = false;
}

void CDisplayDeviceSelectionPartDlg::TryInterfaceDlg()
{
    if (!m_pWantedDlg || !m_pSearch->m_objLock.TryLock())
        return;
    const QPushButton& button = *m_pWantedDlg;
    ForgetWantedDlg();
    if (&button == m_pUi->btnSetIP) {
        CDisplayDeviceSelectionForceIPDlg dialog(nullptr);
        RunInterfaceDlgLocked(dialog, button);
    } else {
        CDeviceDiscoveryCommandOptionDlg dialog(nullptr);
        RunInterfaceDlgLocked(dialog, button);
    }
}

void CDisplayDeviceSelectionPartDlg::RunInterfaceDlgLocked(CInterfaceDlg& dialog, const QWidget& button)
{
    // The device may have gone since the button was enabled, and has to be the one that the node map has
    // selected.
    Guarded([this] { UpdateDisplayDeviceTree(); });
    if (!m_pSelected || !button.isEnabled()) {
        m_pSearch->m_objLock.Unlock();
        return;
    }
    dialog.SetInterface(m_pSelected->pInterface);
    dialog.setModal(true);
    m_pInterfaceDlg = &dialog;
    const QPointer<CDisplayDeviceSelectionPartDlg> pThis(this);
    const int nResult = dialog.exec();
    if (!pThis)
        return; // the destructor has given the lock back
    m_pInterfaceDlg = nullptr;
    m_pSearch->m_objLock.Unlock();
    if (std::exchange(m_bUpdateWanted, false))
        UpdateDisplayDeviceTree();
    else if (nResult == QDialog::Accepted)
        UpdateDisplayInfo();
    if (std::exchange(m_bCloseWanted, false))
        close();
}

void CDisplayDeviceSelectionPartDlg::onUpdateDeviceList()
{
    // Under an open dialog the selection stays what it is.
    if (m_pInterfaceDlg)
        m_bUpdateWanted = true;
    else
        Guarded([this] { UpdateDisplayDeviceTree(); });
}

void CDisplayDeviceSelectionPartDlg::onAccessibleToggled(bool checked)
{
    m_pUi->chkShowAllDevices->setChecked(checked);
    Guarded([this] { UpdateDisplayDeviceTree(); });
}

void CDisplayDeviceSelectionPartDlg::on_chkShowAllDevices_toggled(bool checked)
{
    m_actAccessible.setChecked(checked);
    Guarded([this] { UpdateDisplayDeviceTree(); });
}

void CDisplayDeviceSelectionPartDlg::on_treeDevice_itemSelectionChanged()
{
    for (QPushButton* const pButton : {m_pUi->btnSetIP, m_pUi->btnDeviceDiscovery, m_pUi->btnOK})
        pButton->setEnabled(false);
    const QList<QTreeWidgetItem*> listSelected = m_pUi->treeDevice->selectedItems();
    if (m_vecItemData.empty() || listSelected.isEmpty())
        return;
    m_pSelected = RowOf(*listSelected.first());
    ForgetWantedDlg(); // it was for another row
    UpdateDisplayInfo();
}

void CDisplayDeviceSelectionPartDlg::on_treeDevice_itemDoubleClicked(QTreeWidgetItem*, int)
{
    if (m_pUi->btnOK->isEnabled())
        on_btnOK_clicked();
    else if (m_pUi->btnSetIP->isEnabled())
        on_btnSetIP_clicked();
}

void CDisplayDeviceSelectionPartDlg::on_btnSetIP_clicked()
{
    Guarded([this] { RunInterfaceDlg(*m_pUi->btnSetIP); });
}

void CDisplayDeviceSelectionPartDlg::on_btnDeviceDiscovery_clicked()
{
    Guarded([this] { RunInterfaceDlg(*m_pUi->btnDeviceDiscovery); });
}

void CDisplayDeviceSelectionPartDlg::on_btnOK_clicked()
{
    Guarded([this] { UpdateData(true); });
    close();
}

void CDisplayDeviceSelectionPartDlg::on_btnCancel_clicked()
{
    Guarded([this] { UpdateData(false); });
    close();
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#include "frame/BaseDialog_qt.h"

#include "frame/ConnectGuarded_qt.h"
#include "frame/GuiThread_qt.h"

#include <Base/GCException.h>
#include <KxApi_GUI/IKxWnd.h>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QShowEvent>
#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace KxApi
{
namespace
{

/// The dialogs that are there. GUI thread.
std::vector<CBaseDialogEx*>& Dialogs()
{
    static std::vector<CBaseDialogEx*> vecDialogs;
    return vecDialogs;
}

/// Runs when the QApplication begins to end: afterwards no widget can be closed or destroyed any more.
void DestroyDialogs()
{
    while (!Dialogs().empty())
        delete Dialogs().back();
}

} // namespace

CBaseDialogEx::CBaseDialogEx(QWidget* pParent, IDlgParent* pDlgParent)
try : QDialog(pParent, Qt::WindowFlags()), m_pDlgParent(pDlgParent), m_objStatusBar(pDlgParent) {
    connect(this, &CBaseDialogEx::setWindowTitleSignal, this, &QWidget::setWindowTitle);
    connect(this, &CBaseDialogEx::setMenuBarVisibleSignal, this, &CBaseDialogEx::setMenuBarVisible);
    connect(this, &CBaseDialogEx::setStatusBarVisibleSignal, this, &CBaseDialogEx::setStatusBarVisible);
    connect(this, &CBaseDialogEx::setPositionSignal, this, &CBaseDialogEx::setPosition);
    connect(this, &CBaseDialogEx::doCloseSignal, this, &CBaseDialogEx::setClose);
    setAttribute(Qt::WA_DeleteOnClose);
    Dialogs().push_back(this);
    if (Dialogs().size() == 1)
        qAddPostRoutine(&DestroyDialogs);
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CBaseDialogEx::~CBaseDialogEx()
{
    Dialogs().erase(std::remove(Dialogs().begin(), Dialogs().end(), this), Dialogs().end());
    if (Dialogs().empty())
        qRemovePostRoutine(&DestroyDialogs);
    if (!m_pDlgParent)
        return;
    try {
        // The window may delete itself in this call.
        m_pDlgParent->OnDlgDestroy(this);
    } catch (...) { // NOLINT(bugprone-empty-catch): there is nobody left to tell
    }
}

void CBaseDialogEx::EndPart() noexcept
{
    Guarded([this] {
        if (m_pDlgParent)
            m_pDlgParent->OnDlgDestroying(this);
    });
}

QMenuBar* CBaseDialogEx::getMenu() { return &m_objMenuBar; }

void CBaseDialogEx::BuildBars(const CBarPlaces& places, bool bWithMenuBar)
{
    if (bWithMenuBar) {
        m_pMenuBarWidget = places.pMenuBarWidget;
        places.pMenuBarLayout->addWidget(&m_objMenuBar);
    }
    m_pStatusBarWidget = places.pStatusBarWidget;
    places.pStatusBarLayout->addWidget(&m_objStatusBar);
    m_objStatusBar.show();
}

void CBaseDialogEx::AddStatusBarAction(QMenu& menu)
{
    m_objActionStatusBar.setText(tr("&Status Bar"));
    m_objActionStatusBar.setCheckable(true);
    menu.addAction(&m_objActionStatusBar);
    ConnectGuarded(this, &m_objActionStatusBar, &QAction::toggled, [this](bool bChecked) {
        if (m_pDlgParent)
            m_pDlgParent->GetIKxWnd()->SetVisibleStatusBar(bChecked);
    });
}

void CBaseDialogEx::ShowBars()
{
    if (!m_pDlgParent)
        return;
    const IKxWnd& window = *m_pDlgParent->GetIKxWnd();
    setMenuBarVisible(window.GetVisibleMenu());
    setStatusBarVisible(window.GetVisibleStatusBar());
}

void CBaseDialogEx::initDialog() { ShowBars(); }

bool CBaseDialogEx::event(QEvent* pEvent)
{
    const bool bDone = QDialog::event(pEvent);
    switch (pEvent->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowTitleChange:
        Guarded([this] {
            if (m_pDlgParent)
                m_pDlgParent->OnPartDlgChanged(this);
        });
        break;
    default:
        break;
    }
    return bDone;
}

void CBaseDialogEx::Post(std::function<void()> function)
{
    PostToGuiThread(this, [this, function = std::move(function)] { Guarded(function); });
}

void CBaseDialogEx::doClose() { emit doCloseSignal(); }

void CBaseDialogEx::setMenuBarVisible(bool value)
{
    if (m_pMenuBarWidget)
        m_pMenuBarWidget->setVisible(value);
}

void CBaseDialogEx::setStatusBarVisible(bool value)
{
    m_objActionStatusBar.setChecked(value);
    if (m_pStatusBarWidget)
        m_pStatusBarWidget->setVisible(value);
}

void CBaseDialogEx::setPosition(int nPosX, int nPosY, int nWidth, int nHeight)
{
    move(nPosX, nPosY);
    resize(nWidth, nHeight);
    update();
}

void CBaseDialogEx::setClose() { close(); }

bool CBaseDialogEx::closeEventCheck(QCloseEvent* pEvent)
{
    if (!m_bClosed) {
        // A window that fails to answer doesn't keep its dialog open for ever.
        bool bKeepOpen = false;
        Guarded([&] { bKeepOpen = m_pDlgParent && m_pDlgParent->OnClose(this); });
        m_bClosed = !bKeepOpen;
    }
    pEvent->setAccepted(m_bClosed);
    return m_bClosed;
}

void CBaseDialogEx::closeEvent(QCloseEvent* pEvent)
{
    const bool bBefore = m_bClosed;
    if (closeEventCheck(pEvent) && !bBefore)
        Guarded([this] { onClosed(); });
}

void CBaseDialogEx::showEvent(QShowEvent* pEvent)
{
    Guarded([this] {
        initDialog();
        if (m_pDlgParent)
            setWindowTitle(ToQString(m_pDlgParent->GetTitleInside()));
    });
    pEvent->accept();
}

void CBaseDialogEx::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Escape || pEvent->key() == Qt::Key_Enter)
        pEvent->ignore();
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#include "frame/BaseDialog_qt.h"

#include <Base/GCException.h>

#include <QCloseEvent>
#include <QKeyEvent>
#include <QShowEvent>
#include <new>

namespace KxApi
{

CBaseDialogEx::CBaseDialogEx(QWidget* pParent, IDlgParent* pDlgParent)
try : QDialog(pParent, Qt::WindowFlags()), m_pDlgParent(pDlgParent), m_objStatusBar(pDlgParent) {
    connect(this, &CBaseDialogEx::setWindowTitleSignal, this, &QWidget::setWindowTitle);
    connect(this, &CBaseDialogEx::setMenuBarVisibleSignal, this, &CBaseDialogEx::setMenuBarVisible);
    connect(this, &CBaseDialogEx::setStatusBarVisibleSignal, this, &CBaseDialogEx::setStatusBarVisible);
    connect(this, &CBaseDialogEx::setPositionSignal, this, &CBaseDialogEx::setPosition);
    connect(this, &CBaseDialogEx::doCloseSignal, this, &CBaseDialogEx::setClose);
    setAttribute(Qt::WA_DeleteOnClose);
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CBaseDialogEx::~CBaseDialogEx()
{
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

QMenuBar* CBaseDialogEx::getMenu() { return nullptr; }

void CBaseDialogEx::doClose() { emit doCloseSignal(); }

void CBaseDialogEx::setMenuBarVisible(bool value)
{
    if (m_pMenuBarWidget)
        m_pMenuBarWidget->setVisible(value);
}

void CBaseDialogEx::setStatusBarVisible(bool value)
{
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
    // A window that fails to answer doesn't keep its dialog open for ever.
    bool bKeepOpen = false;
    Guarded([&] { bKeepOpen = m_pDlgParent && m_pDlgParent->OnClose(this); });
    pEvent->setAccepted(!bKeepOpen);
    return !bKeepOpen;
}

void CBaseDialogEx::showEvent(QShowEvent* pEvent)
{
    Guarded([this] {
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

// SPDX-License-Identifier: Apache-2.0
// CKxBaseWnd: showing, closing and the window's end. Included by KxBaseWnd_qt.h.
#pragma once

namespace KxApi
{

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::Show(void* pParent, _EKxWindowMode_t eMode)
{
    switch (eMode) {
    case KxWindowMode_Modal:
        return ShowModal(pParent);
    case KxWindowMode_Modaless:
        return ShowModaless(pParent);
    case KxWindowMode_ModalessOnNewThread:
        return ShowModalessOnNewThread(pParent);
    case KxWindowMode_Child:
        return ShowChild(pParent);
    case KxWindowMode_None:
        break;
    }
    throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be smaller than Max = %lld", "eWM",
                                 static_cast<long long>(eMode), 4LL);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::CloseShown(bool bOnlyVisible)
{
    WithDialog([=](TPartDlg& dialog) {
        if (!bOnlyVisible || dialog.isVisible())
            dialog.doClose();
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::BeginShow(_EKxWindowMode_t eMode)
{
    CloseShown(false);
    SetWindowModeValue(eMode);
}

template <class TInside, class TDlgParent, class TPartDlg>
template <class Present>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::Open(QWidget* pParent, bool bWithMenuBar, Present present)
{
    const _EKxWindowMode_t eMode = m_regWindowMode.GetValue();
    TPartDlg* pDialog = nullptr;
    try {
        pDialog = static_cast<TPartDlg*>(CreatePartDlg(pParent, bWithMenuBar));
    } catch (...) {
        SetWindowModeValue(KxWindowMode_None);
        throw;
    }
    RunInGuiThread([&] {
        TPartDlg* pOther = nullptr;
        {
            const GenApi::AutoLock lock(m_lockPartDlg);
            if (m_setDialogs.count(pDialog) == 0)
                return; // it went with its parent widget
            pOther = std::exchange(m_pPartDlg, pDialog);
            m_nWaitingUpdates = 0; // a new dialog shows what is set
        }
        if (pOther)
            pOther->doClose(); // shown by another thread at the same time
        // Again, since the end of a dialog that was closed in between has set it to none.
        SetWindowModeValue(eMode);
        present(*pDialog);
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::PlaceDialog(TPartDlg& dialog)
{
    const CRect rcPosition = StoredPosition();
    dialog.move(rcPosition.nLeft, rcPosition.nTop);
    dialog.resize(rcPosition.Width(), rcPosition.Height());
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::ShowModal(void* pParent)
{
    BeginShow(KxWindowMode_Modal);
    Open(static_cast<QWidget*>(pParent), true, [this](TPartDlg& dialog) {
        dialog.setModal(true);
        PlaceDialog(dialog);
        dialog.show();
        ShownTitleIs(dialog.windowTitle());
        dialog.exec(); // deletes the dialog, and with it perhaps this window
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::ShowModaless(void* pParent)
{
    BeginShow(KxWindowMode_Modaless);
    ShowModalessInside(pParent);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::ShowModalessOnNewThread(void* pParent)
{
    BeginShow(KxWindowMode_ModalessOnNewThread);
    ShowModalessInside(pParent);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::ShowModalessInside(void* pParent)
{
    Open(static_cast<QWidget*>(pParent), true, [this](TPartDlg& dialog) {
        dialog.setModal(false);
        PlaceDialog(dialog);
        dialog.show();
        ShownTitleIs(dialog.windowTitle());
        dialog.update();
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::ShowChild(void* pParent)
{
    auto* const pWidget = static_cast<QWidget*>(pParent);
    if (pWidget && !pWidget->layout())
        throw INVALID_ARGUMENT_EXCEPTION(
            "The parent widget has no layout that the window could be added to.");
    BeginShow(KxWindowMode_Child);
    Open(nullptr, false, [this, pWidget](TPartDlg& dialog) {
        if (pWidget) {
            try {
                pWidget->layout()->addWidget(&dialog);
                dialog.show();
            } catch (...) { // NOLINT(bugprone-empty-catch): the window stays without a place
            }
        } else {
            dialog.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
            dialog.setModal(false);
            PlaceDialog(dialog);
            dialog.show();
        }
        ShownTitleIs(dialog.windowTitle());
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
CBaseDialogEx* CKxBaseWnd<TInside, TDlgParent, TPartDlg>::CreatePartDlg(QWidget* pParent, bool bWithMenuBar)
{
    return GenICam::GuardBadAlloc([&] {
        CKxGUICreator objCreator(GetIKxWnd()->GetIKxWndInfo()->GetWndType(), pParent, this, bWithMenuBar);
        objCreator.Start();
        CBaseDialogEx* const pDialog = objCreator.getDialog();
        {
            const GenApi::AutoLock lock(m_lockPartDlg);
            m_setDialogs.insert(pDialog);
            ++m_nRefCount;
        }
        QObject::connect(pDialog, &QWidget::windowTitleChanged, pDialog,
                         [this](const QString& strTitle) { ShownTitleIs(strTitle); });
        OnPartDlgCreated();
        return pDialog;
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::ShownTitleIs(const QString& strTitle)
{
    const GenApi::AutoLock lock(m_lockProperty);
    m_strShownTitle = ToGcstring(strTitle);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnPartDlgCreated()
{
    CKxCallbackParamBaseWnd param(KxGUICallbackType_Created, GetIKxWnd());
    m_objCallbackManager.RunCallback(&param);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::Close()
{
    CloseShown(true);
}

template <class TInside, class TDlgParent, class TPartDlg>
bool CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnClose(CBaseDialogEx* pDialog)
{
    const GenApi::AutoLock lock(m_lockPartDlg);
    CKxCallbackParamBaseWndClose param(GetIKxWnd());
    m_objCallbackManager.RunCallback(&param);
    if (m_pPartDlg == pDialog) {
        GetPosition(nullptr, nullptr, nullptr, nullptr);
        if (!param.IsCancelled())
            m_pPartDlg = nullptr;
    }
    return param.IsCancelled();
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnDlgDestroying(CBaseDialogEx* pDialog)
{
    const GenApi::AutoLock lock(m_lockPartDlg);
    if (m_pPartDlg != pDialog)
        return;
    GetPosition(nullptr, nullptr, nullptr, nullptr);
    m_pPartDlg = nullptr;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnDlgDestroy(CBaseDialogEx* pDialog)
{
    bool bUnshown = false;
    {
        const GenApi::AutoLock lock(m_lockPartDlg);
        if (m_setDialogs.erase(pDialog) == 0)
            return; // its construction failed
        if (m_pPartDlg == pDialog)
            m_pPartDlg = nullptr;
        bUnshown = !m_pPartDlg;
        if (bUnshown)
            m_regWindowMode.SetValue(KxWindowMode_None);
    }
    // Without the lock, since whoever writes a feature takes the lock with the node map's held.
    if (bUnshown)
        InvalidateNode("WindowModeReg");
    {
        const GenApi::AutoLock lock(m_lockPartDlg);
        CKxCallbackParamBaseWnd param(KxGUICallbackType_Destroyed, GetIKxWnd());
        m_objCallbackManager.RunCallback(&param);
    }
    DelRef();
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnException(const GenICam::GenericException& e)
{
    CKxCallbackParamBaseWndError param(GetIKxWnd(), e);
    m_objCallbackManager.RunCallback(&param);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::AddRef()
{
    const GenApi::AutoLock lock(m_lockPartDlg);
    ++m_nRefCount;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::DelRef()
{
    bool bLast = false;
    {
        const GenApi::AutoLock lock(m_lockPartDlg);
        bLast = --m_nRefCount == 0;
    }
    // The lock, which goes with the window, isn't held any more; and nobody else has a reference.
    if (bLast)
        delete this;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::Release()
{
    Close();
    DelRef();
}

} // namespace KxApi

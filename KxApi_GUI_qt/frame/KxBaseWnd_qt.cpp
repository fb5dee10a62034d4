// SPDX-License-Identifier: Apache-2.0
#include "frame/KxBaseWnd_qt.h"

#include "frame/DialogFactory_qt.h"
#include "frame/GuiThread_qt.h"
#include "frame/utility_qt.h"

#include <Base/GCBadAlloc.h>

#include <QLayout>
#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <new>
#include <utility>

namespace KxApi
{
namespace
{

/// Accesses to ports that this thread is in, whose node maps are locked.
thread_local int nPortAccesses = 0;

class CPortAccess
{
public:
    CPortAccess() { ++nPortAccesses; }
    CPortAccess(const CPortAccess&) = delete;
    CPortAccess& operator=(const CPortAccess&) = delete;
    ~CPortAccess() { --nPortAccesses; }
};

} // namespace

CKxBaseWndCore::CKxBaseWndCore(int nXMLResourceID, const char* szPortName, GenApi::EAccessMode eAccessMode,
                               const char* szTitle, int nStatusBarIndicatorsCount)
try : m_strTitle(szTitle), m_nStatusBarIndicatorsCount(nStatusBarIndicatorsCount),
    m_nXMLResourceID(nXMLResourceID), m_eAccessMode(eAccessMode), m_szPortName(szPortName)
{
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CKxBaseWndCore::~CKxBaseWndCore() = default;

void* CKxBaseWndCore::RegisterCallback(IKxCallback* pCallback)
{
    return m_objCallbackManager.RegisterCallback(pCallback);
}

void CKxBaseWndCore::DeregisterCallback(void* hCallback)
{
    m_objCallbackManager.DeregisterCallback(hCallback);
}

// ---- Settings, texts and features

void CKxBaseWndCore::OnSettingChanged(uint32_t nUpdate, bool) { UpdateDialog(nUpdate); }

void CKxBaseWndCore::Post(std::function<void()> function)
{
    AddRef();
    const std::shared_ptr<CKxBaseWndCore> pThis(this, [](CKxBaseWndCore* pWnd) { pWnd->DelRef(); });
    PostToGuiThread(nullptr, [pThis, function = std::move(function)] {
        try {
            function();
        } catch (...) {
            TellCurrentException([&](const GenICam::GenericException& e) { pThis->OnException(e); });
        }
    });
}

void CKxBaseWndCore::UpdateDialog(uint32_t nKinds)
{
    if (!m_pPartDlg)
        return; // a new dialog shows what is set
    if (IsGuiThread())
        ShowUpdates(*m_pPartDlg, nKinds);
    else if (m_nWaitingUpdates.fetch_or(nKinds) == 0)
        Post([this] { RunUpdates(); });
}

void CKxBaseWndCore::RunUpdates()
{
    const uint32_t nKinds = m_nWaitingUpdates.exchange(0);
    if (m_pPartDlg)
        ShowUpdates(*m_pPartDlg, nKinds);
}

void CKxBaseWndCore::ShowUpdates(CBaseDialogEx& dialog, uint32_t nKinds)
{
    GenICam::gcstring strTitle;
    QRect rcPosition;
    {
        const GenApi::AutoLock lock(m_lockProperty);
        strTitle = m_strWantedTitle;
        rcPosition = m_rcWantedPosition;
    }
    if (nKinds & UpdateTitle)
        emit dialog.setWindowTitleSignal(ToQString(strTitle));
    if (nKinds & UpdatePosition)
        emit dialog.setPositionSignal(rcPosition.x(), rcPosition.y(), rcPosition.width(),
                                      rcPosition.height());
    if (nKinds & UpdateMenuBar)
        emit dialog.setMenuBarVisibleSignal(GetVisibleMenu());
    if (nKinds & UpdateStatusBar)
        emit dialog.setStatusBarVisibleSignal(GetVisibleStatusBar());
}

void CKxBaseWndCore::OnPartDlgChanged(CBaseDialogEx* pDialog)
{
    if (pDialog != m_pPartDlg)
        return;
    const GenApi::AutoLock lock(m_lockProperty);
    m_objShown = {true, pDialog->isVisible(), QRect(pDialog->pos(), pDialog->size()),
                  ToGcstring(pDialog->windowTitle())};
}

/// Notes what Qt doesn't tell by events, such as moves of a dialog that is yet to be shown.
void CKxBaseWndCore::NoteShown()
{
    if (IsGuiThread() && m_pPartDlg)
        OnPartDlgChanged(m_pPartDlg);
}

void* CKxBaseWndCore::GetWindowHandle() { return static_cast<QWidget*>(m_pPartDlg.load()); }

bool CKxBaseWndCore::IsVisible()
{
    NoteShown();
    const GenApi::AutoLock lock(m_lockProperty);
    return m_objShown.bVisible;
}

GenICam::gcstring CKxBaseWndCore::GetTitle()
{
    NoteShown();
    const GenApi::AutoLock lock(m_lockProperty);
    if (m_objShown.bPresent)
        m_strTitle = m_objShown.strTitle;
    return m_strTitle;
}

void CKxBaseWndCore::SetTitle(const GenICam::gcstring& strTitle)
{
    {
        const GenApi::AutoLock lock(m_lockProperty);
        m_strWantedTitle = strTitle;
    }
    UpdateDialog(UpdateTitle);
}

GenICam::gcstring CKxBaseWndCore::GetTitleInside()
{
    const GenApi::AutoLock lock(m_lockProperty);
    return m_strTitle;
}

void CKxBaseWndCore::GetPosition(int* pX, int* pY, int* pWidth, int* pHeight)
{
    NoteShown();
    QRect rcPosition;
    {
        const GenApi::AutoLock lock(m_lockProperty);
        if (m_objShown.bPresent)
            m_rcPosition = m_objShown.rect;
        rcPosition = m_rcPosition;
    }
    const auto tell = [](int* pTarget, int nValue) {
        if (pTarget)
            *pTarget = nValue;
    };
    tell(pX, rcPosition.x());
    tell(pY, rcPosition.y());
    tell(pWidth, rcPosition.width());
    tell(pHeight, rcPosition.height());
}

void CKxBaseWndCore::SetPosition(int nX, int nY, int nWidth, int nHeight)
{
    {
        const GenApi::AutoLock lock(m_lockProperty);
        // Sums of any numbers: nothing is checked, so they may leave the range and come back in GetPosition.
        const auto last = [](int nFirst, int nSize) {
            return static_cast<int>(static_cast<unsigned>(nFirst) + static_cast<unsigned>(nSize) - 1U);
        };
        m_rcPosition.setCoords(nX, nY, last(nX, nWidth), last(nY, nHeight));
        m_rcWantedPosition = m_rcPosition;
    }
    UpdateDialog(UpdatePosition);
}

void CKxBaseWndCore::SetWindowModeValue(_EKxWindowMode_t eMode) { m_regWindowMode.Set(eMode); }

void CKxBaseWndCore::SetUserStatusBarText(const GenICam::gcstring& strText)
{
    const GenApi::AutoLock lock(m_lockStatusBarText);
    m_strUserStatusBarText = strText;
}

void CKxBaseWndCore::GetStatusBarInfo(int nIndex, unsigned int* pWidth, bool* pStretch) const
{
    *pWidth = 0;
    *pStretch = nIndex == 0;
}

void CKxBaseWndCore::GetStatusBarText(QStringList& listText)
{
    const GenApi::AutoLock lock(m_lockStatusBarText);
    listText.append(ToQString(m_strUserStatusBarText));
}

GenApi::INodeMap* CKxBaseWndCore::GetINodeMap()
{
    if (m_bNodeMapCreated)
        return m_objNodeMapRef._Ptr;
    const GenApi::AutoLock lock(m_lockNodeMap);
    if (!m_bNodeMapCreated)
        m_bNodeMapCreated = LoadWindowNodeMap(m_objNodeMapRef, m_nXMLResourceID, this, m_szPortName);
    return m_bNodeMapCreated ? m_objNodeMapRef._Ptr : nullptr;
}

void CKxBaseWndCore::DestroyNodeMap() { m_objNodeMapRef._Destroy(); }

void CKxBaseWndCore::InvalidateNode(const GenICam::gcstring& strName)
{
    if (!m_bNodeMapCreated)
        return;
    try {
        if (GenApi::INode* const pNode = m_objNodeMapRef._GetNode(strName))
            pNode->InvalidateNode();
    } catch (...)
    { // NOLINT(bugprone-empty-catch): a change of a setting has succeeded, whatever a callback says
    }
}

bool CKxBaseWndCore::mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength)
{
    return m_objRegister.mRead(pBuffer, nAddress, pnLength);
}

bool CKxBaseWndCore::mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength)
{
    return m_objRegister.mWrite(pBuffer, nAddress, pnLength);
}

void CKxBaseWndCore::Read(void* pBuffer, int64_t nAddress, int64_t nLength)
{
    ForEachRegister(nAddress, nLength, [&](int64_t nOffset, int64_t nPosition, int64_t* pnLength) {
        return mRead(static_cast<unsigned char*>(pBuffer) + nOffset, nPosition, pnLength);
    });
}

void CKxBaseWndCore::Write(const void* pBuffer, int64_t nAddress, int64_t nLength)
{
    const CPortAccess access;
    ForEachRegister(nAddress, nLength, [&](int64_t nOffset, int64_t nPosition, int64_t* pnLength) {
        return mWrite(static_cast<const unsigned char*>(pBuffer) + nOffset, nPosition, pnLength);
    });
}

// ---- Showing and closing

void CKxBaseWndCore::Show(void* pParent, _EKxWindowMode_t eMode)
{
    if (eMode < KxWindowMode_Modal || eMode > KxWindowMode_Child)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be smaller than Max = %lld", "eWM",
                                     static_cast<long long>(eMode), 4LL);
    RunInGuiThread([&] {
        switch (eMode) {
        case KxWindowMode_Modal:
            return ShowModal(pParent);
        case KxWindowMode_ModalessOnNewThread:
            return ShowModalessOnNewThread(pParent);
        case KxWindowMode_Child:
            return ShowChild(pParent);
        default:
            return ShowModaless(pParent);
        }
    });
}

void CKxBaseWndCore::CloseShown(bool bOnlyVisible)
{
    // A copy, since those that are closed leave the list.
    const std::vector<CBaseDialogEx*> vecOpen(m_vecOpen.rbegin(), m_vecOpen.rend());
    for (CBaseDialogEx* const pDialog : vecOpen) {
        if (m_setDialogs.count(pDialog) != 0 && (!bOnlyVisible || pDialog->isVisible()))
            pDialog->doClose();
    }
}

void CKxBaseWndCore::BeginShow(_EKxWindowMode_t eMode)
{
    CloseShown(false);
    SetWindowModeValue(eMode);
}

void CKxBaseWndCore::Open(QWidget* pParent, bool bWithMenuBar,
                          const std::function<void(CBaseDialogEx&)>& present)
{
    const _EKxWindowMode_t eMode = m_regWindowMode;
    CBaseDialogEx* pDialog = nullptr;
    try {
        pDialog = CreatePartDlg(pParent, bWithMenuBar);
    } catch (...) {
        SetWindowModeValue(KxWindowMode_None);
        throw;
    }
    if (m_setDialogs.count(pDialog) == 0)
        return; // it went with its parent widget in the callback
    {
        const GenApi::AutoLock lock(m_lockPartDlg);
        m_vecOpen.push_back(pDialog);
        m_pPartDlg = pDialog;
    }
    pDialog->setWindowTitle(ToQString(GetTitleInside()));
    OnPartDlgChanged(pDialog);
    // Again, since the end of a dialog that was closed in between has set it to none.
    if (m_regWindowMode != eMode)
        SetWindowModeValue(eMode);
    present(*pDialog); // may be the end of the dialog, and with it of this window
}

void CKxBaseWndCore::PlaceDialog(CBaseDialogEx& dialog)
{
    QRect rcPosition;
    {
        const GenApi::AutoLock lock(m_lockProperty);
        rcPosition = m_rcPosition;
    }
    dialog.move(rcPosition.topLeft());
    dialog.resize(rcPosition.size());
}

void CKxBaseWndCore::ShowModal(void* pParent)
{
    BeginShow(KxWindowMode_Modal);
    Open(static_cast<QWidget*>(pParent), true, [this](CBaseDialogEx& dialog) {
        dialog.setModal(true);
        PlaceDialog(dialog);
        dialog.show();
        dialog.exec();
    });
}

void CKxBaseWndCore::ShowModaless(void* pParent)
{
    BeginShow(KxWindowMode_Modaless);
    ShowModalessInside(pParent);
}

void CKxBaseWndCore::ShowModalessOnNewThread(void* pParent)
{
    BeginShow(KxWindowMode_ModalessOnNewThread);
    ShowModalessInside(pParent);
}

void CKxBaseWndCore::ShowModalessInside(void* pParent)
{
    Open(static_cast<QWidget*>(pParent), true, [this](CBaseDialogEx& dialog) {
        dialog.setModal(false);
        PlaceDialog(dialog);
        dialog.show();
        dialog.update();
    });
}

void CKxBaseWndCore::ShowChild(void* pParent)
{
    auto* const pWidget = static_cast<QWidget*>(pParent);
    if (pWidget && !pWidget->layout())
        throw INVALID_ARGUMENT_EXCEPTION(
            "The parent widget has no layout that the window could be added to.");
    BeginShow(KxWindowMode_Child);
    Open(nullptr, false, [this, pWidget](CBaseDialogEx& dialog) {
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
    });
}

CBaseDialogEx* CKxBaseWndCore::CreatePartDlg(QWidget* pParent, bool bWithMenuBar)
{
    return GenICam::GuardBadAlloc([&] {
        CBaseDialogEx* const pDialog =
            BuildPartDialog(GetIKxWndInfo()->GetWndType(), pParent, this, bWithMenuBar);
        RunInGuiThread([&] { m_setDialogs.insert(pDialog); });
        AddRef();
        OnPartDlgCreated();
        return pDialog;
    });
}

void CKxBaseWndCore::OnPartDlgCreated()
{
    CKxCallbackParamBaseWnd param(KxGUICallbackType_Created, GetIKxWnd());
    RunCallback(param);
}

void CKxBaseWndCore::Close()
{
    if (!m_pPartDlg)
        return;
    if (IsGuiThread())
        CloseShown(true);
    else
        Post([this] { CloseShown(true); });
}

void CKxBaseWndCore::Forget(CBaseDialogEx* pDialog)
{
    if (m_pPartDlg == pDialog)
        GetPosition(nullptr, nullptr, nullptr, nullptr);
    m_vecOpen.erase(std::remove(m_vecOpen.begin(), m_vecOpen.end(), pDialog), m_vecOpen.end());
    m_pPartDlg = m_vecOpen.empty() ? nullptr : m_vecOpen.back();
    {
        const GenApi::AutoLock lock(m_lockProperty);
        m_objShown = {};
    }
    NoteShown();
}

bool CKxBaseWndCore::OnClose(CBaseDialogEx* pDialog)
{
    const GenApi::AutoLock callbacks(m_objCallbackManager.GetLock());
    const GenApi::AutoLock lock(m_lockPartDlg);
    CKxCallbackParamBaseWndClose param(GetIKxWnd());
    RunCallback(param);
    if (!param.IsCancelled())
        Forget(pDialog);
    else if (m_pPartDlg == pDialog)
        GetPosition(nullptr, nullptr, nullptr, nullptr);
    return param.IsCancelled();
}

void CKxBaseWndCore::OnDlgDestroying(CBaseDialogEx* pDialog)
{
    const GenApi::AutoLock lock(m_lockPartDlg);
    Forget(pDialog);
}

void CKxBaseWndCore::OnDlgDestroy(CBaseDialogEx* pDialog)
{
    if (m_setDialogs.erase(pDialog) == 0)
        return; // its construction failed
    // Before the locks: whoever writes a feature holds the node map's.
    if (!m_pPartDlg)
        SetWindowModeValue(KxWindowMode_None);
    {
        const GenApi::AutoLock callbacks(m_objCallbackManager.GetLock());
        const GenApi::AutoLock lock(m_lockPartDlg);
        CKxCallbackParamBaseWnd param(KxGUICallbackType_Destroyed, GetIKxWnd());
        RunCallback(param);
    }
    DelRef();
}

void CKxBaseWndCore::OnException(const GenICam::GenericException& e)
{
    // A callback may wait for a node map that is locked by the access that failed.
    if (nPortAccesses > 0)
        return Post([this, e] { OnException(e); });
    CKxCallbackParamBaseWndError param(GetIKxWnd(), e);
    RunCallback(param);
}

void CKxBaseWndCore::AddRef() { ++m_nRefCount; }

void CKxBaseWndCore::DelRef()
{
    if (--m_nRefCount == 0)
        delete this;
}

void CKxBaseWndCore::ReleaseByApplication()
{
    Close();
    DelRef();
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// CKxBaseWnd: settings, texts and features. Included by KxBaseWnd_qt.h.
#pragma once

namespace KxApi
{

template <class TInside, class TDlgParent, class TPartDlg>
CKxBaseWnd<TInside, TDlgParent, TPartDlg>::CKxBaseWnd(int nXMLResourceID, const char* szPortName,
                                                      GenApi::EAccessMode eAccessMode, const char* szTitle,
                                                      int nStatusBarIndicatorsCount)
    : m_strTitle(szTitle)
    , m_nStatusBarIndicatorsCount(nStatusBarIndicatorsCount)
    , m_regSizeTSize(this, nullptr, 0x0000, GenApi::RO, sizeof(size_t))
    , m_regVisibleMenu(this, &CKxBaseWnd::OnWrittenMenuVisibility, 0x0010, GenApi::RW, true)
    , m_regVisibleStatusBar(this, &CKxBaseWnd::OnWrittenStatusBarVisibility, 0x0020, GenApi::RW,
                            nStatusBarIndicatorsCount > 0)
    , m_regWindowMode(this, nullptr, 0x0030, GenApi::RW, KxWindowMode_None)
    , m_nXMLResourceID(nXMLResourceID)
    , m_eAccessMode(eAccessMode)
    , m_szPortName(szPortName)
{
    GenICam::GuardBadAlloc([this] {
        for (IKxRegisterParam* const pParam : std::initializer_list<IKxRegisterParam*>{
                 &m_regSizeTSize, &m_regVisibleMenu, &m_regVisibleStatusBar, &m_regWindowMode})
            m_objRegister.Register(*pParam);
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
template <class Function, class Result>
Result CKxBaseWnd<TInside, TDlgParent, TPartDlg>::AskDialog(Function function, Result none) const
{
    if (IsGuiThread())
        return m_pPartDlg ? function(*m_pPartDlg) : none;
    const GenApi::AutoLock lock(m_lockPartDlg);
    return m_pPartDlg ? function(*m_pPartDlg) : none;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::UpdateDialog(uint32_t nKinds)
{
    if (IsGuiThread()) {
        if (m_pPartDlg)
            OnUpdateDialog(*m_pPartDlg, nKinds);
        return;
    }
    const GenApi::AutoLock lock(m_lockPartDlg);
    if (m_pPartDlg && m_nWaitingUpdates.fetch_or(nKinds) == 0)
        QMetaObject::invokeMethod(
            m_pPartDlg, [this] { RunUpdates(); }, Qt::QueuedConnection);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::RunUpdates()
{
    const uint32_t nKinds = m_nWaitingUpdates.exchange(0);
    if (m_pPartDlg)
        m_pPartDlg->Guarded([&] { OnUpdateDialog(*m_pPartDlg, nKinds); });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnUpdateDialog(TPartDlg& dialog, uint32_t nKinds)
{
    GenICam::gcstring strTitle;
    CRect rcPosition{};
    {
        const GenApi::AutoLock lock(m_lockProperty);
        strTitle = m_strWantedTitle;
        rcPosition = m_rcWantedPosition;
    }
    if (nKinds & UpdateTitle)
        emit dialog.setWindowTitleSignal(ToQString(strTitle));
    if (nKinds & UpdatePosition)
        emit dialog.setPositionSignal(rcPosition.nLeft, rcPosition.nTop, rcPosition.Width(),
                                      rcPosition.Height());
    if (nKinds & UpdateMenuBar)
        emit dialog.setMenuBarVisibleSignal(GetVisibleMenu());
    if (nKinds & UpdateStatusBar)
        emit dialog.setStatusBarVisibleSignal(GetVisibleStatusBar());
}

template <class TInside, class TDlgParent, class TPartDlg>
void* CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetWindowHandle()
{
    return AskDialog([](TPartDlg& dialog) -> void* { return static_cast<QWidget*>(&dialog); },
                     static_cast<void*>(nullptr));
}

template <class TInside, class TDlgParent, class TPartDlg>
bool CKxBaseWnd<TInside, TDlgParent, TPartDlg>::IsVisible()
{
    return AskDialog([](TPartDlg& dialog) { return dialog.isVisible(); }, false);
}

template <class TInside, class TDlgParent, class TPartDlg>
GenICam::gcstring CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetTitle()
{
    WithDialog([this](TPartDlg& dialog) {
        const GenApi::AutoLock lock(m_lockProperty);
        m_strTitle = IsGuiThread() ? ToGcstring(dialog.windowTitle()) : m_strShownTitle;
    });
    return GetTitleInside();
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::SetTitle(const GenICam::gcstring& strTitle)
{
    {
        const GenApi::AutoLock lock(m_lockProperty);
        m_strWantedTitle = strTitle;
    }
    UpdateDialog(UpdateTitle);
}

template <class TInside, class TDlgParent, class TPartDlg>
GenICam::gcstring CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetTitleInside()
{
    const GenApi::AutoLock lock(m_lockProperty);
    return m_strTitle;
}

template <class TInside, class TDlgParent, class TPartDlg>
typename CKxBaseWnd<TInside, TDlgParent, TPartDlg>::CRect
CKxBaseWnd<TInside, TDlgParent, TPartDlg>::StoredPosition() const
{
    const GenApi::AutoLock lock(m_lockProperty);
    return m_rcPosition;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetPosition(int* pX, int* pY, int* pWidth, int* pHeight)
{
    WithDialog([this](TPartDlg& dialog) {
        const QPoint pos = dialog.pos();
        const QSize size = dialog.size();
        const GenApi::AutoLock lock(m_lockProperty);
        m_rcPosition = {pos.x(), pos.y(), pos.x() + size.width() - 1, pos.y() + size.height() - 1};
    });
    const CRect rcPosition = StoredPosition();
    const auto tell = [](int* pTarget, int nValue) {
        if (pTarget)
            *pTarget = nValue;
    };
    tell(pX, rcPosition.nLeft);
    tell(pY, rcPosition.nTop);
    tell(pWidth, rcPosition.Width());
    tell(pHeight, rcPosition.Height());
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::SetPosition(int nX, int nY, int nWidth, int nHeight)
{
    {
        const GenApi::AutoLock lock(m_lockProperty);
        // Sums of any numbers: nothing is checked, so they may leave the range and come back in GetPosition.
        const auto last = [](int nFirst, int nSize) {
            return static_cast<int>(static_cast<unsigned>(nFirst) + static_cast<unsigned>(nSize) - 1U);
        };
        m_rcPosition = m_rcWantedPosition = {nX, nY, last(nX, nWidth), last(nY, nHeight)};
    }
    UpdateDialog(UpdatePosition);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::SetVisibleMenu(bool bVisible)
{
    if (m_regVisibleMenu.GetValue() == bVisible)
        return;
    m_regVisibleMenu.SetValue(bVisible);
    m_regVisibleMenu.OnWritten();
    InvalidateNode("VisibleMenuReg");
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::SetVisibleStatusBar(bool bVisible)
{
    if (m_regVisibleStatusBar.GetValue() == bVisible)
        return;
    m_regVisibleStatusBar.SetValue(bVisible);
    m_regVisibleStatusBar.OnWritten();
    InvalidateNode("VisibleStatusBarReg");
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnWrittenMenuVisibility()
{
    UpdateDialog(UpdateMenuBar);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::OnWrittenStatusBarVisibility()
{
    UpdateDialog(UpdateStatusBar);
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::SetWindowModeValue(_EKxWindowMode_t eMode)
{
    m_regWindowMode.SetValue(eMode);
    m_regWindowMode.OnWritten();
    InvalidateNode("WindowModeReg");
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::SetUserStatusBarText(const GenICam::gcstring& strText)
{
    const GenApi::AutoLock lock(m_lockStatusBarText);
    m_strUserStatusBarText = strText;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetStatusBarInfo(int nIndex, unsigned int* pWidth,
                                                                 bool* pStretch) const
{
    *pWidth = 0;
    *pStretch = nIndex == 0;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetStatusBarText(QStringList& listText)
{
    const GenApi::AutoLock lock(m_lockStatusBarText);
    listText.append(ToQString(m_strUserStatusBarText));
}

template <class TInside, class TDlgParent, class TPartDlg>
GenApi::INodeMap* CKxBaseWnd<TInside, TDlgParent, TPartDlg>::GetINodeMap()
{
    if (m_bNodeMapCreated)
        return m_objNodeMapRef._Ptr();
    const GenApi::AutoLock lock(m_lockNodeMap);
    if (!m_bNodeMapCreated)
        m_bNodeMapCreated = LoadWindowNodeMap(m_objNodeMapRef, m_nXMLResourceID, this, m_szPortName);
    return m_bNodeMapCreated ? m_objNodeMapRef._Ptr() : nullptr;
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::InvalidateNode(const GenICam::gcstring& strName)
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

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::Read(void* pBuffer, int64_t nAddress, int64_t nLength)
{
    ForEachRegister(nAddress, nLength, [&](int64_t nOffset, int64_t nPosition, int64_t* pnLength) {
        return mRead(static_cast<unsigned char*>(pBuffer) + nOffset, nPosition, pnLength);
    });
}

template <class TInside, class TDlgParent, class TPartDlg>
void CKxBaseWnd<TInside, TDlgParent, TPartDlg>::Write(const void* pBuffer, int64_t nAddress, int64_t nLength)
{
    ForEachRegister(nAddress, nLength, [&](int64_t nOffset, int64_t nPosition, int64_t* pnLength) {
        return mWrite(static_cast<const unsigned char*>(pBuffer) + nOffset, nPosition, pnLength);
    });
}

} // namespace KxApi

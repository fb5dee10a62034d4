// SPDX-License-Identifier: Apache-2.0
// The window behind all windows.
#pragma once

#include "frame/BaseDialog_qt.h"
#include "frame/GuiThread_qt.h"
#include "frame/KxCallbackParamBaseWnd_qt.h"
#include "frame/KxGUICreator_qt.h"
#include "frame/KxRegister_qt.h"
#include "frame/WindowNodeMap_qt.h"
#include "frame/utility_qt.h"

#include <Base/GCBadAlloc.h>
#include <GenApi/GenApi.h>
#include <KxSDKCommon/KxCallbackManager.h>

#include <QLayout>
#include <QPoint>
#include <QStringList>
#include <atomic>
#include <initializer_list>
#include <set>
#include <utility>

namespace KxApi
{

/// A window as the application holds it: no widget, but what lives before, between and after the part dialogs
/// that Show builds. `TInside` is its interface, `TDlgParent` its face towards the dialog, `TPartDlg` the
/// dialog.
///
/// States, with the references held (the application's, and one for each dialog):
///   unshown (1) -- Show --> shown (2) -- OnClose, not refused --> closing (2) -- OnDlgDestroy --> unshown
///
/// Release takes the application's reference; at 0 the window deletes itself. A Show in the state shown
/// closes the present dialog first, so two dialogs live until the old one is destroyed; m_pPartDlg is the new
/// one. A dialog whose parent widget is destroyed goes from shown to unshown at once.
///
/// The dialog is destroyed in the GUI thread only. There it may be called without a lock, and is, since what
/// it does takes locks of node maps and images. Changes from other threads reach it by UpdateDialog, which
/// lets each kind of change wait for the GUI thread once, so that nobody can bury that thread under events;
/// what else they call of the dialog, with m_lockPartDlg held, does no more than to look or to leave a note.
template <class TInside, class TDlgParent, class TPartDlg>
class CKxBaseWnd : public TInside, public TDlgParent, public GenApi::IPort
{
public:
    CKxBaseWnd(const CKxBaseWnd&) = delete;
    CKxBaseWnd& operator=(const CKxBaseWnd&) = delete;

    /// The place told by exceptions of registers.
    static const char* SourceFile() noexcept { return KXGC_SOURCE_FILE; }

    void* RegisterCallback(IKxCallback* pCallback) override
    {
        return m_objCallbackManager.RegisterCallback(pCallback);
    }
    void DeregisterCallback(void* hCallback) override { m_objCallbackManager.DeregisterCallback(hCallback); }

    GenApi::INodeMap* GetINodeMap() override;
    void* GetWindowHandle() override;
    GenICam::gcstring GetTitle() override;
    void SetTitle(const GenICam::gcstring& strTitle) override;
    void GetPosition(int* pX, int* pY, int* pWidth, int* pHeight) override;
    void SetPosition(int nX, int nY, int nWidth, int nHeight) override;
    bool IsVisible() override;
    bool GetVisibleMenu() const override { return m_regVisibleMenu.GetValue(); }
    void SetVisibleMenu(bool bVisible) override;
    bool GetVisibleStatusBar() const override { return m_regVisibleStatusBar.GetValue(); }
    void SetVisibleStatusBar(bool bVisible) override;
    void SetUserStatusBarText(const GenICam::gcstring& strText) override;
    void Show(void* pParent, _EKxWindowMode_t eMode) override;
    void Close() override;
    void Release() override;

    int GetStatusBarIndicatorsCount() const override { return m_nStatusBarIndicatorsCount; }
    void GetStatusBarInfo(int nIndex, unsigned int* pWidth, bool* pStretch) const override;
    void GetStatusBarText(QStringList& listText) override;

    IKxWnd* GetIKxWnd() override { return static_cast<IKxWndReleasable*>(this); }
    bool OnClose(CBaseDialogEx* pDialog) override;
    void OnPartDlgCreated() override;
    void OnDlgDestroying(CBaseDialogEx* pDialog) override;
    void OnDlgDestroy(CBaseDialogEx* pDialog) override;
    void OnException(const GenICam::GenericException& e) override;
    GenICam::gcstring GetTitleInside() override;
    CBaseDialogEx* CreatePartDlg(QWidget* pParent, bool bWithMenuBar) override;

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override;
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override;
    GenApi::EAccessMode GetAccessMode() const override { return m_eAccessMode; }

    virtual void ShowChild(void* pParent);
    virtual void ShowModal(void* pParent);
    virtual void ShowModaless(void* pParent);

    void InvalidateNode(const GenICam::gcstring& strName) override;
    CBaseDialogEx* GetPartDlgHwnd() override { return m_pPartDlg; }

    /// A register of the window; false when there is none at the address. See CKxRegister.
    virtual bool mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength)
    {
        return m_objRegister.mRead(pBuffer, nAddress, pnLength);
    }
    virtual bool mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength)
    {
        return m_objRegister.mWrite(pBuffer, nAddress, pnLength);
    }

protected:
    /// @param szPortName,szTitle kept by pointer and copied. Raises BadAllocException.
    CKxBaseWnd(int nXMLResourceID, const char* szPortName, GenApi::EAccessMode eAccessMode,
               const char* szTitle, int nStatusBarIndicatorsCount);
    ~CKxBaseWnd() override = default;

    void ShowModalessOnNewThread(void* pParent);
    void ShowModalessInside(void* pParent);
    void SetWindowModeValue(_EKxWindowMode_t eMode);
    /// For the destructors of derived windows: no node outlives a register.
    void DestroyNodeMap() { m_objNodeMapRef._Destroy(); }
    void AddRef();
    void DelRef();
    void OnWrittenMenuVisibility();
    void OnWrittenStatusBarVisibility();

    /// What a dialog shows of the window's settings.
    enum EUpdate : uint32_t
    {
        UpdateTitle = 1U << 0,
        UpdatePosition = 1U << 1,
        UpdateMenuBar = 1U << 2,
        UpdateStatusBar = 1U << 3,
        UpdateFirstOfWindow = 1U << 4, ///< where the kinds of derived windows begin
    };
    /// Has the dialog, if there is one, show changed settings: at once in the GUI thread, soon from others.
    void UpdateDialog(uint32_t nKinds);
    /// Whether a change of the kind is still to be shown.
    bool IsUpdateWaiting(uint32_t nKind) const { return (m_nWaitingUpdates & nKind) != 0; }
    /// Shows them. GUI thread.
    virtual void OnUpdateDialog(TPartDlg& dialog, uint32_t nKinds);

    /// Calls a function with the dialog as TPartDlg&, unless there is none; see above for the locks. Returns
    /// its result, or `none`.
    template <class Function, class Result>
    Result AskDialog(Function function, Result none) const;
    template <class Function>
    void WithDialog(Function function) const
    {
        AskDialog([&](TPartDlg& dialog) { return function(dialog), true; }, false);
    }

    // What may be taken with it held: m_lockProperty.
    mutable GenApi::CLock m_lockPartDlg;
    // Written in the GUI thread only, with m_lockPartDlg held; hence read there without it, elsewhere with
    // it. Not owned: dialogs delete themselves.
    TPartDlg* m_pPartDlg = nullptr;

    // A leaf.
    mutable GenApi::CLock m_lockProperty;
    GenApi::CLock m_lockStatusBarText;

    CKxCallbackManager m_objCallbackManager;
    CKxRegister m_objRegister;

private:
    using MethodW = void (CKxBaseWnd::*)();
    template <class CODE_TYPE, class XML_TYPE>
    using Numeric = CRegisterParamNumeric<CKxBaseWnd, MethodW, CODE_TYPE, XML_TYPE>;

    struct CRect
    {
        int nLeft;
        int nTop;
        int nRight; // inclusive, as the bottom
        int nBottom;
        int Width() const { return nRight - nLeft + 1; }
        int Height() const { return nBottom - nTop + 1; }
    };

    void RunUpdates();
    void CloseShown(bool bOnlyVisible);
    void BeginShow(_EKxWindowMode_t eMode);
    /// Builds the dialog for the mode that is set and shows it by `present`, a void(TPartDlg&) for the GUI
    /// thread.
    template <class Present>
    void Open(QWidget* pParent, bool bWithMenuBar, Present present);
    void PlaceDialog(TPartDlg& dialog);
    void ShownTitleIs(const QString& strTitle);
    CRect StoredPosition() const;

    GenICam::gcstring m_strTitle KXGC_GUARDED_BY(m_lockProperty);
    // Of the dialog, which other threads may not ask.
    GenICam::gcstring m_strShownTitle KXGC_GUARDED_BY(m_lockProperty);
    CRect m_rcPosition KXGC_GUARDED_BY(m_lockProperty){0, 0, 639, 479};
    // What UpdateTitle and UpdatePosition bring to the dialog.
    GenICam::gcstring m_strWantedTitle KXGC_GUARDED_BY(m_lockProperty);
    CRect m_rcWantedPosition KXGC_GUARDED_BY(m_lockProperty){};
    GenICam::gcstring m_strUserStatusBarText KXGC_GUARDED_BY(m_lockStatusBarText);
    const int m_nStatusBarIndicatorsCount;

    Numeric<unsigned char, unsigned char> m_regSizeTSize;
    Numeric<bool, unsigned int> m_regVisibleMenu;
    Numeric<bool, unsigned int> m_regVisibleStatusBar;
    Numeric<_EKxWindowMode_t, unsigned int> m_regWindowMode;

    const int m_nXMLResourceID;
    const GenApi::EAccessMode m_eAccessMode;
    const char* const m_szPortName;
    std::atomic<uint32_t> m_nWaitingUpdates{0}; // reset with m_lockPartDlg held when another dialog comes
    // Dialogs that hold a reference, the one in m_pPartDlg and those being closed.
    std::set<const CBaseDialogEx*> m_setDialogs KXGC_GUARDED_BY(m_lockPartDlg);
    uint64_t m_nRefCount KXGC_GUARDED_BY(m_lockPartDlg) = 1;

    // Guards the making of the node map, which is the last member: its nodes use the registers.
    GenApi::CLock m_lockNodeMap;
    std::atomic<bool> m_bNodeMapCreated{false};
    GenApi::CNodeMapRef m_objNodeMapRef{"Device"};
};

} // namespace KxApi

#include "frame/KxBaseWndShow_qt.h"
#include "frame/KxBaseWndState_qt.h"

// SPDX-License-Identifier: Apache-2.0
// The window behind all windows.
#pragma once

#include "frame/BaseDialog_qt.h"
#include "frame/IKxWndInside.h"
#include "frame/KxCallbackParamBaseWnd_qt.h"
#include "frame/KxRegister_qt.h"
#include "frame/WindowNodeMap_qt.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxWnd.h>
#include <KxSDKCommon/KxCallbackManager.h>

#include <QRect>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace KxApi
{

/// A window as the application holds it: no widget, but what lives before, between and after the part dialogs
/// that Show builds.
///
/// States, with the references held (the application's, and one for each dialog):
///   unshown (1) -- Show --> shown (2) -- OnClose, not refused --> closing (2) -- OnDlgDestroy --> unshown
///
/// Release takes the application's reference; at 0 the window deletes itself. A Show in the state shown
/// closes the present dialog first, so two dialogs live until the old one is destroyed; where the
/// application refuses that, both stay open, the new one is the window's, and the old one becomes so again
/// when the new one is closed. A dialog whose parent widget is destroyed goes from shown to unshown at once.
///
/// Threads: what belongs to dialogs is done in the GUI thread, and dialogs are asked there only. A call from
/// another thread reaches it by UpdateDialog or Post, and learns what is on the screen from m_objShown, which
/// the dialog keeps up to date.
///
/// Locks, each of which is taken with some of those before it held, or none, and never the other way round:
///   1. the callback manager's, held while callbacks run,
///   2. m_lockPartDlg, held while callbacks of the types 11 and 12 run,
///   3. the node map's, held during Read and Write,
///   4. m_lockProperty, m_lockStatusBarText, m_lockNodeMap: leaves.
class CKxBaseWndCore : public virtual IKxWnd,
                       public virtual IKxWndInside,
                       public virtual IDlgParent,
                       public GenApi::IPort
{
public:
    CKxBaseWndCore(const CKxBaseWndCore&) = delete;
    CKxBaseWndCore& operator=(const CKxBaseWndCore&) = delete;

    /// The place told by exceptions of registers.
    static const char* SourceFile() noexcept { return KXGC_SOURCE_FILE; }

    void* RegisterCallback(IKxCallback* pCallback) override;
    void DeregisterCallback(void* hCallback) override;

    GenApi::INodeMap* GetINodeMap() override;
    void* GetWindowHandle() override;
    GenICam::gcstring GetTitle() override;
    void SetTitle(const GenICam::gcstring& strTitle) override;
    void GetPosition(int* pX, int* pY, int* pWidth, int* pHeight) override;
    void SetPosition(int nX, int nY, int nWidth, int nHeight) override;
    bool IsVisible() override;
    bool GetVisibleMenu() const override { return m_regVisibleMenu; }
    void SetVisibleMenu(bool bVisible) override { m_regVisibleMenu.Set(bVisible); }
    bool GetVisibleStatusBar() const override { return m_regVisibleStatusBar; }
    void SetVisibleStatusBar(bool bVisible) override { m_regVisibleStatusBar.Set(bVisible); }
    void SetUserStatusBarText(const GenICam::gcstring& strText) override;
    void Show(void* pParent, _EKxWindowMode_t eMode) override;
    void Close() override;

    int GetStatusBarIndicatorsCount() const override { return m_nStatusBarIndicatorsCount; }
    void GetStatusBarInfo(int nIndex, unsigned int* pWidth, bool* pStretch) const override;
    void GetStatusBarText(QStringList& listText) override;

    IKxWnd* GetIKxWnd() override { return this; }
    bool OnClose(CBaseDialogEx* pDialog) override;
    void OnPartDlgCreated() override;
    void OnPartDlgChanged(CBaseDialogEx* pDialog) override;
    void OnDlgDestroying(CBaseDialogEx* pDialog) override;
    void OnDlgDestroy(CBaseDialogEx* pDialog) override;
    void OnException(const GenICam::GenericException& e) override;
    GenICam::gcstring GetTitleInside() override;
    CBaseDialogEx* CreatePartDlg(QWidget* pParent, bool bWithMenuBar) override;

    void Read(void* pBuffer, int64_t nAddress, int64_t nLength) override;
    void Write(const void* pBuffer, int64_t nAddress, int64_t nLength) override;
    GenApi::EAccessMode GetAccessMode() const override { return m_eAccessMode; }

    // These are called in the GUI thread.
    virtual void ShowChild(void* pParent);
    virtual void ShowModal(void* pParent);
    virtual void ShowModaless(void* pParent);

    void InvalidateNode(const GenICam::gcstring& strName) override;
    CBaseDialogEx* GetPartDlgHwnd() override { return m_pPartDlg; }

    /// A register of the window; false when there is none at the address. See CKxRegister.
    virtual bool mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength);
    virtual bool mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength);

    /// Where the window's registers enter themselves.
    CKxRegister& Registers() { return m_objRegister; }

    /// A setting has another value: what its row names has to be shown. Any thread.
    /// @param bByCall the setter was called, rather than the port written.
    virtual void OnSettingChanged(uint32_t nUpdate, bool bByCall);

protected:
    /// What a dialog shows of the window's settings.
    enum EUpdate : uint32_t
    {
        UpdateTitle = 1U << 0,
        UpdatePosition = 1U << 1,
        UpdateMenuBar = 1U << 2,
        UpdateStatusBar = 1U << 3,
        UpdateFirstOfWindow = 1U << 4, ///< where the kinds of derived windows begin
    };

    /// @param szPortName,szTitle kept by pointer and copied. Raises BadAllocException.
    CKxBaseWndCore(int nXMLResourceID, const char* szPortName, GenApi::EAccessMode eAccessMode,
                   const char* szTitle, int nStatusBarIndicatorsCount);
    ~CKxBaseWndCore() override;

    void ShowModalessOnNewThread(void* pParent);
    void ShowModalessInside(void* pParent);
    void SetWindowModeValue(_EKxWindowMode_t eMode);
    /// For the destructors of derived windows: no node outlives a register.
    void DestroyNodeMap();
    void AddRef();
    void DelRef();
    void ReleaseByApplication();

    /// Has the dialog, if there is one, show changed settings: at once in the GUI thread, soon from others,
    /// each kind of change once however often it is asked for, so that nobody can bury that thread. Any
    /// thread.
    void UpdateDialog(uint32_t nKinds);
    /// Whether a change of the kind is still to be shown.
    bool IsUpdateWaiting(uint32_t nKind) const { return (m_nWaitingUpdates & nKind) != 0; }
    /// Shows them: derived windows call the base's and then show their own. GUI thread.
    virtual void ShowUpdates(CBaseDialogEx& dialog, uint32_t nKinds);
    /// Runs a function in the GUI thread when that comes to it; the window lives as long. What it raises
    /// becomes an error event. Any thread.
    void Post(std::function<void()> function);

    // Written in the GUI thread only, with m_lockPartDlg held; hence used there without it. Other threads may
    // look whether it is null. Not owned: dialogs delete themselves.
    std::atomic<CBaseDialogEx*> m_pPartDlg{nullptr};

    CKxCallbackManager m_objCallbackManager;
    mutable GenApi::CLock m_lockPartDlg KXGC_ACQUIRED_AFTER(m_objCallbackManager.GetLock());
    mutable GenApi::CLock m_lockProperty KXGC_ACQUIRED_AFTER(m_lockPartDlg);
    GenApi::CLock m_lockStatusBarText KXGC_ACQUIRED_AFTER(m_lockPartDlg);

    CKxRegister m_objRegister;

private:
    template <class CODE_TYPE, class XML_TYPE = CWireType<CODE_TYPE>>
    using Numeric = CRegisterParamNumeric<CKxBaseWndCore, void (CKxBaseWndCore::*)(), CODE_TYPE, XML_TYPE>;

    /// What is on the screen, for threads that may not ask the dialog.
    struct CShown
    {
        bool bPresent = false;
        bool bVisible = false;
        QRect rect;
        GenICam::gcstring strTitle;
    };

    void NoteShown();
    void RunUpdates();
    void CloseShown(bool bOnlyVisible);
    void BeginShow(_EKxWindowMode_t eMode);
    /// Builds the dialog for the mode that is set and shows it by `present`.
    void Open(QWidget* pParent, bool bWithMenuBar, const std::function<void(CBaseDialogEx&)>& present);
    void PlaceDialog(CBaseDialogEx& dialog);
    void Forget(CBaseDialogEx* pDialog) KXGC_REQUIRES(m_lockPartDlg);
    void RunCallback(IKxCallbackParamBase& param) { m_objCallbackManager.RunCallback(&param); }

    GenICam::gcstring m_strTitle KXGC_GUARDED_BY(m_lockProperty);
    QRect m_rcPosition KXGC_GUARDED_BY(m_lockProperty){0, 0, 640, 480};
    CShown m_objShown KXGC_GUARDED_BY(m_lockProperty);
    // What UpdateTitle and UpdatePosition bring to the dialog.
    GenICam::gcstring m_strWantedTitle KXGC_GUARDED_BY(m_lockProperty);
    QRect m_rcWantedPosition KXGC_GUARDED_BY(m_lockProperty);
    GenICam::gcstring m_strUserStatusBarText KXGC_GUARDED_BY(m_lockStatusBarText);
    const int m_nStatusBarIndicatorsCount;

    // clang-format off
    Numeric<unsigned char, unsigned char> m_regSizeTSize{this, {0x0000, nullptr, 0, 0, GenApi::RO}, sizeof(size_t)};
    Numeric<bool> m_regVisibleMenu{this, {0x0010, "VisibleMenuReg", UpdateMenuBar}, true};
    Numeric<bool> m_regVisibleStatusBar{this, {0x0020, "VisibleStatusBarReg", UpdateStatusBar}, m_nStatusBarIndicatorsCount > 0};
    Numeric<_EKxWindowMode_t> m_regWindowMode{this, {0x0030, "WindowModeReg", 0, KxRegister_AlwaysTold}, KxWindowMode_None};
    // clang-format on

    const int m_nXMLResourceID;
    const GenApi::EAccessMode m_eAccessMode;
    const char* const m_szPortName;
    std::atomic<uint32_t> m_nWaitingUpdates{0};
    std::atomic<uint64_t> m_nRefCount{1};
    // GUI thread. Dialogs that hold a reference; and those of them that are open, the window's last.
    std::set<const CBaseDialogEx*> m_setDialogs;
    std::vector<CBaseDialogEx*> m_vecOpen;

    // Guards the making of the node map, which is the last member: its nodes use the registers.
    GenApi::CLock m_lockNodeMap;
    std::atomic<bool> m_bNodeMapCreated{false};
    GenApi::CNodeMapRef m_objNodeMapRef{"Device"};
};

/// The same with the types of one kind of window: `TInside` is its interface, `TDlgParent` its face towards
/// the dialog, `TPartDlg` the dialog.
template <class TInside, class TDlgParent, class TPartDlg>
class CKxBaseWnd : public TInside, public TDlgParent, public CKxBaseWndCore
{
public:
    void Release() override { ReleaseByApplication(); }

protected:
    using CKxBaseWndCore::CKxBaseWndCore;

    /// The dialog, null while there is none. GUI thread.
    TPartDlg* Dialog() const { return static_cast<TPartDlg*>(m_pPartDlg.load()); }

    /// Calls a function that only looks or leaves a note with the dialog, unless there is none. Returns its
    /// result, or `none`.
    template <class Function, class Result>
    Result AskDialog(Function function, Result none) const
    {
        const GenApi::AutoLock lock(this->m_lockPartDlg);
        return Dialog() ? function(*Dialog()) : none;
    }

    /// Shows changed settings. GUI thread.
    virtual void OnUpdateDialog(TPartDlg& dialog, uint32_t nKinds) = 0;
    void ShowUpdates(CBaseDialogEx& dialog, uint32_t nKinds) final
    {
        CKxBaseWndCore::ShowUpdates(dialog, nKinds);
        OnUpdateDialog(static_cast<TPartDlg&>(dialog), nKinds);
    }
};

} // namespace KxApi

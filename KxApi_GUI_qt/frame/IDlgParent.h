// SPDX-License-Identifier: Apache-2.0
// The window as its part dialog sees it.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>

class QStringList;
class QWidget;

namespace KxApi
{

class CBaseDialogEx;
struct IKxWnd;

/// What a status bar shows. Called in the GUI thread.
struct IKxStatusBarInfo
{
    /// Number of fields.
    virtual int GetStatusBarIndicatorsCount() const = 0;
    /// Width of a field in pixels, 0 for none that is fixed, and whether it takes the room that is left.
    virtual void GetStatusBarInfo(int nIndex, unsigned int* pWidth, bool* pStretch) const = 0;
    /// Appends the texts of the first fields.
    virtual void GetStatusBarText(QStringList& listText) = 0;

protected:
    ~IKxStatusBarInfo() = default;
};

/// Root of the forms that a window has for its part dialog. Called in the GUI thread, but for CreatePartDlg.
///
/// A dialog tells which one it is, since a window that is shown anew has two for a while: the old one is
/// destroyed after the new one was built.
struct IDlgParent : IKxStatusBarInfo
{
    virtual IKxWnd* GetIKxWnd() = 0;
    /// The dialog is about to be closed; true keeps it open.
    virtual bool OnClose(CBaseDialogEx* pDialog) = 0;
    virtual void OnPartDlgCreated() = 0;
    /// The dialog's title, place, size or visibility is another one.
    virtual void OnPartDlgChanged(CBaseDialogEx* pDialog) = 0;
    /// The dialog's most derived destructor begins: other threads must not find it any more. It was closed
    /// before, unless its parent widget went.
    virtual void OnDlgDestroying(CBaseDialogEx* pDialog) = 0;
    /// The dialog is being destroyed. The window may be gone on return.
    virtual void OnDlgDestroy(CBaseDialogEx* pDialog) = 0;
    /// An exception that must not go into the event loop.
    virtual void OnException(const GenICam::GenericException& e) = 0;
    /// The stored title.
    virtual GenICam::gcstring GetTitleInside() = 0;
    /// Builds the dialog, in the GUI thread whatever the caller's; it holds a reference to the window until
    /// it is destroyed.
    virtual CBaseDialogEx* CreatePartDlg(QWidget* pParent, bool bWithMenuBar) = 0;

protected:
    ~IDlgParent() = default;
};

} // namespace KxApi

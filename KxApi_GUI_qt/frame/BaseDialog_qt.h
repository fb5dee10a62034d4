// SPDX-License-Identifier: Apache-2.0
// What the widgets of all windows have in common.
#pragma once

#include "frame/IDlgParent.h"
#include "frame/KxStatusBar_qt.h"
#include "frame/utility_qt.h"

#include <QDialog>
#include <QMetaObject>
#include <QString>
#include <QThread>

class QCloseEvent;
class QKeyEvent;
class QMenuBar;
class QShowEvent;
class QWidget;

namespace KxApi
{

/// Base of the part dialogs, that is of what is on the screen while a window is shown: it deletes itself when
/// it is closed, and the next Show builds a new one. GUI thread, but for doClose and the signals, by which
/// the window reaches it from any thread.
///
/// A dialog's most derived destructor begins with EndPart, since from then on the window must not call it any
/// more.
class CBaseDialogEx : public QDialog
{
    Q_OBJECT

public:
    /// @param pDlgParent the window, which outlives the dialog. Raises BadAllocException.
    CBaseDialogEx(QWidget* pParent, IDlgParent* pDlgParent);
    CBaseDialogEx(const CBaseDialogEx&) = delete;
    CBaseDialogEx& operator=(const CBaseDialogEx&) = delete;
    ~CBaseDialogEx() override;

    /// The menu bar, null for a dialog without.
    virtual QMenuBar* getMenu();

    /// Closes the dialog as the user would: at once in the GUI thread, soon from others. Any thread.
    void doClose();

    /// Runs what an event asks for. What it raises becomes the window's error event, as no exception may
    /// reach the event loop.
    template <class Function>
    void Guarded(Function&& function) noexcept
    {
        try {
            function();
        } catch (...) {
            TellCurrentException([this](const GenICam::GenericException& e) {
                if (m_pDlgParent)
                    m_pDlgParent->OnException(e);
            });
        }
    }

signals:
    void setWindowTitleSignal(QString const& txt);
    void setMenuBarVisibleSignal(bool value);
    void setStatusBarVisibleSignal(bool value);
    void setPositionSignal(int nPosX, int nPosY, int nWidth, int nHeight);
    void doCloseSignal();

public slots:
    void setMenuBarVisible(bool value);
    virtual void setStatusBarVisible(bool value);
    void setPosition(int nPosX, int nPosY, int nWidth, int nHeight);
    void setClose();

protected:
    /// For the closeEvent of derived dialogs: asks the window and accepts the event or not. True when the
    /// dialog is closed now.
    bool closeEventCheck(QCloseEvent* pEvent);

    /// For the destructor of derived dialogs.
    void EndPart() noexcept;

    /// Runs a function that touches widgets: now in the GUI thread, from others when that thread comes to it,
    /// unless the dialog is gone by then.
    template <class Function>
    void InGuiThread(Function function)
    {
        if (QThread::currentThread() == thread())
            function();
        else
            QMetaObject::invokeMethod(
                this, [this, function] { Guarded(function); }, Qt::QueuedConnection);
    }

    void showEvent(QShowEvent* pEvent) override;
    /// Esc and the keypad's Enter go on to the parent widget, all other keys end here; none closes the
    /// dialog.
    void keyPressEvent(QKeyEvent* pEvent) override;

    IDlgParent* const m_pDlgParent;
    QWidget* m_pMenuBarWidget = nullptr;   ///< what setMenuBarVisible acts on; null without a menu bar
    QWidget* m_pStatusBarWidget = nullptr; ///< what setStatusBarVisible acts on
    CKxStatusBar m_objStatusBar;
};

} // namespace KxApi

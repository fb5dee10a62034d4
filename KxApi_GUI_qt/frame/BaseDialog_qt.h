// SPDX-License-Identifier: Apache-2.0
// What the widgets of all windows have in common.
#pragma once

#include "frame/IDlgParent.h"
#include "frame/KxStatusBar_qt.h"
#include "frame/utility_qt.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QString>
#include <functional>

class QCloseEvent;
class QKeyEvent;
class QLayout;
class QShowEvent;
class QWidget;

namespace KxApi
{

/// Base of the part dialogs, that is of what is on the screen while a window is shown: it deletes itself when
/// it is closed, and the next Show builds a new one. GUI thread, but for doClose and the signals, by which
/// the window reaches it from any thread.
///
/// A derived dialog sets up its form, fills m_objMenuBar if it is to have one, and calls BuildBars; what it
/// does when it is shown and closed stands in initDialog and onClosed. Its destructor begins with EndPart,
/// since from then on the window must not call it any more. A dialog that is still there when the
/// QApplication ends is destroyed then.
class CBaseDialogEx : public QDialog
{
    Q_OBJECT

public:
    /// @param pDlgParent the window, which outlives the dialog. Raises BadAllocException.
    CBaseDialogEx(QWidget* pParent, IDlgParent* pDlgParent);
    CBaseDialogEx(const CBaseDialogEx&) = delete;
    CBaseDialogEx& operator=(const CBaseDialogEx&) = delete;
    ~CBaseDialogEx() override;

    /// The menu bar, which has no place on the screen in a dialog without.
    virtual QMenuBar* getMenu();

    bool event(QEvent* pEvent) override;

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
    /// The widgets of a form that hold menu bar and status bar, with their layouts.
    struct CBarPlaces
    {
        QWidget* pMenuBarWidget;
        QLayout* pMenuBarLayout;
        QWidget* pStatusBarWidget;
        QLayout* pStatusBarLayout;
    };
    /// Puts the bars into the form; without a menu bar that place stays empty.
    void BuildBars(const CBarPlaces& places, bool bWithMenuBar);
    /// Adds the entry "&Status Bar", which follows the window's setting and changes it.
    void AddStatusBarAction(QMenu& menu);
    /// Shows or hides the bars as the window's settings say.
    void ShowBars();

    /// Brings the window's settings into the dialog before it is seen; what it raises becomes an error event.
    virtual void initDialog();
    /// The close was accepted: what shouldn't wait for the destructor.
    virtual void onClosed() {}

    /// Asks the window, once it has agreed never again, and accepts the event or not. True when the dialog is
    /// closed now.
    bool closeEventCheck(QCloseEvent* pEvent);

    /// For the destructor of derived dialogs.
    void EndPart() noexcept;

    /// Runs a function when the GUI thread comes to it, unless the dialog is gone by then. Any thread of the
    /// dialog's own.
    void Post(std::function<void()> function);

    void showEvent(QShowEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    /// Esc and the keypad's Enter go on to the parent widget, all other keys end here; none closes the
    /// dialog.
    void keyPressEvent(QKeyEvent* pEvent) override;

    IDlgParent* const m_pDlgParent;
    QWidget* m_pMenuBarWidget = nullptr;   ///< what setMenuBarVisible acts on; null without a menu bar
    QWidget* m_pStatusBarWidget = nullptr; ///< what setStatusBarVisible acts on
    CKxStatusBar m_objStatusBar;
    QMenuBar m_objMenuBar;

private:
    QAction m_objActionStatusBar;
    bool m_bClosed = false;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Builds a part dialog in the GUI thread for a caller in any thread.
#pragma once

#include <KxApi_GUI/IKxWnd.h>

#include <QMutex>
#include <QObject>
#include <QWaitCondition>
#include <exception>

class QWidget;

namespace KxApi
{

class CBaseDialogEx;
struct IDlgParent;

/// Lives on the caller's stack: made, handed to the GUI thread by Start, asked by getDialog.
class CKxGUICreator final : public QObject
{
public:
    CKxGUICreator(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent, bool bWithMenuBar);
    ~CKxGUICreator() override;

    /// Posts the request; in the GUI thread it is done at once. Raises RuntimeException when the process has
    /// no application object.
    void Start();

    /// Waits until the GUI thread has built the dialog. Raises what its constructor raised.
    CBaseDialogEx* getDialog();

    bool event(QEvent* pEvent) override;

private:
    const _EKxWindowType_t m_eType;
    QWidget* const m_pParent;
    IDlgParent* const m_pDlgParent;
    const bool m_bWithMenuBar;

    QMutex m_mutex;
    QWaitCondition m_condition;
    // Guarded by m_mutex.
    bool m_bDone = false;
    CBaseDialogEx* m_pDialog = nullptr;
    std::exception_ptr m_pError;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// What the dialogs for the settings of an interface have in common.
#pragma once

#include <QDialog>

class QLineEdit;

namespace KxApi
{

struct IKxInterface;

/// A modal dialog of fixed size. GUI thread.
class CInterfaceDlg : public QDialog
{
    Q_OBJECT

public:
    CInterfaceDlg(const CInterfaceDlg&) = delete;
    CInterfaceDlg& operator=(const CInterfaceDlg&) = delete;

    /// Before it is shown; not owned.
    void SetInterface(IKxInterface* pInterface) { m_pInterface = pInterface; }

    /// For filters on widgets whose size must not be changed: takes no resize for handled.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

protected:
    explicit CInterfaceDlg(QWidget* pParent)
        : QDialog(pParent)
    {}

    /// Makes an entry stand out, or not.
    static void Mark(QLineEdit& edit, bool bWrong);
    /// Keeps the size that the form has, or needs with the user's font.
    void FixSize();

    IKxInterface* m_pInterface = nullptr;
};

} // namespace KxApi

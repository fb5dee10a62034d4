// SPDX-License-Identifier: Apache-2.0
#include "device/InterfaceDlg_qt.h"

#include <QEvent>
#include <QLayout>
#include <QLineEdit>

namespace KxApi
{

bool CInterfaceDlg::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::Resize)
        return QDialog::eventFilter(pWatched, pEvent);
    pEvent->ignore();
    return false;
}

void CInterfaceDlg::Mark(QLineEdit& edit, bool bWrong)
{
    // On yellow only dark text can be read, whatever the user's palette.
    QPalette palette;
    if (bWrong)
        palette.setColor(QPalette::Text, Qt::black);
    edit.setPalette(palette);
    edit.setStyleSheet(bWrong ? QStringLiteral("QLineEdit {background-color: yellow;}") : QString());
}

void CInterfaceDlg::FixSize()
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setFixedSize(size().expandedTo(layout()->sizeHint()));
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#include <KxApi_GUI/KxApi_GUI.h>

#include <QMessageBox>

void ShowErrorMessage(const GenICam::GenericException& e)
{
    const QString strText =
        QString::asprintf("%s [%u]\n%s", e.GetSourceFileName(), e.GetSourceLine(), e.GetDescription());
    QMessageBox::warning(nullptr, "Warning", strText, QMessageBox::Ok);
}

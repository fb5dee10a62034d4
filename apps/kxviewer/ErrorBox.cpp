// SPDX-License-Identifier: Apache-2.0
#include "ErrorBox.h"

#include "ErrorLog.h"

#include <QCoreApplication>
#include <QMessageBox>

void LogViewerError(const QString& strText)
{
    KxApps::LogError("kxviewer " KX_VERSION, strText.toStdString());
}

void ShowError(QWidget* pParent, const QString& strTried, const GenICam::GenericException& error)
{
    LogViewerError(QString::fromUtf8(error.GetDescription()));
    auto* const pBox = new QMessageBox(pParent);
    pBox->setObjectName("errorBox");
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->setIcon(QMessageBox::Warning);
    pBox->setWindowTitle(QCoreApplication::translate("MainWindow", "KxApi viewer"));
    pBox->setTextFormat(Qt::PlainText);
    pBox->setText(strTried);
    pBox->setInformativeText(QString::fromUtf8(error.GetDescription()));
    pBox->setDetailedText(QString("%1: %2\n%3 (%4:%5)")
                              .arg(QString::fromUtf8(typeid(error).name()), QString::fromUtf8(error.what()),
                                   QString::fromUtf8(KX_VERSION),
                                   QString::fromUtf8(error.GetSourceFileName()))
                              .arg(error.GetSourceLine()));
    pBox->open();
}

// SPDX-License-Identifier: Apache-2.0
#include "frame/SaveFileName_qt.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>

namespace KxApi
{
namespace
{

constexpr int kUnknownFilter = 1; // the type that a name under none of the filters is saved as

/// What the file dialog asks too, in the words that it has for it.
bool MayReplace(const QString& strCaption, const QString& strName)
{
    const QString strQuestion =
        QCoreApplication::translate("QFileDialog", "%1 already exists.\nDo you want to replace it?");
    return QMessageBox::warning(nullptr, strCaption, strQuestion.arg(QFileInfo(strName).fileName()),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

} // namespace

CSaveFileName CompletedFileName(const QString& strName, const QString& strFilter,
                                const std::vector<CSaveFileType>& types)
{
    for (const CSaveFileType& type : types) {
        if (strFilter.compare(type.szFilter, Qt::CaseInsensitive) != 0)
            continue;
        const bool bComplete = strName.endsWith(type.szExtension, Qt::CaseInsensitive);
        return {type.nCode, bComplete ? strName : strName + type.szExtension};
    }
    return {kUnknownFilter, strName};
}

CSaveFileName AskForFileName(const QString& strCaption, const QString& strFolder,
                             const std::vector<CSaveFileType>& types)
{
    QStringList filters;
    for (const CSaveFileType& type : types)
        filters += type.szFilter;
    QString strStart = strFolder, strFilter;
    for (;;) {
        const QString strName = QFileDialog::getSaveFileName(
            nullptr, strCaption, strStart, filters.join(";;"), &strFilter, QFileDialog::DontUseNativeDialog);
        if (strName.isEmpty())
            return {};
        CSaveFileName file = CompletedFileName(strName, strFilter, types);
        // The dialog asked about the name that it knew.
        if (file.strName == strName || !QFileInfo::exists(file.strName) ||
            MayReplace(strCaption, file.strName))
            return file;
        strStart = strName;
    }
}

} // namespace KxApi

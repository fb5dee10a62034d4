// SPDX-License-Identifier: Apache-2.0
#include "FileDialog.h"

#include "ViewerSettings.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

QString UserFolder(const QString& strWhat)
{
    const auto eFirst =
        strWhat == "pictures" ? QStandardPaths::PicturesLocation : QStandardPaths::DocumentsLocation;
    QDir folder(ViewerSettings::Folder(strWhat, QStandardPaths::writableLocation(eFirst)));
    // The dialog would take the last part of a path that isn't there for the name of a file.
    while (!folder.exists() && !folder.isRoot())
        folder.setPath(QDir::cleanPath(folder.absoluteFilePath("..")));
    return folder.absolutePath();
}

QString ChooseFile(QWidget* pParent, FileChoice eChoice, const QString& strTitle, const QString& strWhat,
                   const QStringList& filters, const QString& strName)
{
    const bool bSave = eChoice == FileChoice::Save;
    QFileDialog dialog(pParent, strTitle, UserFolder(strWhat));
    dialog.setAcceptMode(bSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(bSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    if (!strName.isEmpty())
        dialog.selectFile(strName);
    // The ending goes with the chosen type, unless another one is typed.
    const auto suffix = [&](const QString& strFilter) {
        dialog.setDefaultSuffix(strFilter.section("(*.", 1).section(QRegExp("[ )]"), 0, 0));
    };
    suffix(filters.first());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, suffix);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    QString strFile = dialog.selectedFiles().value(0);
    ViewerSettings::RememberFolderOf(strWhat, strFile);
    return strFile;
}

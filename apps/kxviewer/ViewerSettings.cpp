// SPDX-License-Identifier: Apache-2.0
#include "ViewerSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{

QString& ChosenFile()
{
    static QString strFile;
    return strFile;
}

} // namespace

ViewerSettings::ViewerSettings()
    : QSettings(File(), QSettings::IniFormat)
{}

void ViewerSettings::UseFile(const QString& strFile) { ChosenFile() = QFileInfo(strFile).absoluteFilePath(); }

QString ViewerSettings::File()
{
    return ChosenFile().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                        "/KxApi/kxviewer.conf"
                                  : ChosenFile();
}

QString ViewerSettings::Folder(const QString& strWhat, const QString& strFirst)
{
    const QString strFolder = ViewerSettings().value("folders/" + strWhat).toString();
    return !strFolder.isEmpty() && QDir(strFolder).exists() ? strFolder : strFirst;
}

void ViewerSettings::RememberFolderOf(const QString& strWhat, const QString& strFile)
{
    ViewerSettings().setValue("folders/" + strWhat, QFileInfo(strFile).absolutePath());
}

// SPDX-License-Identifier: Apache-2.0
// What the viewer remembers from run to run.
#pragma once

#include <QSettings>
#include <QString>

/// The settings in their file: by default "KxApi/kxviewer.conf" in the user's folder for configurations.
class ViewerSettings : public QSettings
{
public:
    ViewerSettings();

    /// Another file from now on. Folders of what the viewer keeps lie beside it.
    static void UseFile(const QString& strFile);
    static QString File();

    /// A folder that the user chose last for something ("pictures", "features"), or the given one at first.
    static QString Folder(const QString& strWhat, const QString& strFirst);
    /// Remembers the folder of a file.
    static void RememberFolderOf(const QString& strWhat, const QString& strFile);
};

// SPDX-License-Identifier: Apache-2.0
// The viewer's file dialogs.
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

enum class FileChoice
{
    Open,
    Save
};

/// Lets the user choose a file, and remembers its folder. Empty when the user thinks better of it.
/// @param strWhat what the file is, for the folder that was chosen last: a name of UserFolder
/// @param filters such as "PNG (*.png)"; names that are typed without an ending get that of the chosen one
/// @param strName that is proposed
QString ChooseFile(QWidget* pParent, FileChoice eChoice, const QString& strTitle, const QString& strWhat,
                   const QStringList& filters, const QString& strName = {});

/// The folder that was chosen last for files of a kind, and at first: the user's for pictures ("pictures"),
/// else that for documents. One that isn't there isn't told: the nearest folder above it is.
QString UserFolder(const QString& strWhat);

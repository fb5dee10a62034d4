// SPDX-License-Identifier: Apache-2.0
// Asks the user under which name to save.
#pragma once

#include <QString>
#include <vector>

namespace KxApi
{

/// A type of files that is offered.
struct CSaveFileType
{
    int nCode;
    const char* szExtension; ///< with its dot
    const char* szFilter;    ///< the dialog's line for it
};

/// What the user chose; the name is empty when that is nothing.
struct CSaveFileName
{
    int nCode = 0;
    QString strName;

    QString Folder() const { return strName.left(strName.lastIndexOf('/')); }
};

/// The type of a filter in any case, and the name with its extension unless it ends in that in any case. For
/// a filter that isn't there the type 1, and the name as it is.
CSaveFileName CompletedFileName(const QString& strName, const QString& strFilter,
                                const std::vector<CSaveFileType>& types);

/// Runs a file dialog. Where a name to which the extension was added is that of a file, the user is asked
/// whether that may be replaced. Other events are handled meanwhile, among them the end of the window. GUI
/// thread.
CSaveFileName AskForFileName(const QString& strCaption, const QString& strFolder,
                             const std::vector<CSaveFileType>& types);

} // namespace KxApi

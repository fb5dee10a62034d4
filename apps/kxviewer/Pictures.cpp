// SPDX-License-Identifier: Apache-2.0
#include "Pictures.h"

#include <Base/GCException.h>

#include <QDir>
#include <QPixmap>
#include <QWidget>

QStringList SavePictures(const QString& strFolder, const QVector<QPair<QString, QWidget*>>& widgets)
{
    if (!QDir().mkpath(strFolder))
        throw RUNTIME_EXCEPTION("the folder '%s' can't be made", strFolder.toUtf8().constData());
    QStringList paths;
    for (const auto& [strName, pWidget] : widgets) {
        if (!pWidget)
            continue;
        const QString strPath = QDir(strFolder).absoluteFilePath(strName + ".png");
        if (!pWidget->grab().save(strPath, "PNG"))
            throw RUNTIME_EXCEPTION("the picture '%s' can't be written", strPath.toUtf8().constData());
        paths += strPath;
    }
    return paths;
}

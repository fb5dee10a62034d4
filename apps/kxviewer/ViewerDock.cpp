// SPDX-License-Identifier: Apache-2.0
#include "ViewerDock.h"

#include "FeatureDock.h"
#include "GraphDock.h"
#include "ObjectsDock.h"

ViewerDock::ViewerDock(const QString& strTitle, const char* szName, QWidget* pParent)
    : QDockWidget(strTitle, pParent)
{
    setObjectName(QString::fromLatin1(szName));
}

QVector<ViewerDock*> MakeDocks(QWidget* pParent)
{
    // clang-format off
    return {
        new FeatureDock(pParent),
        new HistogramDock(pParent),
        new ProfileDock(pParent),
        new ObjectsDock(pParent),
    };
    // clang-format on
}

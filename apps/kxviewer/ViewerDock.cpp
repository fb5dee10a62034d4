// SPDX-License-Identifier: Apache-2.0
#include "ViewerDock.h"

ViewerDock::ViewerDock(const QString& strTitle, const char* szName, QWidget* pParent)
    : QDockWidget(strTitle, pParent)
{
    setObjectName(QString::fromLatin1(szName));
}

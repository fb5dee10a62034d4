// SPDX-License-Identifier: Apache-2.0
// The table of the viewer's docks.
#pragma once

#include <QVector>

class QWidget;
class ViewerDock;

/// All docks, in the order of the menu. They belong to the parent.
QVector<ViewerDock*> MakeDocks(QWidget* pParent);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

class QWidget;

/// Saves a picture of each widget as "<folder>/<name>.png", makes the folder if need be, and returns the
/// paths. Widgets that are null are left out. GUI thread. Raises RuntimeException that names the path.
QStringList SavePictures(const QString& strFolder, const QVector<QPair<QString, QWidget*>>& widgets);

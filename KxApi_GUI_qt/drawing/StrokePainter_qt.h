// SPDX-License-Identifier: Apache-2.0
// Painting long strokes.
#pragma once

#include <QPoint>
#include <QVector>

class QPainter;

namespace KxApi
{

/// Paints the line through points of window pixels with the painter's pen and brush, as QPainter::drawPath
/// does. Qt spends some microseconds on each joint of a wide line; strokes of very many points with a plain
/// round pen are filled by their own geometry instead: a pixel belongs to the stroke when its centre is at
/// most half the pen's width away from the line. What is a pixel wide is the same to the pixel.
void PaintStroke(QPainter& painter, const QVector<QPoint>& vecPath);

} // namespace KxApi

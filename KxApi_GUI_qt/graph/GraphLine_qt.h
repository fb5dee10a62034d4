// SPDX-License-Identifier: Apache-2.0
// Draws the lines of graph items.
#pragma once

#include "graph/GraphSteps_qt.h"

#include <QPen>
#include <QPoint>
#include <QRect>
#include <vector>

class QPainter;

namespace KxApi
{

/// Draws lines with one painter. It keeps its memory from line to line.
class CGraphLinePainter
{
public:
    explicit CGraphLinePainter(QPainter& painter);

    /// The line along the columns. Its picture is that of the whole line as a path, whatever the painter and
    /// the pen; common ones are drawn as rectangles, which is many times as fast.
    void Draw(const std::vector<CGraphColumn>& vecColumns, const QPen& pen);
    /// The line along points, for pens whose pattern depends on its full length.
    void Draw(const std::vector<QPoint>& vecPoints, const QPen& pen);
    /// A straight line, both ends included.
    void DrawLine(const QPoint& from, const QPoint& to, const QPen& pen);

private:
    bool IsThin(const QPen& pen) const;
    void DrawAsPath(const std::vector<CGraphColumn>& vecColumns, const QPen& pen);
    void DrawMitered(const std::vector<CGraphColumn>& vecColumns, const QPen& pen);
    void AddBar(const CGraphColumn& column, bool bFirst, bool bLast);
    void AddRect(int nLeft, int nTop, int nRight, int nBottom);
    void DrawEnds(const std::vector<CGraphColumn>& vecColumns, const QPen& pen);
    void FillRects(const QPen& pen);

    QPainter& m_painter;
    int m_nScale = 0; // device pixels of a pixel; 0 for a painter that rectangles aren't exact with
    std::vector<QRect> m_vecRects;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Texts laid out once and painted often.
#pragma once

#include "drawing/LabelFont_qt.h"

#include <QRect>
#include <QString>
#include <cstddef>
#include <memory>
#include <vector>

class QFont;
class QPainter;

namespace KxApi
{

/// The labels of one object as they were last painted, in the order of painting. A live image is painted many
/// times between two changes of a label; laying a text out costs much more than painting what was laid out.
/// A label is found by its place in the order and is made anew when its text or the font differ, or another
/// thread paints. Under the lock of the tool.
class CLabelCache
{
public:
    /// To be called ahead of an object's labels, with the font that they have.
    void Begin(const QFont& font, CLabelFonts& fonts);

    /// Box of the next label round its origin, as QFontMetrics::boundingRect tells it.
    QRect NextBounds(const QString& strText);

    /// Paints the label that was asked for last into a box, as QPainter::drawText does with the flags for
    /// left and top. Whole: with fractions of pixels in its steps a text may be a little wider than its box.
    void Paint(QPainter& painter, const QRectF& rcBox);

private:
    struct CLabel
    {
        QString strText;
        CLaidOutText laidOut;
        bool bKnown = false;
    };

    std::shared_ptr<CLabelFont> m_pFont;
    std::vector<CLabel> m_vecLabels;
    size_t m_nNext = 0;
};

} // namespace KxApi

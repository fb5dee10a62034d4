// SPDX-License-Identifier: Apache-2.0
#include "drawing/LabelCache_qt.h"

#include <QPaintEngine>
#include <QPainter>

namespace KxApi
{

void CLabelCache::Begin(const QFont& font, CLabelFonts& fonts)
{
    m_nNext = 0;
    if (m_pFont && m_pFont->IsFor(font))
        return;
    m_vecLabels.clear();
    m_pFont = fonts.Get(font);
}

QRect CLabelCache::NextBounds(const QString& strText)
{
    if (m_nNext == m_vecLabels.size())
        m_vecLabels.emplace_back();
    CLabel& label = m_vecLabels[m_nNext++];
    if (!label.bKnown || label.strText != strText)
        label = {strText, m_pFont->LayOut(strText), true};
    return label.laidOut.rcBounds;
}

void CLabelCache::Paint(QPainter& painter, const QRectF& rcBox)
{
    const CLabel& label = m_vecLabels[m_nNext - 1];
    // Glyphs neither have a background nor tell a printer their text.
    if (painter.backgroundMode() == Qt::OpaqueMode || label.laidOut.vecRuns.isEmpty() ||
        painter.paintEngine()->type() != QPaintEngine::Raster)
    {
        painter.drawText(rcBox, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, label.strText);
        return;
    }
    for (const QGlyphRun& run : label.laidOut.vecRuns)
        painter.drawGlyphRun(rcBox.topLeft(), run);
}

} // namespace KxApi

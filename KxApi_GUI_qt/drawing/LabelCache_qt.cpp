// SPDX-License-Identifier: Apache-2.0
#include "drawing/LabelCache_qt.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace KxApi
{
namespace
{

/// QStaticText breaks lines and paints decorations in its own way.
bool LooksTheSameAsStaticText(const QString& strText, const QFont& font)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    return !font.underline() && !font.strikeOut() && std::none_of(strText.begin(), strText.end(), isControl);
}

} // namespace

void CLabelCache::Begin(const QFont& font)
{
    m_nNext = 0;
    if (m_font == font && !m_vecLabels.empty())
        return;
    m_font = font;
    m_vecLabels.clear();
}

QRect CLabelCache::NextBounds(const QString& strText)
{
    if (m_nNext == m_vecLabels.size())
        m_vecLabels.emplace_back();
    CLabel& label = m_vecLabels[m_nNext++];
    if (label.strText != strText || label.rcBounds.isNull()) {
        const QFontMetrics metrics(m_font);
        label.strText = strText;
        label.rcBounds = metrics.boundingRect(strText);
        label.bStatic = LooksTheSameAsStaticText(strText, m_font);
        label.text = QStaticText(strText);
        label.text.setTextFormat(Qt::PlainText);
        label.bFitsBounds = metrics.horizontalAdvance(strText) <= label.rcBounds.width() &&
                            metrics.height() <= label.rcBounds.height();
    }
    return label.rcBounds;
}

void CLabelCache::Paint(QPainter& painter, const QRectF& rcBox)
{
    CLabel& label = m_vecLabels[m_nNext - 1];
    // Nor does it paint a background.
    if (painter.backgroundMode() == Qt::OpaqueMode || !label.bStatic) {
        painter.drawText(rcBox, Qt::AlignLeft | Qt::AlignTop, label.strText);
        return;
    }
    // What drawText does too: the box is that of the ink, and what is wider is cut.
    if (!label.bFitsBounds) {
        painter.save();
        painter.setClipRect(rcBox, Qt::IntersectClip);
    }
    painter.drawStaticText(rcBox.topLeft(), label.text);
    if (!label.bFitsBounds)
        painter.restore();
}

} // namespace KxApi

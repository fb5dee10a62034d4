// SPDX-License-Identifier: Apache-2.0
#include "drawing/LabelCache_qt.h"

#include <QFontMetrics>
#include <QPainter>

namespace KxApi
{

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
        label.text = QStaticText(strText);
        label.text.setTextFormat(Qt::PlainText);
        label.bFitsBounds = metrics.horizontalAdvance(strText) <= label.rcBounds.width() &&
                            metrics.height() <= label.rcBounds.height() && !strText.contains('\n');
    }
    return label.rcBounds;
}

void CLabelCache::Paint(QPainter& painter, const QRectF& rcBox)
{
    CLabel& label = m_vecLabels[m_nNext - 1];
    // QStaticText neither paints a background nor cuts off what is outside of the box.
    if (painter.backgroundMode() == Qt::OpaqueMode || !label.bFitsBounds)
        painter.drawText(rcBox, Qt::AlignLeft | Qt::AlignTop, label.strText);
    else
        painter.drawStaticText(rcBox.topLeft(), label.text);
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#include "image/DisplayImageScrollArea_qt.h"

#include <Base/GCBadAlloc.h>

#include <QBrush>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QWheelEvent>
#include <utility>

CDisplayImageScrollArea::CDisplayImageScrollArea(QWidget* pParent)
    : QScrollArea(pParent)
    , m_strPendingStyleSheet("CDisplayImageScrollArea {background-color:#ffffff;}")
{}

void CDisplayImageScrollArea::setBackgroundColor(const QColor& colBackground)
{
    if (colBackground == m_colBackgroundColor)
        return;
    m_colBackgroundColor = colBackground;
    m_strPendingStyleSheet =
        QString::asprintf("CDisplayImageScrollArea {background-color:#%02x%02x%02x;}", colBackground.red(),
                          colBackground.green(), colBackground.blue());
}

void CDisplayImageScrollArea::drawBackground(QPainter& painter, const QRect& rcViewport) const
{
    painter.fillRect(rcViewport, QBrush(m_colBackgroundColor));
    if (m_eBrushStyle != Qt::SolidPattern)
        painter.fillRect(rcViewport, QBrush(m_colBrushColor, m_eBrushStyle));
}

void CDisplayImageScrollArea::paintEvent(QPaintEvent* pEvent)
{
    // After the paint, since a style sheet has everything painted anew.
    if (!m_strPendingStyleSheet.isEmpty())
        QTimer::singleShot(0, this, [this, strSheet = std::exchange(m_strPendingStyleSheet, QString())] {
            setStyleSheet(strSheet);
        });
    {
        QPainter painter(viewport());
        drawBackground(painter, viewport()->rect());
    }
    QScrollArea::paintEvent(pEvent);
}

void CDisplayImageScrollArea::keyPressEvent(QKeyEvent* pEvent)
{
    const int nKey = pEvent->key();
    if (!widget() || (nKey != Qt::Key_Backspace && nKey != Qt::Key_Delete))
        return;
    GenICam::GuardBadAlloc([&] {
        QCoreApplication::postEvent(widget(),
                                    new QKeyEvent(pEvent->type(), nKey, Qt::NoModifier, QString(), false, 1));
    });
}

void CDisplayImageScrollArea::wheelEvent(QWheelEvent* pEvent)
{
    if (QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier)
        pEvent->ignore();
    else
        QScrollArea::wheelEvent(pEvent);
}

void CDisplayImageScrollArea::resizeEvent(QResizeEvent* pEvent)
{
    emit on_resize();
    QScrollArea::resizeEvent(pEvent);
}

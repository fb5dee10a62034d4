// SPDX-License-Identifier: Apache-2.0
// The area around the image, with its pattern.
#pragma once

#include <QColor>
#include <QScrollArea>
#include <QString>

/// Scrolls the image widget and paints the background that it leaves free. It stands outside the namespace
/// because style sheets name it. GUI thread.
class CDisplayImageScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit CDisplayImageScrollArea(QWidget* pParent = nullptr);

    /// The pattern's colour and style; Qt::SolidPattern for no pattern. They show with the next paint.
    void setBrushColor(const QColor& colBrush) { m_colBrushColor = colBrush; }
    QColor getBrushColor() const { return m_colBrushColor; }
    void setBrushStyle(Qt::BrushStyle eStyle) { m_eBrushStyle = eStyle; }
    Qt::BrushStyle getBrushStyle() const { return m_eBrushStyle; }

    /// The colour below the pattern.
    void setBackgroundColor(const QColor& colBackground);
    QColor getBackgroundColor() const { return m_colBackgroundColor; }

    /// Paints the background into a rectangle. The painter's coordinates are those of the viewport.
    void drawBackground(QPainter& painter, const QRect& rcViewport) const;

signals:
    /// The area is about to lay its contents out for a new size.
    void on_resize();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    /// Backspace and Delete go to the image widget, all other keys end here.
    void keyPressEvent(QKeyEvent* pEvent) override;
    /// With Ctrl the wheel zooms, which isn't done here.
    void wheelEvent(QWheelEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    QColor m_colBrushColor{0, 0, 0};
    QColor m_colBackgroundColor;
    Qt::BrushStyle m_eBrushStyle = Qt::Dense7Pattern;
    QString m_strPendingStyleSheet; // is applied after the next paint
};

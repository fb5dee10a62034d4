// SPDX-License-Identifier: Apache-2.0
// Draws the icons of the drawing toolbar, in one strip for each density of screens: `draw_icons FOLDER`
// writes pngDrawingToolBar.png and pngDrawingToolBar@2x.png. The results are kept in png/resqt; run it after
// a change here.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>

namespace
{

constexpr int kSize = 16;
constexpr int kColumns = 15;

// Both are seen well on light and on dark bars.
const QColor kShape(0x2F, 0x6F, 0xB5);
const QColor kMark(0xE0, 0x7B, 0x1F);
const QColor kOff(0xC0, 0x44, 0x3C);

QPen ShapePen(const QColor& color = kShape, double width = 1.6)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

/// The points that a user sets are squares.
void DrawMarks(QPainter& painter, std::initializer_list<QPointF> points)
{
    for (const QPointF& point : points)
        painter.fillRect(QRectF(point.x() - 1.5, point.y() - 1.5, 3, 3), kMark);
}

void DrawDisable(QPainter& painter)
{
    painter.setPen(ShapePen(kOff, 1.8));
    painter.drawEllipse(QPointF(8, 8), 5.6, 5.6);
    painter.drawLine(QPointF(4.2, 11.8), QPointF(11.8, 4.2));
}

void DrawSelect(QPainter& painter)
{
    painter.setPen(ShapePen(kShape, 1.2));
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({{4, 1.5}, {4, 12.5}, {6.8, 10}, {8.8, 14.2}, {10.6, 13.3}, {8.7, 9.3}, {12.4, 9}}));
}

void DrawLine(QPainter& painter)
{
    painter.drawLine(QPointF(3, 13), QPointF(13, 3));
    DrawMarks(painter, {{3, 13}, {13, 3}});
}

void DrawRectangle(QPainter& painter)
{
    painter.drawRect(QRectF(2.5, 4, 11, 8));
    DrawMarks(painter, {{2.5, 4}, {13.5, 12}});
}

void DrawEllipse(QPainter& painter) { painter.drawEllipse(QPointF(8, 8), 6.2, 4.4); }

void DrawText(QPainter& painter)
{
    painter.setPen(ShapePen(kShape, 2));
    painter.drawLine(QPointF(3.5, 3.5), QPointF(12.5, 3.5));
    painter.drawLine(QPointF(8, 3.5), QPointF(8, 13));
    painter.setPen(ShapePen(kShape, 1.4));
    painter.drawLine(QPointF(3.2, 3.5), QPointF(3.2, 5.2));
    painter.drawLine(QPointF(12.8, 3.5), QPointF(12.8, 5.2));
    painter.drawLine(QPointF(6.3, 13.2), QPointF(9.7, 13.2));
}

void DrawAngle(QPainter& painter)
{
    painter.drawLine(QPointF(2.5, 13), QPointF(13.5, 13));
    painter.drawLine(QPointF(2.5, 13), QPointF(11, 3));
    painter.setPen(ShapePen(kMark, 1.4));
    painter.drawArc(QRectF(-4.5, 6, 14, 14), 0, 50 * 16);
}

void DrawPolygon(QPainter& painter)
{
    const QPolygonF shape({{7, 2.5}, {13.5, 6}, {11.5, 13}, {4, 13}, {2.5, 6.5}});
    painter.drawPolygon(shape);
    DrawMarks(painter, {shape[0], shape[1], shape[2], shape[3], shape[4]});
}

void DrawPerpendicular(QPainter& painter)
{
    painter.drawLine(QPointF(2.5, 13), QPointF(13.5, 13));
    painter.drawLine(QPointF(8, 2.5), QPointF(8, 13));
    painter.setPen(ShapePen(kMark, 1.3));
    painter.drawPolyline(QPolygonF({{8, 9.5}, {11.5, 9.5}, {11.5, 13}}));
}

void DrawArc(QPainter& painter)
{
    painter.drawArc(QRectF(2.5, 4, 11, 16), 0, 180 * 16);
    DrawMarks(painter, {{2.5, 12}, {8, 4}, {13.5, 12}});
}

void DrawBezier(QPainter& painter)
{
    painter.setPen(ShapePen(kMark, 1));
    painter.drawLine(QPointF(3, 12.5), QPointF(4, 3.5));
    painter.drawLine(QPointF(13, 3.5), QPointF(12, 12.5));
    QPainterPath path(QPointF(3, 12.5));
    path.cubicTo({5, 0}, {11, 16}, {13, 3.5});
    painter.setPen(ShapePen());
    painter.drawPath(path);
    DrawMarks(painter, {{4, 3.5}, {12, 12.5}});
}

void DrawFreehand(QPainter& painter)
{
    QPainterPath path(QPointF(2.5, 11));
    path.cubicTo({3, 4}, {6.5, 2.5}, {7, 6.5});
    path.cubicTo({7.3, 9.5}, {4.8, 12.5}, {7.5, 12.8});
    path.cubicTo({10.5, 13}, {9.5, 6}, {13.5, 4.5});
    painter.drawPath(path);
}

void DrawCross(QPainter& painter)
{
    painter.drawLine(QPointF(8, 2), QPointF(8, 14));
    painter.drawLine(QPointF(2, 8), QPointF(14, 8));
    DrawMarks(painter, {{8, 8}});
}

struct Icon
{
    int column;
    void (*draw)(QPainter&);
};

constexpr Icon kIcons[] = {
    {0, DrawDisable}, {1, DrawSelect},    {2, DrawLine},    {3, DrawRectangle},     {4, DrawEllipse},
    {5, DrawText},    {6, DrawAngle},     {7, DrawPolygon}, {8, DrawPerpendicular}, {9, DrawArc},
    {10, DrawBezier}, {11, DrawFreehand}, {14, DrawCross},
};

QImage Strip(int density)
{
    QImage strip(kColumns * kSize * density, kSize * density, QImage::Format_ARGB32);
    strip.fill(Qt::transparent);
    for (const Icon& icon : kIcons) {
        QPainter painter(&strip);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(density, density);
        painter.translate(icon.column * kSize, 0);
        painter.setClipRect(0, 0, kSize, kSize);
        painter.setPen(ShapePen());
        icon.draw(painter);
    }
    return strip;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const bool saved = Strip(1).save(folder + "/pngDrawingToolBar.png") &&
                       Strip(2).save(folder + "/pngDrawingToolBar@2x.png");
    if (!saved)
        std::fprintf(stderr, "can't write to %s\n", argv[1]);
    return saved ? 0 : 1;
}

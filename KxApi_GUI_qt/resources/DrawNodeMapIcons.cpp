// SPDX-License-Identifier: Apache-2.0
// Draws the icons of the node-map window, each in a file for each density of screens:
// `draw_node_map_icons FOLDER` writes pngRefresh.png, pngRefresh@2x.png and so on. The results are kept in
// png/resqt; run it after a change here.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>

namespace
{

constexpr int kSize = 16;

// Both are seen well on light and on dark bars.
const QColor kShape(0x2F, 0x6F, 0xB5);
const QColor kMark(0xE0, 0x7B, 0x1F);

QPen Pen(const QColor& color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void DrawLines(QPainter& painter, std::initializer_list<QLineF> lines)
{
    for (const QLineF& line : lines)
        painter.drawLine(line);
}

/// Letters above each other, and an arrow down.
void DrawAlphabetic(QPainter& painter)
{
    painter.setPen(Pen(kShape, 1.3));
    painter.drawPolyline(QPolygonF({{1.8, 7}, {4.3, 1.5}, {6.8, 7}}));
    painter.drawLine(QPointF(2.8, 5.2), QPointF(5.8, 5.2));
    painter.drawPolyline(QPolygonF({{2, 9.5}, {6.6, 9.5}, {2, 14.5}, {6.6, 14.5}}));
    painter.setPen(Pen(kMark, 1.5));
    DrawLines(painter, {{11.5, 2, 11.5, 13.5}, {9, 11, 11.5, 13.8}, {14, 11, 11.5, 13.8}});
}

/// A branch with its twigs.
void DrawCategories(QPainter& painter)
{
    painter.setPen(Pen(kShape, 1.2));
    DrawLines(painter, {{3.5, 5, 3.5, 13}, {3.5, 8.5, 8, 8.5}, {3.5, 13, 8, 13}});
    painter.setPen(Pen(kShape, 1.5));
    painter.drawLine(QPointF(7, 3), QPointF(14, 3));
    painter.setPen(Pen(kMark, 1.5));
    DrawLines(painter, {{10, 8.5, 14, 8.5}, {10, 13, 14, 13}});
    painter.fillRect(QRectF(1.8, 1.3, 3.4, 3.4), kShape);
}

void DrawBox(QPainter& painter)
{
    painter.setPen(Pen(kShape, 1.3));
    painter.drawRoundedRect(QRectF(2, 2, 12, 12), 2, 2);
    painter.setPen(Pen(kMark, 1.8));
    painter.drawLine(QPointF(5, 8), QPointF(11, 8));
}

void DrawExpand(QPainter& painter)
{
    DrawBox(painter);
    painter.drawLine(QPointF(8, 5), QPointF(8, 11));
}

/// Two arrows that chase each other.
void DrawRefresh(QPainter& painter)
{
    painter.setPen(Pen(kShape, 1.7));
    const QRectF circle(3, 3, 10, 10);
    painter.drawArc(circle, 30 * 16, 125 * 16);
    painter.drawArc(circle, 210 * 16, 125 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kMark);
    painter.drawPolygon(QPolygonF({{9.6, 5.9}, {14.6, 6.2}, {13.2, 1.6}}));
    painter.drawPolygon(QPolygonF({{6.4, 10.1}, {1.4, 9.8}, {2.8, 14.4}}));
}

struct Icon
{
    const char* name;
    void (*draw)(QPainter&);
};

constexpr Icon kIcons[] = {
    {"AlphabeticModeTrue", DrawAlphabetic},
    {"AlphabeticModeFalse", DrawCategories},
    {"ExpandAllTrue", DrawExpand},
    {"ExpandAllFalse", DrawBox},
    {"Refresh", DrawRefresh},
};

bool Save(const QString& folder, const Icon& icon, int density)
{
    QImage image(kSize * density, kSize * density, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    icon.draw(painter);
    painter.end();
    return image.save(folder + "/png" + icon.name + (density == 1 ? "" : "@2x") + ".png");
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
    bool saved = true;
    for (const Icon& icon : kIcons)
        saved = Save(folder, icon, 1) && Save(folder, icon, 2) && saved;
    if (!saved)
        std::fprintf(stderr, "can't write to %s\n", argv[1]);
    return saved ? 0 : 1;
}

// SPDX-License-Identifier: Apache-2.0
#include "ActionIcons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QStringList>
#include <algorithm>
#include <cstring>

namespace
{

constexpr double kGrid = 24; // units of the icons' drawings

/// Strokes in a grid of 24 by 24: M x y, L x y, C six numbers, Z, E x y rx ry (ellipse), R x y w h, and T x y
/// letters (a text). Filled in the accent where there is one, in the text's colour else.
struct IconRow
{
    const char* szId;
    const char* szDrawing;
    const char* szFilled = "";
    QRgb accent = 0;
};

constexpr QRgb kGreen = 0xff2e9e44;
constexpr QRgb kRed = 0xffd23b3b;
constexpr QRgb kBlue = 0xff2f7fd6;

constexpr IconRow kIcons[] = {
    {"connect", "M 8 3 L 8 8 M 16 3 L 16 8 M 5 8 L 19 8 L 19 11 C 19 18 5 18 5 11 Z M 12 16 L 12 21"},
    {"disconnect", "M 6 3 L 6 7 M 12 3 L 12 7 M 3 7 L 15 7 L 15 9 C 15 15 3 15 3 9 Z M 9 14 L 9 20 "
                   "M 15 14 L 21 20 M 21 14 L 15 20"},
    {"closeTab", "M 6 6 L 18 18 M 18 6 L 6 18"},
    {"start", "", "M 6 4 L 20 12 L 6 20 Z", kGreen},
    {"stop", "", "R 6 6 12 12", kRed},
    {"single", "R 4 5 16 14", "M 10 8 L 16 12 L 10 16 Z", kGreen},
    {"trigger", "", "M 14 2 L 5 14 L 11 14 L 9 22 L 19 9 L 12 9 Z", 0xffe0a010},
    {"record", "", "E 12 12 7 7", kRed},
    {"snapshot", "M 3 8 L 3 19 L 21 19 L 21 8 L 16 8 L 14 5 L 10 5 L 8 8 Z E 12 13 3.5 3.5"},
    {"save", "M 4 4 L 17 4 L 20 7 L 20 20 L 4 20 Z R 8 4 7 5 R 7 13 10 7"},
    {"zoomIn", "E 10 10 6 6 M 15 15 L 21 21 M 7 10 L 13 10 M 10 7 L 10 13"},
    {"zoomOut", "E 10 10 6 6 M 15 15 L 21 21 M 7 10 L 13 10"},
    {"zoomFit",
     "R 7 8 10 8 M 3 7 L 3 4 L 7 4 M 17 4 L 21 4 L 21 7 M 21 17 L 21 20 L 17 20 M 7 20 L 3 20 L 3 17"},
    {"zoomFull", "R 2 4 20 16", "T 5 16 1:1"},
    {"fullScreen", "M 4 9 L 4 4 L 9 4 M 15 4 L 20 4 L 20 9 M 20 15 L 20 20 L 15 20 M 9 20 L 4 20 L 4 15"},
    {"tile", "R 3 4 8 7 R 13 4 8 7 R 3 13 8 7 R 13 13 8 7"},
    {"markExposure", "E 12 12 8 8", "M 12 4 L 12 20 C 1 20 1 4 12 4 Z", kRed},
    {"pixelValues", "R 3 3 18 18", "T 6 16 42"},
    {"grid", "R 3 3 18 18 M 9 3 L 9 21 M 15 3 L 15 21 M 3 9 L 21 9 M 3 15 L 21 15"},
    {"regionSet", "M 3 7 L 3 3 L 7 3 M 17 3 L 21 3 L 21 7 M 21 17 L 21 21 L 17 21 M 7 21 L 3 21 L 3 17",
     "R 8 8 8 8", kBlue},
    {"regionFull", "R 3 3 18 18", "R 6 6 12 12", kBlue},
    {"help", "E 12 12 9 9", "T 8 17 ?"},
    {"draw0", "M 8 21 L 8 12 L 5 14 M 8 12 L 8 5 M 11 11 L 11 3 M 14 11 L 14 4 M 17 13 L 17 6 M 17 13 L 17 "
              "17 L 14 21 L 8 21"},
    {"draw1", "M 6 3 L 6 18 L 10 14 L 13 21 L 15 20 L 12 13 L 17 13 Z"},
    {"draw2", "M 4 20 L 20 4", "R 3 18 3 3 R 18 3 3 3"},
    {"draw3", "R 4 6 16 12"},
    {"draw4", "E 12 12 9 6"},
    {"draw5", "", "T 5 19 A"},
    {"draw6", "M 20 19 L 4 19 L 16 5 M 12 19 C 12 16 11 14 9 13"},
    {"draw7", "M 4 10 L 12 4 L 20 9 L 17 20 L 7 19 Z"},
    {"draw8", "M 3 19 L 21 19 M 12 4 L 12 19 M 12 15 L 16 15 L 16 19"},
    {"draw9", "M 4 18 C 5 4 19 4 20 18"},
    {"draw10", "M 4 19 C 12 19 10 5 20 5"},
    {"draw11", "M 3 16 C 6 6 9 8 10 13 C 11 18 14 18 15 12 C 16 7 18 6 21 9"},
    {"draw12", "M 12 4 L 12 20 M 4 12 L 20 12"},
};

QPainterPath PathOf(const char* szDrawing)
{
    const QStringList parts = QString::fromLatin1(szDrawing).split(' ', Qt::SkipEmptyParts);
    QPainterPath path;
    int i = 0;
    const auto number = [&] { return parts.value(++i).toDouble(); };
    for (; i < parts.size(); ++i) {
        double n[6] = {};
        const char cKind = parts[i].at(0).toLatin1();
        const int nCount = cKind == 'C' ? 6 : cKind == 'E' || cKind == 'R' ? 4 : cKind == 'Z' ? 0 : 2;
        for (int k = 0; k < nCount; ++k)
            n[k] = number();
        switch (cKind) {
        case 'M':
            path.moveTo(n[0], n[1]);
            break;
        case 'L':
            path.lineTo(n[0], n[1]);
            break;
        case 'C':
            path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]);
            break;
        case 'E':
            path.addEllipse(QPointF(n[0], n[1]), n[2], n[3]);
            break;
        case 'R':
            path.addRect(n[0], n[1], n[2], n[3]);
            break;
        case 'T': {
            QFont font = QApplication::font();
            const QString strText = parts.value(++i);
            font.setPixelSize(strText.size() > 1 ? 10 : strText == "A" ? 20 : 14);
            font.setBold(true);
            path.addText(n[0], n[1], font, strText);
            break;
        }
        default:
            path.closeSubpath();
        }
    }
    return path;
}

class ActionIconEngine final : public QIconEngine
{
public:
    explicit ActionIconEngine(const IconRow& row)
        : m_row(row)
    {}
    void paint(QPainter* pPainter, const QRect& rect, QIcon::Mode eMode, QIcon::State /*eState*/) override
    {
        const bool bDisabled = eMode == QIcon::Disabled;
        const QColor text = QApplication::palette().color(bDisabled ? QPalette::Disabled : QPalette::Active,
                                                          QPalette::WindowText);
        const QColor accent = m_row.accent != 0 && !bDisabled ? QColor(m_row.accent) : text;
        const double dSide = std::min(rect.width(), rect.height());
        pPainter->save();
        pPainter->setRenderHint(QPainter::Antialiasing);
        pPainter->translate(rect.center().x() + 0.5 - dSide / 2, rect.center().y() + 0.5 - dSide / 2);
        pPainter->scale(dSide / kGrid, dSide / kGrid);
        pPainter->setPen(QPen(text, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pPainter->setBrush(Qt::NoBrush);
        pPainter->drawPath(PathOf(m_row.szDrawing));
        pPainter->setPen(Qt::NoPen);
        pPainter->setBrush(accent);
        pPainter->drawPath(PathOf(m_row.szFilled));
        pPainter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode eMode, QIcon::State eState) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), eMode, eState);
        return pixmap;
    }
    QIconEngine* clone() const override { return new ActionIconEngine(m_row); }

private:
    const IconRow& m_row;
};

} // namespace

QIcon MakeActionIcon(const char* szId)
{
    const auto found = std::find_if(std::begin(kIcons), std::end(kIcons),
                                    [&](const IconRow& row) { return std::strcmp(row.szId, szId) == 0; });
    return found == std::end(kIcons) ? QIcon() : QIcon(new ActionIconEngine(*found));
}

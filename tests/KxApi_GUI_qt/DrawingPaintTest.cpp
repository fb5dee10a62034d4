// SPDX-License-Identifier: Apache-2.0
// What is painted of a drawing, on the screen and into images.
#include "DrawingTest.h"
#include "drawing/LabelCache_qt.h"
#include "drawing/StrokePainter_qt.h"

#include <gmock/gmock.h>

#include <QFontMetrics>
#include <QPainterPath>
#include <QPolygon>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::ElementsAre;

using DrawingPaint = DrawingTest;

TEST_F(DrawingPaint, PaintsFiguresHandlesAndGrid)
{
    Add("Rectangle", {{100, 100}, {200, 200}}, 0);
    const auto isAt = [](const QImage& picture, int x, int y, const QColor& color) {
        return picture.pixelColor(x, y) == color;
    };
    const QColor figure(255, 192, 0);
    QImage picture = Painted(2.0);
    EXPECT_TRUE(isAt(picture, 300, 200, figure));
    EXPECT_TRUE(isAt(picture, 200, 300, figure));
    EXPECT_FALSE(isAt(picture, 195, 195, Qt::white)) << "no handles while the tool is off";
    Set("DrawingItemType", "Select");
    Node("DrawingObjectSelector")->SetValue(0);
    m_pTool->SetGridVLineCount(3);
    m_pTool->SetGridLineColor(0x0000FF00);
    m_pTool->SetGridLineStyle(KxLineStyle_Solid);
    picture = Painted(2.0);
    EXPECT_TRUE(isAt(picture, 195, 195, Qt::white));
    EXPECT_TRUE(isAt(picture, 197, 197, Qt::darkBlue)) << "hollow";
    EXPECT_TRUE(isAt(picture, 398, 398, Qt::black)) << "filled";
    EXPECT_TRUE(isAt(picture, 500, 30, Qt::green));
    EXPECT_FALSE(isAt(picture, 300, 30, Qt::green));
    Set("HideAllDrawingObjects", "1");
    picture = Painted(2.0);
    EXPECT_TRUE(isAt(picture, 300, 200, Qt::darkBlue));
    EXPECT_TRUE(isAt(picture, 500, 30, Qt::green)) << "the grid stays";
}

int GreatestDifference(const QImage& a, const QImage& b)
{
    int nGreatest = a.size() == b.size() ? 0 : 256;
    for (int y = 0; nGreatest < 256 && y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            nGreatest = std::max({nGreatest, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                  std::abs(qBlue(p) - qBlue(q))});
        }
    return nGreatest;
}

// Where labels lie over each other, rounding may tell.
TEST_F(DrawingPaint, KeepsTheSamePixelsOverLiveImages)
{
    for (int i = 0; i < 40; ++i) {
        Add(i % 2 != 0 ? "Ellipse" : "Line", {{20.0 * i, 30.0 + i}, {20.0 * i + 70, 100.0 + i}}, 0x7F);
        Set("DrawingFontBackgroundColorMode", i % 3 != 0 ? "Transparent" : "Opaque");
    }
    for (const double dZoom : {0.5, 1.0, 1.7}) {
        const QImage first = Painted(dZoom);
        EXPECT_LE(GreatestDifference(first, Painted(dZoom)), 1);
        EXPECT_LE(GreatestDifference(first, Painted(dZoom)), 1);
    }
    const QImage before = Painted();
    Set("DrawingObjectIsHidden", "1");
    EXPECT_GT(GreatestDifference(before, Painted()), 1);
}

TEST_F(DrawingPaint, DrawsIntoBuffersOfAnyFormat)
{
    Add("Line", {{100, 100}, {200, 100}}, 0);
    Set("HideAllDrawingObjects", "1"); // on the screen
    for (const auto eFormat : {KxPixelFormat_Mono8, KxPixelFormat_RGB8, KxPixelFormat_BGR8,
                               KxPixelFormat_Mono16, KxPixelFormat_BGRa8})
    {
        const ImageBufferPtr pBuffer =
            MakeImage(300, 250, eFormat, 0x40); // half as high and less than a third wide
        m_pTool->DrawOnIKxImageBuffer(&*pBuffer);
        const IKxImage& image = *pBuffer->GetIKxImage();
        EXPECT_EQ(image.GetImagePixelFormat(), KxPixelFormat_RGB8);
        const auto* const pLine =
            static_cast<const unsigned char*>(image.GetImageBuffer()) + 50 * image.GetImageLinePitch();
        EXPECT_THAT(std::vector<int>(pLine + 45 * 3, pLine + 46 * 3), ElementsAre(255, 192, 0));
        EXPECT_THAT(std::vector<int>(pLine + 90 * 3, pLine + 91 * 3), ElementsAre(0x40, 0x40, 0x40));
    }
    EXPECT_NE(ErrorOf([this] { m_pTool->DrawOnIKxImageBuffer(nullptr); }), "");
}

// Buffers are painted on in a faster way.
TEST_F(DrawingPaint, BuffersLookLikeTheWindow)
{
    for (int i = 0; i < 28; ++i) {
        const double x = 60.0 + i % 7 * 130, y = 50.0 + i / 7 * 110;
        if (i % 2 != 0)
            Add("Polygon", {{x, y}, {x + 80, y + 60}, {x + 90, y - 20}}, 0x7F);
        else
            Add(i % 4 != 0 ? "Rectangle" : "Ellipse", {{x, y}, {x + 80, y + 60}}, 0x7F);
        Set("DrawingLineWidth", std::to_string(1 + i / 7));
        Set("DrawingLineStyle", i % 3 != 0 ? "Solid" : "Dash");
        Set("DrawingBrushStyle", i % 5 != 0 ? "Null" : "Hatch_Cross");
    }
    const ImageBufferPtr pBuffer = MakeImage(kImageWidth, kImageHeight, KxPixelFormat_Mono8, 0x40);
    m_pTool->DrawOnIKxImageBuffer(&*pBuffer);
    const IKxImage& image = *pBuffer->GetIKxImage();
    const QImage drawn(static_cast<const uchar*>(image.GetImageBuffer()), kImageWidth, kImageHeight,
                       static_cast<int>(image.GetImageLinePitch()), QImage::Format_RGB888);
    QImage window(kImageWidth, kImageHeight, QImage::Format_RGB32);
    window.fill(QColor(0x40, 0x40, 0x40));
    QPainter painter(&window);
    Paint(painter);
    EXPECT_EQ(GreatestDifference(drawn, window), 0);
}

/// A picture that is painted on at a scale.
QImage PaintedAt(double dScale, const std::function<void(QPainter&)>& paint)
{
    QImage picture(600, 600, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.scale(dScale, dScale);
    paint(painter);
    return picture;
}

// Ways of its own are taken for strokes of many points, and for labels.
TEST_F(DrawingPaint, LongStrokesLookAsQtPaintsThem)
{
    QPolygon path;
    for (int i = 0; i < 2000; ++i) {
        const double dRadius = 10 + i * 0.06;
        path.append({qRound(140 + dRadius * std::cos(i * 0.1)), qRound(140 + dRadius * std::sin(i * 0.1))});
    }
    for (const double dScale : {1.0, 1.5, 2.0}) {
        for (const int nWidth : {1, 2, 3, 9}) {
            SCOPED_TRACE(testing::Message() << nWidth << " wide at " << dScale);
            const QPen pen(Qt::yellow, nWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
            const QImage expected = PaintedAt(dScale, [&](QPainter& painter) {
                QPainterPath whole;
                whole.addPolygon(path);
                painter.setPen(pen);
                painter.drawPath(whole);
            });
            const QImage painted = PaintedAt(dScale, [&](QPainter& painter) {
                painter.setPen(pen);
                PaintStroke(painter, path);
            });
            int nSet = 0, nDifferent = 0;
            for (int y = 0; y < painted.height(); ++y) {
                for (int x = 0; x < painted.width(); ++x) {
                    nSet += expected.pixel(x, y) != qRgb(0, 0, 0) ? 1 : 0;
                    nDifferent += expected.pixel(x, y) != painted.pixel(x, y) ? 1 : 0;
                }
            }
            EXPECT_GT(nSet, 5000);
            EXPECT_LE(nDifferent, nWidth * dScale > 1 ? nSet / 50 : 0);
        }
    }
}

TEST_F(DrawingPaint, LabelsLookAsDrawTextPaintsThem)
{
    const char* const texts[] = {"12.3[pixels]",
                                 "-0.123456 \xC2\xB5m",
                                 "(1.0, 22.5)",
                                 "77 %",
                                 "0.0f\xC3\xAE",
                                 "nan[pixels 2]",
                                 "Object fi 7",
                                 "two\nlines",
                                 "1.0\xD8\xB3\xD9\x85",
                                 "1\xCC\x81",
                                 "",
                                 " ",
                                 "4711.AV"};
    for (const char* const szFamily : {"", "DejaVu Serif", "DejaVu Sans Mono"}) {
        for (const int nHeight : {9, 14, 24, 41}) {
            for (const bool bOther : {false, true}) {
                QFont font;
                font.setFamily(szFamily);
                font.setPixelSize(nHeight);
                font.setBold(bOther);
                font.setItalic(bOther);
                font.setStyleStrategy(QFont::NoSubpixelAntialias);
                const auto painted = [&](double dScale, bool bCached) {
                    return PaintedAt(dScale, [&](QPainter& painter) {
                        painter.setFont(font);
                        painter.setPen(Qt::yellow);
                        CLabelFonts fonts;
                        CLabelCache cache;
                        cache.Begin(painter.font(), fonts);
                        int y = 5;
                        for (const char* const szText : texts) {
                            const QString strText = QString::fromUtf8(szText);
                            const QRect rcText = QFontMetrics(painter.font()).boundingRect(strText);
                            EXPECT_EQ(cache.NextBounds(strText), rcText) << szText;
                            const QRectF rcBox(7, y += nHeight, rcText.width(), rcText.height());
                            if (bCached)
                                cache.Paint(painter, rcBox);
                            else
                                painter.drawText(rcBox, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                                                 strText);
                        }
                    });
                };
                for (const double dScale : {1.0, 1.5})
                    EXPECT_LE(GreatestDifference(painted(dScale, true), painted(dScale, false)), 2)
                        << szFamily << ", " << nHeight << " at " << dScale;
            }
        }
    }
}

} // namespace
} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Plots, pixel by pixel: positions worked out by hand, and lines beside a painter that draws each point.
#include "Support.h"
#include "graph/GraphLine_qt.h"
#include "graph/GraphRenderer_qt.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <random>

namespace KxTest
{
namespace
{

using namespace KxApi;
using List = CKxAutoPtr<IKxGraphDataBufferListResizable>;
using Values = std::vector<uint32_t>;

class GraphRender : public GuiTest
{
protected:
    GraphRender()
        : m_pList(CreateIKxGraphDataBufferListResizable(nullptr))
    {
        processEventGUI(false, 0); // fonts need an application
        m_appearance.eScaleMode = KxGraphScaleMode_Linear;
    }

    void Add(const Values& values, CKxGraphDataDescription description = {})
    {
        uint32_t* const pTarget = m_pList->Append(description, values.size());
        std::copy(values.begin(), values.end(), pTarget);
    }

    QImage Render(double dScale = 1, QPainter::RenderHints hints = {}) const
    {
        QImage image(QSize(m_param.TotalWidth(), m_param.TotalHeight()) * dScale, QImage::Format_RGB32);
        image.setDevicePixelRatio(dScale);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHints(hints);
        DrawGraphBackground(painter, m_param.TotalWidth(), m_param.TotalHeight(), m_appearance);
        DrawGraphArea(painter, m_param, m_appearance, m_style, *m_pList);
        return image;
    }

    /// What the lines look like when each value is a step of a path.
    QImage RenderEachPoint(const std::vector<Values>& items, double dScale, QPainter::RenderHints hints) const
    {
        QImage image(QSize(m_param.TotalWidth(), m_param.TotalHeight()) * dScale, QImage::Format_RGB32);
        image.setDevicePixelRatio(dScale);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHints(hints);
        size_t nMaxLength = 0;
        double dMax = 0;
        for (const Values& values : items) {
            nMaxLength = std::max(nMaxLength, values.size());
            for (const uint32_t nValue : values)
                dMax = std::max(dMax, static_cast<double>(nValue));
        }
        const bool bLogarithmic = m_appearance.eScaleMode == KxGraphScaleMode_Logarithmic;
        for (size_t n = 0; n < items.size(); ++n) {
            QPainterPath path;
            path.setFillRule(Qt::WindingFill);
            int nX = static_cast<int>(m_param.nPlotMarginLeft);
            for (size_t i = 0; i < items[n].size(); ++i) {
                const double dValue = items[n][i];
                const double dPart =
                    bLogarithmic ? std::log10(dValue + 1.0) / std::log10(dMax + 1.0) : dValue / dMax;
                const int nY = static_cast<int>(m_param.nPlotMarginTop + m_param.nPlotHeight * (1.0 - dPart));
                if (i == 0)
                    path.moveTo(nX, nY);
                path.lineTo(nX, nY);
                nX = static_cast<int>(m_param.nPlotMarginLeft + (i + 1) * m_param.nPlotWidth / nMaxLength);
                path.lineTo(nX, nY);
            }
            painter.setPen(m_style.Pen(GraphPen_FirstCustom + n));
            painter.drawPath(path);
        }
        return image;
    }

    List m_pList;
    CDrawGraphParam m_param;
    CGraphAppearance m_appearance;
    CGraphStyle m_style;
};

/// Where two pictures differ, as a text.
std::string DifferenceOf(const QImage& a, const QImage& b)
{
    int nDifferent = 0;
    std::string strFirst;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y) && nDifferent++ == 0)
                strFirst = "at " + std::to_string(x) + ", " + std::to_string(y);
        }
    }
    return nDifferent == 0 ? "" : std::to_string(nDifferent) + " pixels, first " + strFirst;
}

Values Noise(size_t nCount, uint32_t nMax, unsigned nSeed)
{
    std::mt19937 generator(nSeed);
    Values values(nCount);
    uint32_t nValue = nMax / 2;
    for (uint32_t& target : values) {
        // Runs, small steps and jumps.
        switch (generator() % 4) {
        case 0:
            nValue = static_cast<uint32_t>(generator() % (uint64_t{nMax} + 1));
            break;
        case 1:
            nValue = std::min(nMax, nValue + static_cast<uint32_t>(generator() % 3));
            break;
        case 2:
            nValue -= std::min(nValue, static_cast<uint32_t>(generator() % 3));
            break;
        default:
            break;
        }
        target = nValue;
    }
    return values;
}

struct CPenCase
{
    uint32_t nWidth;
    uint32_t nJoin;
    uint32_t nEndcap;
    uint32_t nStyle = 0;
};

TEST_F(GraphRender, LinesLookAsIfEachPointWereDrawn)
{
    m_appearance.nDrawEnable = 0;
    m_param.nPlotWidth = 120;
    m_param.nPlotHeight = 90;
    const CPenCase kCases[] = {
        {1, 0, 0},  {1, 2, 1},    {1, 0, 2},    {2, 2, 0},    {2, 2, 1}, {2, 2, 2},
        {2, 0, 0},  {2, 1, 2},    {3, 2, 0},    {4, 2, 1},    {5, 0, 0}, {9, 1, 1},
        {31, 2, 2}, {2, 2, 0, 1}, {2, 2, 0, 3}, {1, 0, 0, 2}, {0, 0, 0},
    };
    for (const CPenCase& penCase : kCases) {
        for (size_t nPen = GraphPen_FirstCustom; nPen < GraphPen_FirstCustom + 3; ++nPen) {
            m_style.SetLineInfo(nPen, 0, penCase.nStyle);
            m_style.SetLineInfo(nPen, 1, penCase.nWidth);
            m_style.SetLineInfo(nPen, 2, nPen == GraphPen_FirstCustom ? 0x0000FF : 0xFF0000);
            m_style.SetLineInfo(nPen, 3, penCase.nEndcap);
            m_style.SetLineInfo(nPen, 4, penCase.nJoin);
        }
        unsigned nSeed = 0;
        for (const size_t nLength : {1U, 2U, 7U, 119U, 250U, 3000U}) {
            if (nLength > 250 && (penCase.nWidth > 2 || penCase.nStyle != 0))
                break; // painters need long to draw each point of these
            const std::vector<Values> items{Noise(nLength, 1000, ++nSeed),
                                            Noise(nLength / 2 + 1, 60, ++nSeed), Noise(nLength, 1, ++nSeed)};
            m_pList->Clear();
            for (const Values& values : items)
                Add(values);
            for (const double dScale : {1.0, 2.0}) {
                for (const auto eMode : {KxGraphScaleMode_Linear, KxGraphScaleMode_Logarithmic}) {
                    m_appearance.eScaleMode = eMode;
                    const QPainter::RenderHints hints =
                        nSeed % 2 == 0 && nLength <= 250 ? QPainter::Antialiasing : QPainter::RenderHints();
                    ASSERT_EQ(DifferenceOf(Render(dScale, hints), RenderEachPoint(items, dScale, hints)), "")
                        << nLength << " values, width " << penCase.nWidth << ", join " << penCase.nJoin
                        << ", cap " << penCase.nEndcap << ", style " << penCase.nStyle << ", scale " << dScale
                        << ", hints " << hints;
                }
            }
        }
    }
}

QRgb PixelAt(const QImage& image, int x, int y) { return image.pixel(x, y) & 0xFFFFFFU; }

// Left 84, top 16, plot of 300 by 200: the frame's lines are at 84 and 383, 16 and 215, but for the left and
// the upper one, which stand a pixel outside.
TEST_F(GraphRender, StraightLinesAreThoseOfAPainter)
{
    const QPoint kEnds[] = {{10, 10}, {30, 10}, {10, 25}, {10, 10}, {40, 41}};
    for (const int nWidth : {0, 1, 2, 3}) {
        for (const auto eCap : {Qt::RoundCap, Qt::SquareCap, Qt::FlatCap}) {
            const QPen pen(Qt::red, nWidth, Qt::SolidLine, eCap);
            for (const QPoint& end : kEnds) {
                QImage image(50, 50, QImage::Format_RGB32), expected(50, 50, QImage::Format_RGB32);
                image.fill(Qt::white);
                expected.fill(Qt::white);
                QPainter painter(&image), bare(&expected);
                bare.setPen(pen);
                bare.drawLine(kEnds[0], end);
                CGraphLinePainter(painter).DrawLine(end, kEnds[0], pen);
                EXPECT_EQ(DifferenceOf(image, expected), "")
                    << nWidth << " cap " << eCap << " to " << end.x();
            }
        }
    }
}

TEST_F(GraphRender, PutsFrameTicksAndStepsWhereTheyBelong)
{
    m_param.nPlotWidth = 300;
    m_param.nPlotHeight = 200;
    m_appearance.nDrawEnable = KxGraphDrawEnable_BottomSideLine | KxGraphDrawEnable_LeftSideLine |
                               KxGraphDrawEnable_TopSideLine | KxGraphDrawEnable_RightSideLine;
    for (const size_t nPen : {GraphPen_BottomSide, GraphPen_LeftSide, GraphPen_TopSide, GraphPen_RightSide})
        m_style.SetLineInfo(nPen, 2, 0x10 << nPen);
    const auto frameColor = [this](size_t nPen) { return m_style.Pen(nPen).color().rgb() & 0xFFFFFF; };
    const Values values{0, 10, 5};
    QImage empty(400, 240, QImage::Format_RGB32);
    empty.fill(Qt::white);
    EXPECT_EQ(DifferenceOf(Render(), empty), "") << "a list without items shows not even the frame";

    Add({0, 0});
    const QImage frame = Render();
    EXPECT_EQ(PixelAt(frame, 84, 215), frameColor(GraphPen_BottomSide));
    EXPECT_EQ(PixelAt(frame, 382, 215), frameColor(GraphPen_BottomSide));
    EXPECT_EQ(PixelAt(frame, 83, 215), frameColor(GraphPen_LeftSide));
    EXPECT_EQ(PixelAt(frame, 83, 16), frameColor(GraphPen_LeftSide));
    EXPECT_EQ(PixelAt(frame, 83, 15), frameColor(GraphPen_TopSide));
    EXPECT_EQ(PixelAt(frame, 382, 15), frameColor(GraphPen_TopSide));
    EXPECT_EQ(PixelAt(frame, 383, 16), frameColor(GraphPen_RightSide));
    EXPECT_EQ(PixelAt(frame, 200, 100), 0xFFFFFFU) << "values of 0 alone have no line";

    // Three steps of 100 pixels, at the bottom, the top and in the middle.
    m_pList->Clear();
    Add(values);
    m_appearance.nDrawEnable = 0;
    m_style.SetLineInfo(GraphPen_FirstCustom, 2, 0xFF);
    const QImage steps = Render();
    const QRgb red = 0xFF0000;
    EXPECT_EQ(PixelAt(steps, 84, 216), red);
    EXPECT_EQ(PixelAt(steps, 183, 216), red);
    EXPECT_EQ(PixelAt(steps, 184, 100), red);
    EXPECT_EQ(PixelAt(steps, 284, 16), red);
    EXPECT_EQ(PixelAt(steps, 284, 116), red);
    EXPECT_EQ(PixelAt(steps, 383, 116), red);
    EXPECT_EQ(PixelAt(steps, 284, 117), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(steps, 83, 215), 0xFFFFFFU);
    m_appearance.eScaleMode = KxGraphScaleMode_Logarithmic;
    // log10(6) / log10(11) = 0.7472; 16 + 200 * 0.2528 = 66.6
    EXPECT_EQ(PixelAt(Render(), 330, 66), red);
    EXPECT_EQ(PixelAt(Render(), 330, 116), 0xFFFFFFU);
}

TEST_F(GraphRender, PutsMarksAndLabelsOfTheScales)
{
    m_param.nPlotWidth = 300;
    m_param.nPlotHeight = 200;
    m_appearance.nDrawEnable = KxGraphDrawEnable_ScaleXLine;
    Add({0, 0, 0});
    // Steps of 100 pixels: marks in their middles, at 134 and so on, from the bottom at 215 for 5 pixels.
    const QImage outside = Render();
    for (const int nX : {134, 234, 334}) {
        EXPECT_EQ(PixelAt(outside, nX, 215), 0U);
        EXPECT_EQ(PixelAt(outside, nX, 220), 0U);
        EXPECT_EQ(PixelAt(outside, nX, 221), 0xFFFFFFU);
        EXPECT_EQ(PixelAt(outside, nX, 214), 0xFFFFFFU);
    }
    m_param.eScaleLineDirectionX = KxGraphScaleLineDirection_Inside;
    EXPECT_EQ(PixelAt(Render(), 134, 210), 0U);
    EXPECT_EQ(PixelAt(Render(), 134, 216), 0xFFFFFFU);
    m_param.eScaleLineDirectionX = KxGraphScaleLineDirection_Bothside;
    EXPECT_EQ(PixelAt(Render(), 134, 210), 0U);
    EXPECT_EQ(PixelAt(Render(), 134, 220), 0U);

    // Labels show by their grounds: as wide as the widest, below the mark and the frame's line.
    m_param.eScaleLineDirectionX = KxGraphScaleLineDirection_Outside;
    m_appearance.nDrawEnable |= KxGraphDrawEnable_ScaleXText;
    m_style.SetTextInfo(GraphFont_ScaleX, 1, KxBackgroundMode_Opaque);
    m_style.SetTextInfo(GraphFont_ScaleX, 2, 0x00FF00);
    const QFontMetrics metrics(m_style.Text(GraphFont_ScaleX).font);
    const int nLeft = 134 - metrics.horizontalAdvance("8") / 2;
    const QImage labels = Render();
    EXPECT_EQ(PixelAt(labels, nLeft, 221), 0x00FF00U);
    EXPECT_EQ(PixelAt(labels, nLeft - 1, 221), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(labels, nLeft, 221 + metrics.height() - 1), 0x00FF00U);
    m_appearance.nDrawEnable = KxGraphDrawEnable_ScaleXText;
    EXPECT_EQ(PixelAt(Render(), nLeft, 221), 0xFFFFFFU) << "no text without marks or auxiliary lines";

    // Y: a height of 200 has room for 200 / 2 / 19 marks or so; the top one is at 215 - 200.
    m_pList->Clear();
    Add({1000000, 0});
    m_appearance.nDrawEnable = KxGraphDrawEnable_ScaleYLine | KxGraphDrawEnable_ScaleYText;
    m_style.SetTextInfo(GraphFont_ScaleY, 1, KxBackgroundMode_Opaque);
    m_style.SetTextInfo(GraphFont_ScaleY, 2, 0x00FF00);
    m_style.SetLineInfo(GraphPen_FirstCustom, 1, 0);
    const QImage scale = Render();
    EXPECT_EQ(PixelAt(scale, 79, 15), 0U);
    EXPECT_EQ(PixelAt(scale, 78, 15), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(scale, 79, 215), 0U);
    const int nRight = 84 - 5 - 1 - 1 - 1;
    const int nWidth = metrics.horizontalAdvance("1.0e+06");
    const int nTop = 15 - metrics.height() / 2;
    EXPECT_EQ(PixelAt(scale, nRight, nTop), 0x00FF00U);
    EXPECT_EQ(PixelAt(scale, nRight + 1, nTop), 0xFFFFFFU);
    EXPECT_EQ(PixelAt(scale, nRight - nWidth + 1, nTop), 0x00FF00U);
    EXPECT_EQ(PixelAt(scale, nRight - nWidth, nTop), 0xFFFFFFU);
    m_appearance.nFloatingPointDigits = 7;
    EXPECT_EQ(PixelAt(Render(), nRight - nWidth, nTop), 0x00FF00U) << "1000000.0 is wider";
    EXPECT_EQ(PixelAt(scale, nRight, 215 - metrics.height() / 2), 0xFFFFFFU) << "0 has no label";
}

TEST_F(GraphRender, ChoosesPensByComponentOrInTurn)
{
    m_param.nPlotWidth = 34;
    m_appearance.nDrawEnable = KxGraphDrawEnable_LineStyleAuto;
    CKxGraphDataDescription gb;
    gb.eComponent = MakeKxPixelComponentType(KxPixelComponent_Gb, 12, KxPolarization_135);
    Add({5, 5}, gb);
    EXPECT_EQ(CGraphStyle::PenOfComponent(gb.eComponent), 112U);
    EXPECT_EQ(CGraphStyle::PenOfComponent(0x01020000), 10U);
    EXPECT_EQ(CGraphStyle::PenOfComponent(0x06080000), 43U);
    EXPECT_EQ(CGraphStyle::PenOfComponent(0x040C0004), 88U);
    EXPECT_EQ(CGraphStyle::PenOfComponent(0x010D0000), 0U);
    EXPECT_EQ(m_style.LineInfo(112, 0), 3U) << "135 degrees: dashes and dots";
    EXPECT_EQ(PixelAt(Render(), 84, 16), 0x0090E0U);

    // 17 items without a component: the last one has the first pen again.
    m_pList->Clear();
    for (uint32_t n = 0; n < 17; ++n) {
        Add({n * 16 + 16, n * 16 + 16});
        m_style.SetLineInfo(GraphPen_FirstCustom + n % 16, 2, 0x10 + n % 16);
    }
    const QImage image = Render();
    EXPECT_EQ(PixelAt(image, 100, 16), 0x100000U);
    EXPECT_EQ(PixelAt(image, 100, 16 + 256 / 17), 0x1F0000U);
}

} // namespace
} // namespace KxTest

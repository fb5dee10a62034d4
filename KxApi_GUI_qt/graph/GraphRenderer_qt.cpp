// SPDX-License-Identifier: Apache-2.0
#include "graph/GraphRenderer_qt.h"

#include "graph/GraphLine_qt.h"
#include "graph/GraphScaleY_qt.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace KxApi
{
namespace
{

struct CItem
{
    const uint32_t* pValues;
    size_t nLength;
    EKxGraphDataKind_t eKind;
    int64_t nDivisor;
    size_t nPen;
};

bool IsDivided(EKxGraphDataKind_t eKind)
{
    return eKind == KxGraphDataKind_InterpolatedProfile || eKind == KxGraphDataKind_AveragedProfile;
}

bool IsKnown(EKxGraphDataKind_t eKind)
{
    return eKind >= KxGraphDataKind_Histogram && eKind <= KxGraphDataKind_AveragedProfile;
}

/// A painting of a plot.
class CPlot
{
public:
    CPlot(QPainter& painter, const CDrawGraphParam& param, const CGraphAppearance& appearance,
          const CGraphStyle& style, const IKxGraphDataBufferList& list)
        : m_painter(painter)
        , m_param(param)
        , m_appearance(appearance)
        , m_style(style)
        , m_linePainter(painter)
        , m_nLeft(static_cast<int>(param.nPlotMarginLeft))
        , m_nTop(static_cast<int>(param.nPlotMarginTop))
        , m_nWidth(static_cast<int>(param.nPlotWidth))
        , m_nHeight(static_cast<int>(param.nPlotHeight))
        , m_nRight(m_nLeft + m_nWidth - 1)
        , m_nBottom(m_nTop + m_nHeight - 1)
    {
        for (size_t n = 0; n < list.GetCount(); ++n)
            AddItem(*list.GetItem(n)->GetGraphData(), n);
    }

    void Draw()
    {
        DrawScaleX();
        DrawScaleY();
        DrawFrame();
        DrawLines();
    }

private:
    /// Ends of the marks of a scale: outwards is the way in which positive lengths go.
    struct CMarks
    {
        int nInside = 0;
        int nOutside = 0;
    };
    static CMarks MarksOf(_EKxGraphScaleLineDirection_t eDirection, uint32_t nSize)
    {
        const auto nLength = static_cast<int>(std::min(nSize, kMaxMark));
        return {eDirection == KxGraphScaleLineDirection_Outside ? 0 : nLength,
                eDirection == KxGraphScaleLineDirection_Inside ? 0 : nLength};
    }
    static constexpr uint32_t kMaxMark = 16384; // the port takes any number

    bool Draws(EKxGraphDrawEnable_t eBit) const { return m_appearance.Draws(eBit); }

    void AddItem(const IKxGraphData& data, size_t nPlace);
    void DrawScaleX();
    void DrawLabelX(size_t nElement, int nX, int nLabelWidth, int nLabelHeight, int nOffset,
                    const CGraphTextStyle& text);
    void DrawScaleY();
    void DrawLabelY(double dValue, int nY, int nOffset, const QFontMetrics& metrics,
                    const CGraphTextStyle& text);
    double LabelValue(int nMark, int nDivisions) const;
    void DrawFrame();
    void DrawLines();
    void DrawLine(const CItem& item, CGraphItemScale& toY);
    void Line(EGraphPen ePen, int nX0, int nY0, int nX1, int nY1);
    void Label(const QRect& rect, int nAlignment, const QString& strText, const CGraphTextStyle& text);

    QPainter& m_painter;
    const CDrawGraphParam& m_param;
    const CGraphAppearance& m_appearance;
    const CGraphStyle& m_style;
    CGraphLinePainter m_linePainter;
    const int m_nLeft;
    const int m_nTop;
    const int m_nWidth;
    const int m_nHeight;
    const int m_nRight;
    const int m_nBottom;
    std::vector<CItem> m_vecItems;
    size_t m_nMaxLength = 0;
    double m_dMaxValue = 0;
    std::vector<CGraphColumn> m_vecColumns; // memory that lines share
};

void CPlot::AddItem(const IKxGraphData& data, size_t nPlace)
{
    const size_t nLength = data.GetLength();
    if (nLength == 0)
        return;
    m_nMaxLength = std::max(m_nMaxLength, nLength);
    const EKxGraphDataKind_t eKind = data.GetKind();
    if (!IsKnown(eKind))
        return;
    const int64_t nDivisor = IsDivided(eKind) ? data.GetProperty(KxGraphDataProperty_Divisor) : 1;
    if (nDivisor < 1)
        return;
    const bool bByData =
        eKind == KxGraphDataKind_Histogram || m_appearance.eNormalization != KxGraphNomalization_Off;
    const int64_t nMax = data.GetProperty(bByData ? KxGraphDataProperty_Max : KxGraphDataProperty_FullScale);
    m_dMaxValue = std::max(m_dMaxValue, static_cast<double>(nMax) / static_cast<double>(nDivisor));

    size_t nPen = 0;
    if (Draws(KxGraphDrawEnable_LineStyleAuto))
        nPen = CGraphStyle::PenOfComponent(GraphComponentOf(data));
    if (nPen == 0)
        nPen = GraphPen_FirstCustom + nPlace % kGraphCustomPens;
    m_vecItems.push_back({data.GetValues(), nLength, eKind, nDivisor, nPen});
}

void CPlot::Line(EGraphPen ePen, int nX0, int nY0, int nX1, int nY1)
{
    m_linePainter.DrawLine({nX0, nY0}, {nX1, nY1}, m_style.Pen(ePen));
}

void CPlot::Label(const QRect& rect, int nAlignment, const QString& strText, const CGraphTextStyle& text)
{
    if (text.bOpaque)
        m_painter.fillRect(rect, text.colorBk);
    m_painter.setPen(text.color);
    m_painter.drawText(rect, nAlignment, strText);
}

void CPlot::DrawScaleX()
{
    if (m_nMaxLength < 2 || !(Draws(KxGraphDrawEnable_ScaleXLine) || Draws(KxGraphDrawEnable_AuxiliaryXLine)))
        return;
    const CGraphTextStyle text = m_style.Text(GraphFont_ScaleX);
    m_painter.setFont(text.font);
    const QFontMetrics metrics(m_painter.font(), m_painter.device());
    const auto nDigits = static_cast<int>(std::log10(static_cast<double>(m_nMaxLength)) + 1.0);
    const int nLabelWidth = metrics.horizontalAdvance(QString(nDigits, '8'));
    const size_t nRoom = nLabelWidth > 0 ? static_cast<size_t>(m_nWidth / 3 / nLabelWidth) : 0;
    const size_t nCount = nRoom > 1 ? std::min(nRoom, m_nMaxLength) : 2;

    const size_t nUnit = static_cast<size_t>(m_nWidth) / m_nMaxLength; // whole pixels of an element
    const auto dUnit = static_cast<double>(nUnit);
    const auto nFirst = static_cast<int>(m_nLeft + dUnit * 0.5);
    const auto nSpan = static_cast<size_t>(m_nWidth - dUnit);
    const CMarks marks = MarksOf(m_param.eScaleLineDirectionX, m_param.nScaleLineSizeX);
    const size_t nStep = nCount < m_nMaxLength ? (m_nMaxLength - 1) / (nCount - 1) : 1;
    for (size_t i = 0; i < m_nMaxLength;) {
        // The last mark sits on the last element.
        const size_t nElement = i + nStep >= m_nMaxLength ? m_nMaxLength - 1 : i;
        const int nX = nFirst + static_cast<int>(nElement * nSpan / (m_nMaxLength - 1));
        if (Draws(KxGraphDrawEnable_AuxiliaryXLine))
            Line(GraphPen_AuxiliaryX, nX, m_nBottom, nX, m_nTop);
        if (Draws(KxGraphDrawEnable_ScaleXLine))
            Line(GraphPen_ScaleX, nX, m_nBottom - marks.nInside, nX, m_nBottom + marks.nOutside);
        if (Draws(KxGraphDrawEnable_ScaleXText))
            DrawLabelX(nElement, nX, nLabelWidth, metrics.height(), marks.nOutside, text);
        i = nElement + nStep;
    }
}

void CPlot::DrawLabelX(size_t nElement, int nX, int nLabelWidth, int nLabelHeight, int nOffset,
                       const CGraphTextStyle& text)
{
    const int nY = m_nBottom + nOffset + m_style.Pen(GraphPen_BottomSide).width();
    Label({nX - nLabelWidth / 2, nY, nLabelWidth, nLabelHeight}, Qt::AlignHCenter | Qt::AlignBottom,
          QString::number(nElement), text);
}

void CPlot::DrawScaleY()
{
    if (!(m_dMaxValue > 0) ||
        !(Draws(KxGraphDrawEnable_ScaleYLine) || Draws(KxGraphDrawEnable_AuxiliaryYLine)))
        return;
    const CGraphTextStyle text = m_style.Text(GraphFont_ScaleY);
    m_painter.setFont(text.font);
    const QFontMetrics metrics(m_painter.font(), m_painter.device());
    const int nLabelHeight = metrics.height();
    const int nMarks = nLabelHeight < 1 ? 2 : std::max(2, m_nHeight / 2 / nLabelHeight);
    const int nDivisions = nMarks - 1;
    const CMarks marks = MarksOf(m_param.eScaleLineDirectionY, m_param.nScaleLineSizeY);
    for (int i = 0; i < nMarks; ++i) {
        const int nY = m_nBottom - i * m_nHeight / nDivisions;
        if (Draws(KxGraphDrawEnable_AuxiliaryYLine))
            Line(GraphPen_AuxiliaryY, m_nLeft, nY, m_nRight, nY);
        if (Draws(KxGraphDrawEnable_ScaleYLine))
            Line(GraphPen_ScaleY, m_nLeft - marks.nOutside, nY, m_nLeft + marks.nInside, nY);
        if (Draws(KxGraphDrawEnable_ScaleYText) && i > 0)
            DrawLabelY(LabelValue(i, nDivisions), nY, marks.nOutside, metrics, text);
    }
}

double CPlot::LabelValue(int nMark, int nDivisions) const
{
    if (m_appearance.eScaleMode == KxGraphScaleMode_Logarithmic)
        return std::pow(10.0, nMark * std::log10(m_dMaxValue + 1.0) / nDivisions) - 1.0;
    return nMark * m_dMaxValue / nDivisions;
}

void CPlot::DrawLabelY(double dValue, int nY, int nOffset, const QFontMetrics& metrics,
                       const CGraphTextStyle& text)
{
    const bool bExponent = dValue >= std::pow(10.0, m_appearance.nFloatingPointDigits);
    const QString strText = QString::asprintf(bExponent ? "%.1e" : "%.1f", dValue);
    const int nGap = nOffset + 1 + m_style.Pen(GraphPen_LeftSide).width();
    const int nWidth = metrics.horizontalAdvance(strText);
    Label({m_nLeft - nGap - nWidth, nY - metrics.height() / 2, nWidth, metrics.height()},
          Qt::AlignRight | Qt::AlignVCenter, strText, text);
}

void CPlot::DrawFrame()
{
    if (Draws(KxGraphDrawEnable_BottomSideLine))
        Line(GraphPen_BottomSide, m_nLeft, m_nBottom, m_nRight, m_nBottom);
    if (Draws(KxGraphDrawEnable_LeftSideLine))
        Line(GraphPen_LeftSide, m_nLeft - 1, m_nBottom, m_nLeft - 1, m_nTop - 1);
    if (Draws(KxGraphDrawEnable_TopSideLine))
        Line(GraphPen_TopSide, m_nLeft - 1, m_nTop - 1, m_nRight, m_nTop - 1);
    if (Draws(KxGraphDrawEnable_RightSideLine))
        Line(GraphPen_RightSide, m_nRight, m_nBottom, m_nRight, m_nTop);
}

void CPlot::DrawLines()
{
    if (!(m_dMaxValue > 0))
        return;
    const CGraphScaleY scale(m_appearance.eScaleMode, m_dMaxValue, m_nTop, m_nHeight);
    CGraphItemScale toY(scale);
    for (const CItem& item : m_vecItems)
        DrawLine(item, toY);
}

void CPlot::DrawLine(const CItem& item, CGraphItemScale& toY)
{
    const QPen pen = m_style.Pen(item.nPen);
    toY.Begin(item.nDivisor, item.nLength);
    const auto nWidth = static_cast<size_t>(m_nWidth);
    // A pattern runs along the whole way, and antialiasing adds up what lies over each other.
    const bool bWhole = pen.style() != Qt::SolidLine || (m_painter.renderHints() & QPainter::Antialiasing);
    if (!bWhole) {
        MakeGraphColumns(item.pValues, item.nLength, toY, m_nLeft, nWidth, m_nMaxLength, m_vecColumns);
        m_linePainter.Draw(m_vecColumns, pen);
    } else {
        std::vector<QPoint> vecPoints;
        vecPoints.reserve(2 * item.nLength);
        int nX = m_nLeft;
        for (size_t i = 0; i < item.nLength; ++i) {
            const int nY = toY(item.pValues[i]);
            vecPoints.emplace_back(nX, nY);
            nX = m_nLeft + static_cast<int>((i + 1) * nWidth / m_nMaxLength);
            vecPoints.emplace_back(nX, nY);
        }
        m_linePainter.Draw(vecPoints, pen);
    }
}

} // namespace

EKxPixelComponentType_t GraphComponentOf(const IKxGraphData& data)
{
    try {
        return static_cast<EKxPixelComponentType_t>(data.GetProperty(KxGraphDataProperty_Component));
    } catch (...) {
        return KxPixelComponentType_None;
    }
}

void DrawGraphBackground(QPainter& painter, int nWidth, int nHeight, const CGraphAppearance& appearance)
{
    // QRgb has blue where packed colours have red, so the two change places.
    if (appearance.Draws(KxGraphDrawEnable_Background))
        painter.fillRect(QRect(QPoint(0, 0), QPoint(nWidth - 1, nHeight - 1)),
                         QColor(static_cast<QRgb>(appearance.nBackgroundColor)));
}

void DrawGraphArea(QPainter& painter, const CDrawGraphParam& param, const CGraphAppearance& appearance,
                   const CGraphStyle& style, const IKxGraphDataBufferList& list)
{
    if (list.GetCount() == 0)
        return;
    painter.save();
    CPlot(painter, param, appearance, style, list).Draw();
    painter.restore();
}

} // namespace KxApi

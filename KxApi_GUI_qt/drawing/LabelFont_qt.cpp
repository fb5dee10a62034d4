// SPDX-License-Identifier: Apache-2.0
#include "drawing/LabelFont_qt.h"

#include <QTextLayout>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <limits>

namespace KxApi
{
namespace
{

constexpr size_t kMaxFonts = 16;
constexpr int kMaxUnits = 64;

bool IsOfNumber(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.') ||
           c == QLatin1Char('-') || c == QLatin1Char(',') || c == QLatin1Char(' ') || c == QLatin1Char('(') ||
           c == QLatin1Char(')');
}

bool IsControl(QChar c) { return c.category() == QChar::Other_Control; }

/// Whether a text stands behind a number as it stands alone: it neither changes the direction nor joins
/// what is before it.
bool MayFollowNumber(const QString& strText)
{
    if (strText.isEmpty() || strText[0].isMark())
        return false;
    return std::all_of(strText.begin(), strText.end(), [](QChar c) {
        switch (c.direction()) {
        case QChar::DirL:
        case QChar::DirEN:
        case QChar::DirES:
        case QChar::DirET:
        case QChar::DirCS:
        case QChar::DirWS:
        case QChar::DirON:
        case QChar::DirNSM:
            return !c.isSurrogate();
        default:
            return false;
        }
    });
}

} // namespace

/// A line that is put together from left to right.
class CLabelFont::CLine
{
public:
    explicit CLine(const QRectF& rcLine)
        : m_dTop(rcLine.top())
        , m_dBottom(rcLine.bottom())
        , m_dHeight(rcLine.height())
    {}

    void Add(const CPart& part, double dKerning)
    {
        m_dAdvance += dKerning;
        m_vecGlyphs += part.vecGlyphs;
        for (int i = 0; i < part.vecPlaces.size(); ++i) {
            const QPointF& pt = part.vecPlaces[i];
            const QRectF& rcBox = part.vecBoxes[i];
            m_vecPlaces.append({m_dAdvance + pt.x(), pt.y()});
            // The box is of whole pixels, and so are the steps that Qt adds it up by.
            m_dLeft = std::min(m_dLeft, m_nBoxAdvance + rcBox.left());
            m_dRight = std::max(m_dRight, m_nBoxAdvance + rcBox.right());
            m_dTop = std::min(m_dTop, rcBox.top());
            m_dBottom = std::max(m_dBottom, rcBox.bottom());
            m_nBoxAdvance += part.vecBoxAdvances[i];
        }
        m_dAdvance += part.dAdvance;
    }
    QRect Bounds() const
    {
        return {qRound(m_dLeft), qRound(m_dTop), qRound(m_dRight - m_dLeft),
                qRound(std::max(m_dHeight, m_dBottom - m_dTop))};
    }
    QGlyphRun Run(const QRawFont& rawFont) const
    {
        QGlyphRun run;
        run.setRawFont(rawFont);
        run.setGlyphIndexes(m_vecGlyphs);
        run.setPositions(m_vecPlaces);
        return run;
    }

private:
    QVector<quint32> m_vecGlyphs;
    QVector<QPointF> m_vecPlaces;
    double m_dAdvance = 0;
    int m_nBoxAdvance = 0;
    double m_dLeft = std::numeric_limits<double>::max();
    double m_dRight = 0;
    double m_dTop;
    double m_dBottom;
    const double m_dHeight;
};

CLabelFont::CLabelFont(const QFont& font)
    : m_font(font)
    , m_thread(QThread::currentThreadId())
    , m_metrics(font)
    , m_rcLine(m_metrics.boundingRect(QString(".")))
    , m_bDecorated(font.underline() || font.strikeOut())
    , m_vecNumberParts(kNumberCharacters)
    , m_vecKerning(kNumberCharacters * kNumberCharacters, std::numeric_limits<float>::quiet_NaN())
{
    const QVector<QGlyphRun> vecRuns = RunsOf("0");
    if (vecRuns.size() == 1)
        m_rawFont = vecRuns[0].rawFont();
    if (!IsLikeQt("-1234567890.0") || !IsLikeQt("(98765.4, 32107.1)"))
        m_rawFont = QRawFont();
}

bool CLabelFont::IsFor(const QFont& font) const
{
    return m_thread == QThread::currentThreadId() && m_font == font;
}

QVector<QGlyphRun> CLabelFont::RunsOf(const QString& strText) const
{
    QTextLayout layout(strText, m_font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.glyphRuns().toVector();
}

CLabelFont::CPart CLabelFont::MakePart(const QString& strText) const
{
    CPart part;
    part.bKnown = true;
    const QVector<QGlyphRun> vecRuns = RunsOf(strText);
    part.bPlain = m_rawFont.isValid() && vecRuns.size() == 1 && vecRuns[0].rawFont() == m_rawFont &&
                  MayFollowNumber(strText);
    if (!part.bPlain)
        return part;
    part.vecGlyphs = vecRuns[0].glyphIndexes();
    part.vecPlaces = vecRuns[0].positions();
    part.bPlain = !part.vecGlyphs.contains(0);
    for (const quint32 nGlyph : part.vecGlyphs)
        part.vecBoxes.append(m_rawFont.boundingRect(nGlyph));
    for (const QPointF& advance : m_rawFont.advancesForGlyphIndexes(part.vecGlyphs))
        part.vecBoxAdvances.append(qRound(advance.x()));
    part.dAdvance = m_metrics.horizontalAdvance(strText);
    return part;
}

const CLabelFont::CPart& CLabelFont::NumberPart(QChar c)
{
    CPart& part = m_vecNumberParts[c.unicode()];
    if (!part.bKnown)
        part = MakePart(c);
    return part;
}

const CLabelFont::CPart& CLabelFont::Part(const QString& strText)
{
    const auto it = m_units.constFind(strText);
    if (it != m_units.constEnd())
        return *it;
    if (m_units.size() >= kMaxUnits)
        m_units.clear();
    const auto itNew = m_units.insert(strText, MakePart(strText));
    if (itNew->bPlain && !IsLikeQt("(10.0, 2" + strText))
        m_units[strText].bPlain = false;
    return m_units[strText];
}

double CLabelFont::Kerning(QChar cLeft, QChar cRight)
{
    const auto kerning = [&] {
        return m_metrics.horizontalAdvance(QString(cLeft) + cRight) - m_metrics.horizontalAdvance(cLeft) -
               m_metrics.horizontalAdvance(cRight);
    };
    if (cRight.unicode() >= kNumberCharacters)
        return kerning();
    float& fKerning =
        m_vecKerning[static_cast<size_t>(cLeft.unicode()) * kNumberCharacters + cRight.unicode()];
    if (std::isnan(fKerning))
        fKerning = static_cast<float>(kerning());
    return double{fKerning};
}

bool CLabelFont::PutTogether(const QString& strText, CLaidOutText& laidOut)
{
    const auto itUnit = std::find_if_not(strText.begin(), strText.end(), IsOfNumber);
    if (itUnit == strText.begin())
        return false;
    CLine line(m_rcLine);
    for (auto it = strText.begin(); it != itUnit; ++it) {
        const CPart& part = NumberPart(*it);
        if (!part.bPlain)
            return false;
        line.Add(part, it != strText.begin() ? Kerning(it[-1], *it) : 0.0);
    }
    if (itUnit != strText.end()) {
        const CPart& part = Part(strText.mid(static_cast<int>(itUnit - strText.begin())));
        if (!part.bPlain)
            return false;
        line.Add(part, Kerning(itUnit[-1], *itUnit));
    }
    laidOut.vecRuns = {line.Run(m_rawFont)};
    laidOut.rcBounds = line.Bounds();
    return true;
}

bool CLabelFont::IsLikeQt(const QString& strText)
{
    CLaidOutText laidOut;
    if (!PutTogether(strText, laidOut))
        return false;
    const CLaidOutText byQt = LayOutByQt(strText);
    return byQt.rcBounds == laidOut.rcBounds && byQt.vecRuns.size() == 1 &&
           byQt.vecRuns[0].glyphIndexes() == laidOut.vecRuns[0].glyphIndexes() &&
           byQt.vecRuns[0].positions() == laidOut.vecRuns[0].positions();
}

CLaidOutText CLabelFont::LayOutByQt(const QString& strText) const
{
    CLaidOutText laidOut;
    laidOut.vecRuns = RunsOf(strText);
    laidOut.rcBounds = QFontMetrics(m_font).boundingRect(strText);
    return laidOut;
}

CLaidOutText CLabelFont::LayOut(const QString& strText)
{
    // Broken lines and decorations are for drawText.
    const bool bRuns = !m_bDecorated && std::none_of(strText.begin(), strText.end(), IsControl);
    CLaidOutText laidOut;
    if (bRuns && PutTogether(strText, laidOut))
        return laidOut;
    laidOut = LayOutByQt(strText);
    if (!bRuns)
        laidOut.vecRuns.clear();
    return laidOut;
}

std::shared_ptr<CLabelFont> CLabelFonts::Get(const QFont& font)
{
    const auto it = std::find_if(m_vecFonts.begin(), m_vecFonts.end(),
                                 [&](const auto& pFont) { return pFont->IsFor(font); });
    if (it != m_vecFonts.end()) {
        std::rotate(it, it + 1, m_vecFonts.end());
        return m_vecFonts.back();
    }
    if (m_vecFonts.size() >= kMaxFonts)
        m_vecFonts.erase(m_vecFonts.begin());
    return m_vecFonts.emplace_back(std::make_shared<CLabelFont>(font));
}

} // namespace KxApi

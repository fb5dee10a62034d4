// SPDX-License-Identifier: Apache-2.0
// Laying texts out, measured values at next to no cost.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <QRect>
#include <QString>
#include <Qt>
#include <memory>
#include <vector>

namespace KxApi
{

/// A text that can be painted.
struct CLaidOutText
{
    QVector<QGlyphRun> vecRuns; ///< from the top left corner of the line; none when only drawText will do
    QRect rcBounds;             ///< round the origin of the base line, as QFontMetrics::boundingRect tells it
};

/// A font that texts are laid out in, of the thread that made it. Over a live drawing the digits of values
/// change all the time and nothing else does. A value is put together from digits and a unit, each of which
/// was laid out once; any other text goes through Qt's layout, which takes many times as long. So does what
/// doesn't come out alike both ways when it is seen for the first time.
class CLabelFont
{
public:
    explicit CLabelFont(const QFont& font);

    /// Whether it may be used for a font here and now.
    bool IsFor(const QFont& font) const;
    CLaidOutText LayOut(const QString& strText);

private:
    /// A part of a line, from its own origin.
    struct CPart
    {
        QVector<quint32> vecGlyphs;
        QVector<QPointF> vecPlaces;
        QVector<QRectF> vecBoxes; ///< of the glyphs, each from its own origin
        QVector<int> vecBoxAdvances;
        double dAdvance = 0;
        bool bKnown = false; ///< it was laid out
        bool bPlain = false; ///< in this font alone, and it may follow a number
    };
    class CLine;

    const CPart& Part(const QString& strText);
    const CPart& NumberPart(QChar c);
    double Kerning(QChar cLeft, QChar cRight);
    CPart MakePart(const QString& strText) const;
    QVector<QGlyphRun> RunsOf(const QString& strText) const;
    CLaidOutText LayOutByQt(const QString& strText) const;
    bool PutTogether(const QString& strText, CLaidOutText& laidOut);
    bool IsLikeQt(const QString& strText);

    static constexpr int kNumberCharacters = 128; // of ASCII

    const QFont m_font;
    const Qt::HANDLE m_thread;
    const QFontMetricsF m_metrics;
    QRawFont m_rawFont;
    const QRectF m_rcLine; // what boxes of lines have at least
    const bool m_bDecorated;
    std::vector<CPart> m_vecNumberParts;
    std::vector<float> m_vecKerning; // by both characters; NaN until it is known
    QHash<QString, CPart> m_units;
};

/// The fonts of one tool. Under its lock.
class CLabelFonts
{
public:
    std::shared_ptr<CLabelFont> Get(const QFont& font);

private:
    std::vector<std::shared_ptr<CLabelFont>> m_vecFonts; // the last one used at the end
};

} // namespace KxApi

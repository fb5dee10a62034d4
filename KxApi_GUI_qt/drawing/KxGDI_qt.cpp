// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxGDI_qt.h"

#include "frame/utility_qt.h"

#include <Base/GCCheckRange.h>
#include <Base/GCException.h>

#include <algorithm>
#include <cstddef>

namespace KxApi
{
namespace
{

// Their places are the values of the SDK.
constexpr Qt::PenStyle kPenStyles[] = {Qt::SolidLine,   Qt::DashLine,       Qt::DotLine,
                                       Qt::DashDotLine, Qt::DashDotDotLine, Qt::NoPen};
constexpr Qt::PenCapStyle kCapStyles[] = {Qt::RoundCap, Qt::SquareCap, Qt::FlatCap};
constexpr Qt::PenJoinStyle kJoinStyles[] = {Qt::RoundJoin, Qt::BevelJoin, Qt::MiterJoin};
constexpr Qt::BrushStyle kBrushStyles[] = {Qt::NoBrush,      Qt::SolidPattern,    Qt::HorPattern,
                                           Qt::VerPattern,   Qt::FDiagPattern,    Qt::BDiagPattern,
                                           Qt::CrossPattern, Qt::DiagCrossPattern};

template <class T, size_t kCount, class E>
T Entry(const T (&table)[kCount], E eValue)
{
    const auto nPlace = static_cast<size_t>(eValue);
    return table[nPlace < kCount ? nPlace : 0];
}

template <class E>
void CheckStyle(const char* szName, E eStyle, unsigned int nMax)
{
    KXGC_CHECK_RANGE(rlBelowMax, szName, static_cast<unsigned int>(eStyle), nMax);
}

} // namespace

unsigned int ToPackedColor(const QColor& color)
{
    return static_cast<unsigned int>(color.red() | color.green() << 8 | color.blue() << 16);
}

QColor FromPackedColor(unsigned int nColor)
{
    return {static_cast<int>(nColor & 0xFFU), static_cast<int>(nColor >> 8 & 0xFFU),
            static_cast<int>(nColor >> 16 & 0xFFU)};
}

Qt::PenStyle ToQt(_EKxLineStyle_t eStyle) { return Entry(kPenStyles, eStyle); }
Qt::PenCapStyle ToQt(_EKxLineEndcap_t eEndcap) { return Entry(kCapStyles, eEndcap); }
Qt::PenJoinStyle ToQt(_EKxLineJoin_t eJoin) { return Entry(kJoinStyles, eJoin); }
Qt::BrushStyle ToQt(_EKxBrushStyle_t eStyle) { return Entry(kBrushStyles, eStyle); }
Qt::FillRule ToQt(_EKxPolyFillMode_t eMode)
{
    return eMode != KxPolyFillMode_Alternate ? Qt::WindingFill : Qt::OddEvenFill;
}

void CheckLineStyle(_EKxLineStyle_t eStyle) { CheckStyle("LineStyle", eStyle, 6); }
void CheckBrushStyle(_EKxBrushStyle_t eStyle) { CheckStyle("BrushStyle", eStyle, 8); }

CKxPen::CKxPen(const QColor& color, _EKxLineStyle_t eStyle, int nSize)
    : CKxGDIBase(color)
    , m_eStyle(eStyle)
    , m_nSize(nSize)
{}

CKxPen::CKxPen(const CKxPen& other)
    : CKxGDIBase(other)
    , m_eStyle(other.m_eStyle)
    , m_nSize(other.m_nSize)
    , m_eEndcap(other.m_eEndcap)
    , m_eJoin(other.m_eJoin)
{}

void CKxPen::SetStyle(_EKxLineStyle_t eStyle)
{
    CheckLineStyle(eStyle);
    Change(m_eStyle, eStyle);
}

void CKxPen::Assign(const IKxPen& other)
{
    SetColor(other.GetColor());
    SetStyle(other.GetStyle());
    SetSize(other.GetSize());
    SetEndcap(other.GetEndcap());
    SetJoin(other.GetJoin());
}

QPen* CKxPen::GetHPen()
{
    return Built(m_pPen, [this](QPen& pen) {
        pen.setColor(GetColor());
        pen.setWidth(std::clamp(m_nSize, 0, 4096)); // the port takes any number
        pen.setStyle(m_nSize == 0 ? Qt::NoPen : ToQt(m_eStyle));
        pen.setCapStyle(ToQt(m_eEndcap));
        pen.setJoinStyle(ToQt(m_eJoin));
    });
}

CKxBrush::CKxBrush(const QColor& color, _EKxBrushStyle_t eStyle)
    : CKxGDIBase(color)
    , m_eStyle(eStyle)
{}

CKxBrush::CKxBrush(const CKxBrush& other)
    : CKxGDIBase(other)
    , m_eStyle(other.m_eStyle)
    , m_eBkMode(other.m_eBkMode)
    , m_colorBk(other.m_colorBk)
    , m_ePolyFillMode(other.m_ePolyFillMode)
{}

void CKxBrush::SetStyle(_EKxBrushStyle_t eStyle)
{
    CheckBrushStyle(eStyle);
    Change(m_eStyle, eStyle);
}

void CKxBrush::Assign(const IKxBrush& other)
{
    SetColor(other.GetColor());
    SetStyle(other.GetStyle());
    SetBkColor(other.GetBkColor());
    SetBkMode(other.GetBkMode());
    SetPolyFillMode(other.GetPolyFillMode());
}

QBrush* CKxBrush::GetHBrush()
{
    return Built(m_pBrush, [this](QBrush& brush) {
        brush.setStyle(ToQt(m_eStyle));
        brush.setColor(GetColor());
    });
}

CKxFont::CKxFont(const QColor& color, int nHeight)
    : CKxGDIBase(color)
    , m_nHeight(nHeight)
{}

CKxFont::CKxFont(const CKxFont& other)
    : CKxGDIBase(other)
    , m_nHeight(24)
{
    Assign(other);
}

void CKxFont::Assign(const IKxFont& other)
{
    SetColor(other.GetColor());
    SetHeight(other.GetHeight());
    SetWeight(other.GetWeight());
    SetStyle(other.GetStyle());
    SetDecoration(other.GetDecoration());
    SetFamily(other.GetFamily());
    SetBkMode(other.GetBkMode());
    SetBkColor(other.GetBkColor());
}

void CKxFont::SetHeight(int nHeight)
{
    m_nHeight = nHeight;
    Updated();
}

_EKxFontWeight_t CKxFont::GetWeight() const
{
    return m_nWeight == QFont::Bold ? KxFontWeight_Bold : KxFontWeight_Normal;
}

void CKxFont::SetWeight(_EKxFontWeight_t eWeight)
{
    m_nWeight = eWeight == KxFontWeight_Normal ? QFont::Normal : QFont::Bold;
    Updated();
}

_EKxFontStyle_t CKxFont::GetStyle() const
{
    return m_nStyle == QFont::StyleNormal ? KxFontStyle_Normal : KxFontStyle_Italic;
}

void CKxFont::SetStyle(_EKxFontStyle_t eStyle)
{
    m_nStyle = eStyle == KxFontStyle_Normal ? QFont::StyleNormal : QFont::StyleItalic;
    Updated();
}

_EKxFontDecoration_t CKxFont::GetDecoration() const
{
    if (m_bUnderline)
        return KxFontDecoration_UnderLine;
    return m_bStrikeOut ? KxFontDecoration_LineThrough : KxFontDecoration_None;
}

void CKxFont::SetDecoration(_EKxFontDecoration_t eDecoration)
{
    if (eDecoration >= KxFontDecoration_None && eDecoration <= KxFontDecoration_LineThrough) {
        m_bUnderline = eDecoration == KxFontDecoration_UnderLine;
        m_bStrikeOut = eDecoration == KxFontDecoration_LineThrough;
    }
    Updated();
}

GenICam::gcstring CKxFont::GetFamily() const { return ToGcstring(m_strFamily); }

void CKxFont::SetFamily(const GenICam::gcstring& strFamily)
{
    m_strFamily = ToQString(strFamily);
    Updated();
}

QFont* CKxFont::GetObject()
{
    return Built(m_pFont, [this](QFont& font) {
        font.setFamily(m_strFamily);
        font.setPixelSize(std::clamp(m_nHeight, 1, 512)); // the port takes any number
        font.setWeight(m_nWeight);
        font.setStyle(static_cast<QFont::Style>(m_nStyle));
        font.setUnderline(m_bUnderline);
        font.setStrikeOut(m_bStrikeOut);
        // Fringes of colour would come and go with the layer that a drawing is kept in.
        font.setStyleStrategy(QFont::NoSubpixelAntialias);
    });
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#include "graph/GraphStyle_qt.h"

#include "frame/RegisterRow_qt.h"

#include <KxApi_TL/KxPixelComponentType.h>

#include <iterator>

namespace KxApi
{
namespace
{

constexpr int kComponentPenSize = 2;
constexpr int kFontHeight = 16;
constexpr long long kMaxFontHeight = 31;
constexpr uint32_t kLineStyles = 6;

struct CRgb
{
    int nRed;
    int nGreen;
    int nBlue;
};
constexpr CRgb kBlack{0, 0, 0}, kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlue{0, 0, 255};
constexpr CRgb kGr{224, 144, 0}, kGb{0, 144, 224}, kCyan{0, 255, 255}, kYellow{255, 255, 0};

/// A run of pens: one component in some depths, for light of any angle or for each of four.
struct CPenGroup
{
    EKxPixelComponent_t eComponent;
    CRgb rgb;
    std::array<uint32_t, 9> arrBits; // up to the first 0
    bool bPolarized;
};

// In the order of the pens.
// clang-format off
constexpr CPenGroup kPenGroups[] = {
    {KxPixelComponent_Mono, kBlack, {1, 2, 4, 8, 10, 12, 14, 16, 32}, false},
    {KxPixelComponent_R,  kRed,   {4, 8, 10, 12, 14, 16}, false},
    {KxPixelComponent_G,  kGreen, {4, 8, 10, 12, 14, 16}, false},
    {KxPixelComponent_B,  kBlue,  {4, 8, 10, 12, 14, 16}, false},
    {KxPixelComponent_Gr, kGr,    {4, 8, 10, 12, 14, 16}, false},
    {KxPixelComponent_Gb, kGb,    {4, 8, 10, 12, 14, 16}, false},
    {KxPixelComponent_Y,  kBlack,  {8}, false},
    {KxPixelComponent_Cb, kCyan,   {8}, false},
    {KxPixelComponent_Cr, kYellow, {8}, false},
    {KxPixelComponent_U,  kCyan,   {8}, false},
    {KxPixelComponent_V,  kYellow, {8}, false},
    {KxPixelComponent_Mono, kBlack, {8, 10, 12}, true},
    {KxPixelComponent_R,  kRed,  {8, 10, 12}, true},
    {KxPixelComponent_B,  kBlue, {8, 10, 12}, true},
    {KxPixelComponent_Gr, kGr,   {8, 10, 12}, true},
    {KxPixelComponent_Gb, kGb,   {8, 10, 12}, true},
};
// clang-format on

constexpr EKxPolarization_t kPolarizations[] = {KxPolarization_0, KxPolarization_45, KxPolarization_90,
                                                KxPolarization_135};
constexpr _EKxLineStyle_t kPolarizationStyles[] = {KxLineStyle_Solid, KxLineStyle_Dash, KxLineStyle_Dot,
                                                   KxLineStyle_DashDot};

/// Calls function(pen, component type, colour, style) for the pens of components, in their order, until it
/// returns true.
template <class Function>
void ForEachComponentPen(Function function)
{
    size_t nPen = GraphPen_FirstComponent;
    for (const CPenGroup& group : kPenGroups) {
        for (const uint32_t nBits : group.arrBits) {
            if (nBits == 0)
                break;
            for (size_t nAngle = 0; nAngle < (group.bPolarized ? std::size(kPolarizations) : 1); ++nAngle) {
                const auto ePolarization = group.bPolarized ? kPolarizations[nAngle] : KxPolarization_None;
                if (function(nPen++, MakeKxPixelComponentType(group.eComponent, nBits, ePolarization),
                             group.rgb, kPolarizationStyles[nAngle]))
                    return;
            }
        }
    }
}

/// Out of range is what a call of the window is, which is the place that exceptions tell.
void Check(const CNumberRange& range, int64_t nValue)
{
    range.Check(nValue, "KxApi_GUI_qt/KxDisplayGraphWnd_qt", __LINE__);
}

/// A setting of a pen or a font as a number.
template <class TObject>
struct CInfoRow
{
    uint32_t (*pGet)(const TObject&);
    void (*pSet)(TObject&, uint32_t);
};

template <class TObject, auto kGet, auto kSet>
constexpr CInfoRow<TObject> Number()
{
    return {[](const TObject& object) { return static_cast<uint32_t>((object.*kGet)()); },
            [](TObject& object, uint32_t nValue) {
                (object.*kSet)(static_cast<decltype((object.*kGet)())>(nValue));
            }};
}

template <class TObject, auto kGet, auto kSet>
constexpr CInfoRow<TObject> Color()
{
    return {[](const TObject& object) { return static_cast<uint32_t>(ToPackedColor((object.*kGet)())); },
            [](TObject& object, uint32_t nValue) { (object.*kSet)(FromPackedColor(nValue)); }};
}

constexpr int64_t kLineStyleIndex = 0;
constexpr CInfoRow<CKxPen> kLineInfos[] = {
    Number<CKxPen, &CKxPen::GetStyle, &CKxPen::SetStyle>(),
    Number<CKxPen, &CKxPen::GetSize, &CKxPen::SetSize>(),
    Color<CKxPen, &CKxPen::GetColor, &CKxPen::SetColor>(),
    Number<CKxPen, &CKxPen::GetEndcap, &CKxPen::SetEndcap>(),
    Number<CKxPen, &CKxPen::GetJoin, &CKxPen::SetJoin>(),
};

constexpr int64_t kTextHeightIndex = 3;
constexpr CInfoRow<CKxFont> kTextInfos[] = {
    Color<CKxFont, &CKxFont::GetColor, &CKxFont::SetColor>(),
    Number<CKxFont, &CKxFont::GetBkMode, &CKxFont::SetBkMode>(),
    Color<CKxFont, &CKxFont::GetBkColor, &CKxFont::SetBkColor>(),
    Number<CKxFont, &CKxFont::GetHeight, &CKxFont::SetHeight>(),
};

template <class TObject>
bool Set(const CInfoRow<TObject>& row, TObject& object, uint32_t nValue)
{
    const uint32_t nBefore = row.pGet(object);
    if (nBefore == nValue)
        return false;
    row.pSet(object, nValue);
    return row.pGet(object) != nBefore;
}

} // namespace

CGraphStyle::CGraphStyle()
{
    CKxPen* const pPens = m_arrPens.data(); // nobody else has them yet
    ForEachComponentPen([&](size_t nPen, EKxPixelComponentType_t, CRgb rgb, _EKxLineStyle_t eStyle) {
        CKxPen& pen = pPens[nPen];
        pen.SetColor(QColor(rgb.nRed, rgb.nGreen, rgb.nBlue));
        pen.SetSize(kComponentPenSize);
        pen.SetJoin(KxLineJoin_Miter);
        pen.SetStyle(eStyle);
        return false;
    });
    for (CKxFont& font : m_arrFonts)
        font.SetHeight(kFontHeight);
}

QPen CGraphStyle::Pen(size_t nPen) const
{
    const GenApi::AutoLock lock(m_lock);
    return *m_arrPens[nPen].GetHPen();
}

CGraphTextStyle CGraphStyle::Text(EGraphFont eFont) const
{
    const GenApi::AutoLock lock(m_lock);
    CKxFont& font = m_arrFonts[eFont];
    return {*font.GetObject(), font.GetColor(), font.GetBkMode() == KxBackgroundMode_Opaque,
            font.GetBkColor()};
}

size_t CGraphStyle::PenOfComponent(uint64_t nComponentType)
{
    size_t nFound = 0;
    ForEachComponentPen([&](size_t nPen, EKxPixelComponentType_t eType, CRgb, _EKxLineStyle_t) {
        if (eType == nComponentType)
            nFound = nPen;
        return nFound != 0;
    });
    return nFound;
}

void CGraphStyle::CheckLine(size_t nPen, int64_t nIndex)
{
    Check(FromBelow("eGraphLine", 0, kGraphPens), static_cast<int64_t>(nPen));
    Check(FromBelow("nIndex", 0, static_cast<long long>(std::size(kLineInfos))), nIndex);
}

void CGraphStyle::CheckText(size_t nFont, int64_t nIndex)
{
    Check(FromBelow("eGraphText", 0, kGraphFonts), static_cast<int64_t>(nFont));
    Check(FromBelow("nIndex", 0, static_cast<long long>(std::size(kTextInfos))), nIndex);
}

uint32_t CGraphStyle::LineInfo(size_t nPen, int64_t nIndex) const
{
    CheckLine(nPen, nIndex);
    const GenApi::AutoLock lock(m_lock);
    return kLineInfos[nIndex].pGet(m_arrPens[nPen]);
}

uint32_t CGraphStyle::TextInfo(size_t nFont, int64_t nIndex) const
{
    CheckText(nFont, nIndex);
    const GenApi::AutoLock lock(m_lock);
    return kTextInfos[nIndex].pGet(m_arrFonts[nFont]);
}

bool CGraphStyle::SetLineInfo(size_t nPen, int64_t nIndex, uint32_t nValue)
{
    CheckLine(nPen, nIndex);
    if (nIndex == kLineStyleIndex && nValue >= kLineStyles)
        return false;
    const GenApi::AutoLock lock(m_lock);
    return Set(kLineInfos[nIndex], m_arrPens[nPen], nValue);
}

bool CGraphStyle::SetTextInfo(size_t nFont, int64_t nIndex, uint32_t nValue)
{
    CheckText(nFont, nIndex);
    if (nIndex == kTextHeightIndex)
        Check(FromTo("nValue", 1LL, kMaxFontHeight), nValue);
    const GenApi::AutoLock lock(m_lock);
    return Set(kTextInfos[nIndex], m_arrFonts[nFont], nValue);
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Pens and fonts of a graph window.
#pragma once

#include "drawing/KxGDI_qt.h"

#include <GenApi/Synch.h>

#include <QPen>
#include <array>
#include <cstdint>

namespace KxApi
{

/// Places of pens: the values of the feature map's LineInfoSelector.
enum EGraphPen : size_t
{
    GraphPen_BottomSide = 0,
    GraphPen_LeftSide,
    GraphPen_TopSide,
    GraphPen_RightSide,
    GraphPen_ScaleX,
    GraphPen_ScaleY,
    GraphPen_AuxiliaryX,
    GraphPen_AuxiliaryY,
    GraphPen_GraphArea,      ///< nothing is drawn with it
    GraphPen_FirstComponent, ///< for a type of pixel component each
    GraphPen_FirstCustom = 113,
    kGraphPens = 129,
};
inline constexpr size_t kGraphCustomPens = kGraphPens - GraphPen_FirstCustom;

/// Places of fonts: the values of TextInfoSelector.
enum EGraphFont : size_t
{
    GraphFont_ScaleX,
    GraphFont_ScaleY,
    kGraphFonts,
};

/// What a text is drawn with.
struct CGraphTextStyle
{
    QFont font;
    QColor color;
    bool bOpaque = false; ///< on a ground of the colour colorBk
    QColor colorBk;
};

/// The pens and fonts, and which pen belongs to which pixel component. Any thread.
class CGraphStyle
{
public:
    /// Colours and styles as the names of the pens say. Raises std::bad_alloc.
    CGraphStyle();

    /// For a painter.
    QPen Pen(size_t nPen) const;
    CGraphTextStyle Text(EGraphFont eFont) const;

    /// The pen of a type of pixel component; 0 when it has none.
    static size_t PenOfComponent(uint64_t nComponentType);

    /// The settings of a pen by their places: style, size, colour, endcap, join; of a font: colour,
    /// background mode, background colour, height. Colours are packed. Raise OutOfRangeException for what
    /// there isn't.
    uint32_t LineInfo(size_t nPen, int64_t nIndex) const;
    uint32_t TextInfo(size_t nFont, int64_t nIndex) const;
    /// False when nothing changed: the setting had the value, or a style has no such value.
    bool SetLineInfo(size_t nPen, int64_t nIndex, uint32_t nValue);
    bool SetTextInfo(size_t nFont, int64_t nIndex, uint32_t nValue);

    static void CheckLine(size_t nPen, int64_t nIndex);
    static void CheckText(size_t nFont, int64_t nIndex);

private:
    mutable GenApi::CLock m_lock; // a leaf
    mutable std::array<CKxPen, kGraphPens> m_arrPens KXGC_GUARDED_BY(m_lock);
    mutable std::array<CKxFont, kGraphFonts> m_arrFonts KXGC_GUARDED_BY(m_lock);
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Paints plots: the one renderer of the widget, of Draw and of GetIKxImage.
#pragma once

#include "graph/CDrawGraphParam.h"
#include "graph/GraphStyle_qt.h"

#include <KxApi_TL/KxPixelComponentType.h>

#include <cstdint>

class QPainter;

namespace KxApi
{

struct IKxGraphData;
struct IKxGraphDataBufferList;

/// What a plot looks like, besides its geometry and its pens.
struct CGraphAppearance
{
    uint32_t nDrawEnable = 0xFFFFFFFF; ///< bits of EKxGraphDrawEnable_t
    uint32_t nBackgroundColor = 0x00FFFFFF;
    _EKxGraphScaleMode_t eScaleMode = KxGraphScaleMode_Logarithmic;
    _EKxGraphNomalization_t eNormalization = KxGraphNomalization_MaximumValue;
    uint32_t nFloatingPointDigits = 6; ///< from 10 to this power on, labels are written with an exponent

    bool Draws(EKxGraphDrawEnable_t eBit) const { return (nDrawEnable & eBit) != 0; }
};

/// The component that an item's values belong to; None for an item without.
EKxPixelComponentType_t GraphComponentOf(const IKxGraphData& data);

/// Fills the size if the background is to be drawn.
void DrawGraphBackground(QPainter& painter, int nWidth, int nHeight, const CGraphAppearance& appearance);

/// Paints scales, frame and lines; nothing for a list without items. The list must not change meanwhile.
void DrawGraphArea(QPainter& painter, const CDrawGraphParam& param, const CGraphAppearance& appearance,
                   const CGraphStyle& style, const IKxGraphDataBufferList& list);

} // namespace KxApi

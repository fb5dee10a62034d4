// SPDX-License-Identifier: Apache-2.0
// Enumerations of what is drawn over images and into graphs; the values are those of the features.
#pragma once

#include <cstdint>

namespace KxApi
{

/// What the mouse draws, and what an object is.
enum _EKxDrawingItemType_t : uint32_t
{
    KxDrawingItemType_None = 0, ///< the tool is off; an object without a shape
    KxDrawingItemType_Select = 1,
    KxDrawingItemType_Line = 2,
    KxDrawingItemType_Rectangle = 3,
    KxDrawingItemType_Ellipse = 4,
    KxDrawingItemType_Text = 5,
    KxDrawingItemType_Angle = 6,
    KxDrawingItemType_Polygon = 7,
    KxDrawingItemType_Perpendicular = 8,
    KxDrawingItemType_Arc = 9,
    KxDrawingItemType_Bezier = 10,
    KxDrawingItemType_FreeHand = 11,
    KxDrawingItemType_Cross = 12,
};

/// Labels of an object, a mask. The numbers of the bits are the values of DrawingObjectDisplayTextSelector.
enum _EKxDisplayText_t : uint32_t
{
    KxDisplayText_None = 0,
    KxDisplayText_Name = 0x01,
    KxDisplayText_Width = 0x02,
    KxDisplayText_Height = 0x04,
    KxDisplayText_Length = 0x08,
    KxDisplayText_CentralCoordinate = 0x10,
    KxDisplayText_Area = 0x20,
    KxDisplayText_Angle = 0x40,
};

enum _EKxLineStyle_t : int32_t
{
    KxLineStyle_Solid = 0,
    KxLineStyle_Dash = 1,
    KxLineStyle_Dot = 2,
    KxLineStyle_DashDot = 3,
    KxLineStyle_DashDotDot = 4,
    KxLineStyle_Null = 5, ///< no line; no feature offers it
};

enum _EKxLineEndcap_t : int32_t
{
    KxLineEndcap_Round = 0,
    KxLineEndcap_Square = 1,
    KxLineEndcap_Flat = 2,
};

enum _EKxLineJoin_t : int32_t
{
    KxLineJoin_Round = 0,
    KxLineJoin_Bevel = 1,
    KxLineJoin_Miter = 2,
};

enum _EKxBrushStyle_t : int32_t
{
    KxBrushStyle_Null = 0, ///< not filled
    KxBrushStyle_Solid = 1,
    KxBrushStyle_Hatch_Horizontal = 2,
    KxBrushStyle_Hatch_Vertical = 3,
    KxBrushStyle_Hatch_FDiagonal = 4,
    KxBrushStyle_Hatch_BDiagonal = 5,
    KxBrushStyle_Hatch_Cross = 6,
    KxBrushStyle_Hatch_DiagCross = 7,
};

/// What lies between the lines of a hatch or behind a text.
enum _EKxBackgroundMode_t : int32_t
{
    KxBackgroundMode_Transparent = 0,
    KxBackgroundMode_Opaque = 1,
};

/// What of a polygon that crosses itself is inside.
enum _EKxPolyFillMode_t : int32_t
{
    KxPolyFillMode_Alternate = 0,
    KxPolyFillMode_Winding = 1,
};

enum _EKxFontWeight_t : int32_t
{
    KxFontWeight_Normal = 0,
    KxFontWeight_Bold = 1,
};

enum _EKxFontStyle_t : int32_t
{
    KxFontStyle_Normal = 0,
    KxFontStyle_Italic = 1,
};

enum _EKxFontDecoration_t : int32_t
{
    KxFontDecoration_None = 0,
    KxFontDecoration_UnderLine = 1,
    KxFontDecoration_LineThrough = 2,
};

} // namespace KxApi

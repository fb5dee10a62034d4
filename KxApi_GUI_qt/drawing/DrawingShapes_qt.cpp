// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingShapes_qt.h"

#include "drawing/shapes/KxDrawingItemAngle_qt.h"
#include "drawing/shapes/KxDrawingItemArc_qt.h"
#include "drawing/shapes/KxDrawingItemBezier_qt.h"
#include "drawing/shapes/KxDrawingItemCross_qt.h"
#include "drawing/shapes/KxDrawingItemEllipse_qt.h"
#include "drawing/shapes/KxDrawingItemFreeHand_qt.h"
#include "drawing/shapes/KxDrawingItemLine_qt.h"
#include "drawing/shapes/KxDrawingItemPerpendicular_qt.h"
#include "drawing/shapes/KxDrawingItemPolygon_qt.h"
#include "drawing/shapes/KxDrawingItemRectangle_qt.h"
#include "drawing/shapes/KxDrawingItemText_qt.h"
#include "frame/RegisterRow_qt.h"

#include <iterator>

namespace KxApi
{
namespace
{

using MakeShapeFunction = std::unique_ptr<IKxDrawingItem> (*)(IKxDrawingItemParent&);

template <class Shape>
std::unique_ptr<IKxDrawingItem> Make(IKxDrawingItemParent& parent)
{
    return std::make_unique<Shape>(&parent);
}

// By the kind of object.
constexpr MakeShapeFunction kShapes[] = {
    nullptr, // None
    nullptr, // Select
    &Make<CKxDrawingItemLine>,
    &Make<CKxDrawingItemRectangle>,
    &Make<CKxDrawingItemEllipse>,
    &Make<CKxDrawingItemText>,
    &Make<CKxDrawingItemAngle>,
    &Make<CKxDrawingItemPolygon>,
    &Make<CKxDrawingItemPerpendicular>,
    &Make<CKxDrawingItemArc>,
    &Make<CKxDrawingItemBezier>,
    &Make<CKxDrawingItemFreeHand>,
    &Make<CKxDrawingItemCross>,
};
static_assert(std::size(kShapes) == kDrawingItemTypes);

} // namespace

std::unique_ptr<IKxDrawingItem> MakeShape(_EKxDrawingItemType_t eType, IKxDrawingItemParent& parent)
{
    Below("eType", kDrawingItemTypes).Check(eType, kDrawingSourceFile, __LINE__);
    const MakeShapeFunction make = kShapes[eType];
    return make ? make(parent) : nullptr;
}

} // namespace KxApi

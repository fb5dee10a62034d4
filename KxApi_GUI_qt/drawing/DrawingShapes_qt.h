// SPDX-License-Identifier: Apache-2.0
// The table of shapes.
#pragma once

#include "drawing/IKxDrawingItem_qt.h"

#include <memory>

namespace KxApi
{

/// One more than the largest kind of object.
inline constexpr unsigned int kDrawingItemTypes = 13;

/// Makes the shape of a kind of object, null for None and Select. It brings the container's points to their
/// number. Raises OutOfRangeException for a kind that there isn't.
std::unique_ptr<IKxDrawingItem> MakeShape(_EKxDrawingItemType_t eType, IKxDrawingItemParent& parent);

} // namespace KxApi

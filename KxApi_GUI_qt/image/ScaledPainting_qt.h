// SPDX-License-Identifier: Apache-2.0
// Painting of pictures that are much larger, or much smaller, than what is shown of them.
#pragma once

class QPainter;
class QRect;
class QRegion;

namespace KxApi
{

struct CPreviewPicture;

/// Paints a picture stretched into a rectangle, pixel for pixel as QPainter::drawImage does without
/// smoothing. Only those pixels are fetched that the region shows, with all else that the painter's clip
/// leaves out, and no picture is converted as a whole.
///
/// Devices that aren't made of plain pixels, or whose pixels aren't the painter's, get drawImage itself.
/// @param rcTarget,rgShown in the painter's coordinates.
void DrawScaled(QPainter& painter, const QRect& rcTarget, const CPreviewPicture& picture,
                const QRegion& rgShown);

} // namespace KxApi

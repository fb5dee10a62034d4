// SPDX-License-Identifier: Apache-2.0
// A pixel as the status bar tells it.
#pragma once

#include <QString>

namespace KxApi
{

class CImagePreview;

/// Place, format and values of a pixel of the newest image, then, when its preview has another format, that
/// one's: "(  12,    7)  BayerRG8:R= 128 -> RGB8:R= 128,G= 128,B= 128". What can't be read is left out, and
/// what is known stays. Any thread.
/// @param x,y not negative; beyond the image there are no values.
QString PixelText(CImagePreview& preview, int x, int y);

} // namespace KxApi

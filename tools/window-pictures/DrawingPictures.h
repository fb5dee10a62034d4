// SPDX-License-Identifier: Apache-2.0
// Pictures of what is drawn over an image.
#pragma once

#include <functional>

class QString;
class QWidget;

namespace KxApi
{
struct IKxImageDisplayWnd;
}

/// Draws each shape over the image of a window that shows one of 640 by 480 pixels, and has it saved plain
/// and selected, at two zooms; then the dialogs of styles in light and dark.
void WriteDrawingPictures(KxApi::IKxImageDisplayWnd& window, QWidget& dialog,
                          const std::function<void(const QString& strName)>& save,
                          const std::function<void(const QString& strName, QWidget& widget)>& saveWidget);

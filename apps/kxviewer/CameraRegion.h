// SPDX-License-Identifier: Apache-2.0
// The part of the sensor that a camera sends.
#pragma once

#include <GenApi/GenApi.h>

#include <QRect>
#include <optional>

namespace KxApi
{
struct IKxImageDisplayWnd;
}

/// The selected rectangle of the drawing in pixels of the shown image, each that it touches; none when no
/// rectangle is selected or there is no image.
std::optional<QRect> SelectedPixels(KxApi::IKxImageDisplayWnd& window);

/// Narrows the camera's region to a part of the present one, widened to the steps that the camera can go.
/// Returns the region that the camera has then. While the acquisition is stopped. Raises RuntimeException
/// when the camera has no region, what the camera objects to.
QRect NarrowRegion(GenApi::INodeMap& camera, const QRect& part);

/// The whole sensor, likewise.
QRect FullRegion(GenApi::INodeMap& camera);

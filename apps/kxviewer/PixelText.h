// SPDX-License-Identifier: Apache-2.0
// Pixels in words.
#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

namespace KxApi
{
struct IKxImage;
}

/// Values of a pixel, one of each component, as the camera sent them. Raises what reading them raises.
QStringList PixelValues(KxApi::IKxImage& image, QPoint pixel);

/// A line for the status bar: place, pixel format, and values with the components' names. The place alone
/// where the values can't be had.
/// @param shown place in the picture, which the user sees
/// @param pixel the same in the image, from which a picture that was turned over differs
QString PixelText(KxApi::IKxImage& image, QPoint shown, QPoint pixel);

// SPDX-License-Identifier: Apache-2.0
// Preview images as pictures for the painter.
#pragma once

#include "image/ImageViewSettings_qt.h"

#include <QImage>
#include <QRgb>
#include <QVector>

namespace KxApi
{

struct IKxImage;

/// A picture that shares its pixels with an image where it can.
struct CPreviewPicture
{
    QImage image;
    bool bSwapped = false; ///< red and blue have to change places

    bool IsNull() const { return image.isNull(); }
    /// The picture with its colours in their places; a copy when they aren't.
    QImage Complete() const { return bSwapped ? image.rgbSwapped() : image; }
};

/// Makes pictures of images, without copying where the formats allow it. GUI thread.
class CPreviewPictureMaker
{
public:
    /// The picture, null for a pixel format that can't be shown and for an image without pixels. It may share
    /// the image's memory and then is valid as long as that.
    /// @param objColorMap false colours of Mono8 images.
    CPreviewPicture Make(const IKxImage& image, const CColorMapSettings& objColorMap);

private:
    const QVector<QRgb>& ColorTable(const CColorMapSettings& objColorMap);

    QVector<QRgb> m_vecColorTable; // 256 entries once built, for the settings below
    CColorMapSettings m_objTableSettings;
};

} // namespace KxApi

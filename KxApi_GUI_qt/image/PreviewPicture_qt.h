// SPDX-License-Identifier: Apache-2.0
// Preview images as pictures for the painter.
#pragma once

#include <KxSDKCommon/ColorMap.h>

#include <QImage>
#include <QRgb>
#include <QVector>

namespace KxApi
{

struct IKxImage;

/// Settings of false colours.
struct CColorMapSettings
{
    EKxColorMapType_t eType = KxColorMapType_Normal;
    bool bInversion = false;
    int nPhase = 0;

    bool operator==(const CColorMapSettings& other) const
    {
        return eType == other.eType && bInversion == other.bInversion && nPhase == other.nPhase;
    }
    bool operator!=(const CColorMapSettings& other) const { return !(*this == other); }
};

/// Makes pictures of images, without copying where the formats allow it. GUI thread.
class CPreviewPictureMaker
{
public:
    /// The picture, null for a pixel format that can't be shown and for an image without pixels. It may share
    /// the image's memory and then is valid as long as that.
    /// @param objColorMap false colours of Mono8 images.
    QImage Make(const IKxImage& image, const CColorMapSettings& objColorMap);

private:
    const QVector<QRgb>& ColorTable(const CColorMapSettings& objColorMap);

    QVector<QRgb> m_vecColorTable; // 256 entries once built, for the settings below
    CColorMapSettings m_objTableSettings;
};

} // namespace KxApi

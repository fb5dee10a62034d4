// SPDX-License-Identifier: Apache-2.0
// What a frame on the screen depends on.
#pragma once

#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxSDKCommon/ColorMap.h>

namespace KxApi
{

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

/// The window's settings that the image widget reads for each frame.
struct CImageViewSettings
{
    _EKxZoomMode_t eZoomMode;
    double dMagnification; ///< of the fixed zoom
    EKxBayerInterpolationMethod_t eStretchMode;
    CColorMapSettings objColorMap;
};

} // namespace KxApi

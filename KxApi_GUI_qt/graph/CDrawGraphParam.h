// SPDX-License-Identifier: Apache-2.0
// Where the parts of a plot lie.
#pragma once

#include <KxApi_GUI/IKxGraphDisplayWnd.h>

#include <cstdint>

namespace KxApi
{

/// The geometry of a plot, in pixels. A value object.
struct CDrawGraphParam
{
    uint32_t bPlotSizeAuto = 1; ///< the plot fills what it is drawn on
    uint32_t nPlotMarginLeft = 84;
    uint32_t nPlotMarginRight = 16;
    uint32_t nPlotMarginTop = 16;
    uint32_t nPlotMarginBottom = 24;
    uint32_t nPlotWidth = 512;
    uint32_t nPlotHeight = 256;
    uint32_t nScaleLineSizeX = 5; ///< length of the marks at the scales
    uint32_t nScaleLineSizeY = 5;
    _EKxGraphScaleLineDirection_t eScaleLineDirectionX = KxGraphScaleLineDirection_Outside;
    _EKxGraphScaleLineDirection_t eScaleLineDirectionY = KxGraphScaleLineDirection_Outside;

    /// Sizes with the margins.
    int TotalWidth() const { return static_cast<int>(nPlotMarginLeft + nPlotMarginRight + nPlotWidth); }
    int TotalHeight() const { return static_cast<int>(nPlotMarginTop + nPlotMarginBottom + nPlotHeight); }

    /// Where the size is automatic, gives the plot what the margins leave free. A size too small for the
    /// margins cuts those: the right one first, then the left one, likewise the bottom one and the top one.
    void Fit(int nWidth, int nHeight)
    {
        if (!bPlotSizeAuto)
            return;
        FitOneWay(nWidth, nPlotMarginLeft, nPlotMarginRight, nPlotWidth);
        FitOneWay(nHeight, nPlotMarginTop, nPlotMarginBottom, nPlotHeight);
    }

private:
    static void FitOneWay(int nWhole, uint32_t& nBefore, uint32_t& nBehind, uint32_t& nPlot)
    {
        const auto nRoom = static_cast<uint32_t>(nWhole < 0 ? 0 : nWhole);
        if (nRoom < nBefore)
            nBefore = nRoom;
        const uint32_t nRest = nRoom - nBefore;
        if (nRest < nBehind)
            nBehind = nRest;
        nPlot = nRest - nBehind;
    }
};

} // namespace KxApi

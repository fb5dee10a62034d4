// SPDX-License-Identifier: Apache-2.0
// The tool for drawing and measuring over the image of an image window.
#pragma once

#include <KxApi_GUI/KxDrawingTypes.h>

namespace KxApi
{

struct IKxImageBuffer;

/// The tool, which belongs to its window. All of it, the objects above all, also exists as features of the
/// category DrawingTool of the window's node map. Any thread, but for DrawOnIKxImageBuffer. Colours are
/// red | green << 8 | blue << 16; widths are pixels of the screen.
struct IKxDrawingTool
{
    /// Draws the grid and the objects into an image, whatever its format; it is RGB8 afterwards. A pixel of
    /// the screen is one of the image there. In a thread that may use QPainter. Raises LogicalErrorException
    /// when there is no converter, what the conversion raises, BadAllocException.
    virtual void DrawOnIKxImageBuffer(IKxImageBuffer* pBuffer) = 0;

    /// Lines of the grid over the image; the features allow 0 to 32 each way.
    virtual unsigned int GetGridHLineCount() const = 0;
    virtual void SetGridHLineCount(unsigned int nCount) = 0;
    virtual unsigned int GetGridVLineCount() const = 0;
    virtual void SetGridVLineCount(unsigned int nCount) = 0;

    /// Raises OutOfRangeException for a style above 5, as for the default line.
    virtual _EKxLineStyle_t GetGridLineStyle() const = 0;
    virtual void SetGridLineStyle(_EKxLineStyle_t eStyle) = 0;
    virtual int GetGridLineSize() const = 0;
    virtual void SetGridLineSize(int nSize) = 0;
    virtual unsigned int GetGridLineColor() const = 0;
    virtual void SetGridLineColor(unsigned int nColor) = 0;
    virtual _EKxLineEndcap_t GetGridLineEndcap() const = 0;
    virtual void SetGridLineEndcap(_EKxLineEndcap_t eEndcap) = 0;
    virtual _EKxLineJoin_t GetGridLineJoin() const = 0;
    virtual void SetGridLineJoin(_EKxLineJoin_t eJoin) = 0;

    /// The line that new objects get.
    virtual _EKxLineStyle_t GetDefaultLineStyle() const = 0;
    virtual void SetDefaultLineStyle(_EKxLineStyle_t eStyle) = 0;
    virtual int GetDefaultLineSize() const = 0;
    virtual void SetDefaultLineSize(int nSize) = 0;
    virtual unsigned int GetDefaultLineColor() const = 0;
    virtual void SetDefaultLineColor(unsigned int nColor) = 0;
    virtual _EKxLineEndcap_t GetDefaultLineEndcap() const = 0;
    virtual void SetDefaultLineEndcap(_EKxLineEndcap_t eEndcap) = 0;
    virtual _EKxLineJoin_t GetDefaultLineJoin() const = 0;
    virtual void SetDefaultLineJoin(_EKxLineJoin_t eJoin) = 0;

protected:
    ~IKxDrawingTool() = default;
};

} // namespace KxApi

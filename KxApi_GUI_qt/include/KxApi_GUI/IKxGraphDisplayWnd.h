// SPDX-License-Identifier: Apache-2.0
// The window that plots histograms, line profiles and the like.
#pragma once

#include <KxApi_GUI/IKxWnd.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

struct IKxGraphDataBufferList;
struct IKxImageBuffer;

/// What takes the whole height of the plot. The spelling is that of the interface since its first version.
enum _EKxGraphNomalization_t : uint32_t
{
    KxGraphNomalization_Off = 0,          ///< the full scale of the data; histograms their greatest value
    KxGraphNomalization_MaximumValue = 1, ///< the greatest value that occurs
};

/// How values are spread over the height.
enum _EKxGraphScaleMode_t : uint32_t
{
    KxGraphScaleMode_Linear = 0,
    KxGraphScaleMode_Logarithmic = 1,
};

/// On which side of the plot's edge the marks of a scale are.
enum _EKxGraphScaleLineDirection_t : uint32_t
{
    KxGraphScaleLineDirection_Inside = 0,
    KxGraphScaleLineDirection_Outside = 1,
    KxGraphScaleLineDirection_Bothside = 2,
};

/// What may be drawn: the bits of the feature map's Enable... features.
enum EKxGraphDrawEnable_t : uint32_t
{
    KxGraphDrawEnable_Background = 1U << 0, ///< without it what was shown before shines through
    KxGraphDrawEnable_BottomSideLine = 1U << 1,
    KxGraphDrawEnable_LeftSideLine = 1U << 2,
    KxGraphDrawEnable_TopSideLine = 1U << 3,
    KxGraphDrawEnable_RightSideLine = 1U << 4,
    KxGraphDrawEnable_ScaleXLine = 1U << 5,
    KxGraphDrawEnable_ScaleYLine = 1U << 6,
    KxGraphDrawEnable_ScaleXText = 1U << 7, ///< also needs the X scale's lines or the auxiliary ones
    KxGraphDrawEnable_ScaleYText = 1U << 8,
    KxGraphDrawEnable_AuxiliaryXLine = 1U << 9,
    KxGraphDrawEnable_AuxiliaryYLine = 1U << 10,
    KxGraphDrawEnable_LineStyleAuto = 1U << 11, ///< pens by the colour and depth that the data belong to
};

/// The graph window. It copies each list of data that it is given, so that nobody waits for the screen. Any
/// thread, but where a call says otherwise. Settings also exist as features of GetINodeMap, which has more of
/// them: pens, fonts, colours, scale mode. They survive closing. A value out of range raises
/// OutOfRangeException and changes nothing; the present value is always taken. Sizes are in pixels.
struct IKxGraphDisplayWnd : virtual IKxWnd
{
    /// Shows the list from the next refresh on. It is read during the call only; calls take turns. Raises
    /// LogicalErrorException for null, what the list's CopyFrom raises, BadAllocException; the window then
    /// goes on with what it has.
    virtual void RegisterIKxGraphDataBufferList(const IKxGraphDataBufferList* pList) = 0;

    /// Paints the newest data with a QPainter of the application's. A plot of automatic size fills the size
    /// that is given. Any thread that the painter may be used in; calls take turns. Raises
    /// InvalidArgumentException without a painter.
    virtual void Draw(void* pPainter, uint32_t nWidth, uint32_t nHeight) = 0;

    /// Paints the newest data into an image of the format RGB8, whose size is that of the plot and its
    /// margins, whatever the two sizes say. Raises LogicalErrorException without a buffer,
    /// InvalidArgumentException when that size is 0 in one direction, BadAllocException.
    virtual void GetIKxImage(IKxImageBuffer* pBuffer, size_t nWidth, size_t nHeight) = 0;

    virtual _EKxGraphNomalization_t GetNormalization() const = 0;
    virtual void SetNormalization(_EKxGraphNomalization_t eNormalization) = 0;

    /// Scroll bars; 0 while the window isn't shown.
    virtual int GetScrollHMax() const = 0;
    virtual int GetScrollHPosition() const = 0;
    virtual void SetScrollHPosition(int nPosition) = 0;
    virtual int GetScrollVMax() const = 0;
    virtual int GetScrollVPosition() const = 0;
    virtual void SetScrollVPosition(int nPosition) = 0;

    /// Time between two paints in milliseconds, 0 to 1000; with 0 each list is painted when it comes.
    virtual uint32_t GetRefreshInterval() const = 0;
    virtual void SetRefreshInterval(uint32_t nInterval) = 0;

    /// Size of the plot without its margins, 0 to 8192. In force while the automatic size is off; it shows
    /// with the next refresh, as the margins and the scales do.
    virtual uint32_t GetPlotWidth() const = 0;
    virtual void SetPlotWidth(uint32_t nWidth) = 0;
    virtual uint32_t GetPlotHeight() const = 0;
    virtual void SetPlotHeight(uint32_t nHeight) = 0;
    /// Whether the plot fills the window.
    virtual bool GetPlotSizeAuto() const = 0;
    virtual void SetPlotSizeAuto(bool bAuto) = 0;
    /// 0 to 1024.
    virtual uint32_t GetPlotMarginLeft() const = 0;
    virtual void SetPlotMarginLeft(uint32_t nMargin) = 0;
    virtual uint32_t GetPlotMarginRight() const = 0;
    virtual void SetPlotMarginRight(uint32_t nMargin) = 0;
    virtual uint32_t GetPlotMarginTop() const = 0;
    virtual void SetPlotMarginTop(uint32_t nMargin) = 0;
    virtual uint32_t GetPlotMarginBottom() const = 0;
    virtual void SetPlotMarginBottom(uint32_t nMargin) = 0;

    virtual _EKxGraphScaleLineDirection_t GetScaleLineDirectionX() const = 0;
    virtual void SetScaleLineDirectionX(_EKxGraphScaleLineDirection_t eDirection) = 0;
    virtual _EKxGraphScaleLineDirection_t GetScaleLineDirectionY() const = 0;
    virtual void SetScaleLineDirectionY(_EKxGraphScaleLineDirection_t eDirection) = 0;
    /// Length of the scales' marks.
    virtual uint32_t GetScaleLineSizeX() const = 0;
    virtual void SetScaleLineSizeX(uint32_t nSize) = 0;
    virtual uint32_t GetScaleLineSizeY() const = 0;
    virtual void SetScaleLineSizeY(uint32_t nSize) = 0;

protected:
    ~IKxGraphDisplayWnd() = default;
};

} // namespace KxApi

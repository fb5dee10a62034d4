// SPDX-License-Identifier: Apache-2.0
// The window that shows live images.
#pragma once

#include <KxApi_GUI/IKxWnd.h>
#include <KxApi_IP/KxConversionOptions.h>
#include <KxSDKCommon/ColorMap.h>

#include <cstdint>

namespace KxApi
{

struct IKxDrawingTool;
struct IKxImage;
struct IKxPixelFormatConverter;

/// How the image's size on the screen is found.
enum _EKxZoomMode_t : uint32_t
{
    KxZoomMode_FixedZoom = 0,      ///< by the magnification that is set
    KxZoomMode_FitToTheWindow = 1, ///< by the size of the window
};

/// Pattern behind the image.
enum _EKxBackgroundStyle_t : uint32_t
{
    KxBackgroundStyle_None = 0,
    KxBackgroundStyle_Horizontal = 1,
    KxBackgroundStyle_Vertical = 2,
    KxBackgroundStyle_FDiagonal = 3,
    KxBackgroundStyle_BDiagonal = 4,
    KxBackgroundStyle_Cross = 5,
    KxBackgroundStyle_DiagCross = 6,
};

/// Who chooses the pixel format that images are converted to for the screen.
enum _EKxPreviewPixelFormatMode_t : uint32_t
{
    KxPreviewPixelFormatMode_Auto = 0,   ///< the window, by the image
    KxPreviewPixelFormatMode_Manual = 1, ///< the application, through the converter
};

/// How mosaics are turned into colours for a saved preview.
enum _EKxBayerInterpolationMethodForStillImageFile_t : uint32_t
{
    KxBayerInterpolationMethodForStillImageFile_Auto = 0,   ///< by the best method
    KxBayerInterpolationMethodForStillImageFile_Manual = 1, ///< by the method of the preview
};

/// The image window. It copies each image that it is given and converts the newest one when the screen wants
/// it, so that the camera's thread pays for one copy and no more. Any thread. Settings also exist as features
/// of GetINodeMap; they survive closing. A value out of range raises OutOfRangeException and changes nothing.
///
/// Images that it hands out belong to the window and stay what they are until the same call is made again;
/// the registered one also until the user saves an image.
struct IKxImageDisplayWnd : virtual IKxWnd
{
    /// Shows the image from the next refresh on. It is read during the call only; calls take turns. Raises
    /// InvalidArgumentException for null, an unknown pixel format and an image that isn't of the SDK's own
    /// making, RuntimeException for one without pixels, BadAllocException. The window then goes on with the
    /// image it had.
    virtual void RegisterIKxImage(IKxImage* pIKxImage) = 0;
    /// Whether there ever was an image.
    virtual bool HasImage() const = 0;
    /// The newest image as it was registered. Raises RuntimeException "There is no available image.".
    virtual IKxImage* GetRegisteredIKxImage() = 0;
    /// The newest image as it is shown, converted now if need be. Raises RuntimeException "There is no
    /// available image.", also when it can't be converted.
    virtual IKxImage* GetConvertedIKxImage() = 0;

    /// Turns a position in the window's widget into the nearest image pixel shown there; 0, 0 while nothing
    /// is shown.
    virtual void ScreenToImage(int* pX, int* pY) = 0;

    /// The converter for the screen. Its settings may be changed at any time, also as features of its node
    /// map.
    virtual IKxPixelFormatConverter* GetIKxPixelFormatConverter() const = 0;
    virtual _EKxPreviewPixelFormatMode_t GetPreviewPixelFormatMode() const = 0;
    virtual void SetPreviewPixelFormatMode(_EKxPreviewPixelFormatMode_t eMode) = 0;

    /// Scroll bars: positions 0 to maximum, in pixels of the screen. 0 while the window isn't shown.
    virtual int GetScrollHMax() const = 0;
    virtual int GetScrollHPosition() const = 0;
    virtual void SetScrollHPosition(int nPosition) = 0;
    virtual int GetScrollVMax() const = 0;
    virtual int GetScrollVPosition() const = 0;
    virtual void SetScrollVPosition(int nPosition) = 0;

    /// Least time between two shown images in milliseconds, 0 to 1000.
    virtual uint32_t GetRefreshInterval() const = 0;
    virtual void SetRefreshInterval(uint32_t nInterval) = 0;

    virtual _EKxZoomMode_t GetZoomMode() const = 0;
    virtual void SetZoomMode(_EKxZoomMode_t eZoomMode) = 0;
    /// Magnification of fixed zoom, 0.01 to 64.
    virtual double GetManualZoomMagnification() const = 0;
    virtual void SetManualZoomMagnification(double dMagnification) = 0;

    virtual _EKxBackgroundStyle_t GetBackgroundStyle() const = 0;
    virtual void SetBackgroundStyle(_EKxBackgroundStyle_t eStyle) = 0;
    /// Colours: red | green << 8 | blue << 16. The foreground is the pattern's.
    virtual uint32_t GetForegroundColor() const = 0;
    virtual void SetForegroundColor(uint32_t nColor) = 0;
    virtual uint32_t GetBackgroundColor() const = 0;
    virtual void SetBackgroundColor(uint32_t nColor) = 0;

    /// Whether the toolbar for drawing is shown, and whether saved previews carry the drawings.
    virtual bool GetBuiltInDrawingToolbar() const = 0;
    virtual void SetBuiltInDrawingToolbar(bool bShow) = 0;
    virtual bool GetEnableDrawingOnSavingImage() const = 0;
    virtual void SetEnableDrawingOnSavingImage(bool bEnable) = 0;
    /// The tool for drawing over the image, which belongs to the window.
    virtual IKxDrawingTool* GetIKxDrawingTool() = 0;

    /// How the image is to be stretched: 1 nearest neighbour, 3 bilinear.
    virtual EKxBayerInterpolationMethod_t GetStretchMode() const = 0;
    virtual void SetStretchMode(EKxBayerInterpolationMethod_t eStretchMode) = 0;

    virtual _EKxBayerInterpolationMethodForStillImageFile_t
    GetBayerInterpolationMethodForStillImageFile() const = 0;
    virtual void
    SetBayerInterpolationMethodForStillImageFile(_EKxBayerInterpolationMethodForStillImageFile_t eMethod) = 0;

    /// False colours of grey images. The phase is 0 to 255.
    virtual EKxColorMapType_t GetColorMapType() const = 0;
    virtual void SetColorMapType(EKxColorMapType_t eType) = 0;
    virtual bool GetColorMapInversion() const = 0;
    virtual void SetColorMapInversion(bool bInversion) = 0;
    virtual int GetColorMapPhase() const = 0;
    virtual void SetColorMapPhase(int nPhase) = 0;

protected:
    ~IKxImageDisplayWnd() = default;
};

} // namespace KxApi

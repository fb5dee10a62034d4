// SPDX-License-Identifier: Apache-2.0
// Drawing over images for programs without Qt.
#pragma once

#include <Base/GCString.h>

#include <cstdint>

namespace KxApi
{

struct IKxImage;

/// A colour of the canvas, red | green << 8 | blue << 16; each 0 to 255.
constexpr uint32_t KxOverlayColor(uint32_t nRed, uint32_t nGreen, uint32_t nBlue)
{
    return (nRed & 0xFF) | (nGreen & 0xFF) << 8 | (nBlue & 0xFF) << 16;
}

/// A further face of the parameter of the drawing event (KxGUICallbackType_Drawing): `dynamic_cast` the
/// IKxCallbackParamBase to it. It draws with the painter that GetDC yields, for programs that know nothing of
/// Qt, and leaves that as it was. GUI thread, during the callback.
///
/// Positions and sizes are in pixels of the image, whose left upper corner is (0, 0), so that the middle of
/// its first pixel is (0.5, 0.5); what lies outside isn't seen. Widths of lines and heights of texts are in
/// pixels of the screen, so that they stay as they are when the user zooms. Nothing is raised for values that
/// can't be drawn, such as NaN or a negative size: they aren't drawn.
struct IKxOverlayCanvas
{
    /// Colour of lines and texts, and width of lines, from here on. Each callback begins with it, as others
    /// may have drawn before.
    virtual void SetPen(uint32_t nColor, double dWidth) = 0;

    virtual void DrawLine(double dX0, double dY0, double dX1, double dY1) = 0;
    /// The outline, and that of the ellipse within the rectangle.
    virtual void DrawRectangle(double dX, double dY, double dWidth, double dHeight) = 0;
    virtual void DrawEllipse(double dX, double dY, double dWidth, double dHeight) = 0;
    /// @param dX,dY the left end of the line on which the text stands.
    /// @param strText in UTF-8, one line.
    /// @param nHeight of the letters; 0 for the application's font as it is.
    virtual void DrawText(double dX, double dY, const GenICam::gcstring& strText, uint32_t nHeight = 0) = 0;

    /// The image that was registered and is painted, as it came and with all of its bits: values of it belong
    /// to what they are drawn over, while the window's GetRegisteredIKxImage may already be a later one. It
    /// lives during the callback. IKxCallbackParamKxApiGUIEventDrawing::GetIKxImage is the same image in the
    /// screen's format; both are one object where nothing had to be converted.
    virtual IKxImage* GetRegisteredIKxImage() const = 0;

protected:
    ~IKxOverlayCanvas() = default;
};

} // namespace KxApi

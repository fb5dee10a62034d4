// SPDX-License-Identifier: Apache-2.0
// Draws over the live image in a program that knows nothing of Qt: the drawing event brings a canvas whose
// unit is the pixel of the image. Here it marks the brightest pixel.
#include "FirstCamera.h"

#include <KxApi_GUI/IKxOverlayCanvas.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>

#include <algorithm>

using namespace KxApi;

// Told of each paint, in the GUI thread. The window owns this object from RegisterCallback on.
struct BrightestPixel final : IKxCallback
{
    void OnCallback(IKxCallbackParamBase* pParam) override
    {
        if (pParam->GetCallbackType() == KxGUICallbackType_Drawing)
            Draw(*dynamic_cast<IKxCallbackParamKxApiGUIEventDrawing&>(*pParam).GetIKxImage(),
                 dynamic_cast<IKxOverlayCanvas&>(*pParam));
    }
    void Release() override { delete this; }

    static void Draw(const IKxImage& image, IKxOverlayCanvas& canvas)
    {
        if (image.GetImagePixelFormat() != KxPixelFormat_Mono8)
            return;
        size_t nX = 0;
        size_t nY = 0;
        uint8_t nMax = 0;
        for (size_t y = 0; y < image.GetImageHeight(); ++y) {
            const auto* const pLine =
                static_cast<const uint8_t*>(image.GetImageBuffer()) + y * image.GetImageLinePitch();
            const auto* const pMax = std::max_element(pLine, pLine + image.GetImageWidth());
            if (*pMax > nMax) {
                nMax = *pMax;
                nX = static_cast<size_t>(pMax - pLine);
                nY = y;
            }
        }
        // The corner of the image is (0, 0), so that the middle of its first pixel is (0.5, 0.5).
        const double dX = static_cast<double>(nX) + 0.5;
        const double dY = static_cast<double>(nY) + 0.5;
        canvas.SetPen(KxOverlayColor(255, 0, 0), 2);
        canvas.DrawEllipse(dX - 30, dY - 30, 60, 60);
        canvas.DrawLine(dX - 50, dY, dX + 50, dY);
        canvas.DrawLine(dX, dY - 50, dX, dY + 50);
        canvas.DrawText(dX + 40, dY - 40, std::to_string(nMax).c_str());
    }
};

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxImageDisplayWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    window->SetZoomMode(KxZoomMode_FitToTheWindow);
    window->RegisterCallback(new BrightestPixel);
    window->Show(nullptr, KxWindowMode_Modaless);

    Samples::ForEachImage toWindow([&](IKxStreamImage& image) { window->RegisterIKxImage(&image); });
    Samples::FirstCamera camera; // made last, so that it ends first
    IKxStream& stream = camera.Stream();
    stream.StartAcquisition(&toWindow, Samples::ImagesOf(argc, argv));
    while (window->IsVisible() && stream.IsAcquiring())
        processEventGUI(false, 10);
    stream.StopAcquisition();
    std::cout << stream.GetStatistics().nDelivered << " images\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}

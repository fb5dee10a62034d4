// SPDX-License-Identifier: Apache-2.0
// Paints over the live image with the QPainter of the window, which keeps lines and text sharp at every zoom.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/IKxImage.h>

#include <QPainter>

using namespace KxApi;

// Told of each paint, in the GUI thread. The window owns this object from RegisterCallback on.
struct CrossHair final : IKxCallback
{
    void OnCallback(IKxCallbackParamBase* pParam) override
    {
        if (pParam->GetCallbackType() == KxGUICallbackType_Drawing)
            Paint(dynamic_cast<IKxCallbackParamKxApiGUIEventDrawing&>(*pParam));
    }
    void Release() override { delete this; }

    static void Paint(const IKxCallbackParamKxApiGUIEventDrawing& event)
    {
        QPainter& painter = *static_cast<QPainter*>(event.GetDC());
        const QSize display(event.GetDisplayWidth(), event.GetDisplayHeight());
        const QPoint middle(display.width() / 2, display.height() / 2);
        painter.setPen(QPen(Qt::green, 2));
        painter.drawLine(0, middle.y(), display.width(), middle.y());
        painter.drawLine(middle.x(), 0, middle.x(), display.height());
        // A circle of 200 image pixels: the unit of the painter is the pixel of the screen.
        const double dScale = static_cast<double>(display.width()) / event.GetROIWidth();
        painter.drawEllipse(QPointF(middle), 100 * dScale, 100 * dScale);
        painter.drawText(middle + QPoint(8, -8), QString("%1 x %2")
                                                     .arg(event.GetIKxImage()->GetImageWidth())
                                                     .arg(event.GetIKxImage()->GetImageHeight()));
    }
};

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxImageDisplayWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    window->SetZoomMode(KxZoomMode_FitToTheWindow);
    window->RegisterCallback(new CrossHair);
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

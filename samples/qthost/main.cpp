// SPDX-License-Identifier: Apache-2.0
// A Qt program shows a live image in a window of the SDK's beside its own widgets. Its event loop serves
// both.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>

using namespace KxApi;

// Events of the window, in the GUI thread. The window owns this object from RegisterCallback on.
struct EndsWithWindow final : IKxCallback
{
    void OnCallback(IKxCallbackParamBase* pParam) override
    {
        if (pParam->GetCallbackType() == KxGUICallbackType_Destroyed)
            QApplication::quit();
    }
    void Release() override { delete this; }
};

int main(int argc, char** argv)
try {
    const QApplication app(argc, argv); // before the first window, which then uses its event loop
    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxImageDisplayWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    window->SetZoomMode(KxZoomMode_FitToTheWindow);
    window->RegisterCallback(new EndsWithWindow);
    window->Show(nullptr, KxWindowMode_Modaless);

    // A widget of the program's own that changes the window.
    QPushButton button("100 %");
    QObject::connect(&button, &QPushButton::clicked, [&] {
        window->SetZoomMode(KxZoomMode_FixedZoom);
        window->SetManualZoomMagnification(1.0);
    });
    button.show();

    Samples::ForEachImage toWindow([&](IKxStreamImage& image) { window->RegisterIKxImage(&image); });
    Samples::FirstCamera camera; // made last, so that it ends first
    IKxStream& stream = camera.Stream();
    stream.StartAcquisition(&toWindow, Samples::ImagesOf(argc, argv));
    QTimer timer; // looks whether that was the last image
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!stream.IsAcquiring())
            window->Close();
    });
    timer.start(10);
    const int nResult = QApplication::exec();
    stream.StopAcquisition();
    std::cout << stream.GetStatistics().nDelivered << " images\n";
    return nResult;
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}

// SPDX-License-Identifier: Apache-2.0
// A program that knows nothing of Qt shows a live image: its own loop lets the windows handle their events.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>

using namespace KxApi;

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const CIKxWndPtrT<IKxImageDisplayWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    window->SetZoomMode(KxZoomMode_FitToTheWindow);
    window->SetPosition(100, 100, 900, 700);
    window->Show(nullptr, KxWindowMode_Modaless);

    // Images go from the stream's thread straight into the window, which copies them.
    Samples::ForEachImage toWindow([&](IKxStreamImage& image) { window->RegisterIKxImage(&image); });
    Samples::FirstCamera camera; // made last, so that it ends first
    IKxStream& stream = camera.Stream();
    stream.StartAcquisition(&toWindow, Samples::ImagesOf(argc, argv));
    while (window->IsVisible() && stream.IsAcquiring())
        processEventGUI(false, 10); // and here is time for the program's own work
    stream.StopAcquisition();
    std::cout << stream.GetStatistics().nDelivered << " images\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}

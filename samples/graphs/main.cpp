// SPDX-License-Identifier: Apache-2.0
// The histogram of the live image, and the profile of its middle row, each in a graph window.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_IP/KxImageGraph.h>

using namespace KxApi;

// A window, and the list that is filled for it in the stream's thread; the window takes a copy.
struct Graph
{
    Graph(int nX, const char* szTitle)
    {
        window->SetPosition(nX, 100, 640, 400);
        window->Show(nullptr, KxWindowMode_Modaless);
        window->SetTitle(szTitle);
    }
    CIKxWndPtrT<IKxGraphDisplayWnd> window{CreateIKxWnd(KxWindowType_GraphDisplay)};
    CKxAutoPtr<IKxGraphDataBufferListResizable> list{CreateIKxGraphDataBufferListResizable(nullptr)};
};

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    Graph histogram(100, "Histogram");
    Graph profile(780, "Middle row");

    Samples::ForEachImage toGraphs([&](IKxStreamImage& image) {
        histogram.list->Clear();
        AppendHistogram(&image, nullptr, histogram.list.Get()); // of all pixels; an item a colour
        histogram.window->RegisterIKxGraphDataBufferList(histogram.list.Get());

        const auto dLast = static_cast<double>(image.GetImageWidth() - 1);
        const size_t nMiddle = image.GetImageHeight() / 2;
        const auto dRow = static_cast<double>(nMiddle);
        profile.list->Clear();
        AppendLineProfile(&image, {0, dRow, dLast, dRow}, profile.list.Get());
        profile.window->RegisterIKxGraphDataBufferList(profile.list.Get());
    });
    Samples::FirstCamera camera; // made last, so that it ends first
    IKxStream& stream = camera.Stream();
    stream.StartAcquisition(&toGraphs, Samples::ImagesOf(argc, argv));
    while (histogram.window->IsVisible() && profile.window->IsVisible() && stream.IsAcquiring())
        processEventGUI(false, 10);
    stream.StopAcquisition();
    std::cout << stream.GetStatistics().nDelivered << " images\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}

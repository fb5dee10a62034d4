// SPDX-License-Identifier: Apache-2.0
// Shows the histogram of the first camera's live image and the profile of its middle row in two windows, from
// a program that knows nothing of Qt. Ends when one of them is closed, or after the seconds given.
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_IP/KxImageGraph.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <chrono>
#include <cstdlib>
#include <iostream>

using namespace KxApi;

// A window and the list that is filled for it in the stream's thread; the window takes a copy.
struct Graph
{
    Graph(int nX, const char* szTitle)
    {
        window->SetPosition(nX, 100, 640, 400);
        window->Show(nullptr, KxWindowMode_Modaless);
        window->SetTitle(szTitle);
    }
    CKxAutoPtr<IKxWndReleasable, IKxGraphDisplayWnd> window{CreateIKxWnd(KxWindowType_GraphDisplay)};
    CKxAutoPtr<IKxGraphDataBufferListResizable> list{CreateIKxGraphDataBufferListResizable(nullptr)};
};

struct ToGraphs : IKxStreamCallback
{
    void OnImage(IKxStreamImage* pImage) override
    {
        histogram.list->Clear();
        AppendHistogram(pImage, nullptr, histogram.list.Get());
        histogram.window->RegisterIKxGraphDataBufferList(histogram.list.Get());
        const double dRow = static_cast<double>(pImage->GetImageHeight() / 2);
        profile.list->Clear();
        AppendLineProfile(pImage, {0, dRow, static_cast<double>(pImage->GetImageWidth() - 1), dRow},
                          profile.list.Get());
        profile.window->RegisterIKxGraphDataBufferList(profile.list.Get());
    }
    void OnError(const GenICam::GenericException& error, bool) override
    {
        std::cerr << error.GetDescription();
    }
    Graph histogram{100, "Histogram"};
    Graph profile{780, "Middle row"};
};

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 86400);
    CIKxSystemPtrArray systems;
    OpenIKxSystems(systems);
    systems[0]->UpdateInterfaceList();
    IKxInterface* const pInterface = systems[0]->GetIKxInterface(0);
    pInterface->UpdateDeviceList();
    ToGraphs graphs;
    const CKxAutoPtr<IKxDeviceReleasable, IKxDevice> device(
        CreateIKxDevice(pInterface, pInterface->GetIKxDeviceInfo(0), KxDeviceAccess_Control));
    const CKxAutoPtr<IKxStreamReleasable, IKxStream> stream(
        device->OpenIKxStream(0)); // ends before the windows
    stream->StartAcquisition(&graphs, kKxEndless);
    while (graphs.histogram.window->IsVisible() && graphs.profile.window->IsVisible() &&
           std::chrono::steady_clock::now() < end)
        processEventGUI(false, 10);
    stream->StopAcquisition();
    std::cout << stream->GetStatistics().nDelivered << " images\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}

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

/// The first camera that is found on any interface.
CKxAutoPtr<IKxDeviceReleasable, IKxDevice> OpenCamera(const CIKxSystemPtrArray& systems)
{
    for (size_t s = 0; s < systems.GetSize(); ++s) {
        systems[s]->UpdateInterfaceList();
        for (uint32_t i = 0; i < systems[s]->GetInterfaceCount(); ++i) {
            IKxInterface* const pInterface = systems[s]->GetIKxInterface(i);
            pInterface->UpdateDeviceList();
            if (pInterface->GetDeviceCount() > 0)
                return CKxAutoPtr<IKxDeviceReleasable, IKxDevice>(
                    CreateIKxDevice(pInterface, pInterface->GetIKxDeviceInfo(0), KxDeviceAccess_Control));
        }
    }
    throw RUNTIME_EXCEPTION("there is no camera");
}

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 86400);
    CIKxSystemPtrArray systems;
    OpenIKxSystems(systems);
    ToGraphs graphs;
    const auto device = OpenCamera(systems);
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

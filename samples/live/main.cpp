// SPDX-License-Identifier: Apache-2.0
// Shows the live image of the first camera, from a program that knows nothing of Qt: its own loop lets the
// windows handle their events. Ends when the window is closed, or after the seconds given.
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxStream.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <GenTL/GenTL.h>

#include <chrono>
#include <cstdlib>
#include <iostream>

using namespace KxApi;

// Images go from the stream's thread straight into the window, which copies them.
struct ToWindow : IKxStreamCallback
{
    explicit ToWindow(IKxImageDisplayWnd& window)
        : m_window(window)
    {}
    void OnImage(IKxStreamImage* pImage) override { m_window.RegisterIKxImage(pImage); }
    void OnError(const GenICam::GenericException& error, bool) override
    {
        std::cerr << error.GetDescription() << "\n";
    }
    IKxImageDisplayWnd& m_window;
};

IKxDeviceReleasable* OpenFirst(CIKxSystemPtrArray& systems)
{
    OpenIKxSystems(systems);
    for (size_t s = 0; s < systems.GetSize(); ++s) {
        systems[s]->UpdateInterfaceList();
        for (uint32_t i = 0; i < systems[s]->GetInterfaceCount(); ++i) {
            IKxInterface* const pInterface = systems[s]->GetIKxInterface(i);
            pInterface->UpdateDeviceList();
            for (uint32_t d = 0; d < pInterface->GetDeviceCount(); ++d) {
                const IKxDeviceInfo* const pInfo = pInterface->GetIKxDeviceInfo(d);
                if (pInfo->GetAccessStatus() == GenTL::DEVICE_ACCESS_STATUS_READWRITE)
                    return CreateIKxDevice(pInterface, pInfo, KxDeviceAccess_Control);
            }
        }
    }
    throw RUNTIME_EXCEPTION("there is no camera that can be opened");
}

void Show(std::chrono::seconds longest)
{
    const CKxApiAutoInitTerm sdk;
    CIKxSystemPtrArray systems;
    const CKxAutoPtr<IKxDeviceReleasable, IKxDevice> device(OpenFirst(systems));
    const CKxAutoPtr<IKxWndReleasable, IKxWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));
    auto& imageWindow = dynamic_cast<IKxImageDisplayWnd&>(*window);
    imageWindow.SetZoomMode(KxZoomMode_FitToTheWindow);
    window->SetPosition(100, 100, 900, 700);
    window->Show(nullptr, KxWindowMode_Modaless);

    ToWindow toWindow(imageWindow);
    const CKxAutoPtr<IKxStreamReleasable, IKxStream> stream(
        device->OpenIKxStream(0)); // ends before the window
    stream->StartAcquisition(&toWindow, kKxEndless);
    const auto end = std::chrono::steady_clock::now() + longest;
    while (window->IsVisible() && std::chrono::steady_clock::now() < end)
        processEventGUI(false, 10);
    stream->StopAcquisition();
    std::cout << stream->GetStatistics().nDelivered << " images\n";
}

int main(int argc, char** argv)
{
    try {
        Show(argc > 1 ? std::chrono::seconds(std::atoi(argv[1])) : std::chrono::hours(24 * 365));
    } catch (const GenICam::GenericException& e) {
        std::cerr << e.GetDescription() << "\n";
        return 1;
    }
}

// SPDX-License-Identifier: Apache-2.0
// Lets the user choose a camera, opens it, and tells of it.
//
// devices [SECONDS]
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <chrono>
#include <cstdlib>
#include <iostream>

using namespace KxApi;

int main(int argc, char** argv)
try {
    const CKxApiAutoInitTerm sdk;
    CIKxSystemPtrArray systems; // before the window, which looks for cameras there
    for (const CKxProducerInfo& producer : OpenIKxSystems(systems)) {
        if (!producer.strError.empty())
            std::cerr << producer.strPath << ": " << producer.strError << "\n";
    }

    const CIKxWndPtrT<IKxDeviceSelectionWnd> window(CreateIKxWnd(KxWindowType_DeviceSelection));
    window->RegisterTargetIKxSystemList(systems);
    window->SetPosition(100, 100, 900, 500);
    // A program that has nothing to do meanwhile shows it with KxWindowMode_Modal, and needs no loop.
    window->Show(nullptr, KxWindowMode_Modaless);
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 86400);
    while (window->IsVisible() && std::chrono::steady_clock::now() < end)
        processEventGUI(false, 10);
    window->Close();

    IKxInterface* pInterface = nullptr;
    const IKxDeviceInfo* pInfo = nullptr;
    window->GetSelectedDeviceInfo(&pInterface, &pInfo);
    if (!pInfo) {
        std::cout << "no camera was chosen\n";
        return 0;
    }
    const CKxAutoPtr<IKxDeviceReleasable, IKxDevice> device(
        CreateIKxDevice(pInterface, pInfo, KxDeviceAccess_Control));
    std::cout << "opened " << pInfo->GetVendor() << " " << pInfo->GetModel() << " (" << pInfo->GetID()
              << "), which has " << device->GetStreamCount() << " streams\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}

// SPDX-License-Identifier: Apache-2.0
// Another process for tests: opens a camera, says so, and holds it until its input ends.
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <cstdio>
#include <exception>

using namespace KxApi;

/// Arguments: producer, identifier of a camera on its first interface.
int main(int argc, char** argv)
try {
    if (argc != 3)
        return 2;
    const CKxApiAutoInitTerm sdk;
    const CKxAutoPtr<IKxSystemReleasable, IKxSystem> pSystem(CreateIKxSystem(argv[1]));
    pSystem->UpdateInterfaceList();
    IKxInterface* const pInterface = pSystem->GetIKxInterface(0);
    pInterface->UpdateDeviceList();
    for (uint32_t i = 0; i < pInterface->GetDeviceCount(); ++i) {
        const IKxDeviceInfo* const pInfo = pInterface->GetIKxDeviceInfo(i);
        if (pInfo->GetID() != argv[2])
            continue;
        const CKxAutoPtr<IKxDeviceReleasable, IKxDevice> pDevice(
            CreateIKxDevice(pInterface, pInfo, KxDeviceAccess_Control));
        std::puts("open");
        std::fflush(stdout);
        std::getchar();
        return 0;
    }
    return 1;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}

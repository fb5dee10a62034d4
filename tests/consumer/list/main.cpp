// SPDX-License-Identifier: Apache-2.0
// Lists the systems with their interfaces and devices.
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxApi_TL/KxApi_Version.h>

#include <iostream>

int main()
{
    if (KxApi::GetVersion() < KXAPI_VERSION) {
        std::cerr << "needs KxApi " KXAPI_VERSION_STRING ", found " << KxApi::GetVersionText() << '\n';
        return 1;
    }
    const KxApi::CKxApiAutoInitTerm sdk;
    KxApi::CIKxSystemPtrArray systems;
    for (const KxApi::CKxProducerInfo& producer : KxApi::OpenIKxSystems(systems)) {
        if (!producer.strError.empty())
            std::cerr << producer.strPath << ": " << producer.strError << '\n';
    }
    for (size_t i = 0; i < systems.GetSize(); ++i) {
        KxApi::IKxSystem* const pSystem = systems[i];
        pSystem->UpdateInterfaceList();
        for (uint32_t j = 0; j < pSystem->GetInterfaceCount(); ++j) {
            KxApi::IKxInterface* const pInterface = pSystem->GetIKxInterface(j);
            pInterface->UpdateDeviceList();
            for (uint32_t k = 0; k < pInterface->GetDeviceCount(); ++k)
                std::cout << pSystem->GetIKxSystemInfo()->GetDisplayName() << " / "
                          << pInterface->GetIKxInterfaceInfo()->GetDisplayName() << " / "
                          << pInterface->GetIKxDeviceInfo(k)->GetID() << '\n';
        }
    }
    return 0;
}

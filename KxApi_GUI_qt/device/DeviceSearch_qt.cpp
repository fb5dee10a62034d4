// SPDX-License-Identifier: Apache-2.0
#include "device/DeviceSearch_qt.h"

#include "device/DisplayDeviceSelectionPartDlg_qt.h"

#include <Base/GCBadAlloc.h>

namespace KxApi
{

CDeviceSearch::CDeviceSearch(CDisplayDeviceSelectionPartDlg* pDialog,
                             const std::vector<IKxSystem*>& vecSystems)
    : m_vecSystems(vecSystems)
    , m_pDialog(pDialog)
{
    GenICam::GuardBadAlloc([this] {
        for (IKxSystem* const pSystem : m_vecSystems) {
            m_mapBusy[pSystem];
            CKxAutoPtr<IKxSystemReleasable> held(HoldIKxSystem(pSystem));
            if (held)
                m_vecHeld.push_back(std::move(held));
        }
    });
}

void CDeviceSearch::Detach()
{
    const std::lock_guard<std::mutex> guard(m_mutexDialog);
    m_pDialog = nullptr;
}

void CDeviceSearch::TellOfFacts()
{
    if (m_bFactsWanted.exchange(false))
        TellDialog([](CDisplayDeviceSelectionPartDlg& dialog) { dialog.doUpdateFacts(); });
}

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#include "device/WorkerDeviceDetection_qt.h"

#include "device/DisplayDeviceSelectionPartDlg_qt.h"
#include "frame/utility_qt.h"

#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>

namespace KxApi
{
namespace
{

constexpr unsigned int kPauseMs = 5000;

} // namespace

CWorkerDeviceDetection::CWorkerDeviceDetection(void* pDlg, const std::vector<IKxSystem*>& vecSystems,
                                               GenApi::CLock& lock)
    : CWorker("KxApi_GUI_DeviceDetection")
    , m_vecSystems(vecSystems)
    , m_pDlg(pDlg)
    , m_objLock(lock)
{}

CWorkerDeviceDetection::~CWorkerDeviceDetection() { CWorker::Stop(); }

int CWorkerDeviceDetection::mWork()
{
    auto* const pDialog = static_cast<CDisplayDeviceSelectionPartDlg*>(m_pDlg);
    try {
        while (!IsStopRequest(0)) {
            if (LookForChanges())
                pDialog->doUpdate();
            IsStopRequest(kPauseMs);
        }
    } catch (...) {
        // A system that doesn't answer any more ends the search; what is shown stays.
        TellCurrentException([&](const GenICam::GenericException& e) { pDialog->doTellFailure(e); });
    }
    return 0;
}

bool CWorkerDeviceDetection::LookForChanges()
{
    const GenApi::AutoLock lock(m_objLock);
    bool bChanged = false;
    for (IKxSystem* const pSystem : m_vecSystems) {
        if (IsStopRequest(0))
            break;
        bChanged |= LookForChanges(*pSystem);
    }
    return bChanged;
}

bool CWorkerDeviceDetection::LookForChanges(IKxSystem& system)
{
    bool bChanged = system.UpdateInterfaceList();
    // The count is asked for anew, as interfaces may go meanwhile.
    for (uint32_t nIndex = 0; nIndex < system.GetInterfaceCount() && !IsStopRequest(0); ++nIndex) {
        try {
            bChanged |= system.GetIKxInterface(nIndex)->UpdateDeviceList();
        } catch (...) { // NOLINT(bugprone-empty-catch): one interface that fails hides no other
        }
    }
    return bChanged;
}

} // namespace KxApi

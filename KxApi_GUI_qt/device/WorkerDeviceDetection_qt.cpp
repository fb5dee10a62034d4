// SPDX-License-Identifier: Apache-2.0
#include "device/WorkerDeviceDetection_qt.h"

#include "device/DisplayDeviceSelectionPartDlg_qt.h"
#include "frame/utility_qt.h"

#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <future>
#include <mutex>
#include <utility>

namespace KxApi
{
namespace
{

constexpr unsigned int kPauseMs = 5000;

/// Workers whose last call hasn't returned yet. The end of the process waits for them.
class CEndingWorkers
{
public:
    static CEndingWorkers& Get()
    {
        static CEndingWorkers ending;
        return ending;
    }

    void Add(std::unique_ptr<CWorkerDeviceDetection> pWorker)
    {
        // Each time: what ends first at exit was begun last, and the producers that this worker calls were
        // loaded before now.
        std::atexit([] { Get().Wait(); });
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_vecEnds.erase(std::remove_if(m_vecEnds.begin(), m_vecEnds.end(),
                                       [](const std::future<void>& end) {
                                           return end.wait_for(std::chrono::seconds(0)) ==
                                                  std::future_status::ready;
                                       }),
                        m_vecEnds.end());
        m_vecEnds.push_back(
            std::async(std::launch::async, [pEnding = std::move(pWorker)]() mutable { pEnding.reset(); }));
    }

private:
    void Wait()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_vecEnds.clear();
    }

    std::mutex m_mutex;
    std::vector<std::future<void>> m_vecEnds; // the destructor of each waits
};

} // namespace

CWorkerDeviceDetection::CWorkerDeviceDetection(std::shared_ptr<CDeviceSearch> pSearch)
    : CWorker("KxApi_GUI_DeviceDetection")
    , m_pSearch(std::move(pSearch))
{}

CWorkerDeviceDetection::~CWorkerDeviceDetection() { CWorker::Stop(); }

void CWorkerDeviceDetection::EndSoon(std::unique_ptr<CWorkerDeviceDetection> pWorker)
{
    if (!pWorker || !pWorker->m_pSearch->HoldsAll())
        return; // which waits
    static_cast<CEventObject*>(pWorker->GetStopRequestEvent())->SetEvent();
    CEndingWorkers::Get().Add(std::move(pWorker));
}

int CWorkerDeviceDetection::mWork()
{
    try {
        while (!IsStopRequest(0)) {
            if (LookForChanges())
                m_pSearch->TellDialog([](CDisplayDeviceSelectionPartDlg& dialog) { dialog.doUpdate(); });
            IsStopRequest(kPauseMs);
        }
    } catch (...) {
        // A system that doesn't answer any more ends the search; what is shown stays.
        TellCurrentException([&](const GenICam::GenericException& e) {
            m_pSearch->TellDialog([&](CDisplayDeviceSelectionPartDlg& dialog) { dialog.doTellFailure(e); });
        });
    }
    return 0;
}

bool CWorkerDeviceDetection::LookForChanges()
{
    const GenApi::AutoLock lock(m_pSearch->m_objLock);
    bool bChanged = false;
    for (IKxSystem* const pSystem : m_pSearch->Systems()) {
        if (IsRoundOver())
            break;
        m_pSearch->SearchSystem(*pSystem, [&] { bChanged |= LookForChanges(*pSystem); });
    }
    return bChanged;
}

bool CWorkerDeviceDetection::LookForChanges(IKxSystem& system)
{
    bool bChanged = system.UpdateInterfaceList();
    // The count is asked for anew, as interfaces may go meanwhile.
    for (uint32_t nIndex = 0; nIndex < system.GetInterfaceCount() && !IsRoundOver(); ++nIndex) {
        try {
            bChanged |= system.GetIKxInterface(nIndex)->UpdateDeviceList();
        } catch (...) { // NOLINT(bugprone-empty-catch): one interface that fails hides no other
        }
    }
    return bChanged;
}

} // namespace KxApi

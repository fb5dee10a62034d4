// SPDX-License-Identifier: Apache-2.0
// Looks for devices that come and go.
#pragma once

#include "device/DeviceSearch_qt.h"

#include <KxSDKCommon/Worker.h>

#include <memory>

namespace KxApi
{

struct IKxSystem;

/// Asks each system and each of its interfaces in rounds whether anything changed, and tells the dialog after
/// a round in which something did. Between rounds it pauses; a stop ends the pause at once, and a round after
/// the call under way.
class CWorkerDeviceDetection final : public CWorker
{
public:
    /// Raises BadAllocException.
    explicit CWorkerDeviceDetection(std::shared_ptr<CDeviceSearch> pSearch);
    ~CWorkerDeviceDetection() override;

    /// Stops the worker without waiting for the call under way, unless one of its systems could be gone by
    /// the time that it returns. What is left is waited for at the end of the process.
    static void EndSoon(std::unique_ptr<CWorkerDeviceDetection> pWorker);

private:
    int mWork() override;
    bool LookForChanges();
    bool LookForChanges(IKxSystem& system);
    bool IsRoundOver() { return m_pSearch->m_bLockWanted || IsStopRequest(0); }

    const std::shared_ptr<CDeviceSearch> m_pSearch;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// Looks for devices that come and go.
#pragma once

#include <GenApi/Synch.h>
#include <KxSDKCommon/Worker.h>

#include <vector>

namespace KxApi
{

struct IKxInterface;
struct IKxSystem;

/// Asks each system and each of its interfaces in rounds whether anything changed, and tells the dialog after
/// a round in which something did. Between rounds it pauses; a stop ends the pause at once, and a round after
/// the call under way.
class CWorkerDeviceDetection final : public CWorker
{
public:
    /// @param pDlg the CDisplayDeviceSelectionPartDlg; outlives this, as do the systems.
    /// @param lock the dialog's, held for each round.
    /// Raises BadAllocException.
    CWorkerDeviceDetection(void* pDlg, const std::vector<IKxSystem*>& vecSystems, GenApi::CLock& lock);
    ~CWorkerDeviceDetection() override;

private:
    int mWork() override;
    bool LookForChanges();
    bool LookForChanges(IKxSystem& system);

    const std::vector<IKxSystem*> m_vecSystems;
    void* const m_pDlg;
    GenApi::CLock& m_objLock;
};

} // namespace KxApi

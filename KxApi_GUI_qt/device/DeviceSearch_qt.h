// SPDX-License-Identifier: Apache-2.0
// What the device selection dialog and its search for devices share.
#pragma once

#include <GenApi/Synch.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxSystem.h>

#include <atomic>
#include <map>
#include <mutex>
#include <vector>

namespace KxApi
{

class CDisplayDeviceSelectionPartDlg;
class CWorkerDeviceDetection;

/// Lives as long as the dialog or the search, whichever goes later: a producer may be slow to come back from
/// a search, and a dialog that is closed doesn't wait for it. Any thread.
class CDeviceSearch
{
public:
    /// Holds those of the systems that are producers' until the search has ended, as their owner may give
    /// them back when the dialog is gone. Raises BadAllocException.
    /// @param pDialog null for a search that nobody looks at.
    CDeviceSearch(CDisplayDeviceSelectionPartDlg* pDialog, const std::vector<IKxSystem*>& vecSystems);

    const std::vector<IKxSystem*>& Systems() const { return m_vecSystems; }
    /// Whether all systems live on by themselves.
    bool HoldsAll() const { return m_vecHeld.size() == m_vecSystems.size(); }

    /// From then on no function runs with the dialog.
    void Detach();
    /// Calls the function with the dialog as a reference, unless it is gone. The function leaves a note.
    template <class Function>
    void TellDialog(Function function)
    {
        const std::lock_guard<std::mutex> guard(m_mutexDialog);
        if (m_pDialog)
            function(*m_pDialog);
    }

    /// Runs the search of one system, alone with its producer, and tells the dialog if it couldn't ask that
    /// one meanwhile.
    template <class Search>
    void SearchSystem(IKxSystem& system, Search search)
    {
        {
            const std::lock_guard<std::mutex> guard(m_mapBusy.at(&system));
            search();
        }
        TellOfFacts();
    }

    /// Asks the system's producer something by the function, if no search keeps it busy; else returns false,
    /// and the dialog is told when it can be asked.
    template <class Function>
    bool AskProducer(const IKxSystem* pSystem, Function function)
    {
        const auto busy = m_mapBusy.find(pSystem);
        if (busy == m_mapBusy.end()) { // nobody searches it
            function();
            return true;
        }
        m_bFactsWanted = true; // first, so that an end of the search between the two lines isn't missed
        const std::unique_lock<std::mutex> guard(busy->second, std::try_to_lock);
        if (!guard.owns_lock())
            return false;
        m_bFactsWanted = false;
        function();
        return true;
    }

    /// Held for each round of the search, and while a dialog for an interface is open. What may be taken with
    /// it held: the locks of systems and node maps.
    GenApi::CLock m_objLock;
    /// Set while the dialog wants m_objLock: the round under way then ends after its present call.
    std::atomic<bool> m_bLockWanted{false};

private:
    void TellOfFacts();

    const std::vector<IKxSystem*> m_vecSystems;
    std::vector<CKxAutoPtr<IKxSystemReleasable>> m_vecHeld;
    std::map<const IKxSystem*, std::mutex> m_mapBusy; // the map itself never changes
    std::atomic<bool> m_bFactsWanted{false};
    std::mutex m_mutexDialog; // a leaf
    CDisplayDeviceSelectionPartDlg* m_pDialog;
};

} // namespace KxApi

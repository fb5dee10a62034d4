// SPDX-License-Identifier: Apache-2.0
// Looks for cameras on all network cards at once.
#pragma once

#include "net/Discovery.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace KxAravis
{

/// A discovery takes its second on each card, whatever is there. So those of all cards begin as soon as the
/// cards are listed, and whoever then searches one interface after the other waits for a second in all. Any
/// thread.
class CEarlyDiscovery
{
public:
    /// Begins on each card, unless one is under way there.
    void Begin(const std::vector<CNetworkCard>& cards);
    /// What was begun shortly before, or else a new discovery. Throws CError.
    std::vector<CGevCamera> Discover(const CNetworkCard& card, const CDiscoverySettings& settings,
                                     uint64_t timeoutMs);

private:
    struct CRun
    {
        std::chrono::steady_clock::time_point begun;
        std::future<std::vector<CGevCamera>> result;
    };

    std::mutex m_mutex;
    std::map<std::string, CRun> m_runs; // by name and address of the card; guarded by the mutex
};

} // namespace KxAravis

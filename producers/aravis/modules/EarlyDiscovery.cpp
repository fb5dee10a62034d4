// SPDX-License-Identifier: Apache-2.0
#include "modules/EarlyDiscovery.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace KxAravis
{
namespace
{

using Clock = std::chrono::steady_clock;

// A camera may put off its answer by a second; programs on this machine don't.
constexpr int kUsualMs = 1000;
constexpr int kLoopbackMs = 200;
constexpr auto kFresh = std::chrono::seconds(2);

int TimeoutOn(const CNetworkCard& card) { return card.isLoopback ? kLoopbackMs : kUsualMs; }

std::string KeyOf(const CNetworkCard& card) { return card.name + AddressText(card.ip.address); }

} // namespace

void CEarlyDiscovery::Begin(const std::vector<CNetworkCard>& cards)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const CNetworkCard& card : cards) {
        CRun& run = m_runs[KeyOf(card)];
        if (run.result.valid() && Clock::now() - run.begun < kFresh)
            continue;
        run.begun = Clock::now();
        run.result = std::async(std::launch::async, [card] {
            return KxAravis::Discover(card, CDiscoverySettings(), TimeoutOn(card));
        });
    }
}

std::vector<CGevCamera> CEarlyDiscovery::Discover(const CNetworkCard& card,
                                                  const CDiscoverySettings& settings, uint64_t timeoutMs)
{
    std::optional<CRun> run;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto place = m_runs.find(KeyOf(card));
        if (place != m_runs.end()) {
            run = std::move(place->second);
            m_runs.erase(place);
        }
    }
    const bool isUsual = settings.destination == kToAll && settings.isAnswerToAll;
    if (isUsual && run && run->result.valid() && Clock::now() - run->begun < kFresh)
        return run->result.get();
    const auto longest = static_cast<uint64_t>(TimeoutOn(card));
    return KxAravis::Discover(card, settings, static_cast<int>(std::min(timeoutMs, longest)));
}

} // namespace KxAravis

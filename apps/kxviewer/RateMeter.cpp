// SPDX-License-Identifier: Apache-2.0
#include "RateMeter.h"

namespace
{

constexpr auto kWindow = std::chrono::seconds(1);
// Cameras below two images a second have a rate too.
constexpr auto kLongest = std::chrono::seconds(3);
constexpr size_t kFewest = 2;

} // namespace

void RateMeter::Add(size_t bytes, Clock::time_point now)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_entries.push_back({now, bytes});
    while (m_entries.size() > kFewest && now - m_entries.front().time > kWindow)
        m_entries.pop_front();
}

void RateMeter::Clear()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_entries.clear();
}

RateMeter::Rates RateMeter::Get(Clock::time_point now) const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_entries.size() < kFewest || now - m_entries.back().time > kLongest)
        return {};
    const std::chrono::duration<double> span = m_entries.back().time - m_entries.front().time;
    if (span.count() <= 0)
        return {};
    double bytes = 0; // each event ends an interval but the first, which only begins one
    for (size_t i = 1; i < m_entries.size(); ++i)
        bytes += static_cast<double>(m_entries[i].bytes);
    return {static_cast<double>(m_entries.size() - 1) / span.count(), bytes / span.count()};
}

// SPDX-License-Identifier: Apache-2.0
// How often, and how much, over the last second.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <mutex>

/// Measures between the first and the last event of the last second, so that a steady rate reads the same at
/// every look. Any thread.
class RateMeter
{
public:
    using Clock = std::chrono::steady_clock;

    struct Rates
    {
        double perSecond = 0;
        double bytesPerSecond = 0;
    };

    void Add(size_t bytes, Clock::time_point now = Clock::now());
    void Clear();
    /// 0 when fewer than two events lie within the last second, or within the last three of slower sources.
    Rates Get(Clock::time_point now = Clock::now()) const;

private:
    struct Entry
    {
        Clock::time_point time;
        size_t bytes;
    };

    mutable std::mutex m_mutex;
    std::deque<Entry> m_entries;
};

// SPDX-License-Identifier: Apache-2.0
#include "GrabProgress.h"

#include <nlohmann/json.hpp>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace Kx
{

GrabProgress::GrabProgress(uint64_t expected)
    : m_expected(expected)
    , m_terminal(isatty(STDERR_FILENO) == 1)
{}

void GrabProgress::Count(size_t bytes, uint64_t timestampNs, const KxApi::CKxStreamStatistics& statistics)
{
    const auto now = Clock::now();
    const auto own = std::chrono::duration_cast<std::chrono::nanoseconds>(now.time_since_epoch()).count();
    m_last = timestampNs ? timestampNs : static_cast<uint64_t>(own);
    if (m_images == 0) {
        m_first = m_last;
        m_shown = now;
    }
    ++m_images;
    m_bytes += bytes;
    m_statistics = statistics;
    const auto interval = m_terminal ? std::chrono::milliseconds(100) : std::chrono::milliseconds(1000);
    if (now - m_shown >= interval)
        Show();
}

void GrabProgress::End()
{
    if (!m_terminal)
        return;
    Show();
    std::fputc('\n', stderr);
}

double GrabProgress::PerSecond(double amount) const
{
    // The first image begins the time, the others fill it.
    if (m_images < 2 || Seconds() <= 0)
        return 0;
    const auto images = static_cast<double>(m_images);
    return amount * (images - 1) / images / Seconds();
}

std::string GrabProgress::Summary() const
{
    // What had no buffer is mostly missing in the sequence as well.
    const unsigned long long lost = std::max(m_statistics.nLost, m_statistics.nUnderrun);
    char text[256];
    std::snprintf(text, sizeof text,
                  "%llu images in %.3f s: %.1f images/s, %.1f MB/s, %llu lost, %llu incomplete",
                  static_cast<unsigned long long>(m_images), Seconds(),
                  PerSecond(static_cast<double>(m_images)), PerSecond(static_cast<double>(m_bytes)) / 1e6,
                  lost, static_cast<unsigned long long>(m_statistics.nIncomplete));
    return text;
}

std::string GrabProgress::Json() const
{
    const nlohmann::ordered_json json = {
        {"images", m_images},
        {"seconds", Seconds()},
        {"imagesPerSecond", PerSecond(static_cast<double>(m_images))},
        {"bytesPerSecond", PerSecond(static_cast<double>(m_bytes))},
        {"lost", m_statistics.nLost},
        {"underrun", m_statistics.nUnderrun},
        {"incomplete", m_statistics.nIncomplete},
        {"refused", m_statistics.nRefused},
    };
    return json.dump(2);
}

std::string GrabProgress::Bar() const
{
    constexpr uint64_t kWidth = 30;
    if (m_expected == KxApi::kKxEndless)
        return {};
    const auto filled = static_cast<size_t>(kWidth * m_images / m_expected);
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] ";
}

void GrabProgress::Show()
{
    m_shown = Clock::now();
    if (m_terminal)
        std::fprintf(stderr, "\r%s%s\033[K", Bar().c_str(), Summary().c_str());
    else
        std::fprintf(stderr, "%s\n", Summary().c_str());
    std::fflush(stderr);
}

} // namespace Kx

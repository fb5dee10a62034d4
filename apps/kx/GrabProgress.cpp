// SPDX-License-Identifier: Apache-2.0
#include "GrabProgress.h"

#include "Counted.h"

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
    if (IsDue())
        Show(Line());
}

bool GrabProgress::IsDue()
{
    const auto interval = m_terminal ? std::chrono::milliseconds(100) : std::chrono::milliseconds(1000);
    const auto now = Clock::now();
    if (now - m_shown < interval)
        return false;
    m_shown = now;
    return true;
}

void GrabProgress::ShowQueue(const KxApps::RecordingStatus& status)
{
    if (status.queued > 0 && IsDue())
        Show(KxApps::Counted(m_images, "image") + ", " + std::to_string(status.queued) + " to be saved");
}

void GrabProgress::End()
{
    if (!m_terminal)
        return;
    Show(Line());
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
    std::snprintf(text, sizeof text, "%s in %.3f s: %.1f images/s, %.1f MB/s, %llu lost, %llu incomplete",
                  KxApps::Counted(m_images, "image").c_str(), Seconds(),
                  PerSecond(static_cast<double>(m_images)), PerSecond(static_cast<double>(m_bytes)) / 1e6,
                  lost, static_cast<unsigned long long>(m_statistics.nIncomplete));
    // Only of cameras that send what can't be used.
    return m_statistics.nRefused == 0
               ? text
               : text + (", " + KxApps::Counted(m_statistics.nRefused, "buffer")) + " refused";
}

std::string GrabProgress::Json(const KxApps::RecordingStatus* pRecording) const
{
    nlohmann::ordered_json json = {
        {"images", m_images},
        {"seconds", Seconds()},
        {"imagesPerSecond", PerSecond(static_cast<double>(m_images))},
        {"bytesPerSecond", PerSecond(static_cast<double>(m_bytes))},
        {"lost", m_statistics.nLost},
        {"underrun", m_statistics.nUnderrun},
        {"incomplete", m_statistics.nIncomplete},
        {"refused", m_statistics.nRefused},
    };
    if (pRecording)
        json["saved"] = {{"images", pRecording->written},  {"bytes", pRecording->writtenBytes},
                         {"seconds", pRecording->seconds}, {"bytesPerSecond", pRecording->writingRate},
                         {"lost", pRecording->lost},       {"error", pRecording->Cause()}};
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

// As much as a terminal's 80 columns hold: a longer line couldn't be drawn anew.
std::string GrabProgress::Line() const
{
    constexpr size_t kColumns = 79;
    constexpr uint64_t kWidth = 16;
    const unsigned long long lost = std::max(m_statistics.nLost, m_statistics.nUnderrun);
    char text[128];
    std::snprintf(text, sizeof text, "%s, %.1f/s, %.1f MB/s, %llu lost, %llu incomplete",
                  KxApps::Counted(m_images, "image").c_str(), PerSecond(static_cast<double>(m_images)),
                  PerSecond(static_cast<double>(m_bytes)) / 1e6, lost,
                  static_cast<unsigned long long>(m_statistics.nIncomplete));
    std::string line = text;
    if (m_expected != KxApi::kKxEndless && line.size() + kWidth + 3 <= kColumns) {
        const auto filled = static_cast<size_t>(kWidth * m_images / m_expected);
        line.insert(0, "[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] ");
    }
    return line.substr(0, kColumns);
}

void GrabProgress::Show(const std::string& text)
{
    if (m_terminal)
        std::fprintf(stderr, "\r%s\033[K", text.c_str());
    else
        std::fprintf(stderr, "%s\n", text.c_str());
    std::fflush(stderr);
}

} // namespace Kx

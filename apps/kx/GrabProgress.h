// SPDX-License-Identifier: Apache-2.0
// How an acquisition goes, for people while it runs and for scripts at its end.
#pragma once

#include "Recorder.h"

#include <KxApi_TL/IKxStream.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace Kx
{

/// Counts images and tells of them on standard error: a bar that is drawn anew where there is a terminal,
/// else a line each second. One thread.
class GrabProgress
{
public:
    /// @param expected kKxEndless draws no bar
    explicit GrabProgress(uint64_t expected);

    /// An image of so many bytes has come.
    /// @param timestampNs when the camera took it, 0 if it doesn't tell: a busy computer fetches several
    /// images at once, which says nothing of the camera's rate
    void Count(size_t bytes, uint64_t timestampNs, const KxApi::CKxStreamStatistics& statistics);

    /// No image comes any more; those that wait to be saved are counted down.
    void ShowQueue(const KxApps::RecordingStatus& status);

    /// Draws the last state and ends the line.
    void End();

    uint64_t Images() const { return m_images; }

    /// Images, time, rate, bandwidth and losses on a line, or as a JSON object.
    std::string Summary() const;
    /// @param pRecording of the images' saving, null without
    std::string Json(const KxApps::RecordingStatus* pRecording) const;

private:
    using Clock = std::chrono::steady_clock;

    double Seconds() const { return static_cast<double>(m_last - m_first) * 1e-9; }
    double PerSecond(double amount) const;
    bool IsDue();
    std::string Line() const;
    void Show(const std::string& text);

    const uint64_t m_expected;
    const bool m_terminal;
    uint64_t m_images = 0;
    uint64_t m_bytes = 0;
    KxApi::CKxStreamStatistics m_statistics;
    // Nanoseconds of the first and last image: the start-up of the camera is no part of the rate.
    uint64_t m_first = 0;
    uint64_t m_last = 0;
    Clock::time_point m_shown;
};

} // namespace Kx

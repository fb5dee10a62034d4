// SPDX-License-Identifier: Apache-2.0
// What a run of the viewer cost and showed.
#pragma once

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/IKxStream.h>

#include <QString>
#include <chrono>
#include <optional>

/// Counts paints by the drawing callback of the image window, which it has to outlive. GUI thread.
class RunReport final : public KxApi::IKxCallback
{
public:
    /// Takes the counters of the acquisition.
    void Note(const KxApi::CKxStreamStatistics& statistics);

    /// Images a second between the last two calls of Note.
    double RecentRate() const { return m_dRecentRate; }

    /// Images acquired, lost and painted, time from the start of the process to the first painted image, and
    /// the processor time that the process used, in a line.
    QString Text() const;

    void OnCallback(KxApi::IKxCallbackParamBase* pParam) override;
    void Release() override {} // owned by main

private:
    KxApi::CKxStreamStatistics m_statistics;
    std::chrono::steady_clock::time_point m_noted;
    double m_dRecentRate = 0;
    uint64_t m_nPainted = 0;
    std::optional<double> m_firstPaint; // seconds since the process was started
};

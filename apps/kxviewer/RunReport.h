// SPDX-License-Identifier: Apache-2.0
// What a run of the viewer cost and showed.
#pragma once

#include "RateMeter.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/IKxStream.h>

#include <QString>
#include <algorithm>
#include <optional>

/// Images that didn't come. An image that found no buffer is missing in the sequence of frame IDs too, so the
/// two counters tell of the same images, each of some that the other doesn't see.
inline uint64_t LostImages(const KxApi::CKxStreamStatistics& statistics)
{
    return std::max(statistics.nLost, statistics.nUnderrun);
}

/// Counts paints by the drawing callback of the image window, which it has to outlive. GUI thread.
class RunReport final : public KxApi::IKxCallback
{
public:
    /// Takes the counters of the acquisition.
    void Note(const KxApi::CKxStreamStatistics& statistics) { m_statistics = statistics; }

    /// The viewer's window is painted; the first time counts.
    void NoteWindow();

    /// Paints a second over the last second.
    double PaintRate() const { return m_paints.Get().perSecond; }

    /// Images acquired, lost and painted, times from the start of the process to the first painted window and
    /// the first painted image, and the processor time that the process used, in a line.
    QString Text() const;

    void OnCallback(KxApi::IKxCallbackParamBase* pParam) override;
    void Release() override {} // owned by main

private:
    KxApi::CKxStreamStatistics m_statistics;
    RateMeter m_paints;
    uint64_t m_nPainted = 0;
    std::optional<double> m_firstWindow, m_firstPaint; // seconds since the process was started
};

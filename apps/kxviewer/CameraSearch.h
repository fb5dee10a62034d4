// SPDX-License-Identifier: Apache-2.0
// Looks for cameras while the windows are already there.
#pragma once

#include "Cameras.h"

#include <QObject>
#include <QString>
#include <atomic>
#include <thread>
#include <vector>

/// Opens the producers and searches the system of each as soon as it is open, in a thread of its own, so that
/// a slow one delays nobody but itself. GUI thread; its end waits for the searches under way, and not for
/// producers that aren't open yet.
class CameraSearch : public QObject
{
    Q_OBJECT

public:
    /// @param cameras takes what is found. Outlives this.
    explicit CameraSearch(KxApps::Cameras& cameras);
    ~CameraSearch() override;

    void Start();
    bool AreProducersOpen() const { return m_bOpen; }
    bool IsFinished() const { return m_bOpen && m_nSearching == 0; }

    /// Which producers can't be used and why; empty when there are none, or while they are being opened.
    QString Unusable() const { return m_strUnusable; }

signals:
    void ProducersOpened();
    /// What one system has is known now.
    void SystemSearched();

private:
    /// Runs in the GUI thread soon.
    template <typename Call>
    void Later(Call call);
    class Opening;
    void OnSystem(KxApi::IKxSystemReleasable* pSystem);
    void OnOpened();
    void OnSearched(KxApps::Cameras::SystemEntry entry);

    KxApps::Cameras& m_cameras;
    bool m_bOpen = false;
    QString m_strUnusable;
    std::atomic<bool> m_bWanted{true};
    size_t m_nSearching = 0;
    std::vector<std::thread> m_threads;
};

// SPDX-License-Identifier: Apache-2.0
// Looks for cameras while the windows are already there.
#pragma once

#include "Cameras.h"

#include <QObject>
#include <atomic>
#include <thread>
#include <vector>

/// Opens the producers, then searches each system in a thread of its own, so that a slow one delays nobody
/// but itself. GUI thread; its end waits for the searches under way.
class CameraSearch : public QObject
{
    Q_OBJECT

public:
    /// @param cameras takes what is found; not to be used before ProducersOpened. Outlives this.
    explicit CameraSearch(KxApps::Cameras& cameras);
    ~CameraSearch() override;

    void Start();
    bool AreProducersOpen() const { return m_bOpen; }
    bool IsFinished() const { return m_bOpen && m_nSearching == 0; }

signals:
    void ProducersOpened();
    /// What one system has is known now.
    void SystemSearched();

private:
    /// Runs in the GUI thread soon.
    template <typename Call>
    void Later(Call call);
    void OnOpened();
    void OnSearched(KxApps::Cameras::SystemEntry entry);

    KxApps::Cameras& m_cameras;
    bool m_bOpen = false;
    size_t m_nSearching = 0;
    std::vector<std::thread> m_threads;
};

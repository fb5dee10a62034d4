// SPDX-License-Identifier: Apache-2.0
// Recording the camera in front, while it runs or after the fact.
#pragma once

#include "ViewerDock.h"

#include <QTimer>
#include <functional>

class CameraRecording;
class QAction;
class QLabel;
class QProgressBar;
class QSpinBox;
class RecordingTarget;
class RingPanel;

namespace KxApps
{
class Recorder;
struct RecordingOptions;
} // namespace KxApps

class RecordingDock : public ViewerDock
{
    Q_OBJECT

public:
    explicit RecordingDock(QWidget* pParent);

    void Follow(CameraView& view) override;
    void Unfollow() override;
    Qt::DockWidgetArea Area() const override { return Qt::BottomDockWidgetArea; }
    bool IsShownAtFirst() const override { return false; }

    /// Starts and stops the recording; checked while there is one. Named "record", for toolbars.
    QAction* RecordAction() const { return m_pRecord; }

private:
    void Toggle(bool bRecord);
    void SaveRing();
    /// Runs what may fail; false after showing why it did.
    bool Begin(const std::function<void(KxApps::RecordingOptions)>& begin);
    void Refresh();
    void ShowStatus();
    /// Also while the dock is hidden: a recording that has just ended.
    void TellEnd(bool bBusy);

    CameraView* m_pView = nullptr;
    CameraRecording* m_pRecording = nullptr;      // of the view
    const KxApps::Recorder* m_pRunning = nullptr; // of it, as of the last refresh; to be compared only
    QAction* m_pRecord;
    RecordingTarget* m_pTarget;
    QSpinBox* m_pMaxImages;
    QSpinBox* m_pMaxSeconds;
    QSpinBox* m_pMaxMegabytes;
    QProgressBar* m_pQueue;
    QLabel* m_pState;
    QLabel* m_pCause;
    RingPanel* m_pRing;
    QTimer m_timer;
};

// SPDX-License-Identifier: Apache-2.0
// The viewer's window: the image in the middle, the acquisition in the toolbar.
#pragma once

#include "CameraSession.h"
#include "RunReport.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <QMainWindow>
#include <QTimer>
#include <memory>

class QLabel;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(KxApps::Cameras& cameras, RunReport& report);
    ~MainWindow() override;

    /// Lets the user choose a camera, opens and starts it; what is open stays open when none is chosen.
    /// Errors are shown in the window.
    void Choose(const std::vector<std::string>& settings);

    /// Opens the camera in place of the one that is open. Raises what keeps it from being opened; then none
    /// is.
    void Open(const KxApps::Camera& camera, const std::vector<std::string>& settings);

    /// Starts the acquisition; errors are shown in the window.
    void Start(uint64_t nImages);

    /// Images that have come since the last start.
    uint64_t GetImageCount() const { return m_session ? m_session->GetStatistics().nDelivered : 0; }

    /// Saves pictures of the windows as PNG files and returns their paths. Raises RuntimeException.
    QStringList SavePictures(const QString& strFolder);

signals:
    /// The images that Start was asked for have come, or the acquisition broke off.
    void Ended(bool bComplete);

private:
    void MakeActions();
    void Follow();
    void OnFailed(const QString& strText, bool bEnded);
    /// Runs what a click asks for; its exceptions are shown.
    template <typename Call>
    void Try(const Call& call);

    KxApps::Cameras& m_cameras;
    RunReport& m_report;
    KxApi::CKxAutoPtr<KxApi::IKxWndReleasable, KxApi::IKxImageDisplayWnd> m_window;
    std::unique_ptr<CameraSession> m_session; // before the window goes, whose images it makes
    QAction* m_pStart = nullptr;
    QAction* m_pStop = nullptr;
    QLabel* m_pState = nullptr;
    QTimer m_timer;
};

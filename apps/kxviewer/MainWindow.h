// SPDX-License-Identifier: Apache-2.0
// The viewer's window: camera views in tabs, docks around them, the acquisition in the toolbar.
#pragma once

#include "CameraSearch.h"
#include "CameraView.h"
#include "RunReport.h"
#include "ViewerDock.h"

#include <QMainWindow>
#include <QTimer>
#include <QVector>

class QLabel;
class QTabWidget;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(KxApps::Cameras& cameras, const CameraSearch& search, RunReport& report);
    ~MainWindow() override;

    /// Lets the user choose a camera, opens and starts it; what is open stays open. Errors are shown in the
    /// window.
    void Choose(const std::vector<std::string>& settings);

    /// Opens the camera: in the view that has it already, else in a view without a camera, else in a new one.
    /// Raises what keeps it from being opened.
    void Open(const KxApps::Camera& camera, const std::vector<std::string>& settings);

    /// Starts the acquisition of the view in front; errors are shown in the window.
    void Start(uint64_t nImages);

    /// Shows a text until the next one, or until what it told of is over.
    void Tell(const QString& strText);

    /// Images that have come in the view in front since the last start.
    uint64_t GetImageCount() const;

    /// Saves pictures of the windows as PNG files and returns their paths. Raises RuntimeException.
    QStringList SavePictures(const QString& strFolder);

signals:
    /// The images that Start was asked for have come, or the acquisition broke off.
    void Ended(bool bComplete);

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    void MakeActions();
    void AddDocks();
    CameraView& AddView();
    CameraView& ViewFor(const KxApps::Camera& camera);
    /// The view in front.
    CameraView& View() const;
    void CloseView(int nIndex);
    void OnViewInFront();
    void Follow();
    QString StateText(const CameraSession& session) const;
    void OnFailed(CameraView& view, const QString& strText, bool bEnded);
    /// Runs what a click asks for; its exceptions are shown.
    template <typename Call>
    void Try(const Call& call);

    KxApps::Cameras& m_cameras;
    const CameraSearch& m_search;
    RunReport& m_report;
    QTabWidget* m_pViews;
    QVector<ViewerDock*> m_docks;
    CameraView* m_pFollowed = nullptr;
    QAction* m_pStart = nullptr;
    QAction* m_pStop = nullptr;
    QAction* m_pChoose = nullptr;
    QMenu* m_pViewMenu = nullptr;
    QLabel* m_pState = nullptr;
    QTimer m_timer;
};

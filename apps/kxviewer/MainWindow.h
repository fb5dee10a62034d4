// SPDX-License-Identifier: Apache-2.0
// The viewer's window: camera views, docks around them, and the actions.
#pragma once

#include "ActionTable.h"
#include "CameraSearch.h"
#include "CameraView.h"
#include "ErrorBox.h"
#include "RunReport.h"
#include "ViewArea.h"
#include "ViewerDock.h"
#include "WindowLayout.h"

#include <QMainWindow>
#include <QTimer>
#include <QVector>

class ViewerStatus;
class ZoomBox;

/// Key of the setting whether saved features are loaded when a camera is opened.
inline constexpr const char* kLoadAtOpen = "cameras/loadAtOpen";

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @param bRemembers whether layout, colours and cameras are taken from the settings, and kept there
    MainWindow(KxApps::Cameras& cameras, const CameraSearch& search, RunReport& report, bool bRemembers);
    ~MainWindow() override;

    /// Lets the user choose a camera, opens and starts it; what is open stays open. Errors are shown in the
    /// window.
    void Choose(const std::vector<std::string>& settings);
    /// Whether the producers are open, so that there is something to choose.
    bool CanChoose() const { return m_search.AreProducersOpen(); }

    /// Opens the camera: in the view that has it already, else in a view without a camera, else in a new one.
    /// Raises what keeps it from being opened.
    void Open(const KxApps::Camera& camera, const std::vector<std::string>& settings);
    /// Closes the view with its camera; the last view stays, without its camera.
    void CloseView(CameraView& view);

    /// Starts the acquisition of the view in front; errors are shown in the window.
    void Start(uint64_t nImages);

    /// Shows a text until the next one, or until what it told of is over.
    void Tell(const QString& strText);
    /// Runs what a click asks for. Its exceptions are shown: what was tried in the user's words, and why not.
    template <typename Call>
    void Try(const QString& strTried, const Call& call)
    {
        try {
            call();
        } catch (const GenICam::GenericException& e) {
            Tell(QString::fromUtf8(e.GetDescription()));
            ShowError(this, strTried, e);
        }
        Follow();
    }

    /// The view in front.
    CameraView& View() const { return *m_pArea->Current(); }
    ViewArea& Area() { return *m_pArea; }
    const ActionTable& Actions() const { return *m_pActions; }

    // For all views.
    void SetMarksExposure(bool bOn);
    void SetWritesValues(bool bOn);
    void SetDrawingTool(int64_t nType);
    int64_t GetDrawingTool() const;
    void SetDarkColours(bool bDark);
    void ResetLayout() { m_layout.Reset(); }

    /// Images that have come in the view in front since the last start.
    uint64_t GetImageCount() const;

    /// Saves pictures of the windows as PNG files and returns their paths. Raises RuntimeException.
    QStringList SavePictures(const QString& strFolder);

signals:
    /// The images that Start was asked for have come, or the acquisition broke off.
    void Ended(bool bComplete);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;

private:
    void AddDocks();
    void AddZoomBox();
    void Recall();
    CameraView& AddView();
    CameraView& ViewFor(const KxApps::Camera& camera);
    void OnViewInFront();
    void Follow();
    void FollowMouse();
    void OnFailed(CameraView& view, const QString& strText, bool bEnded);

    KxApps::Cameras& m_cameras;
    const CameraSearch& m_search;
    RunReport& m_report;
    const bool m_bRemembers;
    ViewArea* m_pArea;
    QVector<ViewerDock*> m_docks;
    CameraView* m_pFollowed = nullptr;
    ActionTable* m_pActions = nullptr;
    ViewerStatus* m_pStatus = nullptr;
    ZoomBox* m_pZoom = nullptr;
    WindowLayout m_layout{*this};
    QTimer m_timer;
    QTimer m_timerMouse;
};

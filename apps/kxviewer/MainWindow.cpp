// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "Appearance.h"
#include "DeviceDialog.h"
#include "Docks.h"
#include "FeatureFile.h"
#include "FeatureSets.h"
#include "ImageZoom.h"
#include "Pictures.h"
#include "ViewerActions.h"
#include "ViewerSettings.h"
#include "ViewerStatus.h"
#include "ZoomBox.h"

#include <KxApi_TL/IKxPort.h>

#include <QCloseEvent>
#include <QMenu>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>

using namespace KxApi;

namespace
{

constexpr int kFollowMs = 500; // how often counters are shown anew
constexpr int kMouseMs = 100;  // likewise zoom and the pixel below the mouse
constexpr int kOutOfSight = -10000;

GenApi::CEnumerationPtr DrawingTypeOf(CameraView& view)
{
    return view.Window().GetINodeMap()->GetNode("DrawingItemType");
}

} // namespace

MainWindow::MainWindow(KxApps::Cameras& cameras, const CameraSearch& search, RunReport& report,
                       bool bRemembers)
    : m_cameras(cameras)
    , m_search(search)
    , m_report(report)
    , m_bRemembers(bRemembers)
    , m_pArea(new ViewArea(this))
    , m_pStatus(new ViewerStatus(*statusBar()))
{
    setWindowTitle(tr("KxApi viewer"));
    setWindowIcon(ViewerIcon());
    resize(QSize(1400, 900).boundedTo(screen()->availableSize()));
    setCentralWidget(m_pArea);
    AddView();
    m_pActions = new ActionTable(*this, *m_pArea, ViewerActions(*this));
    AddZoomBox();
    AddDocks();
    Recall();
    connect(m_pArea, &ViewArea::CurrentChanged, this, &MainWindow::OnViewInFront);
    connect(m_pArea, &ViewArea::CloseWanted, this, [this](CameraView* pView) { CloseView(*pView); });
    connect(&m_search, &CameraSearch::ProducersOpened, this, [this] {
        m_pStatus->ShowWarning(m_search.Unusable());
        Follow();
    });
    connect(&m_timer, &QTimer::timeout, this, &MainWindow::Follow);
    connect(&m_timerMouse, &QTimer::timeout, this, &MainWindow::FollowMouse);
    m_timer.start(kFollowMs);
    m_timerMouse.start(kMouseMs);
    OnViewInFront();
}

MainWindow::~MainWindow()
{
    disconnect(m_pArea, nullptr, this, nullptr);
    for (ViewerDock* const pDock : m_docks)
        pDock->Unfollow();
    m_timer.stop();
    m_timerMouse.stop();
    while (!m_pArea->Views().isEmpty())
        m_pArea->Remove(*m_pArea->Views().last());
}

void MainWindow::AddZoomBox()
{
    m_pZoom = new ZoomBox(this);
    m_pActions->Bar(ActionBar::Image)->insertWidget(m_pActions->Find("zoomFit"), m_pZoom);
    connect(m_pZoom, &ZoomBox::Chosen, this, [this](double dZoom) {
        ImageZoom(View().Window()).Set(dZoom);
        View().setFocus();
    });
}

void MainWindow::AddDocks()
{
    m_docks = MakeDocks(this);
    for (ViewerDock* const pDock : m_docks) {
        addDockWidget(pDock->Area(), pDock);
        pDock->setVisible(pDock->IsShownAtFirst());
        if (!pDock->IsShownAtFirst())
            pDock->move(0, kOutOfSight); // it may be painted once before the layout gives it its place
        m_pActions->Menu(ActionMenu::View)->addAction(pDock->toggleViewAction());
        connect(pDock, &ViewerDock::Told, this, &MainWindow::Tell);
    }
    if (auto* const pRecord = findChild<QAction*>("record"))
        m_pActions->Adopt(*pRecord, ActionMenu::Acquisition, ActionBar::Acquisition, "trigger", "F9");
    m_layout.Arrange();
}

void MainWindow::Recall()
{
    if (!m_bRemembers)
        return;
    const ViewerSettings settings;
    m_layout.Recall(settings);
    m_pArea->SetTiled(settings.value("layout/tiled").toBool());
    SetMarksExposure(settings.value("image/marks").toBool());
    SetWritesValues(settings.value("image/values", true).toBool());
}

void MainWindow::closeEvent(QCloseEvent* pEvent)
{
    if (m_bRemembers) {
        ViewerSettings settings;
        m_layout.Keep(settings);
        settings.setValue("layout/tiled", m_pArea->IsTiled());
        settings.setValue("image/marks", View().Marks().MarksExposure());
        settings.setValue("image/values", View().Marks().WritesValues());
    }
    QMainWindow::closeEvent(pEvent);
}

CameraView& MainWindow::AddView()
{
    auto* const pView = new CameraView(m_report, m_pArea);
    if (!m_pArea->Views().isEmpty()) { // what is set holds for all
        const ImageMarks& marks = m_pArea->Views().first()->Marks();
        pView->Marks().SetMarksExposure(marks.MarksExposure());
        pView->Marks().SetWritesValues(marks.WritesValues());
    }
    connect(pView, &CameraView::Failed, this,
            [this, pView](const QString& strText, bool bEnded) { OnFailed(*pView, strText, bEnded); });
    connect(pView, &CameraView::Finished, this, [this] {
        Follow();
        emit Ended(true);
    });
    m_pArea->Add(*pView);
    return *pView;
}

CameraView& MainWindow::ViewFor(const KxApps::Camera& camera)
{
    CameraView* pEmpty = nullptr;
    for (CameraView* const pView : m_pArea->Views()) {
        if (pView->Has(camera))
            return *pView;
        if (!pView->Session())
            pEmpty = pView;
    }
    return pEmpty ? *pEmpty : AddView();
}

void MainWindow::CloseView(CameraView& view)
{
    if (m_pArea->Views().size() == 1) {
        view.Close();
        m_pArea->UpdateTitles();
        OnViewInFront();
        return;
    }
    if (&view == m_pFollowed) {
        for (ViewerDock* const pDock : m_docks)
            pDock->Unfollow();
        m_pFollowed = nullptr;
    }
    m_pArea->Remove(view);
}

void MainWindow::OnViewInFront()
{
    if (!m_pArea->Current())
        return;
    if (&View() != m_pFollowed) {
        m_pFollowed = &View();
        for (ViewerDock* const pDock : m_docks)
            pDock->Follow(*m_pFollowed);
        View().setFocus();
    }
    statusBar()->clearMessage(); // it spoke of another camera
    Follow();
}

void MainWindow::Tell(const QString& strText)
{
    const QString strShown =
        statusBar()->fontMetrics().elidedText(strText, Qt::ElideMiddle, m_pStatus->RoomForMessages());
    statusBar()->showMessage(strShown);
    statusBar()->setToolTip(strShown == strText ? QString() : strText);
}

void MainWindow::Choose(const std::vector<std::string>& settings)
{
    Try(tr("The camera can't be opened."), [&] {
        DeviceDialog dialog(m_cameras, ViewerSettings().value("cameras/last").toString(), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        Open(dialog.Chosen(), settings);
        View().Session()->Start(kKxEndless);
    });
}

void MainWindow::Open(const KxApps::Camera& camera, const std::vector<std::string>& settings)
{
    const int nViews = m_pArea->Views().size();
    CameraView& view = ViewFor(camera);
    try {
        view.Open(camera, settings);
    } catch (...) {
        if (m_pArea->Views().size() > nViews)
            CloseView(view);
        throw;
    }
    m_pArea->UpdateTitles();
    m_pArea->SetCurrent(view);
    OnViewInFront();
    if (!m_bRemembers)
        return;
    ViewerSettings kept;
    kept.setValue("cameras/last", QString::fromUtf8(camera.pInfo->GetID().c_str()));
    const QString strSet = settings.empty() ? FindFeatureSet(*camera.pInfo) : QString();
    if (kept.value(kLoadAtOpen).toBool() && !strSet.isEmpty())
        Try(tr("Not all features of %1 could be set.").arg(strSet), [&] {
            Kx::LoadFeatures(*view.Session()->GetDevice().GetIKxRemotePort()->GetINodeMap(),
                             strSet.toStdString());
        });
}

void MainWindow::Start(uint64_t nImages)
{
    statusBar()->clearMessage();
    Try(tr("The acquisition can't be started."), [&] { View().Session()->Start(nImages); });
    if (!View().Session()->IsAcquiring())
        emit Ended(false);
}

void MainWindow::paintEvent(QPaintEvent* pEvent)
{
    QMainWindow::paintEvent(pEvent);
    m_report.NoteWindow();
}

void MainWindow::SetMarksExposure(bool bOn)
{
    for (CameraView* const pView : m_pArea->Views()) {
        pView->Marks().SetMarksExposure(bOn);
        pView->update();
    }
}

void MainWindow::SetWritesValues(bool bOn)
{
    for (CameraView* const pView : m_pArea->Views()) {
        pView->Marks().SetWritesValues(bOn);
        pView->update();
    }
}

void MainWindow::SetDrawingTool(int64_t nType)
{
    for (CameraView* const pView : m_pArea->Views())
        DrawingTypeOf(*pView)->SetIntValue(nType);
}

int64_t MainWindow::GetDrawingTool() const { return DrawingTypeOf(View())->GetIntValue(); }

void MainWindow::SetDarkColours(bool bDark)
{
    SetDark(bDark);
    if (m_bRemembers)
        ViewerSettings().setValue("layout/dark", bDark);
}

uint64_t MainWindow::GetImageCount() const
{
    const CameraSession* const pSession = View().Session();
    return pSession ? pSession->GetStatistics().nDelivered : 0;
}

QStringList MainWindow::SavePictures(const QString& strFolder)
{
    return ::SavePictures(
        strFolder, {{"viewer", this}, {"image", static_cast<QWidget*>(View().Window().GetWindowHandle())}});
}

void MainWindow::Follow()
{
    const CameraSession* const pSession = View().Session();
    setWindowTitle(pSession ? tr("%1 - KxApi viewer").arg(pSession->GetName()) : tr("KxApi viewer"));
    if (pSession)
        m_report.Note(pSession->GetStatistics());
    m_pStatus->Show(View(), m_search.IsFinished() ? tr("No camera is open") : tr("Looking for cameras..."));
    m_pActions->Update();
}

void MainWindow::FollowMouse()
{
    m_pStatus->ShowPixel(View().PixelText());
    m_pZoom->ShowZoom(ImageZoom(View().Window()).Get());
}

void MainWindow::OnFailed(CameraView& view, const QString& strText, bool bEnded)
{
    LogViewerError(view.Title() + ": " + strText);
    if (&view == &View())
        Tell(strText);
    Follow();
    if (bEnded)
        emit Ended(false);
}

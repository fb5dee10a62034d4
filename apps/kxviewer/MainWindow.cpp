// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "Docks.h"
#include "Pictures.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

using namespace KxApi;

namespace
{

constexpr int kFollowMs = 500; // how often counters are shown anew
constexpr int kSelectionWidth = 780, kSelectionHeight = 560;
constexpr double kMegabyte = 1e6;

} // namespace

MainWindow::MainWindow(KxApps::Cameras& cameras, const CameraSearch& search, RunReport& report)
    : m_cameras(cameras)
    , m_search(search)
    , m_report(report)
    , m_pViews(new QTabWidget(this))
{
    setWindowTitle("KxApi viewer");
    resize(QSize(1400, 900).boundedTo(screen()->availableSize()));
    m_pViews->setDocumentMode(true);
    m_pViews->setTabBarAutoHide(true);
    m_pViews->setTabsClosable(true);
    setCentralWidget(m_pViews);
    MakeActions();
    AddDocks();
    connect(m_pViews, &QTabWidget::tabCloseRequested, this, &MainWindow::CloseView);
    connect(m_pViews, &QTabWidget::currentChanged, this, &MainWindow::OnViewInFront);
    AddView();
    connect(&m_search, &CameraSearch::ProducersOpened, this, &MainWindow::Follow);
    connect(&m_timer, &QTimer::timeout, this, &MainWindow::Follow);
    m_timer.start(kFollowMs);
    Follow();
}

MainWindow::~MainWindow()
{
    disconnect(m_pViews, nullptr, this, nullptr);
    for (ViewerDock* const pDock : m_docks)
        pDock->Unfollow();
    while (m_pViews->count() > 0)
        delete m_pViews->widget(0);
}

void MainWindow::MakeActions()
{
    auto* const pToolBar = addToolBar("Acquisition");
    pToolBar->setObjectName("acquisition");
    m_pStart = pToolBar->addAction(style()->standardIcon(QStyle::SP_MediaPlay), "Start acquisition",
                                   [this] { Start(kKxEndless); });
    m_pStop = pToolBar->addAction(style()->standardIcon(QStyle::SP_MediaStop), "Stop acquisition",
                                  [this] { Try([this] { View().Session()->Stop(); }); });

    m_pChoose = menuBar()->addMenu("&Camera")->addAction(
        "&Choose...", [this] { Choose({}); }, QKeySequence::Open);
    QMenu* const pAcquisition = menuBar()->addMenu("&Acquisition");
    pAcquisition->addActions({m_pStart, m_pStop});
    m_pViewMenu = menuBar()->addMenu("&View");

    m_pState = new QLabel(this);
    statusBar()->addPermanentWidget(m_pState);
}

void MainWindow::AddDocks()
{
    m_docks = MakeDocks(this);
    for (ViewerDock* const pDock : m_docks) {
        addDockWidget(pDock->Area(), pDock);
        pDock->setVisible(pDock->IsShownAtFirst());
        m_pViewMenu->addAction(pDock->toggleViewAction());
    }
}

CameraView& MainWindow::AddView()
{
    auto* const pView = new CameraView(m_report, m_pViews);
    connect(pView, &CameraView::Failed, this,
            [this, pView](const QString& strText, bool bEnded) { OnFailed(*pView, strText, bEnded); });
    connect(pView, &CameraView::Finished, this, [this] {
        Follow();
        emit Ended(true);
    });
    m_pViews->addTab(pView, pView->Title());
    return *pView;
}

CameraView& MainWindow::ViewFor(const KxApps::Camera& camera)
{
    CameraView* pEmpty = nullptr;
    for (int i = 0; i < m_pViews->count(); ++i) {
        auto* const pView = static_cast<CameraView*>(m_pViews->widget(i));
        if (pView->Has(camera))
            return *pView;
        if (!pView->Session())
            pEmpty = pView;
    }
    return pEmpty ? *pEmpty : AddView();
}

CameraView& MainWindow::View() const { return *static_cast<CameraView*>(m_pViews->currentWidget()); }

void MainWindow::CloseView(int nIndex)
{
    auto* const pView = static_cast<CameraView*>(m_pViews->widget(nIndex));
    if (m_pViews->count() == 1) { // the last one stays, without its camera
        pView->Close();
        m_pViews->setTabText(nIndex, pView->Title());
        OnViewInFront();
        return;
    }
    if (pView == m_pFollowed) {
        for (ViewerDock* const pDock : m_docks)
            pDock->Unfollow();
        m_pFollowed = nullptr;
    }
    m_pViews->removeTab(nIndex);
    delete pView;
}

void MainWindow::OnViewInFront()
{
    if (m_pViews->currentWidget() && &View() != m_pFollowed) {
        m_pFollowed = &View();
        for (ViewerDock* const pDock : m_docks)
            pDock->Follow(*m_pFollowed);
    }
    statusBar()->clearMessage(); // it spoke of another camera
    Follow();
}

template <typename Call>
void MainWindow::Try(const Call& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        Tell(QString::fromUtf8(e.GetDescription()));
        ShowErrorMessage(e);
    }
    Follow();
}

void MainWindow::Tell(const QString& strText) { statusBar()->showMessage(strText); }

void MainWindow::Choose(const std::vector<std::string>& settings)
{
    Try([&] {
        const CKxAutoPtr<IKxWndReleasable, IKxDeviceSelectionWnd> selection(
            CreateIKxWnd(KxWindowType_DeviceSelection));
        selection->RegisterTargetIKxSystemList(m_cameras.SystemArray());
        const QPoint middle = geometry().center();
        selection->SetPosition(middle.x() - kSelectionWidth / 2, middle.y() - kSelectionHeight / 2,
                               kSelectionWidth, kSelectionHeight);
        selection->Show(this, KxWindowMode_Modal);
        KxApps::Camera camera{};
        selection->GetSelectedDeviceInfo(&camera.pInterface, &camera.pInfo);
        if (!camera.pInfo)
            return;
        Open(camera, settings);
        View().Session()->Start(kKxEndless);
    });
}

void MainWindow::Open(const KxApps::Camera& camera, const std::vector<std::string>& settings)
{
    const int nViews = m_pViews->count();
    CameraView& view = ViewFor(camera);
    try {
        view.Open(camera, settings);
    } catch (...) {
        if (m_pViews->count() > nViews)
            CloseView(m_pViews->indexOf(&view));
        throw;
    }
    m_pViews->setTabText(m_pViews->indexOf(&view), view.Title());
    m_pViews->setCurrentWidget(&view);
    OnViewInFront();
}

void MainWindow::Start(uint64_t nImages)
{
    statusBar()->clearMessage();
    Try([&] { View().Session()->Start(nImages); });
    if (!View().Session()->IsAcquiring())
        emit Ended(false);
}

void MainWindow::paintEvent(QPaintEvent* pEvent)
{
    QMainWindow::paintEvent(pEvent);
    m_report.NoteWindow();
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
    m_pChoose->setEnabled(m_search.AreProducersOpen());
    m_pStart->setEnabled(pSession && !pSession->IsAcquiring());
    m_pStop->setEnabled(pSession && pSession->IsAcquiring());
    setWindowTitle(pSession ? pSession->GetName() + " - KxApi viewer" : QString("KxApi viewer"));
    if (pSession) {
        m_report.Note(pSession->GetStatistics());
        m_pState->setText(StateText(*pSession));
    } else {
        m_pState->setText(m_search.IsFinished() ? "No camera is open" : "Looking for cameras...");
    }
}

QString MainWindow::StateText(const CameraSession& session) const
{
    const CKxStreamStatistics statistics = session.GetStatistics();
    const RateMeter::Rates rates = session.GetRates();
    return QString("%1 images/s, %2 MB/s, %3 images, %4 lost, %5 incomplete; %6 shown/s")
        .arg(rates.perSecond, 0, 'f', 1)
        .arg(rates.bytesPerSecond / kMegabyte, 0, 'f', 1)
        .arg(statistics.nDelivered)
        .arg(LostImages(statistics))
        .arg(statistics.nIncomplete)
        .arg(m_report.PaintRate(), 0, 'f', 1);
}

void MainWindow::OnFailed(CameraView& view, const QString& strText, bool bEnded)
{
    if (&view == &View())
        Tell(strText);
    Follow();
    if (bEnded)
        emit Ended(false);
}

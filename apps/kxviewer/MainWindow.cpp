// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "Pictures.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

using namespace KxApi;

namespace
{

constexpr int kFollowMs = 500; // how often counters are shown anew
constexpr int kSelectionWidth = 780, kSelectionHeight = 560;

} // namespace

MainWindow::MainWindow(KxApps::Cameras& cameras, RunReport& report)
    : m_cameras(cameras)
    , m_report(report)
    , m_window(CreateIKxWnd(KxWindowType_ImageDisplay))
{
    setWindowTitle("KxApi viewer");
    resize(1000, 760);
    auto* const pCentre = new QWidget(this);
    auto* const pLayout = new QVBoxLayout(pCentre);
    pLayout->setContentsMargins(0, 0, 0, 0);
    setCentralWidget(pCentre);
    MakeActions();

    m_window->SetZoomMode(KxZoomMode_FitToTheWindow);
    m_window->RegisterCallback(&m_report);
    m_window->Show(pCentre, KxWindowMode_Child);
    connect(&m_timer, &QTimer::timeout, this, &MainWindow::Follow);
    m_timer.start(kFollowMs);
}

MainWindow::~MainWindow()
{
    m_session.reset();
    m_window.Reset();
}

void MainWindow::MakeActions()
{
    auto* const pToolBar = addToolBar("Acquisition");
    m_pStart = pToolBar->addAction(style()->standardIcon(QStyle::SP_MediaPlay), "Start acquisition",
                                   [this] { Start(kKxEndless); });
    m_pStop = pToolBar->addAction(style()->standardIcon(QStyle::SP_MediaStop), "Stop acquisition",
                                  [this] { Try([this] { m_session->Stop(); }); });
    m_pStart->setEnabled(false);
    m_pStop->setEnabled(false);

    menuBar()->addMenu("&Camera")->addAction(
        "&Choose...", [this] { Choose({}); }, QKeySequence::Open);
    QMenu* const pAcquisition = menuBar()->addMenu("&Acquisition");
    pAcquisition->addActions({m_pStart, m_pStop});

    m_pState = new QLabel(this);
    statusBar()->addPermanentWidget(m_pState);
}

template <typename Call>
void MainWindow::Try(const Call& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        statusBar()->showMessage(QString::fromUtf8(e.GetDescription()));
        ShowErrorMessage(e);
    }
    Follow();
}

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
        m_session->Start(kKxEndless);
    });
}

void MainWindow::Open(const KxApps::Camera& camera, const std::vector<std::string>& settings)
{
    m_session.reset(); // the same camera may be opened anew
    m_session = std::make_unique<CameraSession>(camera, settings, *m_window);
    connect(m_session.get(), &CameraSession::Failed, this, &MainWindow::OnFailed, Qt::QueuedConnection);
    connect(
        m_session.get(), &CameraSession::Finished, this,
        [this] {
            Follow();
            emit Ended(true);
        },
        Qt::QueuedConnection);
    setWindowTitle(m_session->GetName() + " - KxApi viewer");
    Follow();
}

void MainWindow::Start(uint64_t nImages)
{
    Try([&] { m_session->Start(nImages); });
    if (!m_session->IsAcquiring())
        emit Ended(false);
}

QStringList MainWindow::SavePictures(const QString& strFolder)
{
    return ::SavePictures(strFolder,
                          {{"viewer", this}, {"image", static_cast<QWidget*>(m_window->GetWindowHandle())}});
}

void MainWindow::Follow()
{
    m_pStart->setEnabled(m_session && !m_session->IsAcquiring());
    m_pStop->setEnabled(m_session && m_session->IsAcquiring());
    if (!m_session) {
        m_pState->setText("No camera is open");
        return;
    }
    const CKxStreamStatistics statistics = m_session->GetStatistics();
    m_report.Note(statistics);
    m_pState->setText(QString("%1 images/s, %2 images, %3 lost, %4 incomplete")
                          .arg(m_report.RecentRate(), 0, 'f', 1)
                          .arg(statistics.nDelivered)
                          .arg(statistics.nLost + statistics.nUnderrun)
                          .arg(statistics.nIncomplete));
}

void MainWindow::OnFailed(const QString& strText, bool bEnded)
{
    statusBar()->showMessage(strText);
    Follow();
    if (bEnded)
        emit Ended(false);
}

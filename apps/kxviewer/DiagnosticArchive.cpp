// SPDX-License-Identifier: Apache-2.0
#include "DiagnosticArchive.h"

#include "CameraView.h"
#include "Counted.h"
#include "FeatureFile.h"
#include "ViewerSettings.h"

#include <KxApi_TL/IKxPort.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>

using namespace KxApi;

namespace
{

constexpr int kListenMs = 1000;
constexpr qint64 kSilenceMs = 20000; // longer than a camera takes that answers at all

QString CameraReport(const CameraSession& session)
{
    const CKxStreamStatistics statistics = session.GetStatistics();
    return QString("camera %1: %2, %3, %4 lost, %5 incomplete, %6 images/s, %7 MB/s\n")
        .arg(session.GetName(), session.IsAcquiring() ? "acquiring" : "idle",
             QString::fromStdString(KxApps::Counted(statistics.nDelivered, "image")))
        .arg(LostImages(statistics))
        .arg(statistics.nIncomplete)
        .arg(session.GetRates().perSecond, 0, 'f', 1)
        .arg(session.GetRates().bytesPerSecond / 1e6, 0, 'f', 1);
}

QString AboutViewer(const QVector<CameraView*>& views)
{
    QString strText = QString("kxviewer %1, Qt %2, platform %3, language %4\n")
                          .arg(KX_VERSION, qVersion(), QGuiApplication::platformName(), QLocale().name());
    for (const QScreen* const pScreen : QGuiApplication::screens())
        strText += QString("screen %1 x %2, scale %3\n")
                       .arg(pScreen->size().width())
                       .arg(pScreen->size().height())
                       .arg(pScreen->devicePixelRatio());
    for (const CameraView* const pView : views)
        if (pView->Session())
            strText += CameraReport(*pView->Session());
    return strText;
}

} // namespace

QString DiagnosticArchive::Tool()
{
    const QString strBeside = QCoreApplication::applicationDirPath() + "/kx";
    return QFileInfo(strBeside).isExecutable() ? strBeside : QStandardPaths::findExecutable("kx");
}

DiagnosticArchive::DiagnosticArchive(QString strTool, QWidget* pWindow)
    : QObject(pWindow)
    , m_pWindow(pWindow)
    , m_strTool(std::move(strTool))
{
    connect(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &DiagnosticArchive::OnFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError eError) {
        if (eError == QProcess::FailedToStart) // all else ends in "finished"
            OnNotStarted();
    });
    connect(&m_process, &QProcess::readyReadStandardError, this, &DiagnosticArchive::Listen);
    connect(&m_timer, &QTimer::timeout, this, &DiagnosticArchive::ShowProgress);
}

DiagnosticArchive::~DiagnosticArchive()
{
    m_process.disconnect(this);
    if (!IsBusy())
        return;
    m_process.kill();
    m_process.waitForFinished();
    QFile::remove(m_strFile);
}

QStringList DiagnosticArchive::SaveOpenCameras(const QVector<CameraView*>& views) const
{
    QStringList files;
    for (CameraView* const pView : views) {
        if (!pView->Session())
            continue;
        const QString strId = QString::fromUtf8(pView->Session()->GetCamera().pInfo->GetID().c_str());
        // Numbers, as IDs may differ only in what a name of a file can't hold.
        const QString strName = QString("%1_%2.txt").arg(files.size() + 1).arg(strId);
        files << m_pFolder->filePath(QString(strName).replace(QRegularExpression("[^\\w.-]+"), "_"));
        Kx::SaveFeatures(*pView->Session()->GetDevice().GetIKxRemotePort()->GetINodeMap(),
                         files.last().toStdString());
    }
    return files;
}

void DiagnosticArchive::Make(const QString& strFile, const QVector<CameraView*>& views)
{
    if (m_strTool.isEmpty())
        throw RUNTIME_EXCEPTION("the tool kx, which makes it, is neither beside the viewer nor among the "
                                "programs of the system");
    m_pFolder = std::make_unique<QTemporaryDir>();
    m_strFile = strFile;
    QStringList files = SaveOpenCameras(views);
    QFile about(m_pFolder->filePath("kxviewer.txt"));
    if (!about.open(QIODevice::WriteOnly) || about.write(AboutViewer(views).toUtf8()) < 0 || !about.flush())
        throw RUNTIME_EXCEPTION("'%s' can't be written", about.fileName().toUtf8().constData());
    files << about.fileName();
    if (QFile::exists(ViewerSettings::File()))
        files << ViewerSettings::File();
    QStringList arguments{"bundle", "-o", strFile};
    for (const QString& strAdded : files)
        arguments << "--add" << strAdded;

    m_bCancelled = false;
    m_strSaid.clear();
    m_pProgress = new QProgressDialog(m_pWindow);
    m_pProgress->setObjectName("archiveProgress");
    m_pProgress->setWindowTitle(m_pWindow->windowTitle());
    auto* const pLabel = new QLabel;
    pLabel->setTextFormat(Qt::PlainText);
    m_pProgress->setLabel(pLabel);
    m_pProgress->setRange(0, 0);
    connect(m_pProgress, &QProgressDialog::canceled, this, &DiagnosticArchive::Cancel);
    m_silence.start();
    m_timer.start(kListenMs);
    ShowProgress();
    m_pProgress->show();
    m_process.start(m_strTool, arguments, QIODevice::ReadOnly);
}

void DiagnosticArchive::ShowProgress()
{
    QString strText = tr("The diagnostic archive is being made...") + "\n" + m_strSaid;
    if (m_silence.hasExpired(kSilenceMs))
        strText += "\n" + tr("%1 hasn't told anything for %n second(s).", "",
                             static_cast<int>(m_silence.elapsed() / kListenMs))
                              .arg(m_strTool);
    m_pProgress->setLabelText(strText);
}

void DiagnosticArchive::Listen()
{
    // It writes one line anew with each camera, as on a terminal.
    const QStringList lines = QString::fromUtf8(m_process.readAllStandardError())
                                  .split(QRegularExpression("[\\r\\n]|\\x1b\\[K"), Qt::SkipEmptyParts);
    if (lines.isEmpty())
        return;
    m_strSaid = lines.last();
    m_silence.start();
    ShowProgress();
}

void DiagnosticArchive::Cancel()
{
    m_bCancelled = true;
    m_process.kill(); // it may hang in a producer
}

void DiagnosticArchive::OnFinished(int nExitCode, QProcess::ExitStatus eStatus)
{
    Listen();
    Tidy();
    if (eStatus == QProcess::NormalExit && nExitCode == 0) {
        emit Made(m_strFile);
        return;
    }
    if (eStatus == QProcess::CrashExit)
        QFile::remove(m_strFile); // it isn't whole
    if (m_bCancelled)
        emit Cancelled();
    else if (eStatus == QProcess::CrashExit)
        emit Failed(QString("'%1' crashed by signal %2. %3").arg(m_strTool).arg(nExitCode).arg(m_strSaid));
    else
        emit Failed(m_strSaid.isEmpty() ? QString("'%1' ended with %2").arg(m_strTool).arg(nExitCode)
                                        : m_strSaid);
}

void DiagnosticArchive::OnNotStarted()
{
    Tidy();
    emit Failed(QString("'%1' can't be started: %2").arg(m_strTool, m_process.errorString()));
}

void DiagnosticArchive::Tidy()
{
    m_timer.stop();
    m_pProgress->deleteLater();
    m_pProgress = nullptr;
    m_pFolder.reset();
}

// SPDX-License-Identifier: Apache-2.0
#include "DiagnosticArchive.h"

#include "CameraView.h"
#include "FeatureFile.h"
#include "ViewerSettings.h"

#include <KxApi_TL/IKxPort.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>

using namespace KxApi;

namespace
{

QString Tool()
{
    const QString strBeside = QCoreApplication::applicationDirPath() + "/kx";
    return QFileInfo(strBeside).isExecutable() ? strBeside : QStandardPaths::findExecutable("kx");
}

QString CameraReport(const CameraSession& session)
{
    const CKxStreamStatistics statistics = session.GetStatistics();
    return QString("camera %1: %2, %3 images, %4 lost, %5 incomplete, %6 images/s, %7 MB/s\n")
        .arg(session.GetName(), session.IsAcquiring() ? "acquiring" : "idle")
        .arg(statistics.nDelivered)
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

DiagnosticArchive::DiagnosticArchive(QObject* pParent)
    : QObject(pParent)
{
    connect(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int nExitCode, QProcess::ExitStatus eStatus) {
                OnFinished(eStatus == QProcess::NormalExit ? nExitCode : -1);
            });
}

void DiagnosticArchive::Make(const QString& strFile, const QVector<CameraView*>& views)
{
    const QString strTool = Tool();
    if (strTool.isEmpty())
        throw RUNTIME_EXCEPTION("the tool kx, which makes it, is neither beside the viewer nor among the "
                                "programs of the system");
    m_pFolder = std::make_unique<QTemporaryDir>();
    m_strFile = strFile;
    QStringList arguments{"bundle", "-o", strFile};
    const auto add = [&](const QString& strName) {
        arguments << "--add" << m_pFolder->filePath(strName);
        return m_pFolder->filePath(strName);
    };
    for (const CameraView* const pView : views) {
        if (!pView->Session())
            continue;
        const QString strId = QString::fromUtf8(pView->Session()->GetCamera().pInfo->GetID().c_str());
        Kx::SaveFeatures(
            *pView->Session()->GetDevice().GetIKxRemotePort()->GetINodeMap(),
            add(QString(strId).replace(QRegularExpression("[^\\w.-]+"), "_") + ".txt").toStdString());
    }
    QFile about(add("kxviewer.txt"));
    if (!about.open(QIODevice::WriteOnly) || about.write(AboutViewer(views).toUtf8()) < 0 || !about.flush())
        throw RUNTIME_EXCEPTION("'%s' can't be written", about.fileName().toUtf8().constData());
    if (QFile::exists(ViewerSettings::File()))
        arguments << "--add" << ViewerSettings::File();
    m_process.start(strTool, arguments, QIODevice::ReadOnly);
}

void DiagnosticArchive::OnFinished(int nExitCode)
{
    m_pFolder.reset();
    if (nExitCode == 0)
        emit Made(m_strFile);
    else
        emit Failed(QString::fromUtf8(m_process.readAllStandardError()).trimmed());
}

// SPDX-License-Identifier: Apache-2.0
// The archive that helps others to find a fault.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QVector>
#include <memory>

class CameraView;
class QProgressDialog;

/// Made by the tool kx, which looks at the machine and at the cameras that aren't open here; the viewer adds
/// what it knows of those that are. A dialog tells what the tool is at, and lets the user cancel it. GUI
/// thread.
class DiagnosticArchive : public QObject
{
    Q_OBJECT

public:
    /// kx beside the viewer, else that of the system; empty when there is none.
    static QString Tool();

    /// @param pWindow what the dialog belongs to, which outlives it
    DiagnosticArchive(QString strTool, QWidget* pWindow);
    ~DiagnosticArchive() override;

    /// Begins it. Raises what keeps it from that.
    void Make(const QString& strFile, const QVector<CameraView*>& views);
    bool IsBusy() const { return m_process.state() != QProcess::NotRunning; }

signals:
    /// One of these ends it.
    void Made(const QString& strFile);
    void Failed(const QString& strWhy);
    void Cancelled();

private:
    QStringList SaveOpenCameras(const QVector<CameraView*>& views) const;
    void ShowProgress();
    void Listen();
    void Cancel();
    void OnFinished(int nExitCode, QProcess::ExitStatus eStatus);
    void OnNotStarted();
    void Tidy();

    QWidget* const m_pWindow;
    const QString m_strTool;
    QProcess m_process;
    QString m_strFile;
    QString m_strSaid; // the last line
    QElapsedTimer m_silence;
    QTimer m_timer;
    bool m_bCancelled = false;
    QProgressDialog* m_pProgress = nullptr;
    std::unique_ptr<QTemporaryDir> m_pFolder; // of what the viewer adds
};

// SPDX-License-Identifier: Apache-2.0
// The archive that helps others to find a fault.
#pragma once

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QVector>
#include <memory>

class CameraView;

/// Made by the tool kx, which looks at the machine and at the cameras that aren't open here; the viewer adds
/// what it knows of those that are. GUI thread.
class DiagnosticArchive : public QObject
{
    Q_OBJECT

public:
    explicit DiagnosticArchive(QObject* pParent);

    /// Begins it. Raises what keeps it from that.
    void Make(const QString& strFile, const QVector<CameraView*>& views);
    bool IsBusy() const { return m_process.state() != QProcess::NotRunning; }

signals:
    void Made(const QString& strFile);
    void Failed(const QString& strWhy);

private:
    void OnFinished(int nExitCode);

    QProcess m_process;
    QString m_strFile;
    std::unique_ptr<QTemporaryDir> m_pFolder; // of what the viewer adds
};

// SPDX-License-Identifier: Apache-2.0
#include "RecordingDock.h"

#include "CameraRecording.h"
#include "CameraView.h"
#include "ErrorBox.h"
#include "RecordingTarget.h"
#include "RingPanel.h"
#include "ViewerSettings.h"

#include <QAction>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

namespace
{

constexpr int kRecordingRefreshMs = 200;
constexpr int kPercent = 100;
constexpr double kMegabyte = 1e6;

QSpinBox* MakeLimit(const QString& strName, const QString& strSuffix, const char* szKey)
{
    auto* const pBox = new QSpinBox;
    pBox->setRange(0, 1000000000);
    pBox->setSpecialValueText(QObject::tr("no limit"));
    pBox->setSuffix(strSuffix);
    pBox->setAccessibleName(strName);
    const QString strKey = QString("recording/") + szKey;
    pBox->setValue(ViewerSettings().value(strKey, 0).toInt());
    QObject::connect(pBox, qOverload<int>(&QSpinBox::valueChanged),
                     [strKey](int nValue) { ViewerSettings().setValue(strKey, nValue); });
    return pBox;
}

QLabel* MakeText()
{
    auto* const pLabel = new QLabel;
    pLabel->setWordWrap(true);
    pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return pLabel;
}

QString Megabytes(double dBytes) { return QLocale().toString(dBytes / kMegabyte, 'f', 1); }

} // namespace

RecordingDock::RecordingDock(QWidget* pParent)
    : ViewerDock(tr("Recording"), "recording", pParent)
    , m_pRecord(new QAction(tr("Record"), this))
    , m_pTarget(new RecordingTarget(this))
    , m_pMaxImages(MakeLimit(tr("Images at most"), QString(), "maxImages"))
    , m_pMaxSeconds(MakeLimit(tr("Seconds at most"), tr(" s"), "maxSeconds"))
    , m_pMaxMegabytes(MakeLimit(tr("Megabytes at most"), tr(" MB"), "maxMegabytes"))
    , m_pQueue(new QProgressBar)
    , m_pState(MakeText())
    , m_pCause(MakeText())
    , m_pRing(new RingPanel(this))
{
    m_pRecord->setObjectName("record");
    m_pRecord->setCheckable(true);
    m_pRecord->setEnabled(false);
    m_pRecord->setToolTip(tr("Save the images that come from now on"));
    auto* const pButton = new QToolButton;
    pButton->setDefaultAction(m_pRecord);
    pButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_pQueue->setAccessibleName(tr("Fill of the queue"));
    m_pQueue->setToolTip(tr("Images that wait to be written; when it is full, images are lost"));
    m_pQueue->setFormat(tr("queue %p%"));
    m_pCause->setObjectName("cause");

    auto* const pForm = new QFormLayout;
    pForm->addRow(tr("Images:"), m_pMaxImages);
    pForm->addRow(tr("Time:"), m_pMaxSeconds);
    pForm->addRow(tr("Size:"), m_pMaxMegabytes);
    auto* const pLimits = new QGroupBox(tr("Ends after"));
    pLimits->setLayout(pForm);
    auto* const pRun = new QVBoxLayout;
    pRun->addWidget(m_pTarget);
    auto* const pStart = new QHBoxLayout;
    pStart->addWidget(pButton);
    pStart->addWidget(m_pQueue);
    pRun->addLayout(pStart);
    pRun->addWidget(m_pState);
    pRun->addWidget(m_pCause);
    pRun->addStretch();
    auto* const pContents = new QWidget;
    auto* const pLayout = new QHBoxLayout(pContents);
    pLayout->addLayout(pRun, 2);
    pLayout->addWidget(pLimits);
    pLayout->addWidget(m_pRing, 1);
    SetContents(pContents);

    connect(m_pRecord, &QAction::triggered, this, &RecordingDock::Toggle);
    connect(m_pRing, &RingPanel::SaveWanted, this, &RecordingDock::SaveRing);
    connect(&m_timer, &QTimer::timeout, this, &RecordingDock::Refresh);
    m_timer.start(kRecordingRefreshMs); // the action has to be right while the dock is hidden
}

void RecordingDock::Follow(CameraView& view)
{
    if (m_pRecording)
        disconnect(m_pRecording, nullptr, this, nullptr);
    m_pView = &view;
    m_pRecording = &CameraRecording::Of(view);
    connect(m_pRecording, &CameraRecording::CameraChanged, this, &RecordingDock::Refresh);
    m_pRing->Follow(m_pRecording);
    Refresh();
}

void RecordingDock::Unfollow()
{
    m_pView = nullptr;
    m_pRecording = nullptr;
    m_pRing->Follow(nullptr);
    Refresh();
}

bool RecordingDock::Begin(const std::function<void(KxApps::RecordingOptions)>& begin)
{
    try {
        KxApps::RecordingOptions options;
        options.output.name = m_pTarget->NewOutput(m_pView->Title());
        begin(std::move(options));
        return true;
    } catch (const GenICam::GenericException& e) {
        ShowError(window(), tr("The recording can't be started."), e);
        return false;
    }
}

void RecordingDock::Toggle(bool bRecord)
{
    if (!m_pRecording)
        return;
    if (!bRecord)
        m_pRecording->Stop();
    else
        Begin([this](KxApps::RecordingOptions options) {
            options.maxImages = static_cast<uint64_t>(m_pMaxImages->value());
            options.maxSeconds = m_pMaxSeconds->value();
            options.maxBytes = static_cast<uint64_t>(m_pMaxMegabytes->value() * kMegabyte);
            m_pRecording->Start(std::move(options));
        });
    Refresh();
}

void RecordingDock::SaveRing()
{
    Begin([this](KxApps::RecordingOptions options) { m_pRecording->SaveRing(std::move(options)); });
    Refresh();
}

void RecordingDock::Refresh()
{
    const bool bBusy = m_pRecording && m_pRecording->IsBusy();
    const KxApps::Recorder* const pRecorder = m_pRecording ? m_pRecording->GetRecorder() : nullptr;
    const bool bTakes = bBusy && pRecorder->Status().state == KxApps::RecordingState::Recording;
    m_pRecord->setChecked(bTakes);
    m_pRecord->setEnabled(bTakes || (m_pRecording && m_pRecording->CanRecord() && !bBusy));
    m_pTarget->setEnabled(!bBusy);
    TellEnd(bBusy);
    if (isHidden())
        return;
    m_pRing->Refresh(bBusy);
    ShowStatus();
}

void RecordingDock::TellEnd(bool bBusy)
{
    const KxApps::Recorder* const pRecorder = m_pRecording ? m_pRecording->GetRecorder() : nullptr;
    const KxApps::Recorder* const pRan = std::exchange(m_pRunning, bBusy ? pRecorder : nullptr);
    if (bBusy || !pRan || pRan != pRecorder)
        return;
    const KxApps::RecordingStatus status = pRecorder->Status();
    const QString strOutput = QString::fromStdString(pRecorder->Output());
    if (status.state == KxApps::RecordingState::Failed)
        ShowError(window(), tr("The recording broke off: %1").arg(strOutput),
                  RUNTIME_EXCEPTION("%s", status.Cause().c_str()));
    else
        emit Told(tr("Recorded %n image(s), %1 lost: %2", "", static_cast<int>(status.written))
                      .arg(status.lost)
                      .arg(QFileInfo(strOutput).fileName()));
}

void RecordingDock::ShowStatus()
{
    const KxApps::Recorder* const pRecorder = m_pRecording ? m_pRecording->GetRecorder() : nullptr;
    if (!pRecorder) {
        m_pQueue->setValue(0);
        m_pState->clear();
        m_pCause->clear();
        return;
    }
    const KxApps::RecordingStatus status = pRecorder->Status();
    // A ring is queued as a whole, whatever the queue's own size.
    const double dFill = static_cast<double>(status.queuedBytes) /
                         static_cast<double>(std::max<uint64_t>(status.maxQueuedBytes, 1));
    m_pQueue->setValue(std::min(static_cast<int>(dFill * kPercent), kPercent));
    const QString strOutput = QString::fromStdString(pRecorder->Output());
    QString strText =
        tr("%n image(s), %1 MB written, %2 MB/s; %3 waiting, %4 lost, %5 incomplete", "",
           static_cast<int>(status.written))
            .arg(Megabytes(static_cast<double>(status.writtenBytes)), Megabytes(status.writingRate))
            .arg(status.queued)
            .arg(status.lost)
            .arg(status.incomplete);
    const char* const szState = status.state == KxApps::RecordingState::Recording   ? QT_TR_NOOP("Recording")
                                : status.state == KxApps::RecordingState::Finishing ? QT_TR_NOOP("Writing")
                                : status.state == KxApps::RecordingState::Done      ? QT_TR_NOOP("Saved")
                                                                                    : QT_TR_NOOP("Failed");
    m_pState->setText(tr(szState) + ": " + strOutput + "\n" + strText);
    const QString strCause = QString::fromStdString(status.Cause());
    // Bold in place of a colour, which wouldn't be seen on every background.
    m_pCause->setText(strCause.isEmpty() ? QString() : "<b>\u26A0 " + strCause.toHtmlEscaped() + "</b>");
}

// SPDX-License-Identifier: Apache-2.0
#include "RingPanel.h"

#include "CameraRecording.h"
#include "ViewerSettings.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{

constexpr int kRingMegabyte = 1000000;
constexpr int kFirstSeconds = 5;
constexpr int kMaxSeconds = 3600;
constexpr int kMaxMegabytes = 1000000;

int FirstMegabytes() { return static_cast<int>(KxApps::QueueMemory() / kRingMegabyte); }

QString Seconds(double dSeconds) { return QLocale().toString(dSeconds, 'f', 2); }

} // namespace

RingPanel::RingPanel(QWidget* pParent)
    : QGroupBox(tr("Keep the last images in memory"), pParent)
    , m_pSeconds(new QDoubleSpinBox)
    , m_pMegabytes(new QSpinBox)
    , m_pHold(new QPushButton(tr("Look at them")))
    , m_pSave(new QPushButton(tr("Save them")))
    , m_pBack(new QToolButton)
    , m_pForward(new QToolButton)
    , m_pPlace(new QSlider(Qt::Horizontal))
    , m_pText(new QLabel)
{
    setCheckable(true);
    setChecked(false);
    m_pSeconds->setRange(0.1, kMaxSeconds);
    m_pSeconds->setDecimals(1);
    m_pSeconds->setSuffix(tr(" s"));
    m_pSeconds->setAccessibleName(tr("Seconds to keep"));
    m_pSeconds->setValue(ViewerSettings().value("recording/ringSeconds", kFirstSeconds).toDouble());
    m_pMegabytes->setRange(1, kMaxMegabytes);
    m_pMegabytes->setSuffix(tr(" MB"));
    m_pMegabytes->setAccessibleName(tr("Memory to use"));
    m_pMegabytes->setValue(ViewerSettings().value("recording/ringMegabytes", FirstMegabytes()).toInt());
    m_pHold->setCheckable(true);
    m_pHold->setToolTip(tr("Hold the live image and step through what is in memory"));
    m_pBack->setArrowType(Qt::LeftArrow);
    m_pBack->setAutoRepeat(true);
    m_pBack->setAccessibleName(tr("One image back"));
    m_pForward->setArrowType(Qt::RightArrow);
    m_pForward->setAutoRepeat(true);
    m_pForward->setAccessibleName(tr("One image forward"));
    m_pPlace->setAccessibleName(tr("Image in the ring"));
    m_pText->setWordWrap(true);
    Layout();

    connect(this, &QGroupBox::toggled, this, &RingPanel::Keep);
    connect(m_pSeconds, &QDoubleSpinBox::editingFinished, this, &RingPanel::Keep);
    connect(m_pMegabytes, &QSpinBox::editingFinished, this, &RingPanel::Keep);
    connect(m_pHold, &QPushButton::toggled, this, &RingPanel::Hold);
    connect(m_pSave, &QPushButton::clicked, this, [this] {
        m_pHold->setChecked(true); // what is saved stays as it is meanwhile
        emit SaveWanted();
    });
    connect(m_pBack, &QToolButton::clicked, this, [this] { Step(-1); });
    connect(m_pForward, &QToolButton::clicked, this, [this] { Step(1); });
    connect(m_pPlace, &QSlider::valueChanged, this, &RingPanel::Show);
}

void RingPanel::Layout()
{
    auto* const pLength = new QHBoxLayout;
    pLength->addWidget(m_pSeconds);
    pLength->addWidget(new QLabel(tr("in at most")));
    pLength->addWidget(m_pMegabytes);
    auto* const pButtons = new QHBoxLayout;
    pButtons->addWidget(m_pHold);
    pButtons->addWidget(m_pSave);
    auto* const pSteps = new QHBoxLayout;
    pSteps->addWidget(m_pBack);
    pSteps->addWidget(m_pPlace);
    pSteps->addWidget(m_pForward);
    auto* const pLayout = new QVBoxLayout(this);
    pLayout->addLayout(pLength);
    pLayout->addLayout(pButtons);
    pLayout->addLayout(pSteps);
    pLayout->addWidget(m_pText);
}

void RingPanel::Follow(CameraRecording* pRecording)
{
    m_pHold->setChecked(false); // the view that was in front goes on
    if (m_pRecording)
        disconnect(m_pRecording, nullptr, this, nullptr);
    m_pRecording = pRecording;
    if (pRecording)
        connect(pRecording, &CameraRecording::CameraChanged, this, [this] { m_pHold->setChecked(false); });
    const QSignalBlocker blocker(this);
    setChecked(pRecording && pRecording->Ring());
}

void RingPanel::Keep()
{
    ViewerSettings().setValue("recording/ringSeconds", m_pSeconds->value());
    ViewerSettings().setValue("recording/ringMegabytes", m_pMegabytes->value());
    m_pHold->setChecked(false);
    if (m_pRecording)
        m_pRecording->SetRing(isChecked() ? m_pSeconds->value() : 0,
                              static_cast<uint64_t>(m_pMegabytes->value()) * kRingMegabyte);
}

void RingPanel::Hold(bool bHold)
{
    if (!m_pRecording || !m_pRecording->Ring())
        return;
    m_pRecording->HoldRing(bHold);
    m_images = bHold ? m_pRecording->Ring()->Images() : std::vector<KxApps::StoredImagePtr>();
    {
        const QSignalBlocker blocker(m_pPlace);
        m_pPlace->setRange(0, std::max(static_cast<int>(m_images.size()) - 1, 0));
        m_pPlace->setValue(m_pPlace->maximum());
    }
    Show(m_pPlace->value());
}

void RingPanel::Step(int nImages) { m_pPlace->setValue(m_pPlace->value() + nImages); }

void RingPanel::Show(int nImage)
{
    if (m_images.empty() || !m_pRecording)
        return;
    const KxApps::StoredImage& image = *m_images.at(static_cast<size_t>(nImage));
    const auto nBefore =
        KxApps::TimeOf(m_images.back()->Notes()) - KxApps::TimeOf(image.Notes()); // to the newest
    m_pText->setText(tr("Image %1 of %2, frame ID %3, %4 s before the last one")
                         .arg(nImage + 1)
                         .arg(m_images.size())
                         .arg(image.Notes().frameId)
                         .arg(Seconds(static_cast<double>(nBefore) * 1e-9)));
    try {
        m_pRecording->ShowOfRing(image);
    } catch (const GenICam::GenericException& e) {
        m_pText->setText(QString::fromUtf8(e.GetDescription()));
    }
}

void RingPanel::Refresh(bool bRecorderBusy)
{
    const KxApps::ImageRing* const pRing = m_pRecording ? m_pRecording->Ring() : nullptr;
    const KxApps::ImageRing::Fill fill = pRing ? pRing->GetFill() : KxApps::ImageRing::Fill();
    const bool bHeld = m_pHold->isChecked();
    m_pHold->setEnabled(fill.images > 0);
    m_pSave->setEnabled(fill.images > 0 && !bRecorderBusy);
    for (QWidget* const pWidget :
         {static_cast<QWidget*>(m_pBack), static_cast<QWidget*>(m_pPlace), static_cast<QWidget*>(m_pForward)})
        pWidget->setEnabled(bHeld);
    if (bHeld)
        return;
    QString strText = tr("%n image(s), %1 s, %2 MB", "", static_cast<int>(fill.images))
                          .arg(Seconds(fill.seconds))
                          .arg(fill.bytes / kRingMegabyte);
    if (fill.isShort)
        strText += "; " + tr("the memory isn't enough for the time");
    m_pText->setText(pRing ? strText : QString());
}

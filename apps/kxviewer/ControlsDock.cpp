// SPDX-License-Identifier: Apache-2.0
#include "ControlsDock.h"

#include "CameraView.h"
#include "FeatureEditor.h"
#include "FeatureNotes.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/IKxPort.h>

#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QScrollArea>

using namespace KxApi;

namespace
{

constexpr int kPollMs = 500;

enum Source
{
    Camera,
    Window,
    Converter,
    ConverterIfPolarized,
};

/// A feature to be offered; without one a heading.
struct ControlRow
{
    const char* szTitle;
    const char* szFeature;
    Source eSource = Camera;
};

constexpr ControlRow kRows[] = {
    {QT_TRANSLATE_NOOP("Controls", "Exposure"), nullptr},
    {QT_TRANSLATE_NOOP("Controls", "Automatic"), "ExposureAuto"},
    {QT_TRANSLATE_NOOP("Controls", "Time"), "ExposureTime"},
    {QT_TRANSLATE_NOOP("Controls", "Rate"), "AcquisitionFrameRate"},
    {QT_TRANSLATE_NOOP("Controls", "Gain"), nullptr},
    {QT_TRANSLATE_NOOP("Controls", "Automatic"), "GainAuto"},
    {QT_TRANSLATE_NOOP("Controls", "Gain"), "Gain"},
    {QT_TRANSLATE_NOOP("Controls", "Black level"), "BlackLevel"},
    {QT_TRANSLATE_NOOP("Controls", "Gamma"), "Gamma"},
    {QT_TRANSLATE_NOOP("Controls", "White balance"), nullptr},
    {QT_TRANSLATE_NOOP("Controls", "Automatic"), "BalanceWhiteAuto"},
    {QT_TRANSLATE_NOOP("Controls", "Channel"), "BalanceRatioSelector"},
    {QT_TRANSLATE_NOOP("Controls", "Ratio"), "BalanceRatio"},
    {QT_TRANSLATE_NOOP("Controls", "Acquisition"), nullptr},
    {QT_TRANSLATE_NOOP("Controls", "Pixel format"), "PixelFormat"},
    {QT_TRANSLATE_NOOP("Controls", "Trigger"), "TriggerMode"},
    {QT_TRANSLATE_NOOP("Controls", "Trigger source"), "TriggerSource"},
    {QT_TRANSLATE_NOOP("Controls", "Display"), nullptr},
    {QT_TRANSLATE_NOOP("Controls", "Colour map"), "ColorMapType", Window},
    {QT_TRANSLATE_NOOP("Controls", "Inverted"), "ColorMapInversion", Window},
    {QT_TRANSLATE_NOOP("Controls", "Phase"), "ColorMapPhase", Window},
    {QT_TRANSLATE_NOOP("Controls", "Bayer"), "BayerInterpolationMethod", Converter},
    {QT_TRANSLATE_NOOP("Controls", "Display gamma"), "Gamma", Converter},
    {QT_TRANSLATE_NOOP("Controls", "Polarisation"), "PolarizationImageTransformationMethod",
     ConverterIfPolarized},
    {QT_TRANSLATE_NOOP("Controls", "Angle"), "PolarizationSpecifiedAngle", ConverterIfPolarized},
};

QString TranslatedControl(const char* szText) { return QCoreApplication::translate("Controls", szText); }

} // namespace

ControlsDock::ControlsDock(QWidget* pParent)
    : ViewerDock(tr("Controls"), "controls", pParent)
{
    auto* const pArea = new QScrollArea(this);
    pArea->setAccessibleName(windowTitle());
    pArea->setWidgetResizable(true);
    pArea->setFrameShape(QFrame::NoFrame);
    setWidget(pArea);
    connect(&m_timer, &QTimer::timeout, this, &ControlsDock::Poll);
}

ControlsDock::~ControlsDock() { LetGo(); }

void ControlsDock::Follow(CameraView& view)
{
    Unfollow();
    m_pView = &view;
    connect(&view, &CameraView::SessionEnds, this, &ControlsDock::LetGo);
    connect(&view, &CameraView::SessionBegan, this, &ControlsDock::Offer);
    Offer();
}

void ControlsDock::Unfollow()
{
    if (m_pView)
        m_pView->disconnect(this);
    LetGo();
    m_pView = nullptr;
}

void ControlsDock::LetGo()
{
    m_notes.reset();
    m_editors.clear();
    delete static_cast<QScrollArea*>(widget())->takeWidget();
    m_bOffered = false;
}

GenApi::INodeMap* ControlsDock::MapOf(int nSource) const
{
    CameraSession* const pSession = m_pView->Session();
    GenApi::INodeMap* const pCamera =
        pSession ? pSession->GetDevice().GetIKxRemotePort()->GetINodeMap() : nullptr;
    switch (nSource) {
    case Camera:
        return pCamera;
    case Window:
        return m_pView->Window().GetINodeMap();
    case ConverterIfPolarized: {
        const GenApi::CEnumerationPtr pFormat(pCamera ? pCamera->GetNode("PixelFormat") : nullptr);
        if (!pFormat || !QString::fromUtf8(pFormat->ToString().c_str()).startsWith("Polarized"))
            return nullptr;
        [[fallthrough]];
    }
    default:
        return m_pView->Window().GetIKxPixelFormatConverter()->GetINodeMap();
    }
}

void ControlsDock::Offer()
{
    LetGo();
    m_bOffered = m_pView && isVisible();
    if (!m_bOffered)
        return;
    m_notes = std::make_unique<FeatureNotes>([this](GenApi::INode& node) { Refresh(node); });
    auto* const pContent = new QWidget;
    auto* const pForm = new QFormLayout(pContent);
    pForm->setContentsMargins(6, 4, 6, 4);
    pForm->setVerticalSpacing(3);
    const char* szHeading = nullptr;
    for (const ControlRow& row : kRows) {
        if (!row.szFeature) {
            szHeading = row.szTitle;
            continue;
        }
        GenApi::INodeMap* const pMap = MapOf(row.eSource);
        GenApi::INode* const pNode = pMap ? pMap->GetNode(row.szFeature) : nullptr;
        if (!pNode || !GenApi::IsImplemented(pNode))
            continue;
        const QString strTitle = TranslatedControl(row.szTitle);
        FeatureEditor* const pEditor = FeatureEditor::Make(*pNode, strTitle, pContent);
        if (!pEditor)
            continue;
        if (szHeading) {
            auto* const pHeading = new QLabel("<b>" + TranslatedControl(szHeading) + "</b>", pContent);
            pForm->addRow(pHeading);
            szHeading = nullptr;
        }
        connect(pEditor, &FeatureEditor::Refused, this, &ControlsDock::Told);
        pForm->addRow(strTitle, pEditor);
        m_editors.append(pEditor);
        m_notes->Listen(*pNode);
    }
    auto* const pArea = static_cast<QScrollArea*>(widget());
    pArea->setWidget(pContent);
    pArea->setMinimumWidth(pContent->minimumSizeHint().width() + 20);
}

void ControlsDock::Refresh(const GenApi::INode& node)
{
    // Which rows there are depends on the format; editors go only when their own signal has ended.
    if (node.GetName() == "PixelFormat") {
        QMetaObject::invokeMethod(this, &ControlsDock::Offer, Qt::QueuedConnection);
        return;
    }
    for (FeatureEditor* const pEditor : m_editors) {
        if (&pEditor->Node() == &node)
            pEditor->Refresh();
    }
}

void ControlsDock::Poll()
{
    CameraSession* const pSession = m_bOffered ? m_pView->Session() : nullptr;
    if (pSession)
        pSession->GetDevice().GetIKxRemotePort()->GetINodeMap()->Poll(kPollMs);
}

void ControlsDock::showEvent(QShowEvent* pEvent)
{
    ViewerDock::showEvent(pEvent);
    if (!m_bOffered)
        Offer();
    m_timer.start(kPollMs);
}

void ControlsDock::hideEvent(QHideEvent* pEvent)
{
    m_timer.stop();
    ViewerDock::hideEvent(pEvent);
}

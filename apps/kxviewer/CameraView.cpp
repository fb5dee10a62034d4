// SPDX-License-Identifier: Apache-2.0
#include "CameraView.h"

#include <QVBoxLayout>

using namespace KxApi;

CameraView::CameraView(RunReport& report, QWidget* pParent)
    : QWidget(pParent)
    , m_window(CreateIKxWnd(KxWindowType_ImageDisplay))
{
    auto* const pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    m_window->SetZoomMode(KxZoomMode_FitToTheWindow);
    m_window->SetBuiltInDrawingToolbar(true);
    m_window->SetEnableDrawingOnSavingImage(true);
    m_window->RegisterCallback(&report);
    m_window->Show(this, KxWindowMode_Child);
}

CameraView::~CameraView()
{
    Close();
    m_window.Reset();
}

bool CameraView::Has(const KxApps::Camera& camera) const
{
    return m_session && m_session->GetCamera().pInfo == camera.pInfo;
}

void CameraView::Open(const KxApps::Camera& camera, const std::vector<std::string>& settings)
{
    if (Has(camera))
        Close();
    auto session = std::make_unique<CameraSession>(camera, settings, *m_window);
    Close();
    m_session = std::move(session);
    connect(m_session.get(), &CameraSession::Failed, this, &CameraView::Failed, Qt::QueuedConnection);
    connect(m_session.get(), &CameraSession::Finished, this, &CameraView::Finished, Qt::QueuedConnection);
    emit SessionBegan();
}

void CameraView::Close()
{
    if (!m_session)
        return;
    emit SessionEnds();
    m_session.reset();
}

QString CameraView::Title() const { return m_session ? m_session->GetName() : tr("No camera"); }

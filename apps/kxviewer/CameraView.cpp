// SPDX-License-Identifier: Apache-2.0
#include "CameraView.h"

#include "ImageNavigation.h"
#include "ImageZoom.h"

#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QPalette>
#include <QVBoxLayout>

using namespace KxApi;

namespace
{

/// A plain background that goes with the windows round it, in light and dark.
void SetBackground(IKxImageDisplayWnd& window, const QPalette& palette)
{
    const QColor& colour = palette.color(QPalette::Mid);
    window.SetBackgroundStyle(KxBackgroundStyle_None);
    window.SetBackgroundColor(
        static_cast<uint32_t>(colour.red() | colour.green() << 8 | colour.blue() << 16));
}

} // namespace

CameraView::CameraView(RunReport& report, QWidget* pParent)
    : QWidget(pParent)
    , m_pCaption(new QLabel(this))
    , m_window(CreateIKxWnd(KxWindowType_ImageDisplay))
{
    auto* const pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    m_pCaption->setAutoFillBackground(true);
    m_pCaption->setMargin(3);
    m_pCaption->hide();
    pLayout->addWidget(m_pCaption);
    m_window->SetZoomMode(KxZoomMode_FitToTheWindow);
    m_window->SetVisibleStatusBar(false); // the viewer's own tells the pixel
    m_window->SetVisibleMenu(false);
    m_window->SetEnableDrawingOnSavingImage(true);
    SetBackground(*m_window, QApplication::palette());
    connect(qApp, &QGuiApplication::paletteChanged, this,
            [this](const QPalette& palette) { SetBackground(*m_window, palette); });
    m_callbacks = {m_window->RegisterCallback(&report), m_window->RegisterCallback(&m_marks)};
    m_window->Show(this, KxWindowMode_Child);
    auto* const pNavigation = new ImageNavigation(*m_window, this);
    connect(pNavigation, &ImageNavigation::Pressed, this, &CameraView::Touched);
    if (QWidget* const pImage = ImageWidgetOf(*m_window)) {
        pImage->setAccessibleName(tr("Camera image"));
        setFocusProxy(pImage->parentWidget()->parentWidget());
    }
}

CameraView::~CameraView()
{
    Close();
    // The window may outlive this until events are handled, the callbacks may not.
    for (void* const hCallback : m_callbacks)
        m_window->DeregisterCallback(hCallback);
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

void CameraView::ShowCaption(bool bShow, bool bInFront)
{
    m_pCaption->setVisible(bShow);
    m_pCaption->setText(Title());
    m_pCaption->setBackgroundRole(bInFront ? QPalette::Highlight : QPalette::Window);
    m_pCaption->setForegroundRole(bInFront ? QPalette::HighlightedText : QPalette::WindowText);
}

QString CameraView::PixelText()
{
    QWidget* const pImage = ImageWidgetOf(*m_window);
    if (!pImage || !pImage->underMouse() || !m_window->HasImage())
        return {};
    // What is on the screen is known while it is painted: a pixel of it is painted anew where the mouse has
    // moved since.
    if (m_marks.MousePosition() != QCursor::pos())
        pImage->repaint(QRect(pImage->mapFromGlobal(QCursor::pos()), QSize(1, 1)));
    return m_marks.PixelText();
}

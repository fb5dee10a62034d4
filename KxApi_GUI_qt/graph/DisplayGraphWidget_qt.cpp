// SPDX-License-Identifier: Apache-2.0
#include "graph/DisplayGraphWidget_qt.h"

#include "graph/ICDisplayGraphDlgParent.h"
#include "graph/IDisplayGraphWidgetParent.h"

#include <Base/GCException.h>

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <new>

namespace KxApi
{
namespace
{
constexpr uint32_t kLongestInterval = 3600000; // ms; the port takes any number
constexpr int kLight = 128;                    // lightness of palettes on which black can be read
} // namespace

CDisplayGraphWidget::CDisplayGraphWidget(QWidget* pParent)
try : QWidget(pParent) {
    connect(this, &CDisplayGraphWidget::onTimerUpdatedSignal, this, &CDisplayGraphWidget::onTimerUpdatedSlot);
    connect(this, &CDisplayGraphWidget::onDrawSettingUpdatedSignal, this,
            &CDisplayGraphWidget::onDrawSettingUpdatedSlot);
    connect(this, &CDisplayGraphWidget::onGraphUpdatedSignal, this, &CDisplayGraphWidget::onGraphUpdatedSlot);
    connect(this, &CDisplayGraphWidget::onWidgetSizeUpdatedSignal, this,
            &CDisplayGraphWidget::onWidgetSizeUpdatedSlot);
    connect(this, &CDisplayGraphWidget::onDisplayUpdatedSignal, this,
            &CDisplayGraphWidget::onDisplayUpdatedSlot);
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

CDisplayGraphWidget::~CDisplayGraphWidget()
{
    disconnect();
    TerminateTimer();
}

ICDisplayGraphDlgParent* CDisplayGraphWidget::Window() const
{
    return m_pParent ? m_pParent->GetICDisplayGraphDlgParent() : nullptr;
}

void CDisplayGraphWidget::Initialize() { emit onTimerUpdatedSignal(); }

void CDisplayGraphWidget::OnUpdateGraphData() { emit onGraphUpdatedSignal(); }

void CDisplayGraphWidget::OnUpdateDrawSetting() { emit onDrawSettingUpdatedSignal(); }

void CDisplayGraphWidget::OnWidgetSizeUpdated(int nWidth, int nHeight)
{
    emit onWidgetSizeUpdatedSignal(nWidth, nHeight);
}

void CDisplayGraphWidget::setTranslucent(bool bTranslucent)
{
    m_bTranslucent = bTranslucent;
    if (m_objBackdrop.width() > 0)
        m_objBackdrop.fill(Qt::white);
}

void CDisplayGraphWidget::TerminateTimer()
{
    if (m_nTimerId != 0)
        killTimer(m_nTimerId);
    m_nTimerId = 0;
}

void CDisplayGraphWidget::onTimerUpdatedSlot()
{
    Guarded([this] {
        if (ICDisplayGraphDlgParent* const pWindow = Window())
            m_nTimerInterval = pWindow->GetIKxGraphDisplayWndInside()->GetRefreshInterval();
        TerminateTimer();
        if (m_nTimerInterval != 0)
            m_nTimerId =
                startTimer(static_cast<int>(std::min(m_nTimerInterval, kLongestInterval)), Qt::CoarseTimer);
    });
}

void CDisplayGraphWidget::onDrawSettingUpdatedSlot() { update(); }

void CDisplayGraphWidget::onGraphUpdatedSlot()
{
    if (m_nTimerInterval == 0)
        repaint();
    else
        m_bGraphUpdated = true;
}

void CDisplayGraphWidget::onWidgetSizeUpdatedSlot(int width, int height)
{
    setFixedSize(width, height);
    repaint();
}

void CDisplayGraphWidget::onDisplayUpdatedSlot() { repaint(); }

void CDisplayGraphWidget::timerEvent(QTimerEvent* pEvent)
{
    if (pEvent->timerId() != m_nTimerId || !m_bGraphUpdated || !isVisible())
        return;
    if (m_bTranslucent)
        m_objBackdrop = grab();
    emit onDisplayUpdatedSignal();
}

void CDisplayGraphWidget::paintEvent(QPaintEvent* pEvent)
{
    Guarded([this] {
        ICDisplayGraphDlgParent* const pWindow = Window();
        if (!pWindow)
            return;
        QPainter painter(this);
        CDrawGraphParam param;
        pWindow->GetCDrawGraphParam(param);
        param.Fit(painter.window().width(), painter.window().height());
        if (m_bTranslucent) {
            if (palette().color(QPalette::Window).lightness() < kLight)
                painter.fillRect(rect(), Qt::white); // or black texts couldn't be read
            painter.drawPixmap(0, 0, m_objBackdrop);
        }
        pWindow->DrawInside(&painter, param, KxGraphDataIndex_Widget);
    });
    QWidget::paintEvent(pEvent);
}

void CDisplayGraphWidget::resizeEvent(QResizeEvent* pEvent)
{
    emit onDisplayUpdatedSignal();
    QWidget::resizeEvent(pEvent);
}

} // namespace KxApi

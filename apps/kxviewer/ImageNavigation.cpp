// SPDX-License-Identifier: Apache-2.0
#include "ImageNavigation.h"

#include "ImageZoom.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_GUI/KxDrawingTypes.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <algorithm>

using namespace KxApi;

ImageNavigation::ImageNavigation(IKxImageDisplayWnd& window, QObject* pParent)
    : QObject(pParent)
    , m_window(window)
    , m_pImage(ImageWidgetOf(window))
{
    m_pImage->installEventFilter(this);
    m_pImage->parentWidget()->installEventFilter(this);
}

bool ImageNavigation::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    switch (pEvent->type()) {
    case QEvent::MouseButtonPress:
        emit Pressed();
        return pWatched == m_pImage && Press(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseMove:
        return Move(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::MouseButtonRelease:
        return Release(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::Wheel:
        if (pWatched == m_pImage && (QApplication::queryKeyboardModifiers() & Qt::ControlModifier))
            ImageZoom(m_window).LeaveFit();
        return false;
    default:
        return false;
    }
}

bool ImageNavigation::IsDrawing() const
{
    const GenApi::CEnumerationPtr pType(m_window.GetINodeMap()->GetNode("DrawingItemType"));
    return pType->GetIntValue() != KxDrawingItemType_None;
}

bool ImageNavigation::Press(const QMouseEvent& event)
{
    const bool bDrags =
        event.button() == Qt::MiddleButton || (event.button() == Qt::LeftButton && !IsDrawing());
    if (!bDrags || m_eButton != Qt::NoButton)
        return m_eButton != Qt::NoButton;
    m_eButton = event.button();
    m_from = event.globalPos();
    m_scrolled = {m_window.GetScrollHPosition(), m_window.GetScrollVPosition()};
    if (m_window.GetScrollHMax() > 0 || m_window.GetScrollVMax() > 0)
        m_pImage->setCursor(Qt::ClosedHandCursor);
    // The press still gives the image the focus.
    m_pImage->parentWidget()->parentWidget()->setFocus(Qt::MouseFocusReason);
    return true;
}

bool ImageNavigation::Move(const QMouseEvent& event)
{
    if (m_eButton == Qt::NoButton)
        return false;
    const QPoint position = m_scrolled - (event.globalPos() - m_from);
    m_window.SetScrollHPosition(std::clamp(position.x(), 0, m_window.GetScrollHMax()));
    m_window.SetScrollVPosition(std::clamp(position.y(), 0, m_window.GetScrollVMax()));
    return true;
}

bool ImageNavigation::Release(const QMouseEvent& event)
{
    if (m_eButton == Qt::NoButton || event.button() != m_eButton)
        return false;
    m_eButton = Qt::NoButton;
    m_pImage->setCursor(Qt::ArrowCursor);
    return true;
}

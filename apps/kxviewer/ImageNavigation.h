// SPDX-License-Identifier: Apache-2.0
// The mouse over an image window, as far as the window leaves it to others.
#pragma once

#include <QObject>
#include <QPoint>

class QMouseEvent;
class QWidget;

namespace KxApi
{
struct IKxImageDisplayWnd;
}

/// Drags the image with the left button while no drawing tool is chosen, with the middle one always; lets the
/// window's own zoom by Ctrl and wheel begin from a fitted image; tells where the mouse is. GUI thread.
class ImageNavigation : public QObject
{
    Q_OBJECT

public:
    /// The window is shown, and stays so as long as this.
    ImageNavigation(KxApi::IKxImageDisplayWnd& window, QObject* pParent);

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

signals:
    /// A button was pressed over the window.
    void Pressed();

private:
    bool Press(const QMouseEvent& event);
    bool Move(const QMouseEvent& event);
    bool Release(const QMouseEvent& event);
    bool IsDrawing() const;

    KxApi::IKxImageDisplayWnd& m_window;
    QWidget* m_pImage;
    Qt::MouseButton m_eButton = Qt::NoButton; // that drags
    QPoint m_from;                            // of the mouse, on the screen
    QPoint m_scrolled;                        // when the dragging began
};

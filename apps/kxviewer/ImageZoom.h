// SPDX-License-Identifier: Apache-2.0
// Zooming of an image window, as the viewer's buttons and keys do it.
#pragma once

class QWidget;

namespace KxApi
{
struct IKxImageDisplayWnd;
}

/// Works through the features of the window, which limits the magnification to 0.01 to 64. GUI thread.
class ImageZoom
{
public:
    explicit ImageZoom(KxApi::IKxImageDisplayWnd& window)
        : m_window(window)
    {}

    /// What is in force, also while the image is fitted to the window; 1 while nothing is shown.
    double Get() const;
    void Set(double dMagnification);
    /// The next of the usual steps.
    void In();
    void Out();

    bool IsFit() const;
    void Fit();
    /// Goes on with the magnification that fits now as a fixed one, so that wheel and keys can change it.
    void LeaveFit();

    /// Moves the visible part, in parts of its own size.
    void Scroll(double dPagesX, double dPagesY);

private:
    QWidget* Area() const;

    KxApi::IKxImageDisplayWnd& m_window;
};

/// The widget that shows the image, null while the window isn't shown.
QWidget* ImageWidgetOf(KxApi::IKxImageDisplayWnd& window);

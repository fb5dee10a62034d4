// SPDX-License-Identifier: Apache-2.0
#include "ImageZoom.h"

#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_TL/IKxImage.h>

#include <QScrollArea>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <iterator>

using namespace KxApi;

namespace
{

constexpr double kSteps[] = {0.015625, 0.03125, 0.0625, 0.125, 1.0 / 6, 0.25, 1.0 / 3, 0.5, 2.0 / 3, 1,  1.5,
                             2,        3,       4,      6,     8,       12,   16,      24,  32,      48, 64};
constexpr double kSame = 1.001; // closer than this a magnification is that of the step
constexpr double kLeast = 0.01;
constexpr double kMost = 64;

} // namespace

QWidget* ImageWidgetOf(IKxImageDisplayWnd& window)
{
    const auto* const pHandle = static_cast<QWidget*>(window.GetWindowHandle());
    const auto* const pArea = pHandle ? pHandle->findChild<QScrollArea*>() : nullptr;
    return pArea ? pArea->widget() : nullptr;
}

QWidget* ImageZoom::Area() const
{
    QWidget* const pImage = ImageWidgetOf(m_window);
    return pImage ? pImage->parentWidget() : nullptr;
}

double ImageZoom::Get() const
{
    if (!IsFit())
        return m_window.GetManualZoomMagnification();
    const QWidget* const pImage = ImageWidgetOf(m_window);
    if (!pImage || !m_window.HasImage() || pImage->width() <= 1)
        return 1;
    return pImage->width() / static_cast<double>(m_window.GetRegisteredIKxImage()->GetImageWidth());
}

void ImageZoom::Set(double dMagnification)
{
    m_window.SetManualZoomMagnification(std::clamp(dMagnification, kLeast, kMost));
    m_window.SetZoomMode(KxZoomMode_FixedZoom);
}

void ImageZoom::In()
{
    const double* const pStep = std::upper_bound(std::begin(kSteps), std::end(kSteps), Get() * kSame);
    Set(pStep == std::end(kSteps) ? kMost : *pStep);
}

void ImageZoom::Out()
{
    const double* const pStep = std::lower_bound(std::begin(kSteps), std::end(kSteps), Get() / kSame);
    Set(pStep == std::begin(kSteps) ? kSteps[0] : *(pStep - 1));
}

bool ImageZoom::IsFit() const { return m_window.GetZoomMode() == KxZoomMode_FitToTheWindow; }

void ImageZoom::Fit() { m_window.SetZoomMode(KxZoomMode_FitToTheWindow); }

void ImageZoom::LeaveFit()
{
    if (IsFit())
        Set(Get());
}

void ImageZoom::Scroll(double dPagesX, double dPagesY)
{
    const QWidget* const pArea = Area();
    if (!pArea)
        return;
    const auto moved = [](int nPosition, int nMax, double dStep) {
        return std::clamp(nPosition + static_cast<int>(std::lround(dStep)), 0, nMax);
    };
    m_window.SetScrollHPosition(
        moved(m_window.GetScrollHPosition(), m_window.GetScrollHMax(), dPagesX * pArea->width()));
    m_window.SetScrollVPosition(
        moved(m_window.GetScrollVPosition(), m_window.GetScrollVMax(), dPagesY * pArea->height()));
}

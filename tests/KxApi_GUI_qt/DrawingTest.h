// SPDX-License-Identifier: Apache-2.0
// An image window whose drawing tool is driven by features and by the mouse.
#pragma once

#include "WindowTest.h"
#include "drawing/KxDrawingTool_qt.h"
#include "image/COverlayParam.h"

#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <string>
#include <utility>
#include <vector>

namespace KxTest
{

/// Points in pixels of an image of 1000 by 500.
using PointList = std::vector<std::pair<double, double>>;
constexpr size_t kImageWidth = 1000;
constexpr size_t kImageHeight = 500;

class DrawingTest : public WindowTest<KxApi::IKxImageDisplayWnd>
{
protected:
    DrawingTest()
        : WindowTest(KxApi::KxWindowType_ImageDisplay)
    {
        Painted(); // sizes and places are those of the last paint
    }

    /// A new object by features, selected; `nTexts` its labels.
    void Add(const char* szType, const PointList& points = {}, int nTexts = -1)
    {
        const int64_t nCount = Node("DrawingObjectsCount")->GetValue();
        Node("DrawingObjectsCount")->SetValue(nCount + 1);
        Node("DrawingObjectSelector")->SetValue(nCount);
        Set("DrawingObjectType", szType);
        if (!points.empty())
            Node("DrawingObjectPointCount")->SetValue(static_cast<int64_t>(points.size()));
        for (size_t i = 0; i < points.size(); ++i) {
            Node("DrawingObjectPointSelector")->SetValue(static_cast<int64_t>(i));
            Node<GenApi::CFloatPtr>("DrawingObjectPointX")->SetValue(points[i].first / kImageWidth);
            Node<GenApi::CFloatPtr>("DrawingObjectPointY")->SetValue(points[i].second / kImageHeight);
        }
        if (nTexts >= 0)
            m_pPort->Write(&nTexts, 0x1400, sizeof(nTexts));
    }

    /// Has the tool paint, as the widget does for an image of 1000 by 500.
    void Paint(QPainter& painter, double dZoom = 1.0)
    {
        const ImageBufferPtr pImage = MakeImage(kImageWidth, kImageHeight);
        KxApi::COverlayParam::CValues values;
        values.pIKxImage = pImage->GetIKxImage();
        values.nROIWidth = kImageWidth;
        values.nROIHeight = kImageHeight;
        values.nDisplayWidth = static_cast<int>(kImageWidth * dZoom);
        values.nDisplayHeight = static_cast<int>(kImageHeight * dZoom);
        values.pDC = &painter;
        KxApi::COverlayParam param(values);
        painter.save();
        m_pTool->OnDraw(&param);
        painter.restore();
    }
    QImage Painted(double dZoom = 1.0)
    {
        QImage picture(static_cast<int>(kImageWidth * dZoom), static_cast<int>(kImageHeight * dZoom),
                       QImage::Format_RGB32);
        picture.fill(Qt::darkBlue);
        QPainter painter(&picture);
        Paint(painter, dZoom);
        return picture;
    }

    KxApi::CKxDrawingMeasurement Measured(size_t nIndex = 0) const
    {
        return m_pTool->GetMeasurements().at(nIndex);
    }
    /// Points of the object at the selector in image pixels, rounded.
    std::vector<std::pair<int, int>> Points() const
    {
        std::vector<std::pair<int, int>> points;
        const int64_t nCount = Node("DrawingObjectPointCount")->GetValue();
        for (int64_t i = 0; i < nCount; ++i) {
            Node("DrawingObjectPointSelector")->SetValue(i);
            points.emplace_back(
                qRound(Node<GenApi::CFloatPtr>("DrawingObjectPointX")->GetValue() * kImageWidth),
                qRound(Node<GenApi::CFloatPtr>("DrawingObjectPointY")->GetValue() * kImageHeight));
        }
        return points;
    }
    std::vector<bool> Selection() const
    {
        std::vector<bool> selection;
        for (const KxApi::CKxDrawingMeasurement& measurement : m_pTool->GetMeasurements())
            selection.push_back(measurement.bSelected);
        return selection;
    }

    // The mouse at a place of the image at magnification 1.
    bool Press(int x, int y, Qt::MouseButton eButton = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(x, y), eButton, eButton, Qt::NoModifier);
        return m_pTool->mousePressEvent(&m_widget, &event, {x, y});
    }
    bool Move(int x, int y, Qt::MouseButtons eButtons = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(x, y), Qt::NoButton, eButtons, Qt::NoModifier);
        return m_pTool->mouseMoveEvent(&m_widget, &event, {x, y});
    }
    bool Release(int x, int y, Qt::MouseButton eButton = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseButtonRelease, QPointF(x, y), eButton, Qt::NoButton, Qt::NoModifier);
        return m_pTool->mouseReleaseEvent(&m_widget, &event, {x, y});
    }
    void DragBy(int x0, int y0, int x1, int y1)
    {
        Press(x0, y0);
        Move(x1, y1);
        Release(x1, y1);
    }
    bool PressKey(Qt::Key eKey)
    {
        QKeyEvent event(QEvent::KeyPress, eKey, Qt::NoModifier);
        return m_pTool->keyPressEvent(&m_widget, &event);
    }
    Qt::CursorShape CursorAt(int x, int y)
    {
        m_widget.setCursor(Qt::WaitCursor);
        Move(x, y, Qt::NoButton);
        return m_widget.cursor().shape();
    }

    KxApi::CKxDrawingTool* const m_pTool = dynamic_cast<KxApi::CKxDrawingTool*>(m_pWnd->GetIKxDrawingTool());
    QWidget m_widget; // that the mouse is over
};

} // namespace KxTest

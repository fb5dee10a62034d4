// SPDX-License-Identifier: Apache-2.0
#include "DrawingPictures.h"

#include "drawing/KxDrawBrushConfigDlg_qt.h"
#include "drawing/KxDrawFontConfigDlg_qt.h"
#include "drawing/KxDrawLineConfigDlg_qt.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxDrawingMeasurements.h>
#include <KxApi_GUI/IKxDrawingTool.h>
#include <KxApi_GUI/KxApi_GUI.h>

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QWidget>
#include <cmath>
#include <stdexcept>
#include <string>
#include <vector>

using namespace KxApi;

namespace
{

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kCell = 160; // a shape's room

struct CShape
{
    const char* szType;
    std::vector<QPointF> points; // in a cell
};

std::vector<CShape> Shapes()
{
    std::vector<QPointF> stroke;
    stroke.reserve(80);
    for (int i = 0; i < 80; ++i)
        stroke.emplace_back(40 + i, 80 + 35 * std::sin(i * 0.16));
    return {
        {"Line", {{40, 50}, {120, 110}}},
        {"Rectangle", {{40, 50}, {120, 110}}},
        {"Ellipse", {{40, 50}, {120, 110}}},
        {"Text", {{40, 50}}},
        {"Angle", {{120, 50}, {40, 80}, {110, 120}}},
        {"Polygon", {{40, 60}, {80, 40}, {120, 70}, {100, 120}, {50, 110}}},
        {"Perpendicular", {{30, 110}, {130, 70}, {60, 40}, {110, 120}}},
        {"Arc", {{40, 40}, {120, 120}, {115, 60}, {45, 110}}},
        {"Bezier", {{40, 110}, {50, 30}, {70, 30}, {80, 80}, {90, 130}, {110, 130}, {120, 50}, {125, 30}}},
        {"FreeHand", stroke},
        {"Cross", {{40, 50}, {120, 110}}}};
}

/// The features of the drawing tool.
class CDrawing
{
public:
    explicit CDrawing(IKxImageDisplayWnd& window)
        : m_map(*window.GetINodeMap())
    {}
    void Set(const char* szName, const std::string& strValue)
    {
        GenApi::CValuePtr(m_map.GetNode(szName))->FromString(strValue.c_str());
    }
    void Set(const char* szName, int64_t nValue)
    {
        GenApi::CIntegerPtr(m_map.GetNode(szName))->SetValue(nValue);
    }
    void SetFloat(const char* szName, double dValue)
    {
        GenApi::CFloatPtr(m_map.GetNode(szName))->SetValue(dValue);
    }

    void Add(const CShape& shape, int nObject)
    {
        Set("DrawingObjectsCount", nObject + 1);
        Set("DrawingObjectSelector", nObject);
        Set("DrawingObjectType", shape.szType);
        Set("DrawingObjectName", shape.szType);
        Set("DrawingFontHeight", 13);
        Set("DrawingObjectPointCount", static_cast<int64_t>(shape.points.size()));
        const int nLeft = nObject % 4 * kCell;
        const int nTop = nObject / 4 * kCell;
        int64_t nPoint = 0;
        for (const QPointF& pt : shape.points) {
            Set("DrawingObjectPointSelector", nPoint++);
            SetFloat("DrawingObjectPointX", (pt.x() + nLeft) / kWidth);
            SetFloat("DrawingObjectPointY", (pt.y() + nTop) / kHeight);
        }
    }
    void EnableAllTexts(int nObject)
    {
        Set("DrawingObjectSelector", nObject);
        for (int nText = 0; nText <= 6; ++nText) {
            GenApi::CEnumerationPtr(m_map.GetNode("DrawingObjectDisplayTextSelector"))->SetIntValue(nText);
            if (GenApi::IsWritable(m_map.GetNode("DrawingObjectEnableDisplayText")))
                Set("DrawingObjectEnableDisplayText", "1");
        }
    }

private:
    GenApi::INodeMap& m_map;
};

/// Spans the rubber band over the whole image.
void SelectAll(QWidget& dialog, double dZoom)
{
    for (QWidget* const pWidget : dialog.findChildren<QWidget*>()) {
        if (!QString(pWidget->metaObject()->className()).endsWith("CDisplayImageWidget"))
            continue;
        const auto send = [pWidget](QEvent::Type eType, QPointF pt, Qt::MouseButtons eButtons) {
            QCursor::setPos(pWidget->mapToGlobal(pt.toPoint())); // where the window looks for the mouse
            QMouseEvent event(eType, pt, Qt::LeftButton, eButtons, Qt::NoModifier);
            QCoreApplication::sendEvent(pWidget, &event);
        };
        const QPointF ptEnd(kWidth * dZoom - 2, kHeight * dZoom - 2);
        send(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton);
        send(QEvent::MouseMove, ptEnd, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, ptEnd, Qt::NoButton);
    }
}

/// Pictures of what isn't selected would show no handles.
void CheckAllSelected(IKxImageDisplayWnd& window)
{
    const auto* const pDrawing = dynamic_cast<const IKxDrawingMeasurements*>(window.GetIKxDrawingTool());
    for (const CKxDrawingMeasurement& object : pDrawing->GetMeasurements()) {
        if (!object.bSelected)
            throw std::runtime_error("the rubber band left out " + std::string(object.strName.c_str()));
    }
}

void SaveDialogs(const QString& strLook, const std::function<void(const QString&, QWidget&)>& saveWidget)
{
    const auto save = [&](const char* szName, QDialog& dialog) {
        dialog.show();
        processEventGUI(false, 100);
        saveWidget("style-" + QString(szName) + "-" + strLook, dialog);
    };
    KxDrawLineConfigDlg line;
    line.m_objPen.SetSize(9);
    line.m_objPen.SetColor(QColor(0, 128, 255));
    save("line", line);
    KxDrawBrushConfigDlg brush;
    brush.m_objBrush.SetStyle(KxBrushStyle_Hatch_Cross);
    brush.m_objBrush.SetBkMode(KxBackgroundMode_Opaque);
    save("brush", brush);
    KxDrawFontConfigDlg font;
    font.m_objFont.SetHeight(32);
    save("font", font);
}

} // namespace

void WriteDrawingPictures(IKxImageDisplayWnd& window, QWidget& dialog,
                          const std::function<void(const QString&)>& save,
                          const std::function<void(const QString&, QWidget&)>& saveWidget)
{
    CDrawing drawing(window);
    window.SetZoomMode(KxZoomMode_FixedZoom);
    const std::vector<CShape> shapes = Shapes();
    for (size_t i = 0; i < shapes.size(); ++i)
        drawing.Add(shapes[i], static_cast<int>(i));
    drawing.Set("DrawingItemType", "None");
    for (const bool bAll : {false, true}) {
        for (int i = 0; bAll && i < static_cast<int>(shapes.size()); ++i)
            drawing.EnableAllTexts(i);
        for (const double dZoom : {1.0, 1.7}) {
            window.SetManualZoomMagnification(dZoom);
            dialog.resize(static_cast<int>(kWidth * dZoom) + 40, static_cast<int>(kHeight * dZoom) + 160);
            processEventGUI(false, 100);
            drawing.Set("DrawingItemType", bAll ? "Select" : "None");
            if (bAll) {
                SelectAll(dialog, dZoom);
                CheckAllSelected(window);
            }
            save(QString("drawing-") + (bAll ? "selected-" : "plain-") + QString::number(dZoom));
        }
    }
    drawing.Set("HorizontalGridLineCount", 5);
    drawing.Set("VerticalGridLineCount", 7);
    drawing.Set("DrawingItemType", "None");
    save("drawing-grid");
    drawing.Set("DrawingObjectsCount", int64_t{0});

    SaveDialogs("light", saveWidget);
    const QPalette light = QApplication::palette();
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::ButtonText, Qt::white);
    QApplication::setPalette(dark);
    SaveDialogs("dark", saveWidget);
    QApplication::setPalette(light);
}

// SPDX-License-Identifier: Apache-2.0
// The drawing tool over an image of 5 megapixels: painting beside bare QPainter calls, the mouse, the
// features and drawing into buffers. On Qt's offscreen platform, unless QT_QPA_PLATFORM names another one.

#include "Platform.h"
#include "drawing/KxDrawingTool_qt.h"
#include "image/COverlayParam.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_IP/KxApi_IP.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>

#include <QFontMetrics>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>
#include <cmath>
#include <functional>
#include <string>

namespace
{

using namespace KxApi;

constexpr int kWidth = 2592;
constexpr int kHeight = 1944;
constexpr int kObjects = 256;
constexpr _EKxDrawingItemType_t kTypes[] = {KxDrawingItemType_Line, KxDrawingItemType_Rectangle,
                                            KxDrawingItemType_Ellipse, KxDrawingItemType_Cross};

using ImagePtr = CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer>;

ImagePtr MakeImage(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    ImagePtr image(CreateIKxImageBuffer(nullptr));
    image->CreateBuffer(kWidth, kHeight, ePixelFormat, KxMemoryInitialization_Zero);
    return image;
}

/// The two corners of an object, `nShift` pixels aside.
QRect Place(int nObject, int nShift)
{
    const int x = 60 + nObject % 16 * 150 + nShift;
    const int y = 40 + nObject / 16 * 110;
    return {QPoint(x, y), QPoint(x + 70, y + 45)};
}

/// A window with its tool, without a dialog, and a picture to paint on.
class Scene
{
public:
    Scene()
        : m_image(MakeImage(KxPixelFormat_Mono8))
        , m_window(CreateIKxWnd(KxWindowType_ImageDisplay))
        , m_picture(kWidth, kHeight, QImage::Format_RGB32)
    {
        m_picture.fill(Qt::black);
        processEventGUI(false, 0);
    }
    CKxDrawingTool& Tool() { return *dynamic_cast<CKxDrawingTool*>(m_window->GetIKxDrawingTool()); }
    GenApi::INodeMap& Map() { return *m_window->GetINodeMap(); }
    template <class T>
    void Write(int64_t nAddress, T value)
    {
        dynamic_cast<GenApi::IPort&>(*m_window).Write(&value, nAddress, sizeof(value));
    }

    void AddObject(_EKxDrawingItemType_t eType, size_t nPoints, const std::function<QPointF(size_t)>& point)
    {
        const size_t nObject = m_nObjects++;
        Write<uint64_t>(0x1004, m_nObjects);
        Write<uint64_t>(0x1010, nObject);
        Write<uint32_t>(0x1018, eType);
        Write<uint64_t>(0x1028, nPoints);
        Write<uint32_t>(0x1400, eType == KxDrawingItemType_Line ? 0x0F : 0x3F);
        for (size_t i = 0; i < nPoints; ++i) {
            // More points than have addresses of their own are put in by the mouse.
            Write<double>(0x11000 + static_cast<int64_t>(i) * 8, point(i).x() / kWidth);
            Write<double>(0x19000 + static_cast<int64_t>(i) * 8, point(i).y() / kHeight);
        }
        const char szName[] = "Object";
        dynamic_cast<GenApi::IPort&>(*m_window).Write(szName, 0x1100, sizeof(szName));
        Write<int32_t>(0x1224, 14);
    }
    void AddObjects()
    {
        for (int i = 0; i < kObjects; ++i)
            AddObject(kTypes[i % 4], 2, [i](size_t n) {
                return QPointF(n == 0 ? Place(i, 0).topLeft() : Place(i, 0).bottomRight());
            });
    }
    /// Other values in all labels.
    void ChangeUnits(int n) { Write<double>(0x1290, 1.0 + n % 100 * 0.01); }

    void Paint()
    {
        QPainter painter(&m_picture);
        COverlayParam::CValues values;
        values.pIKxImage = m_image->GetIKxImage();
        values.nROIWidth = values.nDisplayWidth = kWidth;
        values.nROIHeight = values.nDisplayHeight = kHeight;
        values.pDC = &painter;
        COverlayParam param(values);
        Tool().OnDraw(&param);
    }
    QImage& Picture() { return m_picture; }

private:
    CKxApiAutoInitTerm m_sdk;
    ImagePtr m_image;
    CKxAutoPtr<IKxWndReleasable, IKxImageDisplayWnd> m_window;
    QImage m_picture;
    size_t m_nObjects = 0;
};

void PaintChanged(benchmark::State& state)
{
    Scene scene;
    scene.AddObjects();
    int n = 0;
    for (auto _ : state) {
        scene.ChangeUnits(++n);
        scene.Paint();
    }
}
BENCHMARK(PaintChanged)->Name("Drawing/paint");

void PaintAgain(benchmark::State& state)
{
    Scene scene;
    scene.AddObjects();
    for (auto _ : state)
        scene.Paint();
}
BENCHMARK(PaintAgain)->Name("Drawing/paintAgain");

/// The same figures and labels by QPainter alone.
void PaintBare(benchmark::State& state)
{
    Scene scene;
    const QPen pen(QColor(255, 192, 0), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    QFont font;
    font.setFamily("");
    font.setPixelSize(14);
    int n = 0;
    for (auto _ : state) {
        ++n;
        QPainter painter(&scene.Picture());
        for (int i = 0; i < kObjects; ++i) {
            const QRect rc = Place(i, 0);
            painter.save();
            painter.setPen(pen);
            switch (i % 4) {
            case 1:
                painter.drawRects(&rc, 1);
                break;
            case 2:
                painter.drawEllipse(rc);
                break;
            default: {
                QPainterPath path(rc.topLeft());
                path.lineTo(rc.bottomRight());
                painter.drawPath(path);
            }
            }
            painter.setFont(font);
            const auto label = [&](const QPoint& pt, const QString& strText) {
                const QRect rcText = QFontMetrics(painter.font()).boundingRect(strText);
                painter.drawText(QRectF(pt, rcText.size()), Qt::AlignLeft | Qt::AlignTop, strText);
            };
            const double dFactor = 1.0 + n % 100 * 0.01;
            label(rc.topLeft() - QPoint(50, 17), "Object");
            label(rc.topLeft() - QPoint(0, 17), QString::asprintf("%.1f[pixels]", rc.width() * dFactor));
            label(rc.topLeft() - QPoint(80, 0), QString::asprintf("%.1f[pixels]", rc.height() * 1.0));
            if (i % 4 != 3)
                label(rc.topRight(), QString::asprintf("%.1f[pixels]", rc.width() * dFactor + rc.height()));
            if (i % 4 == 1 || i % 4 == 2)
                label(rc.bottomRight() - QPoint(0, 17),
                      QString::asprintf("%.1f[pixels 2]", rc.width() * rc.height() * dFactor));
            if (i % 4 >= 2)
                label(rc.center(), QString::asprintf("(%.1f, %.1f)", rc.x() * 1.0, rc.y() * 1.0));
            painter.restore();
        }
    }
}
BENCHMARK(PaintBare)->Name("Drawing/paint/peer");

/// A stroke of as many points as there can be, drawn by the mouse.
void DrawStroke(Scene& scene, QWidget& widget)
{
    scene.Paint();
    scene.Tool().SetDrawingItemType(KxDrawingItemType_FreeHand);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent move(QEvent::MouseMove, QPointF(), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    scene.Tool().mousePressEvent(&widget, &press, QPoint(1296, 972));
    for (int i = 0; i < 65535; ++i) {
        const double dRadius = 100 + i * 0.012;
        scene.Tool().mouseMoveEvent(&widget, &move,
                                    QPoint(static_cast<int>(1296 + dRadius * std::cos(i * 0.02)),
                                           static_cast<int>(972 + dRadius * std::sin(i * 0.02))));
    }
    scene.Tool().mouseReleaseEvent(&widget, &release, QPoint(1296, 972));
    scene.Tool().SetDrawingItemType(KxDrawingItemType_None);
    scene.Tool().SetDrawingItemType(KxDrawingItemType_Select);
}

/// Over live images, or each time after a change.
void PaintStroke(benchmark::State& state, bool bChanged)
{
    Scene scene;
    QWidget widget;
    DrawStroke(scene, widget);
    scene.Paint();
    scene.Paint();
    int n = 0;
    for (auto _ : state) {
        if (bChanged)
            scene.ChangeUnits(++n);
        scene.Paint();
    }
}
BENCHMARK_CAPTURE(PaintStroke, live, false)->Name("Drawing/stroke");
BENCHMARK_CAPTURE(PaintStroke, changed, true)->Name("Drawing/strokeChanged");

void Hover(benchmark::State& state, Scene& scene, QWidget& widget)
{
    scene.Paint();
    scene.Tool().SetDrawingItemType(KxDrawingItemType_Select);
    QMouseEvent move(QEvent::MouseMove, QPointF(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    int n = 0;
    for (auto _ : state)
        scene.Tool().mouseMoveEvent(&widget, &move, QPoint(5, ++n % 20)); // over nothing, the longest way
}

void HoverStroke(benchmark::State& state)
{
    Scene scene;
    QWidget widget;
    DrawStroke(scene, widget);
    Hover(state, scene, widget);
}
BENCHMARK(HoverStroke)->Name("Drawing/strokeHit");

void HoverObjects(benchmark::State& state)
{
    Scene scene;
    QWidget widget;
    scene.AddObjects();
    Hover(state, scene, widget);
}
BENCHMARK(HoverObjects)->Name("Drawing/mouseMove");

void ReadFeatures(benchmark::State& state)
{
    Scene scene;
    scene.AddObjects();
    GenApi::FeatureList_t listFeatures;
    GenApi::CCategoryPtr(scene.Map().GetNode("DrawingTool"))->GetFeatures(listFeatures);
    for (auto _ : state) {
        scene.Map().InvalidateNodes();
        for (GenApi::IValue* const pFeature : listFeatures) {
            if (GenApi::IsReadable(pFeature))
                benchmark::DoNotOptimize(pFeature->ToString());
        }
    }
}
BENCHMARK(ReadFeatures)->Name("Drawing/features");

void DrawIntoBuffer(benchmark::State& state)
{
    Scene scene;
    scene.AddObjects();
    const ImagePtr image = MakeImage(KxPixelFormat_BGR8);
    const ImagePtr buffer(CreateIKxImageBuffer(nullptr));
    for (auto _ : state) {
        state.PauseTiming();
        buffer->CopyImage(image->GetIKxImage());
        state.ResumeTiming();
        scene.Tool().DrawOnIKxImageBuffer(&*buffer);
    }
}
BENCHMARK(DrawIntoBuffer)->Name("Drawing/buffer");

/// One conversion to RGB8 and one copy.
void ConvertAndCopy(benchmark::State& state)
{
    const CKxApiAutoInitTerm sdk;
    const ImagePtr image = MakeImage(KxPixelFormat_BGR8);
    const ImagePtr target(CreateIKxImageBuffer(nullptr));
    const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverter> converter(
        CreateIKxConverter(KxConverterType_PixelFormat));
    converter->SetDestinationPixelFormat(KxPixelFormat_RGB8);
    for (auto _ : state) {
        const ImagePtr converted(CreateIKxImageBuffer(nullptr));
        converter->Convert(image->GetIKxImage(), &*converted);
        target->CopyImage(converted->GetIKxImage());
    }
}
BENCHMARK(ConvertAndCopy)->Name("Drawing/buffer/peer");

} // namespace

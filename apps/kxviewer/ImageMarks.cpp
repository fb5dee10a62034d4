// SPDX-License-Identifier: Apache-2.0
#include "ImageMarks.h"

#include "ImageZoom.h"
#include "PixelText.h"

#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_GUI/IKxOverlayCanvas.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxPixelComponent.h>

#include <QCursor>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <QWidget>
#include <algorithm>
#include <cmath>

using namespace KxApi;

namespace
{

constexpr double kValuesFrom = 32; // magnification
constexpr QRgb kOver = 0xffff2020;
constexpr QRgb kUnder = 0xff2060ff;

/// The paint in hand.
struct Paint
{
    explicit Paint(const IKxCallbackParamKxApiGUIEventDrawing& event)
        : painter(*static_cast<QPainter*>(event.GetDC()))
        , image(*event.GetIKxImage())
        , dZoom(event.GetROIWidth() > 0 ? event.GetDisplayWidth() / static_cast<double>(event.GetROIWidth())
                                        : 0)
    {
        // All of what is visible, as far as the painter's clip tells, else the whole image.
        const QRect whole(0, 0, event.GetDisplayWidth(), event.GetDisplayHeight());
        visible = painter.hasClipping() ? painter.clipBoundingRect().toAlignedRect() & whole : whole;
        const auto* const pWidget = dynamic_cast<QWidget*>(painter.device());
        if (pWidget)
            visible &= pWidget->visibleRegion().boundingRect();
        if (dZoom <= 0 || visible.isEmpty())
            return;
        pixels =
            QRect(QPoint(static_cast<int>(visible.left() / dZoom), static_cast<int>(visible.top() / dZoom)),
                  QPoint(static_cast<int>(visible.right() / dZoom),
                         static_cast<int>(visible.bottom() / dZoom))) &
            QRect(0, 0, static_cast<int>(image.GetImageWidth()), static_cast<int>(image.GetImageHeight()));
    }
    QPainter& painter;
    IKxImage& image;
    double dZoom;
    QRect visible; // in pixels of the screen
    QRect pixels;  // of the image
};

/// Bytes of a pixel and how many of them are colours; none for what the screen isn't given.
struct Layout
{
    int nBytes;
    int nColours;
};

Layout LayoutOf(EKxPixelFormatNamingConvention_t eFormat)
{
    switch (static_cast<uint32_t>(eFormat)) {
    case 0x01080001:
        return {1, 1}; // Mono8
    case 0x02180014:   // RGB8
    case 0x02180015:
        return {3, 3}; // BGR8
    case 0x02200016:   // RGBa8
    case 0x02200017:
        return {4, 3}; // BGRa8
    default:
        return {0, 0};
    }
}

/// A mark for each pixel of the image, or where several share one of the screen, for the pixel of the screen:
/// over-exposure is stronger than under-exposure, and any of both stronger than none.
QImage MarksOf(const Paint& paint, Layout layout)
{
    const int nStep = std::max(1, static_cast<int>(std::floor(1 / paint.dZoom)));
    QImage marks((paint.pixels.width() + nStep - 1) / nStep, (paint.pixels.height() + nStep - 1) / nStep,
                 QImage::Format_ARGB32_Premultiplied);
    marks.fill(Qt::transparent);
    const auto* const pFirst = static_cast<const uchar*>(paint.image.GetImageBuffer());
    const size_t nPitch = paint.image.GetImageLinePitch();
    for (int y = 0; y < paint.pixels.height(); ++y) {
        const uchar* pPixel = pFirst + static_cast<size_t>(paint.pixels.top() + y) * nPitch +
                              static_cast<size_t>(paint.pixels.left()) * static_cast<size_t>(layout.nBytes);
        auto* const pMarks = reinterpret_cast<QRgb*>(marks.scanLine(y / nStep));
        for (int x = 0; x < paint.pixels.width(); ++x, pPixel += layout.nBytes) {
            uchar nMost = pPixel[0];
            for (int c = 1; c < layout.nColours; ++c)
                nMost = std::max(nMost, pPixel[c]);
            if (nMost == 255)
                pMarks[x / nStep] = kOver;
            else if (nMost == 0 && pMarks[x / nStep] == 0)
                pMarks[x / nStep] = kUnder;
        }
    }
    return marks;
}

void MarkExposure(const Paint& paint)
{
    const Layout layout = LayoutOf(paint.image.GetImagePixelFormat());
    if (layout.nBytes == 0 || paint.pixels.isEmpty())
        return;
    const QImage marks = MarksOf(paint, layout);
    const int nStep = std::max(1, static_cast<int>(std::floor(1 / paint.dZoom)));
    paint.painter.drawImage(QRectF(paint.pixels.left() * paint.dZoom, paint.pixels.top() * paint.dZoom,
                                   marks.width() * nStep * paint.dZoom, marks.height() * nStep * paint.dZoom),
                            marks);
}

/// Black on light pixels and white on dark ones, as the screen shows them.
QColor Contrast(const Paint& paint, Layout layout, int x, int y)
{
    if (layout.nBytes == 0)
        return Qt::white;
    const auto* const pPixel = static_cast<const uchar*>(paint.image.GetImageBuffer()) +
                               static_cast<size_t>(y) * paint.image.GetImageLinePitch() +
                               static_cast<size_t>(x * layout.nBytes);
    const int nLight = layout.nColours == 1 ? pPixel[0] : (pPixel[0] + 2 * pPixel[1] + pPixel[2]) / 4;
    return nLight > 127 ? Qt::black : Qt::white;
}

IKxImageDisplayWnd& WindowOf(const IKxCallbackParamKxApiGUIEventDrawing& event)
{
    return dynamic_cast<IKxImageDisplayWnd&>(*event.GetIKxWnd());
}

/// Which pixel of the camera's image is seen at a place in the picture: the conversion for the screen may
/// have turned the image over.
class Places
{
public:
    Places(const IKxCallbackParamKxApiGUIEventDrawing& event, const IKxImage& camera)
        : m_bUpsideDown(event.GetIKxImage() != &camera &&
                        WindowOf(event).GetIKxPixelFormatConverter()->GetReverseY())
        , m_nLastLine(static_cast<int>(camera.GetImageHeight()) - 1)
    {}
    QPoint operator()(QPoint shown) const
    {
        return {shown.x(), m_bUpsideDown ? m_nLastLine - shown.y() : shown.y()};
    }

private:
    bool m_bUpsideDown;
    int m_nLastLine;
};

void WriteValues(const Paint& paint, IKxImage& camera, const Places& placeOf)
{
    constexpr double kTextHeight = 0.3; // of a pixel, for a value alone
    constexpr double kTextsHeight = 0.75;
    const QRect pixels = paint.pixels & QRect(0, 0, static_cast<int>(camera.GetImageWidth()),
                                              static_cast<int>(camera.GetImageHeight()));
    const Layout layout = LayoutOf(paint.image.GetImagePixelFormat());
    if (pixels.isEmpty())
        return;
    const size_t nLines = camera.GetIKxPixelComponentValue(0, 0)->GetComponentCount();
    const double dHeight =
        std::min(kTextHeight, kTextsHeight / static_cast<double>(std::max<size_t>(nLines, 1)));
    QFont font = paint.painter.font();
    font.setPixelSize(std::max(6, static_cast<int>(paint.dZoom * dHeight)));
    paint.painter.setFont(font);
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            paint.painter.setPen(Contrast(paint, layout, x, y));
            paint.painter.drawText(QRectF(x * paint.dZoom, y * paint.dZoom, paint.dZoom, paint.dZoom),
                                   Qt::AlignCenter | Qt::TextDontClip,
                                   PixelValues(camera, placeOf({x, y})).join('\n'));
        }
    }
}

} // namespace

void ImageMarks::NotePixel(const IKxCallbackParamKxApiGUIEventDrawing& event, IKxImage& camera)
{
    m_strPixel.clear();
    m_mouse = QCursor::pos();
    const QWidget* const pImage = ImageWidgetOf(WindowOf(event));
    if (!pImage || !pImage->underMouse() || event.GetROIWidth() <= 0 || event.GetDisplayWidth() <= 0)
        return;
    const double dZoom = event.GetDisplayWidth() / static_cast<double>(event.GetROIWidth());
    const QPointF place = QPointF(pImage->mapFromGlobal(m_mouse)) / dZoom;
    const QPoint shown(static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y())));
    const QRect pixels(0, 0, static_cast<int>(camera.GetImageWidth()),
                       static_cast<int>(camera.GetImageHeight()));
    if (pixels.contains(shown))
        m_strPixel = ::PixelText(camera, shown, Places(event, camera)(shown));
}

void ImageMarks::OnCallback(IKxCallbackParamBase* pParam)
{
    if (pParam->GetCallbackType() != KxGUICallbackType_Drawing)
        return;
    const auto& event = *dynamic_cast<IKxCallbackParamKxApiGUIEventDrawing*>(pParam);
    // An image that is painted once more keeps its place in memory.
    if (event.GetIKxImage() != m_pShown) {
        m_pShown = event.GetIKxImage();
        m_shown.Add(0);
    }
    // Of the painted image: the newest one may not be on the screen yet.
    IKxImage& camera = *dynamic_cast<const IKxOverlayCanvas&>(event).GetRegisteredIKxImage();
    auto& painter = *static_cast<QPainter*>(event.GetDC());
    painter.save();
    try {
        NotePixel(event, camera);
        if (m_bExposure)
            MarkExposure(Paint(event));
        if (m_bValues && event.GetDisplayWidth() >= kValuesFrom * event.GetROIWidth())
            WriteValues(Paint(event), camera, Places(event, camera));
    } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): the next paint tries again
    }
    painter.restore();
}

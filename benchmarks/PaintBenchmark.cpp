// SPDX-License-Identifier: Apache-2.0
// From a new image to the painted widget, beside a widget that does nothing but QPainter::drawImage. On Qt's
// offscreen platform, unless QT_QPA_PLATFORM names another one.

#include "Platform.h"
#include "image/DisplayImagePartDlg_qt.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QWidget>
#include <ctime>
#include <utility>

namespace
{

using namespace KxApi;

/// This thread's CPU time in seconds: what else the machine does is no cost of ours.
double CpuTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

using ImagePtr = CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer>;

struct ImageSize
{
    size_t width;
    size_t height;
};
constexpr ImageSize k1MP{1184, 888};
constexpr ImageSize k5MP{2592, 1944};
constexpr ImageSize k20MP{5120, 4096};

ImagePtr MakeChart(ImageSize size, EKxPixelFormatNamingConvention_t format)
{
    ImagePtr image(CreateIKxImageBuffer(nullptr));
    image->CreateBuffer(size.width, size.height, format, KxMemoryInitialization_Chart);
    return image;
}

/// A shown image window.
class Window
{
public:
    Window(ImageSize size, EKxPixelFormatNamingConvention_t format, double magnification)
        : m_image(MakeChart(size, format))
        , m_window(CreateIKxWnd(KxWindowType_ImageDisplay))
    {
        m_window->SetVisibleStatusBar(false);
        m_window->SetRefreshInterval(1000); // no timer in between
        if (magnification != 0)
            m_window->SetManualZoomMagnification(magnification);
        else
            m_window->SetZoomMode(KxZoomMode_FitToTheWindow);
        m_window->SetPosition(0, 0, 1282, 1000);
        m_window->Show(nullptr, KxWindowMode_Modaless);
        NewImage();
        Dialog().RefreshPreviewImage(true);
        for (int i = 0; i < 20; ++i)
            processEventGUI(false, 10);
    }

    CDisplayImagePartDlg& Dialog() const
    {
        return dynamic_cast<CDisplayImagePartDlg&>(*static_cast<QWidget*>(m_window->GetWindowHandle()));
    }
    QSize Shown() const { return Dialog().findChild<QWidget*>("m_CDisplayImageWidget")->size(); }
    void NewImage() { m_window->RegisterIKxImage(m_image->GetIKxImage()); }

private:
    CKxApiAutoInitTerm m_sdk;
    ImagePtr m_image;
    CKxAutoPtr<IKxWndReleasable, IKxImageDisplayWnd> m_window;
};

/// What the GUI thread has to do for a new image.
void ShowFrames(benchmark::State& state, Window& window)
{
    for (auto _ : state) {
        window.NewImage();
        const double start = CpuTime();
        window.Dialog().RefreshPreviewImage(true);
        state.SetIterationTime(CpuTime() - start);
    }
    processEventGUI(false, 0);
}

void ShowMono8(benchmark::State& state)
{
    Window window(k5MP, KxPixelFormat_Mono8, 0);
    ShowFrames(state, window);
}
BENCHMARK(ShowMono8)->Name("Paint/mono8")->UseManualTime();

void ShowBgr8(benchmark::State& state)
{
    Window window(k5MP, KxPixelFormat_BGR8, 0);
    ShowFrames(state, window);
}
BENCHMARK(ShowBgr8)->Name("Paint/bgr8")->UseManualTime();

/// Painting alone: what a new and larger image costs before isn't the question.
void ShowMagnified(benchmark::State& state, ImageSize size)
{
    Window window(size, KxPixelFormat_Mono8, 16);
    for (auto _ : state) {
        const double start = CpuTime();
        window.Dialog().RefreshPreviewImage(true);
        state.SetIterationTime(CpuTime() - start);
    }
}
BENCHMARK_CAPTURE(ShowMagnified, small, k1MP)->Name("Paint/magnified/1MP")->UseManualTime();
BENCHMARK_CAPTURE(ShowMagnified, large, k20MP)->Name("Paint/magnified/20MP")->UseManualTime();

/// Paints one picture into all of itself.
class BareWidget : public QWidget
{
public:
    explicit BareWidget(QImage picture)
        : m_picture(std::move(picture))
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.drawImage(rect(), m_picture);
    }

private:
    QImage m_picture;
};

/// The same size as the image window's.
QSize FittedSize() { return Window(k5MP, KxPixelFormat_Mono8, 0).Shown(); }

void PaintBare(benchmark::State& state, const QImage& picture)
{
    const QSize size = FittedSize();
    BareWidget widget(picture);
    widget.setFixedSize(size);
    widget.show();
    for (int i = 0; i < 20; ++i)
        processEventGUI(false, 10);
    for (auto _ : state) {
        const double start = CpuTime();
        widget.repaint();
        state.SetIterationTime(CpuTime() - start);
    }
}

QImage Picture(IKxImageBuffer& buffer, QImage::Format format)
{
    const IKxImage& image = *buffer.GetIKxImage();
    return QImage(static_cast<const uchar*>(image.GetImageBuffer()), static_cast<int>(image.GetImageWidth()),
                  static_cast<int>(image.GetImageHeight()), static_cast<int>(image.GetImageLinePitch()),
                  format);
}

void PaintBareMono8(benchmark::State& state)
{
    const CKxApiAutoInitTerm sdk;
    const ImagePtr image = MakeChart(k5MP, KxPixelFormat_Mono8);
    PaintBare(state, Picture(*image, QImage::Format_Grayscale8));
}
BENCHMARK(PaintBareMono8)->Name("Paint/mono8/peer")->UseManualTime();

void PaintBareBgr8(benchmark::State& state)
{
    const CKxApiAutoInitTerm sdk;
    const ImagePtr image = MakeChart(k5MP, KxPixelFormat_BGR8);
    PaintBare(state, Picture(*image, QImage::Format_RGB888).rgbSwapped());
}
BENCHMARK(PaintBareBgr8)->Name("Paint/bgr8/peer")->UseManualTime();

} // namespace

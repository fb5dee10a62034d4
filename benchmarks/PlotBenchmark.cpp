// SPDX-License-Identifier: Apache-2.0
// Plots of 800 by 400 beside a bare polyline of the same points, and lists taken over beside a copy of their
// values.

#include "Platform.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace
{

using namespace KxApi;

constexpr int kPlotWidth = 800;
constexpr int kPlotHeight = 400;
constexpr int kLeft = 84, kRight = 16, kTop = 16, kBottom = 24;

/// Histograms of scenes: hills of their own place for each item, on which the counts scatter a little.
std::vector<uint32_t> Values(size_t nItem, size_t nLength)
{
    std::vector<uint32_t> values(nLength);
    uint32_t nState = 1;
    for (size_t i = 0; i < nLength; ++i) {
        nState = nState * 1664525 + 1013904223;
        const double dPlace = static_cast<double>(i) / static_cast<double>(nLength);
        const double dHill = std::exp(-40 * std::pow(dPlace - 0.3 - 0.03 * static_cast<double>(nItem), 2));
        const double dScatter = 1 + 0.01 * static_cast<double>(nState >> 8) / (1 << 24);
        values[i] = static_cast<uint32_t>((100 + 5000 * dHill) * dScatter);
    }
    return values;
}

struct Source
{
    Source(size_t nItems, size_t nLength)
        : window((processEventGUI(false, 0), CreateIKxWnd(KxWindowType_GraphDisplay)))
        , list(CreateIKxGraphDataBufferListResizable(nullptr))
    {
        for (size_t n = 0; n < nItems; ++n) {
            const std::vector<uint32_t> values = Values(n, nLength);
            CKxGraphDataDescription description;
            description.eComponent = MakeKxPixelComponentType(KxPixelComponent_Mono, 12);
            std::memcpy(list->Append(description, nLength), values.data(), nLength * sizeof(uint32_t));
        }
        window->RegisterIKxGraphDataBufferList(list.Get());
    }

    CKxApiAutoInitTerm sdk;
    CKxAutoPtr<IKxWndReleasable, IKxGraphDisplayWnd> window;
    CKxAutoPtr<IKxGraphDataBufferListResizable> list;
};

QImage Canvas()
{
    return QImage(kLeft + kPlotWidth + kRight, kTop + kPlotHeight + kBottom, QImage::Format_RGB32);
}

void Plot(benchmark::State& state, size_t nItems, size_t nLength)
{
    const Source source(nItems, nLength);
    QImage canvas = Canvas();
    for (auto _ : state) {
        QPainter painter(&canvas);
        source.window->Draw(&painter, static_cast<uint32_t>(canvas.width()),
                            static_cast<uint32_t>(canvas.height()));
    }
    if (canvas.pixel(0, 0) != 0xFFFFFFFF)
        throw std::runtime_error("nothing was painted");
}

void Polyline(benchmark::State& state, size_t nItems, size_t nLength)
{
    const Source source(nItems, nLength);
    std::vector<QPolygonF> lines(nItems);
    for (size_t n = 0; n < nItems; ++n) {
        const std::vector<uint32_t> values = Values(n, nLength);
        for (size_t i = 0; i < nLength; ++i)
            lines[n] << QPointF(kLeft + static_cast<double>(i * kPlotWidth) / static_cast<double>(nLength),
                                kTop + kPlotHeight * (1 - std::log10(values[i] + 1.0) / std::log10(5152.0)));
    }
    QImage canvas = Canvas();
    for (auto _ : state) {
        QPainter painter(&canvas);
        painter.fillRect(canvas.rect(), Qt::white);
        painter.setPen(Qt::black);
        for (const QPolygonF& line : lines)
            painter.drawPolyline(line);
    }
}

BENCHMARK_CAPTURE(Plot, 16x4096, 16, 4096)->Name("Plot/16x4096");
BENCHMARK_CAPTURE(Polyline, 16x4096, 16, 4096)->Name("Plot/16x4096/peer");
BENCHMARK_CAPTURE(Plot, 1x65536, 1, 65536)->Name("Plot/1x65536");
BENCHMARK_CAPTURE(Polyline, 1x65536, 1, 65536)->Name("Plot/1x65536/peer");
BENCHMARK_CAPTURE(Plot, 3x256, 3, 256)->Name("Plot/3x256");
BENCHMARK_CAPTURE(Polyline, 3x256, 3, 256)->Name("Plot/3x256/peer");

constexpr size_t kCopiedItems = 4, kCopiedLength = 1 << 20;

void Register(benchmark::State& state)
{
    const Source source(kCopiedItems, kCopiedLength);
    for (auto _ : state)
        source.window->RegisterIKxGraphDataBufferList(source.list.Get());
}
BENCHMARK(Register)->Name("Plot/register");

void Copy(benchmark::State& state)
{
    const Source source(kCopiedItems, kCopiedLength);
    std::vector<std::vector<uint32_t>> targets(kCopiedItems * 2, std::vector<uint32_t>(kCopiedLength));
    size_t nTurn = 0; // as the window, never twice the same
    for (auto _ : state) {
        for (size_t n = 0; n < kCopiedItems; ++n)
            std::memcpy(targets[nTurn * kCopiedItems + n].data(),
                        source.list->GetItem(n)->GetGraphData()->GetValues(),
                        kCopiedLength * sizeof(uint32_t));
        nTurn ^= 1U;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Copy)->Name("Plot/register/peer");

} // namespace

// SPDX-License-Identifier: Apache-2.0
// The viewer at work: a camera's images recorded while they are shown.
#include "CameraRecording.h"
#include "CameraView.h"
#include "Cameras.h"
#include "Platform.h"
#include "RecordingFile.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <benchmark/benchmark.h>

#include <QEventLoop>
#include <QTimer>
#include <algorithm>

namespace
{

using namespace KxApi;
using namespace KxBench;

constexpr int kLookMs = 10;

/// Runs the event loop until something is so, or for a minute.
template <typename Condition>
bool RunUntil(const Condition& condition)
{
    QEventLoop loop;
    QTimer timer;
    bool bHolds = false;
    const Clock::time_point end = Clock::now() + std::chrono::minutes(1);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        bHolds = condition();
        if (bHolds || Clock::now() > end)
            loop.quit();
    });
    timer.start(kLookMs);
    loop.exec();
    return bHolds;
}

/// 60 images a second of the simulated camera of 5 megapixels, for 4 seconds, in the viewer's own view, whose
/// window is painted at its refresh. Time: from the first image until all are on the disk. Counters: images
/// that didn't come or weren't written, images shown a second, rate of the disk beside that of the camera.
void RecordLive(benchmark::State& state)
{
    processEventGUI(false, 0); // makes the application object
    const double diskRate = DiskRate(std::vector<uint8_t>(kBytes, 1));
    state.counters["disk"] = diskRate / (static_cast<double>(kBytes) * kRate);
    const KxApps::Cameras cameras;
    RunReport report;
    for (auto _ : state) { // NOLINT(clang-analyzer-deadcode.DeadStores): the library counts by it
        const File file;
        CameraView view(report, nullptr);
        view.resize(1200, 900);
        view.show();
        view.Open(cameras.Find("KX-U5M_1001"), {"AcquisitionFrameRate=60"});
        CameraSession& session = *view.Session();
        session.Start(kKxEndless); // the scene is made with the first image
        if (!RunUntil([&] { return session.GetStatistics().nDelivered > 0 && report.PaintRate() > 0; }))
            return state.SkipWithError("no image was shown");
        session.Stop();

        KxApps::RecordingOptions options;
        options.output.name = file.Path();
        options.maxImages = kImages;
        CameraRecording& recording = CameraRecording::Of(view);
        recording.Start(std::move(options));
        session.Start(kImages);
        double shown = 0;
        RunUntil([&] {
            shown = std::max(shown, view.Marks().ShownRate());
            return !recording.IsBusy() || !session.IsAcquiring();
        });
        recording.Stop();
        RunUntil([&] { return !recording.IsBusy(); });
        const KxApps::RecordingStatus status = recording.GetRecorder()->Status();
        state.SetIterationTime(status.seconds);
        state.counters["lost"] = static_cast<double>(kImages) - static_cast<double>(status.written);
        state.counters["shown"] = shown;
    }
}
BENCHMARK(RecordLive)
    ->Name("Recording/live60")
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

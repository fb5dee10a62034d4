// SPDX-License-Identifier: Apache-2.0
// Images on their way from the acquisition's thread to the disk, and into the ring.
#include "FakeStreamImage.h"
#include "ImageRing.h"
#include "Recorder.h"
#include "RecordingFile.h"

#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace
{

using namespace KxApi;
using namespace KxApps;
using namespace KxBench;
using KxTest::FakeStreamImage;

/// 60 images of 5 megapixels a second for 4 seconds. Time: from the first image until all are on the disk;
/// counters: images lost, longest call of Add, rate of the disk beside that of the camera.
void Record(benchmark::State& state)
{
    const CKxApiAutoInitTerm sdk;
    FakeStreamImage image(kWidth, kHeight, KxPixelFormat_Mono8, 1);
    const double diskRate = DiskRate(std::vector<uint8_t>(kBytes, 1));
    for (auto _ : state) {
        const File file;
        RecordingOptions options;
        options.output.name = file.Path();
        options.memory = 512 * kMegabyte;
        options.expectedBytes = kBytes;
        Recorder recorder(std::move(options));
        Clock::duration longest{};
        const Clock::time_point begin = Clock::now();
        for (int i = 0; i < kImages; ++i) {
            std::this_thread::sleep_until(begin + std::chrono::microseconds(1000000LL * i / kRate));
            const Clock::time_point before = Clock::now();
            recorder.Add(image);
            longest = std::max(longest, Clock::now() - before);
        }
        recorder.Stop();
        while (!recorder.WaitFor(std::chrono::seconds(10))) {
        }
        const RecordingStatus status = recorder.Status();
        state.SetIterationTime(status.seconds);
        state.counters["lost"] = static_cast<double>(status.lost);
        state.counters["longestAdd"] = Seconds(longest);
    }
    state.counters["disk"] = diskRate / (static_cast<double>(kBytes) * kRate);
}
BENCHMARK(Record)->Name("Recording/raw60")->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The ring once round is its usual state: its memory has been had before.
constexpr uint64_t kRingBytes = 40 * kBytes;

void Ring(benchmark::State& state)
{
    const CKxApiAutoInitTerm sdk;
    FakeStreamImage image(kWidth, kHeight, KxPixelFormat_Mono8, 1);
    ImageRing ring(3600, kRingBytes, kBytes);
    for (uint64_t i = 0; i < 2 * kRingBytes / kBytes; ++i)
        ring.Add(image);
    for (auto _ : state)
        ring.Add(image);
}
BENCHMARK(Ring)->Name("Recording/ring")->Unit(benchmark::kMillisecond);

/// The same bytes through the same memory.
void RingPeer(benchmark::State& state)
{
    const std::vector<uint8_t> source(kBytes, 1);
    std::vector<uint8_t> ring(kRingBytes, 0);
    size_t place = 0;
    for (auto _ : state) {
        std::memcpy(ring.data() + place, source.data(), kBytes);
        benchmark::ClobberMemory();
        place = (place + kBytes) % kRingBytes;
    }
}
BENCHMARK(RingPeer)->Name("Recording/ring/peer")->Unit(benchmark::kMillisecond);

} // namespace

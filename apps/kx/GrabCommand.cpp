// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Counted.h"
#include "FeatureSetting.h"
#include "GrabProgress.h"
#include "HistogramWriter.h"
#include "OpenCamera.h"
#include "Output.h"
#include "Recorder.h"

#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace KxApi;

namespace Kx
{

namespace
{

using Stream = CKxAutoPtr<IKxStreamReleasable, IKxStream>;
using Image = CKxAutoPtr<IKxStreamImageReleasable, IKxStreamImage>;

constexpr uint32_t kSliceMs = 100; // an interrupt is heeded this soon
constexpr uint64_t kMegabyte = 1000000;
constexpr unsigned kMostWriters = 8;

struct Options
{
    CameraOptions camera;
    uint64_t images = kKxEndless;
    uint32_t buffers = kKxDefaultBufferCount;
    uint32_t timeoutMs = 5000;
    uint32_t part = 0;
    std::string mode;
    std::vector<std::string> settings;
    KxApps::ImageOutput output;
    uint64_t queueMegabytes = KxApps::QueueMemory() / kMegabyte;
    std::string histogram;
    bool json = false;
};

volatile std::sig_atomic_t interrupted = 0;

// Ctrl-C ends the acquisition and is answered with what came until then; a second one ends the program.
class InterruptWatch
{
public:
    InterruptWatch() { std::signal(SIGINT, Note); }
    ~InterruptWatch() { std::signal(SIGINT, SIG_DFL); }
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

private:
    static void Note(int signal)
    {
        interrupted = 1;
        std::signal(signal, SIG_DFL);
    }
};

// The next image; null when the acquisition was interrupted. Buffers that hold nothing usable are passed
// over, as the acquisition does; when nothing else comes, the last one's fault is told.
Image Next(IKxStream& stream, uint32_t timeoutMs)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    std::string refusal;
    while (!interrupted) {
        if (Clock::now() >= end)
            throw TIMEOUT_EXCEPTION("no image came within %u ms%s", timeoutMs, refusal.c_str());
        try {
            if (Image image{stream.FetchImage(kSliceMs)})
                return image;
        } catch (const GenICam::GenericException& e) {
            if (!stream.IsAcquiring())
                throw;
            refusal = std::string(", but buffers that were refused: ") + e.GetDescription();
        }
    }
    return Image();
}

IKxStreamImage& PartOf(IKxStreamImage& image, uint32_t part)
{
    if (part >= image.GetPartCount())
        throw RUNTIME_EXCEPTION("image %llu has no part %u, its last one is %u",
                                static_cast<unsigned long long>(image.GetFrameID()), part,
                                image.GetPartCount() - 1);
    return *image.GetIKxPart(part);
}

void Receive(IKxStream& stream, const Options& options, KxApps::Recorder* pRecorder,
             HistogramWriter* pHistogram, GrabProgress& progress)
{
    const size_t payload = stream.GetPayloadSize();
    for (uint64_t n = 0; n < options.images; ++n) {
        const Image image = Next(stream, options.timeoutMs);
        if (!image)
            break;
        if (pRecorder)
            pRecorder->Add(PartOf(*image, options.part));
        if (pHistogram && (options.images == kKxEndless || n + 1 == options.images))
            pHistogram->Note(PartOf(*image, options.part));
        progress.Count(image->GetEncodedSize() > 0 ? image->GetEncodedSize() : payload,
                       image->GetTimestampNs(), stream.GetStatistics());
        if (pRecorder && pRecorder->Status().state == KxApps::RecordingState::Failed)
            break; // there is nothing to acquire for
    }
}

std::unique_ptr<KxApps::Recorder> MakeRecorder(const Options& options, const IKxStream& stream)
{
    if (options.output.name.empty())
        return nullptr;
    KxApps::RecordingOptions recording;
    recording.output = options.output;
    recording.output.writerCount = std::clamp(std::thread::hardware_concurrency(), 1U, kMostWriters);
    recording.memory = options.queueMegabytes * kMegabyte;
    recording.expectedBytes = stream.GetPayloadSize();
    if (options.images != kKxEndless)
        recording.maxImages = options.images;
    return std::make_unique<KxApps::Recorder>(std::move(recording));
}

// Waits for what is still to be written. An interrupt that comes only now gives that up; after one that ended
// the acquisition the next ends the program.
KxApps::RecordingStatus Finished(KxApps::Recorder& recorder, GrabProgress& progress)
{
    recorder.Stop();
    const bool wasInterrupted = interrupted;
    while (!recorder.WaitFor(std::chrono::milliseconds(kSliceMs))) {
        if (interrupted && !wasInterrupted)
            recorder.Cancel();
        progress.ShowQueue(recorder.Status());
    }
    return recorder.Status();
}

// An incomplete result is a failure, whoever is to blame.
void CheckResult(const Options& options, uint64_t images, const KxApps::RecordingStatus& recording)
{
    if (recording.state == KxApps::RecordingState::Failed || recording.lost > 0)
        throw RUNTIME_EXCEPTION("%s not saved; %s", KxApps::Counted(recording.lost, "image").c_str(),
                                recording.Cause().c_str());
    if (options.images != kKxEndless && images < options.images)
        throw RUNTIME_EXCEPTION("interrupted after %llu of %s", static_cast<unsigned long long>(images),
                                KxApps::Counted(options.images, "image").c_str());
}

void RunGrab(Options options)
{
    options.output.isOneImage = options.images == 1;
    if (!options.output.name.empty())
        options.output.Check(); // a wrong name is told before the camera is touched
    std::optional<HistogramWriter> histogram;
    if (!options.histogram.empty())
        histogram.emplace(options.histogram);
    OpenCamera camera(options.camera, KxDeviceAccess_Control);
    KxApps::Apply(KxApps::ParseSettings(camera.Map(), options.settings));
    if (camera.Device().GetStreamCount() == 0)
        throw RUNTIME_EXCEPTION("%s has no stream, and so no images", options.camera.camera.c_str());
    const Stream stream(camera.Device().OpenIKxStream(0));
    stream->SetBufferCount(options.buffers);
    if (!options.mode.empty())
        KxApps::FindFeature(*stream->GetIKxPort()->GetINodeMap(), "StreamBufferHandlingMode")
            .FromString(options.mode.c_str());
    const auto recorder = MakeRecorder(options, *stream);
    const InterruptWatch watch;
    stream->StartAcquisition(nullptr, options.images);

    GrabProgress progress(options.images);
    KxApps::RecordingStatus recording;
    try {
        Receive(*stream, options, recorder.get(), histogram ? &*histogram : nullptr, progress);
        stream->StopAcquisition();
        if (recorder)
            recording = Finished(*recorder, progress);
    } catch (const GenICam::GenericException&) {
        progress.End();
        std::cerr << progress.Summary() << "\n"; // what came before the fault isn't kept back
        throw;
    }
    progress.End();
    if (histogram)
        histogram->Save();
    std::cout << (options.json ? progress.Json(recorder ? &recording : nullptr) : progress.Summary()) << "\n";
    if (recorder && !options.json)
        std::cout << recording.Report() << "\n";
    Finish(std::cout);
    CheckResult(options, progress.Images(), recording);
}

} // namespace

void AddGrabCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        program.add_subcommand("grab", "Acquires images and tells rate, bandwidth and losses while it runs");
    options->camera.AddTo(*command);
    command->add_option("-n,--images", options->images, "Number of images; until Ctrl-C if not given")
        ->check(CLI::PositiveNumber);
    command
        ->add_option("--set", options->settings,
                     "NAME=VALUE set before the start; may be given several times")
        ->take_all();
    command->add_option("--buffers", options->buffers, "Buffers that wait for images")
        ->check(CLI::Range(1u, kKxMaxBufferCount))
        ->capture_default_str();
    command->add_option("-o,--output", options->output.name,
                        std::string("Saves each image: ") + KxApps::ImageOutput::kHelp);
    command
        ->add_option("--queue", options->queueMegabytes,
                     "Memory in MB for images that wait to be saved; more of them are lost, and told")
        ->check(CLI::Range(uint64_t{1}, uint64_t{1} << 20))
        ->needs("--output");
    command->add_option("--mode", options->mode,
                        "What becomes of images that come faster than they are taken: "
                        "OldestFirst, OldestFirstOverwrite, NewestOnly");
    command
        ->add_option("--part", options->part,
                     "Which image is saved of cameras that send several at once, from 0")
        ->capture_default_str()
        ->needs("--output");
    command->add_option("--timeout", options->timeoutMs, "Milliseconds to wait for an image")
        ->capture_default_str();
    command
        ->add_option(
            "--format", options->output.format,
            "Converts saved images to this pixel format, such as RGB8; without it mosaics stay mosaics, and "
            "no bits are dropped")
        ->needs("--output");
    command->add_option("--histogram", options->histogram, HistogramWriter::kHelp);
    command->add_flag("--json", options->json, "The result as a JSON object");
    command->callback([options] { RunGrab(*options); });
}

} // namespace Kx

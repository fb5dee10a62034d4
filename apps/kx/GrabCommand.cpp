// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureSetting.h"
#include "FrameWriter.h"
#include "GrabProgress.h"
#include "HistogramWriter.h"
#include "OpenCamera.h"
#include "Output.h"

#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>

#include <CLI/CLI.hpp>

#include <csignal>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace KxApi;

namespace Kx
{

namespace
{

using Stream = CKxAutoPtr<IKxStreamReleasable, IKxStream>;
using Image = CKxAutoPtr<IKxStreamImageReleasable, IKxStreamImage>;

constexpr uint32_t kSliceMs = 100; // an interrupt is heeded this soon

struct Options
{
    CameraOptions camera;
    uint64_t images = kKxEndless;
    uint32_t buffers = kKxDefaultBufferCount;
    uint32_t timeoutMs = 5000;
    uint32_t part = 0;
    std::string mode;
    std::vector<std::string> settings;
    std::string output;
    std::string format;
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

// The next image; null when the acquisition was interrupted.
Image Next(IKxStream& stream, uint32_t timeoutMs)
{
    for (uint32_t waited = 0; !interrupted; waited += kSliceMs) {
        if (waited >= timeoutMs)
            throw TIMEOUT_EXCEPTION("no image came within %u ms", timeoutMs);
        if (Image image{stream.FetchImage(kSliceMs)})
            return image;
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

void Receive(IKxStream& stream, const Options& options, FrameWriter* pWriter, HistogramWriter* pHistogram,
             GrabProgress& progress)
{
    const InterruptWatch watch;
    const size_t payload = stream.GetPayloadSize();
    for (uint64_t n = 0; n < options.images; ++n) {
        const Image image = Next(stream, options.timeoutMs);
        if (!image)
            break;
        if (pWriter)
            pWriter->Write(PartOf(*image, options.part), n);
        if (pHistogram && (options.images == kKxEndless || n + 1 == options.images))
            pHistogram->Note(PartOf(*image, options.part));
        progress.Count(payload, image->GetTimestampNs(), stream.GetStatistics());
    }
}

void RunGrab(const Options& options)
{
    std::optional<FrameWriter> writer; // a wrong name is told before the camera is touched
    if (!options.output.empty())
        writer.emplace(options.output, options.format);
    std::optional<HistogramWriter> histogram;
    if (!options.histogram.empty())
        histogram.emplace(options.histogram);
    OpenCamera camera(options.camera, KxDeviceAccess_Control);
    KxApps::Apply(KxApps::ParseSettings(camera.Map(), options.settings));
    const Stream stream(camera.Device().OpenIKxStream(0));
    stream->SetBufferCount(options.buffers);
    if (!options.mode.empty())
        KxApps::FindFeature(*stream->GetIKxPort()->GetINodeMap(), "StreamBufferHandlingMode")
            .FromString(options.mode.c_str());
    stream->StartAcquisition(nullptr, options.images);

    GrabProgress progress(options.images);
    try {
        Receive(*stream, options, writer ? &*writer : nullptr, histogram ? &*histogram : nullptr, progress);
    } catch (const GenICam::GenericException&) {
        progress.End();
        std::cerr << progress.Summary() << "\n"; // what came before the fault isn't kept back
        throw;
    }
    progress.End();
    stream->StopAcquisition();
    if (histogram)
        histogram->Save();
    std::cout << (options.json ? progress.Json() : progress.Summary()) << "\n";
    Finish(std::cout);
    if (options.images != kKxEndless && progress.Images() < options.images)
        throw RUNTIME_EXCEPTION("interrupted after %llu of %llu images",
                                static_cast<unsigned long long>(progress.Images()),
                                static_cast<unsigned long long>(options.images));
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
    command->add_option("-o,--output", options->output, FrameWriter::kHelp);
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
            "--format", options->format,
            "Converts saved images to this pixel format, such as RGB8; mosaics stay mosaics without it")
        ->needs("--output");
    command->add_option("--histogram", options->histogram, HistogramWriter::kHelp);
    command->add_flag("--json", options->json, "The result as a JSON object");
    command->callback([options] { RunGrab(*options); });
}

} // namespace Kx

// SPDX-License-Identifier: Apache-2.0
// Histograms and line profiles of 5 megapixels beside a copy of the same bytes, and raw files beside bare
// calls of the system.

#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_IP/KxImageGraph.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <png.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace KxApi;

using Buffer = CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer>;
using List = CKxAutoPtr<IKxGraphDataBufferListResizable>;

// 5 megapixels
constexpr size_t kWidth = 2448;
constexpr size_t kHeight = 2048;

/// A scene as cameras see it: slopes with noise on them, so that neighbours are alike but seldom equal.
Buffer MakeScene(EKxPixelFormatNamingConvention_t format)
{
    const auto& info = dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(format));
    Buffer buffer(CreateIKxImageBuffer(nullptr));
    buffer->SetSize(kWidth, kHeight, format, 0);
    const IKxImage& image = *buffer->GetIKxImage();
    const double full = std::pow(2.0, static_cast<double>(info.GetEffectiveBits())) - 1;
    uint32_t state = 1;
    for (size_t y = 0; y < kHeight; ++y) {
        auto* const line = static_cast<uint8_t*>(image.GetImageBuffer()) + y * image.GetImageLinePitch();
        const size_t samples = image.GetImageLinePitch() / (info.GetStorageBits() / 8);
        for (size_t i = 0; i < samples; ++i) {
            state = state * 1664525 + 1013904223;
            const double noise = static_cast<double>(state >> 8) / (1 << 24) * 0.02;
            const double slope = static_cast<double>(i) / static_cast<double>(samples) * 0.9;
            const auto value = static_cast<uint16_t>((slope + noise) * full);
            std::memcpy(line + i * (info.GetStorageBits() / 8), &value, info.GetStorageBits() / 8);
        }
    }
    return buffer;
}

struct Source
{
    explicit Source(EKxPixelFormatNamingConvention_t format)
        : scene(MakeScene(format))
        , list(CreateIKxGraphDataBufferListResizable(nullptr))
    {}
    IKxImage& Image() const { return *scene->GetIKxImage(); }
    size_t Bytes() const { return Image().GetImageLinePitch() * kHeight; }

    CKxApiAutoInitTerm sdk;
    Buffer scene;
    List list;
};

void Histogram(benchmark::State& state, EKxPixelFormatNamingConvention_t format)
{
    const Source source(format);
    for (auto _ : state) {
        source.list->Clear();
        AppendHistogram(&source.Image(), nullptr, source.list.Get());
    }
    if (source.list->GetItem(0)->GetGraphData()->GetProperty(KxGraphDataProperty_Max) == 0)
        throw std::runtime_error("nothing was counted");
}

void CopyBytes(benchmark::State& state, EKxPixelFormatNamingConvention_t format)
{
    const Source source(format);
    std::vector<uint8_t> target(source.Bytes());
    for (auto _ : state) {
        std::memcpy(target.data(), source.Image().GetImageBuffer(), target.size());
        benchmark::ClobberMemory();
    }
}

BENCHMARK_CAPTURE(Histogram, Mono8, KxPixelFormat_Mono8)->Name("Graph/histogram/Mono8");
BENCHMARK_CAPTURE(CopyBytes, Mono8, KxPixelFormat_Mono8)->Name("Graph/histogram/Mono8/peer");
BENCHMARK_CAPTURE(Histogram, BayerRG12, KxPixelFormat_BayerRG12)->Name("Graph/histogram/BayerRG12");
BENCHMARK_CAPTURE(CopyBytes, BayerRG12, KxPixelFormat_BayerRG12)->Name("Graph/histogram/BayerRG12/peer");
BENCHMARK_CAPTURE(Histogram, BGR8, KxPixelFormat_BGR8)->Name("Graph/histogram/BGR8");
BENCHMARK_CAPTURE(CopyBytes, BGR8, KxPixelFormat_BGR8)->Name("Graph/histogram/BGR8/peer");

/// A diagonal of a Bayer image, ten pixels wide: some 3,200 samples of each phase.
void Profile(benchmark::State& state)
{
    const Source source(KxPixelFormat_BayerRG12);
    const CKxProfileLine line{0, 0, kWidth - 1, kHeight - 1, 10, KxProfileInterpolation_Bilinear};
    for (auto _ : state) {
        source.list->Clear();
        AppendLineProfile(&source.Image(), line, source.list.Get());
    }
}
BENCHMARK(Profile)->Name("Graph/profile");

/// A place in memory, since the disk is not what is measured.
std::string FilePath()
{
    const std::string folder = std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
    return folder + "/kx-benchmark-" + std::to_string(getpid());
}

void SaveRaw(benchmark::State& state)
{
    const Source source(KxPixelFormat_Mono8);
    const CKxAutoPtr<IKxFilerReleasable> filer(CreateIKxFiler(KxFilerType_StillImage));
    for (auto _ : state)
        filer->Save(&source.Image(), KxStillImageFileType_Raw, FilePath().c_str());
    unlink(FilePath().c_str());
}
BENCHMARK(SaveRaw)->Name("File/saveRaw");

void WriteBytes(benchmark::State& state)
{
    const Source source(KxPixelFormat_Mono8);
    for (auto _ : state) {
        unlink(FilePath().c_str());
        const int descriptor = open(FilePath().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        if (write(descriptor, source.Image().GetImageBuffer(), source.Bytes()) !=
            static_cast<ssize_t>(source.Bytes()))
            throw std::runtime_error("the file can't be written");
        close(descriptor);
    }
    unlink(FilePath().c_str());
}
BENCHMARK(WriteBytes)->Name("File/saveRaw/peer");

void LoadRaw(benchmark::State& state)
{
    const Source source(KxPixelFormat_Mono8);
    const CKxAutoPtr<IKxFilerReleasable> filer(CreateIKxFiler(KxFilerType_StillImage));
    filer->Save(&source.Image(), KxStillImageFileType_Raw, FilePath().c_str());
    for (auto _ : state)
        filer->Load(source.scene.Get(), FilePath().c_str());
    unlink(FilePath().c_str());
}
BENCHMARK(LoadRaw)->Name("File/loadRaw");

void SavePng(benchmark::State& state)
{
    const Source source(KxPixelFormat_Mono8);
    const CKxAutoPtr<IKxFilerReleasable> filer(CreateIKxFiler(KxFilerType_StillImage));
    for (auto _ : state)
        filer->Save(&source.Image(), KxStillImageFileType_Png, FilePath().c_str());
    unlink(FilePath().c_str());
}
BENCHMARK(SavePng)->Name("File/savePng");

/// The library by itself, at the same level and with the same filter.
void SaveByLibpng(benchmark::State& state)
{
    const Source source(KxPixelFormat_Mono8);
    const IKxImage& image = source.Image();
    for (auto _ : state) {
        std::FILE* const file = std::fopen(FilePath().c_str(), "wbe");
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, file);
        png_set_compression_level(png, 1);
        png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
        png_set_IHDR(png, info, kWidth, kHeight, 8, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png, info);
        auto* const bytes = static_cast<png_bytep>(image.GetImageBuffer());
        for (size_t y = 0; y < kHeight; ++y)
            png_write_row(png, bytes + y * image.GetImageLinePitch());
        png_write_end(png, info);
        png_destroy_write_struct(&png, &info);
        std::fclose(file);
    }
    unlink(FilePath().c_str());
}
BENCHMARK(SaveByLibpng)->Name("File/savePng/peer");

} // namespace

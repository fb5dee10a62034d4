// SPDX-License-Identifier: Apache-2.0
// Conversions of 5-megapixel images, beside OpenCV's or a copy of the same bytes; what a second thread gains,
// beside what it gains for a bare loop.

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <benchmark/benchmark.h>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <thread>

namespace
{

using namespace KxApi;

constexpr size_t kWidth = 2464;
constexpr size_t kHeight = 2056;

/// A photograph's smoothness, with noise in the low bits.
void Fill(CKxImageBuffer& image, EKxPixelFormatNamingConvention_t format)
{
    image.CreateBuffer(kWidth, kHeight, format, KxMemoryInitialization_None);
    auto* const bytes = static_cast<uint8_t*>(image.GetImageBuffer());
    uint32_t random = 1;
    for (size_t y = 0; y < kHeight; ++y) {
        for (size_t i = 0; i < image.GetImageLinePitch(); ++i) {
            random = random * 1664525 + 1013904223;
            bytes[y * image.GetImageLinePitch() + i] = static_cast<uint8_t>((i + y) / 16 + (random >> 28));
        }
    }
}

struct Task
{
    EKxPixelFormatNamingConvention_t source;
    EKxPixelFormatNamingConvention_t destination;
    int threads = 1;
    double gamma = 1;
    int bayer = KxBayerInterpolationMethod_Bilinear;
    int polarization = KxPolarizationImageTransformationMethod_Off;
};

using Converter = CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverterInside>;

void SetUp(IKxPixelFormatConverterInside& converter, const Task& task)
{
    converter.SetDestinationPixelFormat(task.destination);
    converter.SetConversionOption(task.threads);
    converter.SetGamma(task.gamma);
    converter.SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(task.bayer));
    converter.SetPolarizationImageTransformationMethod(
        static_cast<EKxPolarizationImageTransformationMethod_t>(task.polarization));
}

void Convert(benchmark::State& state, const Task& task)
{
    const CKxApiAutoInitTerm sdk;
    const Converter converter(CreateIKxConverter(0));
    SetUp(*converter, task);
    CKxImageBuffer source(nullptr), target(nullptr);
    Fill(source, task.source);
    for (auto _ : state)
        converter->Convert(&source, &target);
    state.SetItemsProcessed(state.iterations() * int64_t{kWidth * kHeight});
}

template <class Function>
void KeepLeast(double& seconds, Function function)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    function();
    seconds = std::min(seconds, std::chrono::duration<double>(Clock::now() - start).count());
}

/// The least that code can do which reads the bytes of a source of one byte a pixel and writes those of a
/// target of three.
void LoopOverHalf(const CKxImageBuffer& source, const CKxImageBuffer& target, size_t half)
{
    const auto* const from = static_cast<const uint8_t*>(source.GetImageBuffer());
    auto* const to = static_cast<uint8_t*>(target.GetImageBuffer());
    for (size_t y = half * (kHeight / 2); y < (half + 1) * (kHeight / 2); ++y) {
        const uint8_t* const line = from + y * source.GetImageLinePitch();
        uint8_t* const pixels = to + y * target.GetImageLinePitch();
        for (size_t x = 0; x < kWidth; ++x)
            pixels[3 * x] = pixels[3 * x + 1] = pixels[3 * x + 2] = line[x];
    }
    benchmark::ClobberMemory();
}

/// The part of the time that is left with a second thread, for a conversion and for a bare loop over the same
/// bytes: what the machine's second processor and its memory allow. By turns, so that both meet the same
/// load.
void SecondThread(benchmark::State& state, Task task)
{
    constexpr int kPasses = 8; // to a start of threads, which is no limit of the machine's
    const CKxApiAutoInitTerm sdk;
    const Converter one(CreateIKxConverter(0)), two(CreateIKxConverter(0));
    SetUp(*one, task);
    task.threads = 2;
    SetUp(*two, task);
    CKxImageBuffer source(nullptr), target(nullptr);
    Fill(source, task.source);
    const auto loop = [&](size_t half) {
        for (int i = 0; i < kPasses; ++i)
            LoopOverHalf(source, target, half);
    };
    double conversions[2] = {1e9, 1e9}, loops[2] = {1e9, 1e9};
    for (auto _ : state) {
        for (int i = 0; i < kPasses; ++i) {
            KeepLeast(conversions[0], [&] { one->Convert(&source, &target); });
            KeepLeast(conversions[1], [&] { two->Convert(&source, &target); });
        }
        KeepLeast(loops[0], [&] {
            loop(0);
            loop(1);
        });
        KeepLeast(loops[1], [&] {
            std::thread second(loop, 1);
            loop(0);
            second.join();
        });
    }
    state.counters["conversion"] = conversions[1] / conversions[0];
    state.counters["loop"] = loops[1] / loops[0];
}

/// A copy of the bytes that a conversion to that format writes.
void CopyBytes(benchmark::State& state, EKxPixelFormatNamingConvention_t format)
{
    CKxImageBuffer source(nullptr), target(nullptr);
    Fill(source, format);
    Fill(target, format);
    for (auto _ : state) {
        std::memcpy(target.GetImageBuffer(), source.GetImageBuffer(), kHeight * source.GetImageLinePitch());
        benchmark::ClobberMemory();
    }
}

/// OpenCV in one thread.
void ByOpenCV(benchmark::State& state, EKxPixelFormatNamingConvention_t format, int code)
{
    CKxImageBuffer source(nullptr);
    Fill(source, format);
    const bool is16 = format == KxPixelFormat_BayerRG12;
    const int type = format == KxPixelFormat_YUV422_8 ? CV_8UC2
                     : format == KxPixelFormat_BGR8   ? CV_8UC3
                     : is16                           ? CV_16UC1
                                                      : CV_8UC1;
    const cv::Mat image(static_cast<int>(kHeight), static_cast<int>(kWidth), type, source.GetImageBuffer(),
                        source.GetImageLinePitch());
    cv::Mat result;
    const int threads = cv::getNumThreads();
    cv::setNumThreads(1);
    for (auto _ : state)
        cv::cvtColor(image, result, code);
    cv::setNumThreads(threads);
}

/// The same for chroma of half the lines behind the luma.
void SemiPlanarByOpenCV(benchmark::State& state)
{
    CKxImageBuffer source(nullptr);
    Fill(source, KxPixelFormat_YCbCr420_8_YY_CbCr_Semiplanar);
    const cv::Mat image(static_cast<int>(kHeight * 3 / 2), static_cast<int>(kWidth), CV_8UC1,
                        source.GetImageBuffer(), source.GetImageLinePitch());
    cv::Mat result;
    const int threads = cv::getNumThreads();
    cv::setNumThreads(1);
    for (auto _ : state)
        cv::cvtColor(image, result, cv::COLOR_YUV2RGB_NV12);
    cv::setNumThreads(threads);
}

#define KX_CONVERSION(Figure, ...)                                                                           \
    BENCHMARK_CAPTURE(Convert, Figure, Task{__VA_ARGS__})->Name("Convert/" #Figure)

// Peers stand beside what they are compared with, since where memory lies decides how fast it is.
BENCHMARK_CAPTURE(CopyBytes, Mono8, KxPixelFormat_Mono8)->Name("Convert/copy");
KX_CONVERSION(same, KxPixelFormat_Mono8, KxPixelFormat_Mono8);
KX_CONVERSION(gamma, KxPixelFormat_Mono8, KxPixelFormat_Mono8, 1, 0.45);
KX_CONVERSION(Mono12p, KxPixelFormat_Mono12p, KxPixelFormat_Mono8);
KX_CONVERSION(Mono12Packed, KxPixelFormat_Mono12Packed, KxPixelFormat_Mono8);
KX_CONVERSION(Mono10p, KxPixelFormat_Mono10p, KxPixelFormat_Mono8);
BENCHMARK_CAPTURE(ByOpenCV, bayer, KxPixelFormat_BayerRG8, cv::COLOR_BayerBG2BGR)->Name("Convert/bayer/peer");
KX_CONVERSION(bayer, KxPixelFormat_BayerRG8, KxPixelFormat_BGR8);
KX_CONVERSION(bayer12p, KxPixelFormat_BayerRG12p, KxPixelFormat_BGR8);
BENCHMARK_CAPTURE(ByOpenCV, edgeAware, KxPixelFormat_BayerRG8, cv::COLOR_BayerBG2BGR_EA)
    ->Name("Convert/edgeAware/peer");
KX_CONVERSION(edgeAware, KxPixelFormat_BayerRG8, KxPixelFormat_BGR8, 1, 1.0,
              KxBayerInterpolationMethod_Bilinear3);
KX_CONVERSION(bicubic, KxPixelFormat_BayerRG8, KxPixelFormat_BGR8, 1, 1.0,
              KxBayerInterpolationMethod_Bicubic);
KX_CONVERSION(difference, KxPixelFormat_BayerRG8, KxPixelFormat_BGR8, 1, 1.0,
              KxBayerInterpolationMethod_Bilinear2);
BENCHMARK_CAPTURE(ByOpenCV, yuv422, KxPixelFormat_YUV422_8, cv::COLOR_YUV2BGR_YUY2)
    ->Name("Convert/yuv422/peer");
KX_CONVERSION(yuv422, KxPixelFormat_YUV422_8, KxPixelFormat_BGR8);
KX_CONVERSION(yuv422limited, KxPixelFormat_YCbCr601_422_8, KxPixelFormat_BGR8);
KX_CONVERSION(rgb12p, KxPixelFormat_RGB12p, KxPixelFormat_BGR8);
KX_CONVERSION(rgb12pToRgb, KxPixelFormat_RGB12p, KxPixelFormat_RGB8);
KX_CONVERSION(rgb10p32, KxPixelFormat_RGB10p32, KxPixelFormat_RGB8);
KX_CONVERSION(rgbPlanar, KxPixelFormat_RGB8_Planar, KxPixelFormat_RGB8);
BENCHMARK(SemiPlanarByOpenCV)->Name("Convert/semiPlanar/peer");
KX_CONVERSION(semiPlanar, KxPixelFormat_YCbCr420_8_YY_CbCr_Semiplanar, KxPixelFormat_RGB8);
KX_CONVERSION(ycc411, KxPixelFormat_YUV411_8_UYYVYY, KxPixelFormat_RGB8);
KX_CONVERSION(Mono14p, KxPixelFormat_Mono14p, KxPixelFormat_Mono8);
KX_CONVERSION(Mono1p, KxPixelFormat_Mono1p, KxPixelFormat_Mono8);
BENCHMARK_CAPTURE(ByOpenCV, bayer16, KxPixelFormat_BayerRG12, cv::COLOR_BayerBG2RGB)
    ->Name("Convert/bayer16/peer");
KX_CONVERSION(bayer16, KxPixelFormat_BayerRG12, KxPixelFormat_RGB16);
BENCHMARK_CAPTURE(ByOpenCV, grey, KxPixelFormat_BGR8, cv::COLOR_BGR2GRAY)->Name("Convert/grey/peer");
KX_CONVERSION(grey, KxPixelFormat_BGR8, KxPixelFormat_Mono8);
KX_CONVERSION(adolp, KxPixelFormat_PolarizedMono8, KxPixelFormat_BGR8, 1, 1.0, 3,
              KxPolarizationImageTransformationMethod_ADOLP);
BENCHMARK_CAPTURE(SecondThread, bayer, Task{KxPixelFormat_BayerRG8, KxPixelFormat_BGR8})
    ->Name("Convert/secondThread/bayer")
    ->Iterations(10);
BENCHMARK_CAPTURE(SecondThread, adolp,
                  Task{KxPixelFormat_PolarizedMono8, KxPixelFormat_BGR8, 1, 1.0, 3,
                       KxPolarizationImageTransformationMethod_ADOLP})
    ->Name("Convert/secondThread/adolp")
    ->Iterations(10);

} // namespace

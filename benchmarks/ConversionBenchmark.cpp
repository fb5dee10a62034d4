// SPDX-License-Identifier: Apache-2.0
// Conversions of 5-megapixel images in one thread, beside OpenCV's or a copy of the same bytes.

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <benchmark/benchmark.h>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

#include <chrono>
#include <cstdint>
#include <cstring>

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

void Convert(benchmark::State& state, const Task& task)
{
    using Clock = std::chrono::steady_clock;
    const CKxApiAutoInitTerm sdk;
    const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverterInside> converter(CreateIKxConverter(0));
    converter->SetDestinationPixelFormat(task.destination);
    converter->SetConversionOption(task.threads);
    converter->SetGamma(task.gamma);
    converter->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(task.bayer));
    converter->SetPolarizationImageTransformationMethod(
        static_cast<EKxPolarizationImageTransformationMethod_t>(task.polarization));
    CKxImageBuffer source(nullptr), target(nullptr);
    Fill(source, task.source);
    for (auto _ : state) {
        // Taken only where the benchmark asks for it: the processor's time doesn't show what threads gain.
        const Clock::time_point start = Clock::now();
        converter->Convert(&source, &target);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
    state.SetItemsProcessed(state.iterations() * int64_t{kWidth * kHeight});
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
KX_CONVERSION(bayerOneThread, KxPixelFormat_BayerRG8, KxPixelFormat_BGR8)->UseManualTime();
KX_CONVERSION(bayerTwoThreads, KxPixelFormat_BayerRG8, KxPixelFormat_BGR8, 2)->UseManualTime();
KX_CONVERSION(adolpOneThread, KxPixelFormat_PolarizedMono8, KxPixelFormat_BGR8, 1, 1.0, 3,
              KxPolarizationImageTransformationMethod_ADOLP)
    ->UseManualTime();
KX_CONVERSION(adolpTwoThreads, KxPixelFormat_PolarizedMono8, KxPixelFormat_BGR8, 2, 1.0, 3,
              KxPolarizationImageTransformationMethod_ADOLP)
    ->UseManualTime();

} // namespace

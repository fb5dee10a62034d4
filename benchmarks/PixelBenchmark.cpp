// SPDX-License-Identifier: Apache-2.0
// Values of single pixels, as a status bar or a line profile asks for them.

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

namespace
{

using namespace KxApi;

constexpr size_t kWidth = 2464;
constexpr size_t kHeight = 2056;

class Image final : public IKxImage
{
public:
    explicit Image(EKxPixelFormatNamingConvention_t format)
        : m_format(format)
    {
        const auto& info = dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(format));
        m_pitch = info.GetLinePitch(kWidth, 1);
        m_bytes.resize(info.GetImageSize(kHeight, m_pitch), 0x5A);
    }

    size_t GetImageWidth() const override { return kWidth; }
    size_t GetImageHeight() const override { return kHeight; }
    size_t GetImageLinePitch() const override { return m_pitch; }
    size_t GetImagePlanePitch() const override { return m_pitch * kHeight; }
    EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return m_format; }
    void* GetImageBuffer() const override { return const_cast<uint8_t*>(m_bytes.data()); }
    void* GetUserContext() const override { return nullptr; }
    IKxImage* GetROIImage(size_t, size_t, size_t, size_t) override { throw std::logic_error("no windows"); }
    IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override
    {
        m_component.SetPixelComponent(this, x, y);
        return &m_component;
    }

private:
    EKxPixelFormatNamingConvention_t m_format;
    size_t m_pitch = 0;
    std::vector<uint8_t> m_bytes;
    CKxPixelComponent m_component;
};

/// One line after the other, the first value of each pixel.
void ReadPixels(benchmark::State& state, EKxPixelFormatNamingConvention_t format)
{
    Image image(format);
    size_t x = 0;
    size_t y = 0;
    for (auto _ : state) {
        const IKxPixelComponent& component = *image.GetIKxPixelComponentValue(x, y);
        benchmark::DoNotOptimize(component.GetValue(0));
        if (++x == kWidth) {
            x = 0;
            y = (y + 1) % kHeight;
        }
    }
}

BENCHMARK_CAPTURE(ReadPixels, Mono8, KxPixelFormat_Mono8)->Name("Pixel/Mono8");
BENCHMARK_CAPTURE(ReadPixels, Mono10p, KxPixelFormat_Mono10p)->Name("Pixel/Mono10p");
BENCHMARK_CAPTURE(ReadPixels, Mono12Packed, KxPixelFormat_Mono12Packed)->Name("Pixel/Mono12Packed");
BENCHMARK_CAPTURE(ReadPixels, BayerRG12p, KxPixelFormat_BayerRG12p)->Name("Pixel/BayerRG12p");
BENCHMARK_CAPTURE(ReadPixels, RGB12p, KxPixelFormat_RGB12p)->Name("Pixel/RGB12p");

} // namespace

// SPDX-License-Identifier: Apache-2.0
// Pictures to look at: one scene through every source format, every Bayer method and every polarisation
// method. usage: converter_sheet FOLDER   writes formats.ppm, bayer.ppm and polarized.ppm.

#include "ConverterTestSupport.h"
#include "FormatTable.h"

#include <cmath>
#include <fstream>
#include <iostream>

namespace
{

using namespace KxApi;
using namespace KxTest;

struct Color
{
    double r, g, b;
};

/// Sky and ground, a ball, fine rays, ramps and coloured bars; x and y from 0 to 1.
Color Scene(double x, double y)
{
    if (y > 0.9)
        return {x, x, x};
    if (y > 0.8) {
        const int bar = static_cast<int>(x * 8);
        return {double(bar >> 2 & 1), double(bar >> 1 & 1), double(bar & 1)};
    }
    const double dx = x - 0.3, dy = (y - 0.45) * 0.75, radius = std::hypot(dx, dy);
    if (radius < 0.2) {
        const double light = std::max(0.15, 1 - std::hypot(dx + 0.07, dy + 0.07) / 0.25);
        return {light, 0.35 * light, 0.15 * light};
    }
    const double rx = x - 0.75, ry = (y - 0.4) * 0.75;
    if (std::hypot(rx, ry) < 0.2)
        return std::sin(std::atan2(ry, rx) * 36) > 0 ? Color{0.95, 0.95, 0.9} : Color{0.1, 0.15, 0.1};
    return y < 0.6 ? Color{0.35 + 0.3 * y, 0.55 + 0.3 * y, 0.9} : Color{0.25, 0.55 - 0.3 * (y - 0.6), 0.2};
}

/// Light behind a polariser: the ball and the rays are polarised, around their middle and all alike.
double Behind(double x, double y, double degrees, double light)
{
    const double angle = degrees * 3.14159265358979 / 180;
    const double ball = std::hypot(x - 0.3, (y - 0.45) * 0.75), rays = std::hypot(x - 0.75, (y - 0.4) * 0.75);
    double degree = 0.1, axis = 0;
    if (ball < 0.2) {
        degree = ball / 0.2;
        axis = std::atan2((y - 0.45) * 0.75, x - 0.3);
    } else if (rays < 0.2) {
        degree = 0.8;
        axis = 0.9;
    }
    return light / 2 * (1 + degree * std::cos(2 * (axis - angle)));
}

void WriteBits(uint8_t* base, size_t bit, unsigned count, uint64_t value)
{
    for (unsigned i = 0; i < count; ++i, ++bit) {
        const auto mask = static_cast<uint8_t>(1 << bit % 8);
        base[bit / 8] = static_cast<uint8_t>((base[bit / 8] & ~mask) | (value >> i & 1 ? mask : 0));
    }
}

double ComponentValue(EKxPixelComponentType_t type, const std::string& name, double x, double y)
{
    const Color color = Scene(x, y);
    double kr = 0.299, kb = 0.114;
    if (name.find("709") != std::string::npos)
        kr = 0.2126, kb = 0.0722;
    if (name.find("2020") != std::string::npos)
        kr = 0.2627, kb = 0.0593;
    const bool limited = kr != 0.299 || name.find("601") != std::string::npos;
    const double luma = kr * color.r + (1 - kr - kb) * color.g + kb * color.b;
    double value = luma;
    switch (type >> 24) {
    case KxPixelComponent_R:
        value = color.r;
        break;
    case KxPixelComponent_G:
    case KxPixelComponent_Gr:
    case KxPixelComponent_Gb:
        value = color.g;
        break;
    case KxPixelComponent_B:
        value = color.b;
        break;
    case KxPixelComponent_Y:
        return limited ? (16 + 219 * luma) / 255 : luma;
    case KxPixelComponent_Cb:
    case KxPixelComponent_U:
        return (128 + (limited ? 224 : 255) * (color.b - luma) / (2 * (1 - kb))) / 255;
    case KxPixelComponent_Cr:
    case KxPixelComponent_V:
        return (128 + (limited ? 224 : 255) * (color.r - luma) / (2 * (1 - kr))) / 255;
    case KxPixelComponent_Alpha:
        return 1;
    default:
        break;
    }
    constexpr double kDegrees[] = {0, 0, 45, 90, 135};
    return type & 0xFF ? Behind(x, y, kDegrees[type & 0xFF], value) : value;
}

View Encoded(EKxPixelFormatNamingConvention_t format, size_t width, size_t height)
{
    View view = RandomImage(format, width, height);
    std::fill(view.bytes.begin(), view.bytes.end(), uint8_t{0});
    const Detail::CPixelFormatRow& row = *Detail::FindFormat(format);
    const Detail::CPixelLayout& layout = Detail::kLayouts[row.layout];
    for (size_t y = 0; y < height; ++y) {
        for (size_t x = 0; x < width; ++x) {
            for (size_t k = 0; k < row.componentCount; ++k) {
                const Detail::CComponentPlace& place = layout.places[k];
                const unsigned bits = row.components[k].bits;
                const double real =
                    ComponentValue(Detail::ComponentType(row, k, x, y), row.name,
                                   (static_cast<double>(x) + 0.5) / static_cast<double>(width),
                                   (static_cast<double>(y) + 0.5) / static_cast<double>(height));
                const double max = std::ldexp(1.0, static_cast<int>(bits)) - 1;
                auto value = static_cast<uint64_t>(std::lround(std::clamp(real, 0.0, 1.0) * max));
                if (row.components[k].number == KxPixelNumber_Signed)
                    value ^= uint64_t{1} << (bits - 1);
                uint8_t* base = view.bytes.data();
                size_t pitch = view.nLinePitch;
                if (place.plane != 0) {
                    const size_t plane = view.GetImagePlanePitch(), divisor = layout.chromaDivisor;
                    base += plane + (place.plane - 1U) * (plane / (divisor * divisor));
                    pitch /= divisor;
                }
                base += (y >> place.lineShift) * pitch;
                const size_t group = (x >> place.groupShift) * place.groupBits;
                const size_t inGroup = x & ((size_t{1} << place.groupShift) - 1);
                WriteBits(base, group + place.high[inGroup], bits - place.lowBits, value >> place.lowBits);
                WriteBits(base, group + place.low[inGroup], place.lowBits, value);
            }
        }
    }
    return view;
}

/// Pictures side by side, each enlarged.
class Sheet
{
public:
    Sheet(size_t columns, size_t rows, size_t width, size_t height, size_t zoom)
        : m_columns(columns)
        , m_width((width * zoom + 4) * columns)
        , m_height((height * zoom + 4) * rows)
        , m_tileWidth(width * zoom + 4)
        , m_tileHeight(height * zoom + 4)
        , m_zoom(zoom)
        , m_bytes(m_width * m_height * 3, 90)
    {}

    void Add(const IKxImage& image)
    {
        const size_t left = m_count % m_columns * m_tileWidth, top = m_count / m_columns * m_tileHeight;
        ++m_count;
        for (size_t y = 0; y < image.GetImageHeight() * m_zoom; ++y) {
            for (size_t x = 0; x < image.GetImageWidth() * m_zoom; ++x)
                std::copy_n(Bytes(image) + y / m_zoom * image.GetImageLinePitch() + x / m_zoom * 3, 3,
                            &m_bytes[((top + y) * m_width + left + x) * 3]);
        }
    }

    void Save(const std::string& path) const
    {
        std::ofstream file(path, std::ios::binary);
        file << "P6\n" << m_width << ' ' << m_height << "\n255\n";
        file.write(reinterpret_cast<const char*>(m_bytes.data()),
                   static_cast<std::streamsize>(m_bytes.size()));
        std::cout << path << ": " << m_count << " pictures\n";
    }

private:
    size_t m_columns, m_width, m_height, m_tileWidth, m_tileHeight, m_zoom;
    size_t m_count = 0;
    std::vector<uint8_t> m_bytes;
};

void SaveFormats(const std::string& folder)
{
    TestConverter converter(KxPixelFormat_RGB8);
    Sheet sheet(20, 11, 88, 64, 1);
    for (size_t i = 0; i < GetIKxPixelFormatInfoCount(); ++i) {
        const auto format = GetIKxPixelFormatInfoByIndex(i)->GetPixelFormat();
        if (!converter->IsConvertible(format, KxPixelFormat_RGB8) || InfoOf(format).IsPolarized())
            continue;
        View source = Encoded(format, 88, 64);
        sheet.Add(converter.Convert(source));
    }
    sheet.Save(folder + "/formats.ppm");
}

void SaveBayer(const std::string& folder)
{
    TestConverter converter(KxPixelFormat_RGB8);
    Sheet sheet(4, 2, 160, 120, 3);
    View source = Encoded(KxPixelFormat_BayerRG12p, 160, 120);
    for (int method = 0; method < 8; ++method) {
        converter->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(method));
        sheet.Add(converter.Convert(source));
    }
    sheet.Save(folder + "/bayer.ppm");
}

/// Methods 0 to 10, the specified angle interpolated, and the colours in dark mode and turned.
void SavePolarized(const std::string& folder)
{
    TestConverter converter(KxPixelFormat_RGB8);
    Sheet sheet(7, 4, 160, 120, 2);
    for (const auto format : {KxPixelFormat_PolarizedMono12p, KxPixelFormat_PolarizedBayerRG8}) {
        View source = Encoded(format, 160, 120);
        converter->SetPolarizationSpecifiedAngle(51.5); // along the rays
        for (int method = 0; method <= 10; ++method) {
            converter->SetPolarizationImageTransformationMethod(
                static_cast<EKxPolarizationImageTransformationMethod_t>(method));
            sheet.Add(converter.Convert(source));
        }
        converter->SetPolarizationImageTransformationMethod(
            KxPolarizationImageTransformationMethod_SpecifiedAngle);
        converter->SetPolarizationSpecifiedAngleInterpolationMethod(
            KxPolarizationInterpolationMethod_Bilinear);
        sheet.Add(converter.Convert(source));
        converter->SetPolarizationSpecifiedAngleInterpolationMethod(KxPolarizationInterpolationMethod_Off);
        converter->SetPolarizationImageTransformationMethod(KxPolarizationImageTransformationMethod_ADOLP);
        converter->SetADOLPDarkMode(true);
        sheet.Add(converter.Convert(source));
        converter->SetADOLPColorPhase(128);
        converter->SetADOLPColorInversion(true);
        sheet.Add(converter.Convert(source));
        converter->SetADOLPDarkMode(false);
        converter->SetADOLPColorPhase(0);
        converter->SetADOLPColorInversion(false);
    }
    sheet.Save(folder + "/polarized.ppm");
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::cerr << "usage: converter_sheet FOLDER\n";
        return 2;
    }
    SaveFormats(argv[1]);
    SaveBayer(argv[1]);
    SavePolarized(argv[1]);
    return 0;
}

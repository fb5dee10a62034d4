// SPDX-License-Identifier: Apache-2.0

#include "FrameRenderer.h"

#include "image/Noise.h"
#include "image/Packing.h"
#include "image/PictureFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>

namespace KxSim
{
namespace
{

// The signal of a pixel: reflectance, with room for what is brighter than white.
constexpr size_t kSignals = 65536;
constexpr float kBrightest = 1.28F;
constexpr size_t kNoisyPictures = 4; // they take turns
constexpr size_t kMaxFiles = 64;

// Formats of colour sensors that have fewer colours don't exist here, so that these suffice.
constexpr float kLumaRed = 0.299F, kLumaGreen = 0.587F, kLumaBlue = 0.114F;

auto Tie(const CFrameSettings& s)
{
    return std::tie(s.format, s.mosaic, s.isPolarized, s.sensorWidth, s.sensorHeight, s.width, s.height,
                    s.offsetX, s.offsetY, s.stepX, s.stepY, s.isAveraged, s.isReversedX, s.isReversedY,
                    s.source, s.pattern, s.folder, s.scenePixels, s.isNoisy, s.exposureUs, s.gainDb,
                    s.blackLevel, s.gamma, s.balance);
}

/// What the signal depends on.
auto TieSignal(const CFrameSettings& s)
{
    return std::make_tuple(s.mosaic, s.isPolarized, s.sensorWidth, s.sensorHeight, s.width, s.height,
                           s.offsetX, s.offsetY, s.stepX, s.stepY, s.isAveraged, s.isReversedX, s.isReversedY,
                           s.source, s.pattern, s.folder,
                           s.pattern == ETestPattern::Off ? 0 : s.format->bits);
}

/// What std::lround says of values that aren't negative, without a call for each of millions. Half more than
/// a float is exact as a double.
uint16_t ToNearest(float value)
{
    return static_cast<uint16_t>(static_cast<double>(value) + 0.5); // NOLINT(bugprone-incorrect-roundings)
}

} // namespace

bool CFrameSettings::operator==(const CFrameSettings& other) const { return Tie(*this) == Tie(other); }

void CFrameRenderer::FindSources()
{
    m_files.clear();
    if (!IsDigital() && m_settings.source == ESource::ImageFolder)
        m_files = ListPictures(m_settings.folder, kMaxFiles);
}

std::unique_ptr<IScene> CFrameRenderer::MakeScene(size_t variant) const
{
    const int width = m_settings.sensorWidth, height = m_settings.sensorHeight;
    switch (m_settings.source) {
    case ESource::Chart:
        return MakeChart(width, height);
    case ESource::PolarizationChart:
        return MakePolarizationChart(width, height);
    case ESource::Noise:
        return MakeFlatField();
    case ESource::ImageFolder:
        return KxSim::MakePicture(m_files.empty() ? std::string() : m_files[variant], width, height);
    default:
        return MakeMovingShapes(width);
    }
}

void CFrameRenderer::Prepare(const CFrameSettings& settings)
{
    const bool isFirst = m_settings.format == nullptr;
    if (!isFirst && settings == m_settings)
        return;
    const bool keepsSignal = !isFirst && !m_signal.empty() && TieSignal(settings) == TieSignal(m_settings);
    m_settings = settings;
    if (!keepsSignal) {
        m_signal.clear();
        FindSources();
    }
    const bool isNoise = !IsDigital() && settings.source == ESource::Noise;
    m_isMoving = IsDigital() ? settings.pattern == ETestPattern::GreyHorizontalRampMoving
                             : settings.source == ESource::MovingShapes || isNoise;
    const auto width = static_cast<size_t>(settings.width);
    m_period = m_isMoving
                   ? static_cast<size_t>(settings.sensorWidth / settings.stepX / kWidthStep * kWidthStep)
                   : width;
    m_columns = m_isMoving ? m_period + width : width;
    MakeTables();
    size_t variants = std::max<size_t>(1, m_files.size());
    if (variants == 1 && (isNoise || settings.isNoisy) && !IsDigital())
        variants = kNoisyPictures;
    m_pictures.assign(variants, Picture());
}

CLight CFrameRenderer::Look(const IScene& scene, int column, int line) const
{
    const CFrameSettings& s = m_settings;
    const int samplesX = s.isAveraged ? s.stepX : 1, samplesY = s.isAveraged ? s.stepY : 1;
    CLight sum;
    for (int v = 0; v < samplesY; ++v) {
        for (int u = 0; u < samplesX; ++u) {
            float x = static_cast<float>(column * s.stepX + u) + 0.5F;
            float y = static_cast<float>(line * s.stepY + v) + 0.5F;
            if (s.isReversedX)
                x = static_cast<float>(s.sensorWidth) - x;
            if (s.isReversedY)
                y = static_cast<float>(s.sensorHeight) - y;
            const CLight light = scene.At(x, y);
            sum.red += light.red;
            sum.green += light.green;
            sum.blue += light.blue;
            sum.dolp = light.dolp;
            sum.aolp = s.isReversedX != s.isReversedY ? -light.aolp : light.aolp;
        }
    }
    const auto share = 1 / static_cast<float>(samplesX * samplesY);
    return {sum.red * share, sum.green * share, sum.blue * share, sum.dolp, sum.aolp};
}

size_t CFrameRenderer::FilterAt(size_t column, size_t line) const
{
    if (m_settings.mosaic != EMosaic::BayerRG)
        return 0;
    const size_t cell = m_settings.isPolarized ? 2 : 1; // a filter covers a whole square of polarisers
    return (column / cell) % 2 + (line / cell) % 2;     // 0 red, 1 green, 2 blue
}

void CFrameRenderer::StoreLight(const CLight& light, int column, int line, uint16_t* values) const
{
    std::array<float, 3> colours = {light.red, light.green, light.blue};
    if (m_settings.mosaic == EMosaic::None)
        colours[0] = kLumaRed * light.red + kLumaGreen * light.green + kLumaBlue * light.blue;
    else if (m_settings.mosaic == EMosaic::BayerRG)
        colours[0] = colours[FilterAt(static_cast<size_t>(column), static_cast<size_t>(line))];
    if (m_settings.isPolarized) {
        static constexpr float kAngles[2][2] = {{90, 45}, {135, 0}}; // by line and column
        constexpr float kDegree = 3.14159265F / 180;
        const float angle = (kAngles[line % 2][column % 2] - light.aolp) * kDegree;
        colours[0] *= (1 + light.dolp * std::cos(2 * angle)) / 2;
    }
    for (size_t i = 0; i < Components(); ++i)
        values[i] = ToNearest(std::clamp(colours[i] / kBrightest, 0.0F, 1.0F) * (kSignals - 1));
}

void CFrameRenderer::MakeSignal(const IScene& scene)
{
    const size_t components = Components();
    m_signal.resize(m_period * static_cast<size_t>(m_settings.height) * components);
    uint16_t* values = m_signal.data();
    const int firstColumn = m_isMoving ? 0 : m_settings.offsetX;
    for (int line = m_settings.offsetY; line < m_settings.offsetY + m_settings.height; ++line) {
        for (int column = firstColumn; column < firstColumn + static_cast<int>(m_period);
             ++column, values += components)
            StoreLight(Look(scene, column, line), column, line, values);
    }
}

void CFrameRenderer::MakePatternSignal()
{
    const CFrameSettings& s = m_settings;
    const auto white = static_cast<uint32_t>((1U << s.format->bits) - 1);
    const auto columns = static_cast<uint32_t>(s.sensorWidth / s.stepX);
    const auto lines = static_cast<uint32_t>(s.sensorHeight / s.stepY);
    const auto at = [&](uint32_t column, uint32_t line, size_t colour) -> uint32_t {
        switch (s.pattern) {
        case ETestPattern::White:
            return white;
        case ETestPattern::GreyHorizontalRamp:
        case ETestPattern::GreyHorizontalRampMoving:
            return static_cast<uint32_t>(uint64_t{column} * (white + 1U) / columns);
        case ETestPattern::GreyVerticalRamp:
            return static_cast<uint32_t>(uint64_t{line} * (white + 1U) / lines);
        case ETestPattern::ColorBar: {
            // White, yellow, cyan, green, magenta, red, blue, black.
            static constexpr uint32_t kBars[3] = {0x33, 0x0F, 0x55}; // bit of a bar: red, green, blue in it
            return (kBars[colour] >> (column * 8 / columns)) & 1U ? white : 0U;
        }
        default:
            return 0U;
        }
    };
    m_signal.resize(m_period * static_cast<size_t>(s.height) * Components());
    uint16_t* value = m_signal.data();
    for (int line = s.offsetY; line < s.offsetY + s.height; ++line) {
        for (size_t i = 0; i < m_period; ++i) {
            const size_t column = i + static_cast<size_t>(m_isMoving ? 0 : s.offsetX);
            for (size_t c = 0; c < Components(); ++c) {
                const size_t colour = s.mosaic == EMosaic::BayerRG
                                          ? FilterAt(column, static_cast<size_t>(line))
                                      : s.mosaic == EMosaic::None ? 1 // green is nearest to brightness
                                                                  : c;
                *value++ = static_cast<uint16_t>(
                    at(static_cast<uint32_t>(column), static_cast<uint32_t>(line), colour));
            }
        }
    }
}

void CFrameRenderer::MakeTables()
{
    if (IsDigital())
        return;
    const CFrameSettings& s = m_settings;
    const double white = std::exp2(s.format->bits) - 1;
    const double gain = std::pow(10.0, s.gainDb / 20);
    for (size_t colour = 0; colour < m_codes.size(); ++colour) {
        m_codes[colour].resize(kSignals);
        m_deviation[colour].resize(kSignals);
        const double factor = static_cast<double>(kBrightest) / (kSignals - 1) * kWhite * gain *
                              s.balance[colour] * s.exposureUs / kUsualExposureUs;
        for (size_t i = 0; i < kSignals; ++i) {
            const double linear = std::min(1.0, static_cast<double>(i) * factor);
            const double shown = (s.gamma == 1 ? linear : std::pow(linear, s.gamma)) + s.blackLevel / 255;
            m_codes[colour][i] = static_cast<uint16_t>(std::lround(std::clamp(shown, 0.0, 1.0) * white));
            m_deviation[colour][i] = static_cast<float>(NoiseDeviation(linear, gain) * white);
        }
    }
}

void CFrameRenderer::DevelopLine(size_t line, uint64_t& random, uint16_t* values) const
{
    const size_t components = Components();
    const uint16_t* signal = m_signal.data() + line * m_period * components;
    const size_t count = m_period * components;
    if (IsDigital()) {
        std::copy(signal, signal + count, values);
        return;
    }
    const bool isNoisy = m_settings.isNoisy || m_settings.source == ESource::Noise;
    const float white = std::exp2(static_cast<float>(m_settings.format->bits)) - 1;
    const size_t sensorLine = line + static_cast<size_t>(m_settings.offsetY);
    for (size_t i = 0; i < count; ++i) {
        const size_t colour = components == 3 ? i % 3 : FilterAt(i, sensorLine);
        const uint16_t code = m_codes[colour][signal[i]];
        if (!isNoisy) {
            values[i] = code;
            continue;
        }
        const float noise = m_deviation[colour][signal[i]] * NextNormal(random);
        values[i] = ToNearest(std::clamp(static_cast<float>(code) + noise, 0.0F, white));
    }
}

void CFrameRenderer::PackRows(Picture& picture, size_t variant) const
{
    const CPixelFormat& format = *m_settings.format;
    const auto height = static_cast<size_t>(m_settings.height);
    const size_t components = Components();
    const bool isPlanar = format.packing == EPacking::Planar420;
    const size_t pitch = m_columns * (isPlanar ? 8 : format.BitsPerPixel()) / 8;
    picture.resize(format.ImageSize(m_columns, height));
    std::vector<uint16_t> lines[2] = {std::vector<uint16_t>(m_columns * components),
                                      std::vector<uint16_t>(m_columns * components)};
    uint64_t random = 0x9E3779B97F4A7C15U + variant;
    uint8_t* chroma = picture.data() + m_columns * height;
    for (size_t line = 0; line < height; ++line) {
        std::vector<uint16_t>& values = lines[line % 2];
        DevelopLine(line, random, values.data());
        // The scene comes round again.
        for (size_t i = m_period * components; i < values.size(); ++i)
            values[i] = values[i - m_period * components];
        if (format.IsLuma())
            ToLuma(values.data(), m_columns);
        PackLine(format, values.data(), m_columns, picture.data() + line * pitch);
        if (isPlanar && line % 2 == 1) {
            for (int component = 1; component <= 2; ++component)
                PackChromaLine(lines[0].data(), lines[1].data(), m_columns, component,
                               chroma + (static_cast<size_t>(component - 1) * (height / 2) + line / 2) *
                                            (m_columns / 2));
        }
    }
}

void CFrameRenderer::MakePicture(size_t variant)
{
    const bool isOfFiles = m_files.size() > 1;
    if (m_signal.empty() || (isOfFiles && m_signalVariant != variant)) {
        if (IsDigital())
            MakePatternSignal();
        else
            MakeSignal(*MakeScene(variant));
        m_signalVariant = variant;
    }
    PackRows(m_pictures[variant], variant);
}

size_t CFrameRenderer::StartColumn(uint64_t number) const
{
    if (!m_isMoving)
        return 0;
    uint64_t shift = number * static_cast<uint64_t>(m_settings.scenePixels);
    if (!IsDigital() && m_settings.source == ESource::Noise)
        shift = NextRandom(number) / kWidthStep * kWidthStep; // the field is flat: only its noise moves
    const auto period = static_cast<uint64_t>(m_period);
    const auto offset = static_cast<uint64_t>(m_settings.offsetX);
    const uint64_t forward = shift % period;
    return static_cast<size_t>((offset + (m_settings.isReversedX ? period - forward : forward)) % period) /
           kWidthStep * kWidthStep;
}

void CFrameRenderer::Fill(uint64_t number, uint8_t* image, size_t size)
{
    const auto variant = static_cast<size_t>(number % m_pictures.size());
    if (m_pictures[variant].empty())
        MakePicture(variant);
    const Picture& picture = m_pictures[variant];
    const CPixelFormat& format = *m_settings.format;
    const auto width = static_cast<size_t>(m_settings.width), height = static_cast<size_t>(m_settings.height);
    if (m_columns == width) {
        std::memcpy(image, picture.data(), size);
        return;
    }
    const size_t start = StartColumn(number);
    const auto copyPlane = [&](const uint8_t* from, size_t bits, size_t reduction) {
        const size_t pitch = m_columns * bits / 8 / reduction, bytes = width * bits / 8 / reduction;
        from += start * bits / 8 / reduction;
        for (size_t line = 0; line < height / reduction && size != 0; ++line, from += pitch) {
            const size_t count = std::min(bytes, size);
            std::memcpy(image, from, count);
            image += count;
            size -= count;
        }
    };
    if (format.packing != EPacking::Planar420)
        return copyPlane(picture.data(), format.BitsPerPixel(), 1);
    const uint8_t* const chroma = picture.data() + m_columns * height;
    copyPlane(picture.data(), 8, 1);
    copyPlane(chroma, 8, 2);
    copyPlane(chroma + m_columns * height / 4, 8, 2);
}

} // namespace KxSim

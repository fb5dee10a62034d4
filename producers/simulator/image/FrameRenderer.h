// SPDX-License-Identifier: Apache-2.0
// Images of a camera, quickly: what changes from one image to the next is a place in a picture made before.
#pragma once

#include "image/PixelFormats.h"
#include "image/Scene.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace KxSim
{

enum class EMosaic
{
    None, // one value a pixel, of all colours
    BayerRG,
    Colour // three values a pixel
};

enum class ETestPattern
{
    Off,
    Black,
    White,
    GreyHorizontalRamp,
    GreyVerticalRamp,
    GreyHorizontalRampMoving,
    ColorBar
};

/// Everything that an image depends on. Sizes and offsets are in pixels of the image.
struct CFrameSettings
{
    const CPixelFormat* format = nullptr;
    EMosaic mosaic = EMosaic::None;
    bool isPolarized = false;
    int sensorWidth = 0, sensorHeight = 0;
    int width = 0, height = 0, offsetX = 0, offsetY = 0;
    int stepX = 1, stepY = 1; // pixels of the sensor for one of the image
    bool isAveraged = false;  // of them all, not the first
    bool isReversedX = false, isReversedY = false;

    ESource source = ESource::MovingShapes;
    ETestPattern pattern = ETestPattern::Off;
    std::string folder;
    int scenePixels = 8; // per image; a multiple of kWidthStep
    bool isNoisy = false;

    double exposureUs = 1500;
    double gainDb = 0;
    double blackLevel = 0; // in 1/255 of white
    double gamma = 1;
    std::array<double, 3> balance = {1, 1, 1};

    bool operator==(const CFrameSettings& other) const;
    bool operator!=(const CFrameSettings& other) const { return !(*this == other); }
    size_t ImageSize() const
    {
        return format->ImageSize(static_cast<size_t>(width), static_cast<size_t>(height));
    }
};

/// One thread.
class CFrameRenderer
{
public:
    /// White at the usual exposure, without gain, as a share of full scale.
    static constexpr double kWhite = 0.8;
    static constexpr double kUsualExposureUs = 1500;

    void Prepare(const CFrameSettings& settings);
    /// Writes the image of this number, or its first bytes; `size` is at most ImageSize().
    void Fill(uint64_t number, uint8_t* image, size_t size);

private:
    /// A picture as the format stores it, broader than an image where the scene moves.
    using Picture = std::vector<uint8_t>;

    void FindSources();
    std::unique_ptr<IScene> MakeScene(size_t variant) const;
    void MakeSignal(const IScene& scene);
    void MakePatternSignal();
    CLight Look(const IScene& scene, int column, int line) const;
    void StoreLight(const CLight& light, int column, int line, uint16_t* values) const;
    void MakeTables();
    void DevelopLine(size_t line, uint64_t& random, uint16_t* values) const;
    void MakePicture(size_t variant);
    void PackRows(Picture& picture, size_t variant) const;
    size_t StartColumn(uint64_t number) const;
    size_t FilterAt(size_t column, size_t line) const;
    bool IsDigital() const { return m_settings.pattern != ETestPattern::Off; }
    size_t Components() const { return m_settings.mosaic == EMosaic::Colour ? 3 : 1; }

    CFrameSettings m_settings;
    bool m_isMoving = false;
    size_t m_period = 0;  // columns of the signal
    size_t m_columns = 0; // of a picture
    std::vector<std::string> m_files;
    std::vector<uint16_t> m_signal;
    size_t m_signalVariant = 0;
    std::array<std::vector<uint16_t>, 3> m_codes;  // by signal, for each colour
    std::array<std::vector<float>, 3> m_deviation; // of noise, in codes
    std::vector<Picture> m_pictures;               // empty until needed
};

} // namespace KxSim

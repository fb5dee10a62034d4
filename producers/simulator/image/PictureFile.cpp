// SPDX-License-Identifier: Apache-2.0

#include "PictureFile.h"

#include "image/Scene.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace KxSim
{
namespace
{

namespace fs = std::filesystem;

constexpr size_t kMaxPixels = 100U << 20U;
constexpr size_t kMaxFileSize = 1U << 30U;

std::string ReadFile(const std::string& file)
{
    std::error_code error;
    const auto size = fs::file_size(file, error);
    if (error || size > kMaxFileSize)
        return {};
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

uint32_t Little(const std::string& bytes, size_t offset, size_t count)
{
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i)
        value |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[offset + i])) << (8 * i);
    return value;
}

/// Next number of a PNM header; comments run from # to the end of the line. 0 if there is none.
uint32_t NextNumber(const std::string& bytes, size_t& place)
{
    while (place < bytes.size() && !std::isdigit(static_cast<unsigned char>(bytes[place]))) {
        if (bytes[place] == '#')
            place = std::min(bytes.find('\n', place), bytes.size() - 1);
        ++place;
    }
    uint32_t value = 0;
    constexpr uint32_t kEnough = 1U << 27U;
    while (place < bytes.size() && std::isdigit(static_cast<unsigned char>(bytes[place])) && value < kEnough)
        value = value * 10 + static_cast<uint32_t>(bytes[place++] - '0');
    return value;
}

CPicture ReadPnm(const std::string& bytes)
{
    const size_t components = bytes[1] == '6' ? 3 : 1;
    size_t place = 2;
    const uint32_t width = NextNumber(bytes, place), height = NextNumber(bytes, place);
    const uint32_t white = NextNumber(bytes, place);
    ++place; // one space before the values
    CPicture picture;
    if (white == 0 || white > 65535 || !picture.SetSize(width, height))
        return {};
    const size_t valueSize = white > 255 ? 2 : 1;
    const size_t count = static_cast<size_t>(width) * height * components;
    if (place > bytes.size() || (bytes.size() - place) / valueSize < count)
        return {};
    const auto at = [&](size_t index) {
        const auto* const value = reinterpret_cast<const uint8_t*>(bytes.data()) + place + index * valueSize;
        const unsigned code = valueSize == 2 ? value[0] * 256U + value[1] : value[0];
        return static_cast<float>(code) / static_cast<float>(white);
    };
    for (size_t i = 0; i < picture.values.size(); ++i)
        picture.values[i] = at(components == 3 ? i : i / 3);
    return picture;
}

CPicture ReadBmp(const std::string& bytes)
{
    constexpr size_t kHeaders = 54;
    if (bytes.size() < kHeaders)
        return {};
    const uint32_t start = Little(bytes, 10, 4), headerSize = Little(bytes, 14, 4);
    const auto width = Little(bytes, 18, 4);
    const auto signedHeight = static_cast<int32_t>(Little(bytes, 22, 4));
    const uint32_t height =
        signedHeight < 0 ? 0U - static_cast<uint32_t>(signedHeight) : static_cast<uint32_t>(signedHeight);
    const uint32_t bits = Little(bytes, 28, 2), compression = Little(bytes, 30, 4);
    CPicture picture;
    if ((bits != 8 && bits != 24 && bits != 32) || compression != 0 || !picture.SetSize(width, height))
        return {};
    const size_t pitch = (static_cast<size_t>(width) * bits + 31) / 32 * 4;
    const size_t palette = 14 + static_cast<size_t>(headerSize);
    if (start > bytes.size() || bytes.size() - start < pitch * height ||
        (bits == 8 && palette + 256 * 4 > start))
        return {};
    for (size_t y = 0; y < height; ++y) {
        const size_t line = start + (signedHeight < 0 ? y : height - 1 - y) * pitch;
        for (size_t x = 0; x < width; ++x) {
            const size_t pixel = bits == 8 ? palette + Little(bytes, line + x, 1) * 4 : line + x * bits / 8;
            for (size_t c = 0; c < 3; ++c)
                picture.values[(y * width + x) * 3 + c] =
                    static_cast<float>(Little(bytes, pixel + 2 - c, 1)) / 255;
        }
    }
    return picture;
}

/// A picture that fills the sensor, by the nearest of its pixels.
class CPictureScene final : public IScene
{
public:
    CPictureScene(CPicture picture, int width, int height)
        : m_picture(std::move(picture))
        , m_scaleX(static_cast<float>(m_picture.width) / static_cast<float>(width))
        , m_scaleY(static_cast<float>(m_picture.height) / static_cast<float>(height))
    {}

    CLight At(float x, float y) const override
    {
        const int column = std::clamp(static_cast<int>(x * m_scaleX), 0, m_picture.width - 1);
        const int line = std::clamp(static_cast<int>(y * m_scaleY), 0, m_picture.height - 1);
        const size_t place =
            (static_cast<size_t>(line) * static_cast<size_t>(m_picture.width) + static_cast<size_t>(column)) *
            3;
        return {m_picture.values[place], m_picture.values[place + 1], m_picture.values[place + 2], 0, 0};
    }

private:
    const CPicture m_picture;
    const float m_scaleX, m_scaleY;
};

/// Grey with a cross: there is nothing to show.
class CNothing final : public IScene
{
public:
    CNothing(int width, int height)
        : m_slope(static_cast<float>(height) / static_cast<float>(width))
        , m_height(static_cast<float>(height))
    {}

    CLight At(float x, float y) const override
    {
        const float rising = std::fabs(y - x * m_slope), falling = std::fabs(y - (m_height - x * m_slope));
        const float value = std::min(rising, falling) < 4 ? 0.8F : 0.25F;
        return {value, value, value, 0, 0};
    }

private:
    const float m_slope, m_height;
};

} // namespace

bool CPicture::SetSize(uint64_t newWidth, uint64_t newHeight)
{
    if (newWidth == 0 || newHeight == 0 || newWidth > kMaxPixels || newHeight > kMaxPixels / newWidth)
        return false;
    width = static_cast<int>(newWidth);
    height = static_cast<int>(newHeight);
    values.resize(static_cast<size_t>(newWidth * newHeight) * 3);
    return true;
}

std::vector<std::string> ListPictures(const std::string& folder, size_t limit)
{
    static constexpr std::array<const char*, 4> kExtensions = {".pgm", ".ppm", ".bmp", ".png"};
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        std::string extension = place->path().extension().string();
        std::transform(extension.begin(), extension.end(), extension.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (std::count(kExtensions.begin(), kExtensions.end(), extension) != 0)
            files.push_back(place->path().string());
    }
    std::sort(files.begin(), files.end());
    if (files.size() > limit)
        files.resize(limit);
    return files;
}

CPicture ReadPicture(const std::string& file)
{
    const std::string bytes = ReadFile(file);
    if (bytes.size() < 3)
        return {};
    if (bytes[0] == 'P' && (bytes[1] == '5' || bytes[1] == '6'))
        return ReadPnm(bytes);
    if (bytes.compare(0, 4, "\x89PNG") == 0)
        return ReadPng(bytes);
    return bytes.compare(0, 2, "BM") == 0 ? ReadBmp(bytes) : CPicture();
}

std::unique_ptr<IScene> MakePicture(const std::string& file, int width, int height)
{
    CPicture picture = file.empty() ? CPicture() : ReadPicture(file);
    if (picture.IsEmpty())
        return std::make_unique<CNothing>(width, height);
    return std::make_unique<CPictureScene>(std::move(picture), width, height);
}

} // namespace KxSim

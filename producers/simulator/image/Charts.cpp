// SPDX-License-Identifier: Apache-2.0
// Charts that stand still.

#include "Scene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace KxSim
{
namespace
{

constexpr float kPi = 3.14159265F;

/// Light of a grey field.
CLight Grey(float value) { return {value, value, value, 0, 0}; }

class CFlatField final : public IScene
{
public:
    CLight At(float, float) const override { return Grey(0.5F); }
};

/// From top to bottom: grey steps, a ramp, colour bars and a star between line pairs, another ramp.
class CChart final : public IScene
{
public:
    CChart(int width, int height)
        : m_width(static_cast<float>(width))
        , m_height(static_cast<float>(height))
    {}

    CLight At(float x, float y) const override
    {
        const float across = x / m_width, down = y / m_height;
        if (down < 0.125F)
            return Grey(std::floor(across * 12) / 11); // twelve steps, black to white
        if (down < 0.25F)
            return Grey(across);
        if (down >= 0.875F)
            return Grey(1 - across);
        const float dx = x - m_width / 2, dy = y - m_height * 0.5625F;
        const float radius = m_height * 0.28F;
        const float distance = std::hypot(dx, dy);
        if (distance < radius + 4)
            return Star(std::atan2(dy, dx), distance, radius);
        if (across < 0.2F)
            return ColourBar(static_cast<size_t>((down - 0.25F) / 0.625F * 8));
        if (across > 0.8F)
            return LinePairs(x - m_width * 0.8F, (down - 0.25F) / 0.625F);
        return Grey(0.4F);
    }

private:
    /// 36 black and 36 white rays, softened where they get narrower than a pixel.
    static CLight Star(float angle, float distance, float radius)
    {
        constexpr float kRays = 36;
        if (distance > radius)
            return Grey(0.05F);
        const float raysWidth = distance * kPi / kRays;
        const float wave = std::sin(angle * kRays) * std::max(raysWidth, 0.01F) / 2;
        const float soft = std::clamp(wave + 0.5F, 0.0F, 1.0F);
        return Grey(0.05F + 0.85F * (raysWidth < 2 ? 0.5F + (soft - 0.5F) * raysWidth / 2 : soft));
    }

    static CLight ColourBar(size_t bar)
    {
        static constexpr std::array<CLight, 8> kBars = {{{0.90F, 0.90F, 0.90F, 0, 0},
                                                         {0.90F, 0.85F, 0.10F, 0, 0},
                                                         {0.10F, 0.80F, 0.85F, 0, 0},
                                                         {0.15F, 0.75F, 0.20F, 0, 0},
                                                         {0.75F, 0.20F, 0.70F, 0, 0},
                                                         {0.80F, 0.12F, 0.12F, 0, 0},
                                                         {0.12F, 0.18F, 0.75F, 0, 0},
                                                         {0.04F, 0.04F, 0.04F, 0, 0}}};
        return kBars[std::min(bar, kBars.size() - 1)];
    }

    /// Lines of 1, 2, 4, 8, 16 and 32 pixels, one below the other.
    static CLight LinePairs(float x, float down)
    {
        const auto pair = static_cast<int>(std::clamp(down, 0.0F, 0.999F) * 6);
        const auto width = static_cast<float>(1 << pair);
        return Grey(static_cast<int>(std::floor(x / width)) % 2 == 0 ? 0.9F : 0.05F);
    }

    const float m_width;
    const float m_height;
};

/// Left a disc whose angle of polarisation is that of the place on it, and whose degree grows from the middle
/// to 1 at the rim. Right four rows of fields: angles 0, 45, 90 and 135 by column, degrees 1, 0.75, 0.5 and
/// 0.25 by row.
class CPolarizationChart final : public IScene
{
public:
    CPolarizationChart(int width, int height)
        : m_width(static_cast<float>(width))
        , m_height(static_cast<float>(height))
    {}

    CLight At(float x, float y) const override
    {
        const float dx = x - m_width * 0.25F, dy = m_height * 0.5F - y;
        const float radius = m_width * 0.22F;
        const float distance = std::hypot(dx, dy);
        if (distance <= radius)
            return Polarized(0.9F, 0.9F, 0.9F, distance / radius, std::atan2(dy, dx) * 180 / kPi);
        const float across = (x / m_width - 0.5F) / 0.48F * 4, down = (y / m_height - 0.1F) / 0.8F * 4;
        const float column = std::floor(across), row = std::floor(down);
        const bool isField = column >= 0 && column < 4 && row >= 0 && row < 4;
        if (!isField || across - column > 0.9F || down - row > 0.9F)
            return Grey(0.2F);
        static constexpr std::array<CLight, 4> kColours = {{{0.9F, 0.9F, 0.9F, 0, 0},
                                                            {0.9F, 0.5F, 0.5F, 0, 0},
                                                            {0.5F, 0.9F, 0.5F, 0, 0},
                                                            {0.5F, 0.5F, 0.9F, 0, 0}}};
        const CLight& colour = kColours[static_cast<size_t>(row)];
        return Polarized(colour.red, colour.green, colour.blue, 1 - row * 0.25F, column * 45);
    }

private:
    static CLight Polarized(float red, float green, float blue, float degree, float angle)
    {
        return {red, green, blue, degree, angle};
    }

    const float m_width;
    const float m_height;
};

} // namespace

std::unique_ptr<IScene> MakeChart(int width, int height) { return std::make_unique<CChart>(width, height); }

std::unique_ptr<IScene> MakePolarizationChart(int width, int height)
{
    return std::make_unique<CPolarizationChart>(width, height);
}

std::unique_ptr<IScene> MakeFlatField() { return std::make_unique<CFlatField>(); }

} // namespace KxSim

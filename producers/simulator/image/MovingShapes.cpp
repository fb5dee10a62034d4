// SPDX-License-Identifier: Apache-2.0
// Parts of known sizes on a belt.

#include "Scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace KxSim
{
namespace
{

constexpr float kFullWidth = 2448; // the belt at scale 1

struct CColour
{
    float red, green, blue;
};

enum class EShape
{
    Ellipse,
    Ring, // inner diameter is half the outer
    Box,
    Bars // black and white lines, as wide as the turn tells
};

struct CShape
{
    EShape shape;
    float x, y;          // of the middle
    float width, height; // of the whole
    float turn;          // in degrees, counter-clockwise; of bars their width
    CColour colour;
};

// clang-format off
constexpr std::array<CShape, 16> kShapes = {{
    {EShape::Ellipse,  400,  520, 400, 400,  0, {0.85F, 0.80F, 0.70F}},
    {EShape::Box,     1100,  520, 600, 300,  0, {0.80F, 0.25F, 0.20F}},
    {EShape::Ring,    1760,  520, 400, 400,  0, {0.25F, 0.60F, 0.85F}},
    {EShape::Ellipse, 2200,  520, 240, 400,  0, {0.90F, 0.75F, 0.15F}},
    {EShape::Box,      400, 1320, 300, 300, 30, {0.30F, 0.75F, 0.35F}},
    {EShape::Ellipse,  760, 1220,  50,  50,  0, {0.90F, 0.90F, 0.90F}},
    {EShape::Ellipse,  860, 1220,  50,  50,  0, {0.90F, 0.90F, 0.90F}},
    {EShape::Ellipse,  960, 1220,  50,  50,  0, {0.90F, 0.90F, 0.90F}},
    {EShape::Ellipse,  760, 1320,  50,  50,  0, {0.90F, 0.90F, 0.90F}},
    {EShape::Ellipse,  860, 1320,  50,  50,  0, {0.10F, 0.10F, 0.10F}},
    {EShape::Ellipse,  960, 1320,  50,  50,  0, {0.90F, 0.90F, 0.90F}},
    {EShape::Bars,    1240, 1320, 256, 256, 16, {0.90F, 0.90F, 0.90F}},
    {EShape::Bars,    1560, 1320, 256, 256,  8, {0.90F, 0.90F, 0.90F}},
    {EShape::Bars,    1880, 1320, 256, 256,  4, {0.90F, 0.90F, 0.90F}},
    {EShape::Box,     2200, 1320, 240,  80, 45, {0.70F, 0.40F, 0.80F}},
    {EShape::Box,     2200, 1320, 240,  80, 135, {0.70F, 0.40F, 0.80F}},
}};
// clang-format on

constexpr CColour kBelt = {0.30F, 0.31F, 0.33F};
constexpr CColour kEdge = {0.12F, 0.12F, 0.13F};
constexpr CColour kMark = {0.85F, 0.85F, 0.80F};
constexpr float kBeltTop = 160, kBeltBottom = 1680; // lines of the belt at scale 1
constexpr float kMarkPitch = 102;                   // 24 to the width
constexpr float kMarkWidth = 6;

/// How much of a pixel lies inside, by the distance from the edge, which is negative inside.
float Coverage(float distance) { return std::clamp(0.5F - distance, 0.0F, 1.0F); }

float EllipseDistance(float x, float y, float a, float b)
{
    if (a == b)
        return std::hypot(x, y) - a;
    // First order: exact on the edge, which is where it matters.
    const float value = std::hypot(x / a, y / b);
    const float slope = std::hypot(x / (a * a), y / (b * b)) / std::max(value, 1e-6F);
    return (value - 1) / std::max(slope, 1e-6F);
}

class CMovingShapes final : public IScene
{
public:
    explicit CMovingShapes(int width)
        : m_scale(static_cast<float>(width) >= kFullWidth       ? 1.0F
                  : static_cast<float>(width) >= kFullWidth / 2 ? 0.5F
                                                                : 0.25F)
    {
        for (size_t i = 0; i < kShapes.size(); ++i) {
            const CShape& shape = kShapes[i];
            const float reach = (shape.width + shape.height) / 2 * m_scale + 1;
            Enter(m_columns, i, shape.x * m_scale, reach);
            Enter(m_lines, i, shape.y * m_scale, reach);
            constexpr float kDegree = 3.14159265F / 180;
            m_turns[i] = {std::cos(shape.turn * kDegree), std::sin(shape.turn * kDegree)};
        }
    }

    bool IsMoving() const override { return true; }

    CLight At(float x, float y) const override
    {
        CColour colour = Ground(x, y);
        const ShapeSet shapes = Within(m_columns, x) & Within(m_lines, y);
        for (size_t i = 0; shapes >> i != 0; ++i) {
            if ((shapes >> i & 1U) == 0)
                continue;
            const CShape& shape = kShapes[i];
            const float dx = x - shape.x * m_scale, dy = y - shape.y * m_scale;
            Blend(colour, ColourOf(shape, dx), Coverage(Distance(shape, m_turns[i], dx, dy)));
        }
        return {colour.red, colour.green, colour.blue, 0, 0};
    }

private:
    struct CTurn
    {
        float cos, sin;
    };

    /// A bit for each shape.
    using ShapeSet = uint32_t;
    static_assert(kShapes.size() <= 32);

    /// Notes a shape in the columns or lines that it may reach: a picture has millions of places, most of
    /// them beside all shapes.
    static void Enter(std::vector<ShapeSet>& sets, size_t shape, float middle, float reach)
    {
        const auto end = static_cast<size_t>(std::ceil(middle + reach));
        sets.resize(std::max(sets.size(), end), 0);
        for (auto i = static_cast<size_t>(std::max(0.0F, std::floor(middle - reach))); i < end; ++i)
            sets[i] |= ShapeSet{1} << shape;
    }
    static ShapeSet Within(const std::vector<ShapeSet>& sets, float place)
    {
        return place >= 0 && place < static_cast<float>(sets.size()) ? sets[static_cast<size_t>(place)] : 0;
    }

    static void Blend(CColour& below, const CColour& above, float share)
    {
        below.red += (above.red - below.red) * share;
        below.green += (above.green - below.green) * share;
        below.blue += (above.blue - below.blue) * share;
    }

    CColour Ground(float x, float y) const
    {
        if (y >= kBeltTop * m_scale && y < kBeltBottom * m_scale)
            return kBelt;
        const float pitch = kMarkPitch * m_scale;
        const float along = x - std::floor(x / pitch) * pitch;
        const bool isMark = along < kMarkWidth * m_scale && y > 80 * m_scale && y < 1760 * m_scale;
        return isMark ? kMark : kEdge;
    }

    CColour ColourOf(const CShape& shape, float dx) const
    {
        if (shape.shape != EShape::Bars)
            return shape.colour;
        const auto bar =
            static_cast<int>(std::floor((dx + shape.width / 2 * m_scale) / (shape.turn * m_scale)));
        return bar % 2 == 0 ? shape.colour : CColour{0.05F, 0.05F, 0.05F};
    }

    float Distance(const CShape& shape, const CTurn& turn, float dx, float dy) const
    {
        const float a = shape.width / 2 * m_scale, b = shape.height / 2 * m_scale;
        switch (shape.shape) {
        case EShape::Ellipse:
            return EllipseDistance(dx, dy, a, b);
        case EShape::Ring: {
            const float middle = a * 0.75F;
            return std::fabs(std::hypot(dx, dy) - middle) - a * 0.25F;
        }
        case EShape::Box:
            return std::max(std::fabs(dx * turn.cos - dy * turn.sin) - a,
                            std::fabs(dx * turn.sin + dy * turn.cos) - b);
        default:
            return std::max(std::fabs(dx) - a, std::fabs(dy) - b);
        }
    }

    const float m_scale;
    std::vector<ShapeSet> m_columns, m_lines;
    std::array<CTurn, kShapes.size()> m_turns;
};

} // namespace

std::unique_ptr<IScene> MakeMovingShapes(int width) { return std::make_unique<CMovingShapes>(width); }

} // namespace KxSim

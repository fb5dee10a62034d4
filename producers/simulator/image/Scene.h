// SPDX-License-Identifier: Apache-2.0
// What the cameras look at.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace KxSim
{

/// Light from one point: 1 is white. The polarised part lies at an angle in degrees, seen from the camera,
/// from the right counter-clockwise.
struct CLight
{
    float red = 0, green = 0, blue = 0;
    float dolp = 0;
    float aolp = 0;
};

/// Any thread.
class IScene
{
public:
    virtual ~IScene() = default;
    /// Light at a point of the sensor, in its pixels; the middle of the first one is at (0.5, 0.5).
    virtual CLight At(float x, float y) const = 0;
    /// Whether it moves, coming round again after the sensor's width.
    virtual bool IsMoving() const { return false; }
};

enum class ESource
{
    MovingShapes,
    Chart,
    PolarizationChart,
    Noise,
    ImageFolder
};

/// Known shapes on a belt, told in docs/simulator.md. Their scale is 1, 1/2 or 1/4, by the sensor's width.
std::unique_ptr<IScene> MakeMovingShapes(int width);
/// Grey steps, ramps, colour bars and a star.
std::unique_ptr<IScene> MakeChart(int width, int height);
/// Fields of known degree and angle of polarisation.
std::unique_ptr<IScene> MakePolarizationChart(int width, int height);
/// A grey field.
std::unique_ptr<IScene> MakeFlatField();
/// A picture that fills the sensor; grey with a cross if the file can't be read.
std::unique_ptr<IScene> MakePicture(const std::string& file, int width, int height);

} // namespace KxSim

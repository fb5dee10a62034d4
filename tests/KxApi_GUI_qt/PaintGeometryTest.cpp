// SPDX-License-Identifier: Apache-2.0
// The arithmetic between image, display and dialog.
#include "image/PaintGeometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace KxTest
{
namespace
{

using namespace KxApi;

CPaintGeometry Geometry(double dMagnification)
{
    CPaintGeometry geometry;
    geometry.nImageOffsetX = 7;
    geometry.nImageOffsetY = 31;
    geometry.dScrollX = 100;
    geometry.dScrollY = 50;
    geometry.nImageWidth = 640;
    geometry.nImageHeight = 480;
    geometry.dMagnification = dMagnification;
    return geometry;
}

TEST(PaintGeometry, PlacesBesideTheImageGiveItsBorder)
{
    const CPaintGeometry geometry = Geometry(0.01);
    EXPECT_EQ(geometry.ImagePixelAt(QPoint(-1'000'000'000, -1'000'000'000)), QPoint(0, 0));
    EXPECT_EQ(geometry.ImagePixelAt(QPoint(1'000'000'000, 1'000'000'000)), QPoint(639, 479));
    EXPECT_EQ(Geometry(1).ImagePixelAt(QPoint(-94, -20)), QPoint(0, 0));
    EXPECT_EQ(CPaintGeometry().ImagePixelAt(QPoint(5, 5)), QPoint(-1, -1)) << "nothing is painted yet";
}

TEST(PaintGeometry, WheelStepsByWholeNumbersAboveOneAndHalvesBelow)
{
    const auto steps = [](double dMagnification, bool bEnlarge) {
        std::vector<double> vecSteps;
        for (int i = 0; i < 4; ++i)
            vecSteps.push_back(dMagnification = MagnificationAfterWheel(dMagnification, bEnlarge));
        return vecSteps;
    };
    EXPECT_EQ(steps(0.25, true), (std::vector<double>{0.5, 1, 2, 3}));
    EXPECT_EQ(steps(2, false), (std::vector<double>{1, 0.5, 0.25, 0.125}));
    EXPECT_EQ(MagnificationAfterWheel(16, true), 16);
    EXPECT_EQ(MagnificationAfterWheel(2.5, true), 4);
    EXPECT_EQ(MagnificationAfterWheel(2.5, false), 2);
    EXPECT_EQ(MagnificationAfterWheel(0.01, false), 0.0625)
        << "the wheel's range is narrower than the setting's";
    EXPECT_EQ(MagnificationAfterWheel(64, true), 16);
}

} // namespace
} // namespace KxTest

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

TEST(PaintGeometry, EachPixelIsFoundWhereItIsShown)
{
    for (const double dMagnification : {1.0, 2.0, 3.0, 16.0, 64.0}) {
        const CPaintGeometry geometry = Geometry(dMagnification);
        for (const int nPixel : {0, 1, 77, 479}) {
            const QPoint ptFirst(ToDisplay(nPixel, dMagnification) + 7 - 100,
                                 ToDisplay(nPixel, dMagnification) + 31 - 50);
            EXPECT_EQ(geometry.ImagePixelAt(ptFirst), QPoint(nPixel, nPixel)) << dMagnification;
            const int nLast = static_cast<int>(dMagnification) - 1;
            EXPECT_EQ(geometry.ImagePixelAt(ptFirst + QPoint(nLast, nLast)), QPoint(nPixel, nPixel))
                << dMagnification;
        }
    }
    EXPECT_EQ(Geometry(0.25).ImagePixelAt(QPoint(7 - 100 + 10, 31 - 50 + 20)), QPoint(40, 80));
}

TEST(PaintGeometry, PlacesBesideTheImageGiveItsBorder)
{
    const CPaintGeometry geometry = Geometry(0.01);
    EXPECT_EQ(geometry.ImagePixelAt(QPoint(-1'000'000'000, -1'000'000'000)), QPoint(0, 0));
    EXPECT_EQ(geometry.ImagePixelAt(QPoint(1'000'000'000, 1'000'000'000)), QPoint(639, 479));
    EXPECT_EQ(Geometry(1).ImagePixelAt(QPoint(-94, -20)), QPoint(0, 0));
    EXPECT_EQ(CPaintGeometry().ImagePixelAt(QPoint(5, 5)), QPoint(-1, -1)) << "nothing is painted yet";
}

TEST(PaintGeometry, CentreIsWhatLiesInTheMiddleOfTheView)
{
    EXPECT_EQ(Geometry(2).ImagePixelInCentre(QPoint(150, 75)), QPoint(125, 62));
    CPaintGeometry geometry = Geometry(0.5);
    geometry.dScrollX = geometry.dScrollY = 0;
    EXPECT_EQ(geometry.ImagePixelInCentre(QPoint(1000, 1000)), QPoint(320, 240))
        << "of an image within the view";
    EXPECT_EQ(CPaintGeometry().ImagePixelInCentre(QPoint(150, 75)), QPoint(0, 0));
    EXPECT_EQ(ScrollPosition(125, 4, 150), 350);
    EXPECT_EQ(ScrollPosition(3, 0.5, 150), -148);
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

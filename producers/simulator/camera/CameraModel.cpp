// SPDX-License-Identifier: Apache-2.0

#include "CameraModel.h"

namespace KxSim
{
namespace
{

constexpr uint32_t Ip(uint32_t a, uint32_t b, uint32_t c, uint32_t d)
{
    return a << 24 | b << 16 | c << 8 | d;
}

// Made when the library is loaded, so that it outlives what a program's end waits for.
// clang-format off
const std::vector<CCameraModel> kModels = {
    {ETechnology::U3V, "KX-U5M", "1001", "5 megapixels, mono", 2448, 2048, 3.0, EMosaic::None, false,
     ESource::MovingShapes,
     {"Mono8", "Mono10", "Mono10p", "Mono10Packed", "Mono12", "Mono12p", "Mono12Packed", "Mono14", "Mono16"},
     false, false, 0, {}},
    {ETechnology::U3V, "KX-U5C", "1002", "5 megapixels, Bayer colour", 2448, 2048, 3.0, EMosaic::BayerRG, false,
     ESource::MovingShapes,
     {"BayerRG8", "BayerRG10", "BayerRG10p", "BayerRG10Packed", "BayerRG12", "BayerRG12p", "BayerRG12Packed",
      "BayerRG16"},
     true, false, 0, {}},
    {ETechnology::U3V, "KX-U03N", "1003", "Nodes of every kind", 640, 480, 2.5, EMosaic::None, false,
     ESource::MovingShapes, {"Mono8", "Mono16"}, false, true, 0, {}},
    {ETechnology::GEV, "KX-G1C", "2001", "RGB and YUV", 1224, 1024, 5.0, EMosaic::Colour, false,
     ESource::MovingShapes,
     {"RGB8", "BGR8", "RGBa8", "BGRa8", "YUV422_8", "YUV422_8_UYVY", "YUV411_8_UYYVYY", "YCbCr411_8", "YUV8_UYV",
      "RGB10p32"},
     false, false, 0x02'4B'58'00'20'01, {Ip(192, 168, 10, 21), Ip(255, 255, 255, 0), Ip(192, 168, 10, 254)},
     EParts::One, true},
    {ETechnology::GEV, "KX-G5P", "2002", "5 megapixels, polarised mono", 2448, 2048, 8.0, EMosaic::None, true,
     ESource::PolarizationChart,
     {"PolarizedMono8", "PolarizedMono10", "PolarizedMono10p", "PolarizedMono10Packed", "PolarizedMono12",
      "PolarizedMono12p", "PolarizedMono12Packed"},
     false, false, 0x02'4B'58'00'20'02, {Ip(192, 168, 10, 22), Ip(255, 255, 255, 0), Ip(192, 168, 10, 254)}},
    {ETechnology::GEV, "KX-G1M", "2003", "Mono, at first in another subnet", 1224, 1024, 5.0, EMosaic::None, false,
     ESource::MovingShapes, {"Mono8", "Mono10", "Mono12"},
     false, false, 0x02'4B'58'00'20'03, {Ip(10, 1, 2, 3), Ip(255, 0, 0, 0), Ip(10, 0, 0, 1)}},
    {ETechnology::CXP, "KX-C5PC", "3001", "5 megapixels, polarised Bayer colour", 2448, 2048, 2.0,
     EMosaic::BayerRG, true, ESource::PolarizationChart,
     {"PolarizedBayerRG8", "PolarizedBayerRG10", "PolarizedBayerRG10p", "PolarizedBayerRG10Packed",
      "PolarizedBayerRG12", "PolarizedBayerRG12p", "PolarizedBayerRG12Packed"},
     false, false, 0, {}},
    {ETechnology::CXP, "KX-C1Y", "3002", "Planar YUV 4:2:0 and BGR of 30 bits", 1224, 1024, 2.0, EMosaic::Colour,
     false, ESource::MovingShapes, {"YUV420_8_Planar", "BGR10p32"}, false, false, 0, {}},
    {ETechnology::CXP, "KX-C3D", "3003", "3D: range, intensity and confidence", 640, 480, 2.5, EMosaic::None, false,
     ESource::MovingShapes, {"Mono8"}, false, false, 0, {}, EParts::Range},
    {ETechnology::CXP, "KX-C2R", "3004", "Two regions in one buffer", 1224, 1024, 2.0, EMosaic::None, false,
     ESource::MovingShapes, {"Mono8", "Mono16"}, false, false, 0, {}, EParts::Regions},
};
// clang-format on

} // namespace

const std::vector<CCameraModel>& CameraModels() { return kModels; }

} // namespace KxSim

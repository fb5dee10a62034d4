// SPDX-License-Identifier: Apache-2.0
// The cameras that there are.
#pragma once

#include "Common.h"
#include "image/FrameRenderer.h"
#include "image/Parts.h"

#include <cstdint>
#include <vector>

namespace KxSim
{

struct CCameraModel
{
    ETechnology technology;
    const char* model;
    const char* serial;
    const char* about;
    int width, height; // of the sensor
    double lineUs;     // to read out a line
    EMosaic mosaic;
    bool isPolarized;
    ESource source; // at first
    std::vector<const char*> formats;
    bool isZipped;    // its description
    bool hasAllKinds; // of nodes
    uint64_t mac;
    CIpConfig ip;
    EParts parts = EParts::One;
    bool compresses = false; // it can send JPEG
};

const std::vector<CCameraModel>& CameraModels();

} // namespace KxSim

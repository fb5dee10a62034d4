// SPDX-License-Identifier: Apache-2.0
// The cameras that there are.
#pragma once

#include "image/FrameRenderer.h"

#include <cstdint>
#include <vector>

namespace KxSim
{

enum class ETechnology
{
    U3V,
    GEV,
    CXP
};

/// Address, mask and gateway, the first number of each in the highest byte.
struct CIpConfig
{
    uint32_t address = 0, mask = 0, gateway = 0;
};

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
};

const std::vector<CCameraModel>& CameraModels();

/// Names of a technology: of GenTL, of the naming convention, of users.
const char* TlType(ETechnology technology);
const char* ConventionName(ETechnology technology);
const char* DisplayName(ETechnology technology);

} // namespace KxSim

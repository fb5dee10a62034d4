// SPDX-License-Identifier: Apache-2.0
// What producers call the technologies that cameras are reached by.
#pragma once

#include <cstdint>

namespace KxProducer
{

enum class ETechnology
{
    U3V,
    GEV,
    CXP,
    Custom
};

/// Names of a technology: of GenTL, of the naming convention, of users.
const char* TlType(ETechnology technology);
const char* ConventionName(ETechnology technology);
const char* DisplayName(ETechnology technology);

/// Address, mask and gateway, the first number of each in the highest byte.
struct CIpConfig
{
    uint32_t address = 0, mask = 0, gateway = 0;
};

} // namespace KxProducer

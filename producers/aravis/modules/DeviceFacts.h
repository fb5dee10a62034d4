// SPDX-License-Identifier: Apache-2.0
// What is known of a camera without opening it.
#pragma once

#include "common/modules/Technology.h"
#include "net/Gvcp.h"

#include <string>

namespace KxAravis
{

using KxProducer::ETechnology;

struct CDeviceFacts
{
    ETechnology technology = ETechnology::GEV;
    std::string id, vendor, model, serial, userName, version;
    std::string arvId; ///< by which the library beneath opens it; not of GigE Vision
    CGevCamera gev;    ///< of GigE Vision only

    std::string DisplayName() const
    {
        const std::string& last = userName.empty() ? serial : userName;
        return vendor + " " + model + (last.empty() ? "" : " (" + last + ")");
    }
};

} // namespace KxAravis

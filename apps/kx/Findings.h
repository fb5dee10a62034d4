// SPDX-License-Identifier: Apache-2.0
// What kx finds on a machine, as JSON and for other commands.
#pragma once

#include "Cameras.h"
#include "MachineCheck.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace Kx
{

/// Producers and settings of the system, good ones included.
/// @param root in place of "/"
std::vector<Finding> CheckAll(const std::string& root);

nlohmann::ordered_json JsonOf(const std::vector<Finding>& findings);

/// Producers, systems, interfaces and devices, with what kept them from being opened or listed.
nlohmann::ordered_json JsonOf(const KxApps::Cameras& cameras);

} // namespace Kx

// SPDX-License-Identifier: Apache-2.0
// What stands in the way of a feature's setting.
#pragma once

#include <GenApi/GenApi.h>

#include <string>

namespace KxApps
{

/// Why a feature can't be written now; empty when it can. Raises what the nodes raise that decide it.
std::string WhyNotWritable(GenApi::INode& node);

} // namespace KxApps

// SPDX-License-Identifier: Apache-2.0
// All there is to know of a feature before it is set.
#pragma once

#include <GenApi/GenApi.h>

#include <nlohmann/json.hpp>

#include <iosfwd>
#include <string>

namespace Kx
{

/// Name, type, access, value, unit, limits, increment, entries, description, and why the feature can't be
/// written, each where there is one. What raises when it is asked for is told as "error".
nlohmann::ordered_json DetailsOf(GenApi::INode& node);

/// Prints the details but name and value, a line each, indented.
void PrintDetails(std::ostream& out, const nlohmann::ordered_json& details);

} // namespace Kx

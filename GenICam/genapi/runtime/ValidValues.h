// SPDX-License-Identifier: Apache-2.0
// The list of valid values that a description may give for a number.
#pragma once

#include "runtime/Node.h"

#include <vector>

namespace KxGenApi
{

/// The members of ValidValueSet, which are separated by semicolons; empty if there is none. PropertyException
/// for a member that is no number.
std::vector<int64_t> ValidIntegers(const Node& node);
std::vector<double> ValidReals(const Node& node);

} // namespace KxGenApi

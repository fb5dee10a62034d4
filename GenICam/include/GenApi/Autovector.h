// SPDX-License-Identifier: Apache-2.0
// Lists of numbers as the interfaces give them out.
#pragma once

#include <GenApi/GenApiNamespace.h>

#include <cstdint>
#include <vector>

namespace GenApi
{

/// List of the valid values of an integer.
using int64_autovector_t = std::vector<int64_t>;

/// List of the valid values of a floating-point number.
using double_autovector_t = std::vector<double>;

} // namespace GenApi

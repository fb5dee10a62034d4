// SPDX-License-Identifier: Apache-2.0
// Descriptions as large as those of real cameras.
#pragma once

#include <cstddef>
#include <string>

namespace Bench
{

/// XML text of a description of about that many nodes, made up as a large camera's is: half the nodes are
/// registers and bit fields, a quarter formulas, the rest features with texts, limits, flags, selectors and
/// invalidators.
std::string GenerateDescription(size_t nodes);

/// The file named by the environment variable KXAPI_BENCH_XML; without it, a generated one of 2,400 nodes and
/// about 1.1 MB.
const std::string& LargeDescription();

} // namespace Bench

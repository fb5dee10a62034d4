// SPDX-License-Identifier: Apache-2.0
// Whether what a description promises can be had.
#pragma once

#include "LoadedDescription.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace Kx
{

/// What a check found.
struct DescriptionFacts
{
    size_t nodes = 0;
    size_t features = 0;              ///< those below Root that are no categories
    size_t readable = 0;              ///< features whose value could be read
    size_t notReadable = 0;           ///< features that the access mode forbids to read, commands counted in
    std::vector<std::string> raising; ///< features whose reading raised: "name: class: description"
    std::vector<std::string> badFormulas; ///< formulas that don't compile, a line each
};

/// Compiles all formulas and reads every feature once.
DescriptionFacts Check(const LoadedDescription& description);

/// Prints what the file is and what the check found.
void PrintSummary(std::ostream& out, const LoadedDescription& description, const DescriptionFacts& facts);

/// One line: maker, model, schema version, time of loading.
void PrintHeadLine(std::ostream& out, const LoadedDescription& description);

} // namespace Kx

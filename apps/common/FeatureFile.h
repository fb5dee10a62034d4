// SPDX-License-Identifier: Apache-2.0
// Feature files: all streamable features of a node map, as GenApi's persistence writes them.
#pragma once

#include <GenApi/GenApi.h>

#include <cstdint>
#include <string>

namespace Kx
{

/// Saves the features; the file appears when all of it has been written. Returns the number of values. Raises
/// RuntimeException that names the file, or the feature that could not be read.
int64_t SaveFeatures(GenApi::INodeMap& map, const std::string& fileName);

/// Sets the features of a file and reads them back. Raises RuntimeException that names the file and what the
/// camera refused; what it takes is set nevertheless.
void LoadFeatures(GenApi::INodeMap& map, const std::string& fileName);

} // namespace Kx

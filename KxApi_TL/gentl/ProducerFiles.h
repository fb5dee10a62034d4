// SPDX-License-Identifier: Apache-2.0
// The files that may be producers.
#pragma once

#include <string>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// A producer that was found, or an entry that leads to none.
struct CFoundFile
{
    std::string path;
    std::string error; ///< why there is nothing to load; empty for files
};

/// All of them in the order of the entries, each once however many ways lead to it.
std::vector<CFoundFile> ProducerFiles();

} // namespace Detail
} // namespace KxApi

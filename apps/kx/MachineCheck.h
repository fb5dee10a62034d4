// SPDX-License-Identifier: Apache-2.0
// What on this machine stands in the way of real cameras.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Kx
{

struct Finding
{
    bool isGood;
    std::string subject; ///< such as "USB memory"
    std::string text;    ///< what was found
    std::string mend;    ///< a command line that mends it; empty when there is nothing to mend
};

/// Looks at the settings of the system that cameras on USB and network depend on. What can't be read is taken
/// for not there.
/// @param root in place of "/"
std::vector<Finding> CheckMachine(const std::filesystem::path& root);

} // namespace Kx

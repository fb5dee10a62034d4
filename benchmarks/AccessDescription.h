// SPDX-License-Identifier: Apache-2.0
// A small description for measuring single accesses, which we and the peer load alike.
#pragma once

#include <string>

namespace Bench
{

/// Features of that description.
constexpr char kReadFeature[] = "Width";          ///< Integer on a register, with limits
constexpr char kWriteFeature[] = "ExposureTime";  ///< Float on a converter on a register
constexpr char kSharedRegister[] = "SharedReg";   ///< register that kDependentCount features read
constexpr char kDependentFeature[] = "Dependent"; ///< these are called Dependent0, Dependent1, ...
constexpr int kDependentCount = 100;
constexpr size_t kMemorySize = 0x10000; ///< all registers lie below this address

const std::string& AccessDescription();

} // namespace Bench

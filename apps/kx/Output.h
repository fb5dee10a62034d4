// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <stdexcept>

namespace Kx
{

/// Ends the output of a command: a full disk or a closed pipe must not look like a complete answer. Raises
/// std::runtime_error.
inline void Finish(std::ostream& out)
{
    if (!out.flush())
        throw std::runtime_error("cannot write to standard output");
}

} // namespace Kx

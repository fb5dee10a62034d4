// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KxApi
{
struct IKxPort;
}

namespace Kx
{

/// The description of a port's module, as text whether the module gave it zipped or not. Raises what fetching
/// it raises.
std::string DescriptionOf(KxApi::IKxPort& port);

/// The same as the module gave it. @param name gets the file's name
std::string RawDescriptionOf(KxApi::IKxPort& port, std::string& name);

} // namespace Kx

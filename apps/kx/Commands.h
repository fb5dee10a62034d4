// SPDX-License-Identifier: Apache-2.0
// The subcommands of kx. Each declares its options on the program and sets what is run if it is chosen;
// exceptions that the run raises are reported by main.
#pragma once

namespace CLI
{
class App;
}

namespace Kx
{

/// kx genapi FILE: loads, checks and shows a node-map description.
void AddGenApiCommand(CLI::App& program);

} // namespace Kx

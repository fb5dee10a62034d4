// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ActionTable.h"

class MainWindow;

/// All that can be done with the main window, but for what docks bring along. The rows work on the window,
/// which outlives them.
std::vector<ActionRow> ViewerActions(MainWindow& window);

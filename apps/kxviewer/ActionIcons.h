// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>

/// The icon of an action, empty where there is none. It is drawn in the palette's colours at any size, so
/// that it is sharp at every scale and can be seen in dark and light.
QIcon MakeActionIcon(const char* szId);

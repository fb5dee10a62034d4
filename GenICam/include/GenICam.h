// SPDX-License-Identifier: Apache-2.0
// The whole interface: base library and node maps.
#pragma once

#include <Base/GCBase.h>
#include <GenApi/GenApi.h>

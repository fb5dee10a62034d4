// SPDX-License-Identifier: Apache-2.0
// Kept for programs that include this name.
#pragma once

#include <GenApi/GenApiLinkage.h>

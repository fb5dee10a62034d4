// SPDX-License-Identifier: Apache-2.0
// Visibility of the common layer's symbols.
#pragma once

/// Marks what each SDK library exports, since the common layer is part of each of them. The dynamic linker
/// makes all of them use one copy.
#define KXSDK_COMMON_API __attribute__((visibility("default")))

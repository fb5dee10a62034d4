// SPDX-License-Identifier: Apache-2.0
// Visibility of the common layer's symbols.
#pragma once

/// Marks what of the common layer libKxApi_TL exports, which it is part of; the other libraries link that, so
/// that there is one copy.
#define KXSDK_COMMON_API __attribute__((visibility("default")))

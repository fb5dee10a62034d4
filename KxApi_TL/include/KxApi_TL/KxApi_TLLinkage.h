// SPDX-License-Identifier: Apache-2.0
// Visibility of the transport library's symbols.
#pragma once

/// Marks functions and classes that libKxApi_TL exports.
#define KXAPI_TL_API __attribute__((visibility("default")))

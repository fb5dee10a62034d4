// SPDX-License-Identifier: Apache-2.0
// Visibility of the image processing library's symbols.
#pragma once

/// Marks functions and classes that libKxApi_IP exports.
#define KXAPI_IP_API __attribute__((visibility("default")))

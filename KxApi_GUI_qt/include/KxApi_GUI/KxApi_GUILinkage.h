// SPDX-License-Identifier: Apache-2.0
// Visibility of the window library's symbols.
#pragma once

/// Marks functions and classes that libKxApi_GUI_qt means for applications.
#define KXAPI_GUI_API __attribute__((visibility("default")))

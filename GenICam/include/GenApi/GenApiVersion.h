// SPDX-License-Identifier: Apache-2.0
// Version of the standard's interface that these headers follow.
#pragma once

#define GENAPI_VERSION_MAJOR 3
#define GENAPI_VERSION_MINOR 4
#define GENAPI_VERSION_SUBMINOR 0

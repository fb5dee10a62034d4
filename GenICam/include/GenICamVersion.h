// SPDX-License-Identifier: Apache-2.0
// Version of the standard's interface, and the environment variables that programs know.
#pragma once

#include <_GenICamVersion.h>

#define GENICAM_SVN_REVISION 6649
#define GENICAM_ROOT "GENICAM_ROOT"
#define GENICAM_CACHE_VERSION "GENICAM_CACHE_V3_4"
#define GENICAM_LOG_CONFIG_VERSION "GENICAM_LOG_CONFIG_V3_4"
#define GENICAM_CLPROTOCOL "GENICAM_CLPROTOCOL"

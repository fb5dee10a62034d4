// SPDX-License-Identifier: Apache-2.0
// The name spaces of the node-map interface, as macros and with their version, for code that is written
// against them.
#pragma once

#include <Base/GCNamespace.h>

#define GENAPI_NAMESPACE GenApi
#define GENAPI_NAMESPACE_DEFINED

/// Node maps and nodes.
namespace GenApi
{
using namespace GenICam;
}
namespace GenApi_3_4 = GenApi;

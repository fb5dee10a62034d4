// SPDX-License-Identifier: Apache-2.0
// The name spaces of the node-map interface, as macros for code that is written against them.
#pragma once

#include <Base/GCNamespace.h>

#define GENAPI_NAMESPACE GenApi

namespace GenICam
{
}

/// Node maps and nodes.
namespace GenApi
{
using namespace GenICam;
}

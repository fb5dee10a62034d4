// SPDX-License-Identifier: Apache-2.0
// The lock of a node map, in the name space of the node maps.
#pragma once

#include <Base/GCSynch.h>
#include <GenApi/GenApiNamespace.h>

namespace GenApi
{
using GenICam::AutoLock;
using GenICam::CLock;
using GenICam::CLockEx;
using GenICam::LockableObject;
} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// Types of the functions of libraries that are made for one camera.
#pragma once

#include <Base/GCTypes.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

namespace GenApi
{

/// Makes the node map of the camera, and tells the version that the library was made for.
typedef INodeMap* (*Create_f)(const char* pDeviceName);
typedef void (*GetGenApiVersion_f)(Version_t& Version);

/// Nothing has to be ended here.
inline void GenApiTerminate() {}

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// What the camera of a fake producer needs of its interfaces.
#pragma once

#include "FakeCamera.h"

namespace KxTest
{

/// Set up before any call of the producer.
extern FakeCamera g_camera;

/// Reads the register of an interface that counts its devices; a system has none.
GenTL::GC_ERROR ReadDeviceCount(const void* handle, uint64_t address, void* buffer, size_t* size);

} // namespace KxTest

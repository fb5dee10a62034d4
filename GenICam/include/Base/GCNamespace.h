// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Name of the namespace of the base library, for code that spells it by macro.

#define GENICAM_NAMESPACE GenICam

namespace GenICam
{
}

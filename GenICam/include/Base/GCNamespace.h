// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Name of the namespace of the base library, for code that spells it by macro or with its version.

#define GENICAM_NAMESPACE GenICam
#define GENICAM_NAMESPACE_DEFINED

namespace GenICam
{
}
namespace GenICam_3_4 = GenICam;

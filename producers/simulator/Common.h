// SPDX-License-Identifier: Apache-2.0
// What the simulator takes from what all producers share, by its short names.
#pragma once

#include "common/features/FeatureList.h"
#include "common/features/RegisterMap.h"
#include "common/gentl/Error.h"
#include "common/modules/Technology.h"

namespace KxSim
{

using namespace KxProducer;

} // namespace KxSim

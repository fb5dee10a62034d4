// SPDX-License-Identifier: Apache-2.0
// The selectors of a feature, each as a digit of a counter.
#pragma once

#include <GenApi/SelectorSet.h>

#include <memory>

namespace KxGenApi
{

/// The digit for a selector, which is an enumeration, integer or boolean that can be written; null for any
/// other.
std::unique_ptr<GenApi::ISelectorDigit> MakeSelectorDigit(GenApi::IValue& selector);

} // namespace KxGenApi

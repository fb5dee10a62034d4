// SPDX-License-Identifier: Apache-2.0
// The functions behind the steps of compiled formulas.
#pragma once

#include "formula/FormulaProgram.h"

namespace KxGenApi
{

/// Carries out that operation.
template <typename Number>
typename Step<Number>::Run RunOf(Opcode opcode);

/// Ends the program: returns the first operand.
template <typename Number>
typename Step<Number>::Run RunOfEnd();

} // namespace KxGenApi

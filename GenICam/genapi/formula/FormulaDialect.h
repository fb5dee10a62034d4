// SPDX-License-Identifier: Apache-2.0
// What formulas may contain beyond the standard's grammar.
#pragma once

namespace KxGenApi
{

/// The extensions of the grammar, one switch each.
struct FormulaDialect
{
    bool integralDecimals; ///< "4.0" and "1e3" in a formula over integers; a real fraction stays an error
    bool doubledEquality;  ///< "==" for "=" and "!=" for "<>"
};

/// The grammar without extensions: a node whose formula needs one raises an exception on each use.
inline constexpr FormulaDialect kStrictDialect{false, false};

/// Description files in the field use these forms, and each has one sensible meaning.
inline constexpr FormulaDialect kTolerantDialect{true, true};

/// What the library compiles formulas with; the one place to switch an extension.
inline constexpr FormulaDialect kDialect = kTolerantDialect;

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
// What formulas may contain beyond the standard's grammar.
#pragma once

namespace KxGenApi
{

/// Decimal literals ("4.0", "1e3") in a formula over integers.
enum class IntegerDecimals
{
    Refused,      ///< compile error
    IntegralOnly, ///< "4.0" is 4, "2.5" a compile error
    Rounded       ///< "2.5" is 3: rounded half away from zero, as the values of float variables are
};

/// The extensions of the grammar, one switch each.
struct FormulaDialect
{
    IntegerDecimals integerDecimals;
    bool doubledEquality; ///< "==" for "=" and "!=" for "<>"
};

/// The grammar without extensions: a node whose formula needs one raises an exception on each use.
inline constexpr FormulaDialect kStrictDialect{IntegerDecimals::Refused, false};

/// Description files in the field use these forms, and each has one sensible meaning.
inline constexpr FormulaDialect kTolerantDialect{IntegerDecimals::Rounded, true};

/// What the library compiles formulas with; the one place to switch an extension.
inline constexpr FormulaDialect kDialect = kTolerantDialect;

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
// Descriptions for tests in a short notation, so that a test shows its nodes and not its XML.
#pragma once

#include <string>
#include <string_view>

namespace KxTest
{

/// Nodes in the short notation as XML. It knows no element by name but the two abbreviations, so whatever the
/// schema has can be written, and what it hasn't as well:
///
///     Integer Gain { pValue GainReg; Max 100 }           <Integer Name="Gain"><pValue>...
///     SwissKnife S { pVariable[Name=G] Gain; Formula G < 2 }    attributes in brackets; text gets escaped
///     Enumeration E { EnumEntry On { Value 1 } pValue R }       nodes in nodes
///     Integer Std[NameSpace=Standard] { ... }                   attributes of nodes
///     Integer L { Value 1; ValidValueSet 1\;2 }             a backslash keeps what follows from delimiting
///     IntReg R { at 0x10 4 RW; Little }     Address, Length, AccessMode, pPort Device; Endianess
std::string NodesAsXml(std::string_view outline);

/// A whole description with these nodes. It gets a port "Device" and a category "Root" unless they are there.
std::string DescriptionAsXml(std::string_view outline);

} // namespace KxTest

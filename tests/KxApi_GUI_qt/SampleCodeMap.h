// SPDX-License-Identifier: Apache-2.0
// Nodes whose pages have all the sample code that there is.
#pragma once

namespace KxTest
{

/// Their names, beside the category Root.
inline constexpr const char* kSampleNodes[] = {"Integer", "Ip",     "Float",   "Boolean",
                                               "Enum",    "String", "Command", "Register"};

inline constexpr char kSampleMap[] =
    "Category Root { pFeature Bank; pFeature Index; pFeature Integer; pFeature Ip; pFeature Float; pFeature "
    "Boolean; "
    "pFeature Enum; pFeature String; pFeature Command; pFeature Register }\n"
    "Enumeration Bank { EnumEntry First { Value 0 } EnumEntry Second { Value 1 } Value 1; pSelected Index }\n"
    "Integer Index { Value 2; pSelected Integer; pSelected Float }\n"
    "Integer Integer { Value 1; Min 0; Max 9; Unit us }\n"
    "Integer Ip { Value 1; Representation IPV4Address }\n"
    "Float Float { Value 1.5; Min 0; Max 9; Inc 0.5 }\n"
    "Boolean Boolean { Value true }\n"
    "Enumeration Enum { EnumEntry Off { Value 0 } EnumEntry On { Value 1 } Value 1 }\n"
    "StringReg String { Address 0; Length 8; AccessMode RW; pPort Device }\n"
    "Command Command { Value 0; CommandValue 1 }\n"
    "Register Register { at 0x10 4 RW }";

} // namespace KxTest

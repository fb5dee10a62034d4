// SPDX-License-Identifier: Apache-2.0
// Texts of the enumerations.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <GenApi/Types.h>

#include <cstddef>

namespace GenApi
{
namespace Detail
{

/// An enumerator and its text.
template <typename Enum>
struct EnumText
{
    Enum value;
    const char* text;
};

/// Conversions by a table; Table has `Begin`, `Count` and `Unknown`.
template <typename Enum, class Table>
struct EnumClass
{
    /// The enumerator of a text, which is case-sensitive; false for any other text and for null.
    static bool FromString(const GenICam::gcstring& ValueStr, Enum* pValue)
    {
        for (size_t i = 0; pValue != nullptr && i < Table::Count(); ++i) {
            if (ValueStr == Table::Begin()[i].text) {
                *pValue = Table::Begin()[i].value;
                return true;
            }
        }
        return false;
    }
    /// The text of an enumerator.
    static GenICam::gcstring ToString(Enum Value)
    {
        for (size_t i = 0; i < Table::Count(); ++i) {
            if (Table::Begin()[i].value == Value)
                return Table::Begin()[i].text;
        }
        return Table::Unknown();
    }
    /// InvalidArgumentException for null.
    static void ToString(GenICam::gcstring& ValueStr, Enum* pValue)
    {
        if (pValue == nullptr)
            throw INVALID_ARGUMENT_EXCEPTION("There is no value to convert");
        ValueStr = ToString(*pValue);
    }
};

#define KXGENAPI_ENUM_CLASS(Enum, unknown, ...)                                                              \
    struct Enum##Table                                                                                       \
    {                                                                                                        \
        static const EnumText<Enum>* Begin()                                                                 \
        {                                                                                                    \
            static const EnumText<Enum> rows[] = {__VA_ARGS__};                                              \
            return rows;                                                                                     \
        }                                                                                                    \
        static size_t Count()                                                                                \
        {                                                                                                    \
            const EnumText<Enum> rows[] = {__VA_ARGS__};                                                     \
            return sizeof rows / sizeof rows[0];                                                             \
        }                                                                                                    \
        static const char* Unknown() { return unknown; }                                                     \
    }

KXGENAPI_ENUM_CLASS(ESign, "_UndefinedSign", {Signed, "Signed"}, {Unsigned, "Unsigned"});
KXGENAPI_ENUM_CLASS(EAccessMode, "_UndefinedAccessMode", {NI, "NI"}, {NA, "NA"}, {WO, "WO"}, {RO, "RO"},
                    {RW, "RW"});
KXGENAPI_ENUM_CLASS(EVisibility, "_UndefinedVisibility", {Beginner, "Beginner"}, {Expert, "Expert"},
                    {Guru, "Guru"}, {Invisible, "Invisible"});
KXGENAPI_ENUM_CLASS(ECachingMode, "_UndefinedCachingMode", {NoCache, "NoCache"},
                    {WriteThrough, "WriteThrough"}, {WriteAround, "WriteAround"});
KXGENAPI_ENUM_CLASS(ERepresentation, "_UndefinedRepresentation", {Linear, "Linear"},
                    {Logarithmic, "Logarithmic"}, {Boolean, "Boolean"}, {PureNumber, "PureNumber"},
                    {HexNumber, "HexNumber"}, {IPV4Address, "IPV4Address"}, {MACAddress, "MACAddress"});
KXGENAPI_ENUM_CLASS(EEndianess, "_UndefinedEndian", {BigEndian, "BigEndian"}, {LittleEndian, "LittleEndian"});
KXGENAPI_ENUM_CLASS(ENameSpace, "_UndefinedNameSpace", {Custom, "Custom"}, {Standard, "Standard"});
KXGENAPI_ENUM_CLASS(EStandardNameSpace, "_UndefinedStandardNameSpace", {None, "None"}, {GEV, "GEV"},
                    {IIDC, "IIDC"}, {CL, "CL"}, {USB, "USB"});
KXGENAPI_ENUM_CLASS(EYesNo, "_UndefinedYesNo", {Yes, "Yes"}, {No, "No"});
KXGENAPI_ENUM_CLASS(ESlope, "_UndefinedESlope", {Increasing, "Increasing"}, {Decreasing, "Decreasing"},
                    {Varying, "Varying"}, {Automatic, "Automatic"});
KXGENAPI_ENUM_CLASS(EDisplayNotation, "_UndefinedEDisplayNotation", {fnAutomatic, "Automatic"},
                    {fnFixed, "Fixed"}, {fnScientific, "Scientific"});
KXGENAPI_ENUM_CLASS(EInputDirection, "_UndefinedEInputDirection", {idFrom, "From"}, {idTo, "To"},
                    {idNone, "None"});
KXGENAPI_ENUM_CLASS(EGenApiSchemaVersion, "_Undefined", {v1_0, "v1_0"}, {v1_1, "v1_1"});

#undef KXGENAPI_ENUM_CLASS

} // namespace Detail

typedef Detail::EnumClass<ESign, Detail::ESignTable> ESignClass;
typedef Detail::EnumClass<EAccessMode, Detail::EAccessModeTable> EAccessModeClass;
typedef Detail::EnumClass<EVisibility, Detail::EVisibilityTable> EVisibilityClass;
typedef Detail::EnumClass<ECachingMode, Detail::ECachingModeTable> ECachingModeClass;
typedef Detail::EnumClass<ERepresentation, Detail::ERepresentationTable> ERepresentationClass;
typedef Detail::EnumClass<EEndianess, Detail::EEndianessTable> EEndianessClass;
typedef Detail::EnumClass<ENameSpace, Detail::ENameSpaceTable> ENameSpaceClass;
typedef Detail::EnumClass<EStandardNameSpace, Detail::EStandardNameSpaceTable> EStandardNameSpaceClass;
typedef Detail::EnumClass<EYesNo, Detail::EYesNoTable> EYesNoClass;
typedef Detail::EnumClass<ESlope, Detail::ESlopeTable> ESlopeClass;
typedef Detail::EnumClass<EDisplayNotation, Detail::EDisplayNotationTable> EDisplayNotationClass;
typedef Detail::EnumClass<EInputDirection, Detail::EInputDirectionTable> EInputDirectionClass;
typedef Detail::EnumClass<EGenApiSchemaVersion, Detail::EGenApiSchemaVersionTable> EGenApiSchemaVersionClass;

} // namespace GenApi

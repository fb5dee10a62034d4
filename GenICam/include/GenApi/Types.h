// SPDX-License-Identifier: Apache-2.0
// Enumerations of the GenICam standard (GenApi 3.x). The values are part of the binary and of the file
// interface.
#pragma once

#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstdint>

namespace GenApi
{

/// Sign of an integer register.
typedef enum _ESign
{
    Signed,
    Unsigned,
    _UndefinedSign
} ESign;

/// What can be done with a node at present.
typedef enum _EAccessMode
{
    NI,                   ///< not implemented
    NA,                   ///< not available now
    WO,                   ///< can only be written
    RO,                   ///< can only be read
    RW,                   ///< can be read and written
    _UndefinedAccesMode,  ///< not determined yet
    _CycleDetectAccesMode ///< internal mark while the mode is being determined
} EAccessMode;

/// Whom a feature is meant for.
typedef enum _EVisibility
{
    Beginner = 0,
    Expert = 1,
    Guru = 2,
    Invisible = 3, ///< never shown to a user
    _UndefinedVisibility = 99
} EVisibility;

/// Whether and how a value is kept between accesses.
typedef enum _ECachingMode
{
    NoCache,      ///< each read goes to the port
    WriteThrough, ///< a written value is kept: the next read needs no port access
    WriteAround,  ///< a written value is not kept: the next read asks the port, then it is kept
    _UndefinedCachingMode
} ECachingMode;

/// How a number wants to be shown.
typedef enum _ERepresentation
{
    Linear,
    Logarithmic,
    Boolean,
    PureNumber,
    HexNumber,
    IPV4Address,
    MACAddress,
    _UndefinedRepresentation
} ERepresentation;

#ifndef NO_UNDEFINEDED_REPRESENTATION
#define _UndefindedRepresentation _UndefinedRepresentation
#endif

/// Byte order of a register.
typedef enum _EEndianess
{
    BigEndian,
    LittleEndian,
    _UndefinedEndian
} EEndianess;

/// Whether a feature's name is the standard's or the maker's own.
typedef enum _ENameSpace
{
    Custom,
    Standard,
    _UndefinedNameSpace
} ENameSpace;

/// Transport standard that a description follows.
typedef enum _EStandardNameSpace
{
    None,
    GEV,
    IIDC,
    CL,
    USB,
    _UndefinedStandardNameSpace
} EStandardNameSpace;

/// Yes or no, or not said.
typedef enum _EYesNo
{
    Yes = 1,
    No = 0,
    _UndefinedYesNo = 2
} EYesNo;

/// Course of a converter's formula.
typedef enum _ESlope
{
    Increasing,
    Decreasing,
    Varying,
    Automatic,
    _UndefinedESlope
} ESlope;

/// What is checked of a description.
typedef enum _EXMLValidation
{
    xvLoad = 0x00000001L,
    xvCycles = 0x00000002L,
    xvSFNC = 0x00000004L,
    xvDefault = 0x00000000L,
    xvAll = 0xffffffffL,
    _UndefinedEXMLValidation = 0x8000000L
} EXMLValidation;

/// Form of a floating-point number as text.
typedef enum _EDisplayNotation
{
    fnAutomatic,
    fnFixed,
    fnScientific,
    _UndefinedEDisplayNotation
} EDisplayNotation;

/// The interface that a node is mainly used through.
typedef enum _EInterfaceType
{
    intfIValue,
    intfIBase,
    intfIInteger,
    intfIBoolean,
    intfICommand,
    intfIFloat,
    intfIString,
    intfIRegister,
    intfICategory,
    intfIEnumeration,
    intfIEnumEntry,
    intfIPort
} EInterfaceType;

/// Kind of relation that GetChildren follows.
typedef enum _ELinkType
{
    ctParentNodes,          ///< nodes that name this one
    ctReadingChildren,      ///< nodes that a read of this one may read
    ctWritingChildren,      ///< nodes that a write to this one writes
    ctInvalidatingChildren, ///< nodes whose change makes this one stale: reading children and invalidators
    ctDependingNodes,       ///< nodes that are invalidated with this one, direct and indirect ones
    ctTerminalNodes,        ///< nodes at the end of the write chain, direct and indirect ones
    ctValueChangingChildren ///< nodes whose value a write of this one can change
} ELinkType;

/// Kind of increment of a number.
typedef enum _EIncMode
{
    noIncrement,
    fixedIncrement,
    listIncrement ///< the valid values are a list
} EIncMode;

/// Direction of a converter.
typedef enum _EInputDirection
{
    idFrom,
    idTo,
    idNone
} EInputDirection;

/// Schema version of a description.
typedef enum _EGenApiSchemaVersion
{
    v1_0 = 1,
    v1_1 = 2,
    _Undefined = -1
} EGenApiSchemaVersion;

/// Whether changes fire callbacks.
typedef enum _ECallbackSuppressMode
{
    csmOff = 0,    ///< callbacks fire
    csmActive = 1, ///< no change fires anything until the mode is off again
    csmOnce = 2    ///< the next change fires nothing, later ones do
} ECallbackSuppressMode;

/// Texts.
typedef GenICam::gcstring_vector StringList_t;

} // namespace GenApi

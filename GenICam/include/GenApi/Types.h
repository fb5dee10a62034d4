// SPDX-License-Identifier: Apache-2.0
// Enumerations of the GenICam standard (GenApi 3.x). The values are part of the binary and of the file
// interface.
#pragma once

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
    _UndefinedESign
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
    ctInvalidatingChildren, ///< nodes named as its invalidators
    ctDependingNodes,       ///< nodes that are invalidated with this one, direct and indirect ones
    ctTerminalNodes         ///< nodes at the end of the write chain, direct and indirect ones
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
    idNone,
    _UndefinedEInputDirection
} EInputDirection;

/// Schema version of a description.
typedef enum _EGenApiSchemaVersion
{
    v1_0 = 1,
    v1_1 = 2,
    _UndefinedGenApiSchemaVersion = -1
} EGenApiSchemaVersion;

/// When a node callback runs: while the map is locked, or after its lock has been given back.
typedef enum _ECallbackType
{
    cbPostInsideLock = 1,
    cbPostOutsideLock = 2
} ECallbackType;

/// Whether changes of a node fire its callbacks.
typedef enum _ESuppressCallbackMode
{
    scmOff,   ///< callbacks fire
    scmOnce,  ///< the next change fires nothing, later ones do
    scmActive ///< no change fires anything until the mode is off again
} ESuppressCallbackMode;

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// Names of the interface's classes, for headers that need no more.
#pragma once

#include <Base/GCNamespace.h>
#include <GenApi/GenApiNamespace.h>

/// What interfaces are declared with.
#define GENICAM_INTERFACE struct

namespace GenICam
{
class gcstring;
class gcstring_vector;
class CLock;
} // namespace GenICam

namespace GenApi
{
struct IBase;
struct IBoolean;
struct ICategory;
struct IChunkPort;
struct ICommand;
struct IDestroy;
struct IDeviceInfo;
struct IEnumEntry;
struct IEnumeration;
struct IFloat;
struct IInteger;
struct INode;
struct INodeMap;
struct INodeMapDyn;
struct IPort;
struct IPortConstruct;
struct IPortRecorder;
struct IPortReplay;
struct IPortStacked;
struct IPortStackedConstruct;
struct IPortWriteList;
struct IReference;
struct IEnumReference;
struct IRegister;
struct ISelector;
struct IString;
struct IUserData;
struct IValue;
} // namespace GenApi

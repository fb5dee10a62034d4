// SPDX-License-Identifier: Apache-2.0
// The feature descriptions of the windows.
#pragma once

#include <GenApi/NodeMapRef.h>

namespace GenApi
{
struct IPort;
}

namespace KxApi
{

/// Numbers by which windows name their descriptions.
enum EXMLResourceID_t : int
{
    KxXMLResource_NodeMap = 1059,
    KxXMLResource_DisplayImage = 1060,
    KxXMLResource_DeviceSelection = 1063,
    KxXMLResource_DisplayGraph = 1067,
};

/// Makes the node map from the description and connects the port. False when the description can't be read;
/// raises what the node map factory raises for a malformed one.
bool LoadWindowNodeMap(GenApi::CNodeMapRef& objNodeMapRef, int nXMLResourceID, GenApi::IPort* pPort,
                       const char* szPortName);

} // namespace KxApi

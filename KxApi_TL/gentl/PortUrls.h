// SPDX-License-Identifier: Apache-2.0
// Where a module's description is to be had.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/CKxGenTLLib.h>

#include <string>
#include <vector>

namespace GenApi
{
struct IPort;
}

namespace KxApi
{

class CKxXMLFile;

namespace Detail
{

/// All URLs of a port, in the producer's order; at least one. Raises CKxGenTLErrorException.
std::vector<GenICam::gcstring> ReadPortUrls(CKxGenTLLib& lib, GenTL::PORT_HANDLE hPort);

/// Path of a "file:" URL.
std::string PathOfFileUrl(const std::string& url);

/// Makes the node map from the first URL that leads to a description: of the module's registers or of the
/// disk. Raises what the only one raised, or a RuntimeException with what is wrong with each.
void LoadDescription(CKxXMLFile& file, const std::vector<GenICam::gcstring>& urls, GenApi::IPort* pPort,
                     const GenICam::gcstring& portName);

} // namespace Detail
} // namespace KxApi

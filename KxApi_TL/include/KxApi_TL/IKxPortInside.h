// SPDX-License-Identifier: Apache-2.0
// What the SDK's own ports can do beside their node maps.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/IKxPort.h>

namespace KxApi
{

/// Every port of a module that the SDK opened is one.
struct IKxPortInside : IKxPort
{
    /// Name of the file that the module gave its description as, such as "Camera.zip". The description is
    /// fetched where GetINodeMap hasn't done so; raises what that raises.
    virtual GenICam::gcstring GetDescriptionName() = 0;
    /// Writes the description as the module gave it, zipped or not. Raises like GetDescriptionName, and
    /// RuntimeException when the file can't be written.
    virtual void SaveDescription(const GenICam::gcstring& strFileName) = 0;

protected:
    ~IKxPortInside() = default;
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
// The registers of a transport module.
#pragma once

namespace GenApi
{
struct INodeMap;
}

namespace KxApi
{

/// A module's port.
struct IKxPort
{
    /// The node map of the module, made at the first call. Belongs to the module and lives as long as it. Any
    /// thread; the node map has its own lock. Raises CKxGenTLErrorException when the module can't be opened
    /// or read, and what the node map factory raises for a broken description; the next call then tries
    /// again.
    virtual GenApi::INodeMap* GetINodeMap() = 0;

protected:
    ~IKxPort() = default;
};

} // namespace KxApi

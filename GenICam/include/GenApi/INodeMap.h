// SPDX-License-Identifier: Apache-2.0
// The nodes of one device.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/Container.h>
#include <GenApi/NodeWriteConcatenator.h>
#include <GenApi/Synch.h>
#include <GenApi/Types.h>

namespace GenApi
{

struct INode;
struct IPort;

/// A node map. Any thread; the map has one lock, which every access to a value takes.
struct GENAPI_DECL_ABSTRACT INodeMap
{
    /// Appends all nodes in the order of their first mention in the description.
    virtual void GetNodes(NodeList_t& Nodes) const = 0;

    /// The node of that name, which may carry the prefix "Std::" or "Cust::"; null if there is none.
    virtual INode* GetNode(const GenICam::gcstring& Name) const = 0;

    /// Forgets all cached values and fires the callbacks of all nodes.
    virtual void InvalidateNodes() const = 0;

    /// Connects a port to the port node of that name; not owned, null disconnects.
    /// @return false if there is no port node of that name.
    virtual bool Connect(IPort* pPort, const GenICam::gcstring& PortName) const = 0;

    /// Connects a port to the port node named "Device".
    virtual bool Connect(IPort* pPort) const = 0;

    /// Name that was given when the map was made.
    virtual GenICam::gcstring GetDeviceName() const = 0;

    /// Tells the map how many ms have passed; invalidates the nodes whose polling time is over.
    virtual void Poll(int64_t ElapsedTime) = 0;

    /// The lock of the map; take it to make several accesses one.
    virtual CLock& GetLock() const = 0;

    /// Number of nodes.
    virtual uint64_t GetNumNodes() const = 0;

    /// Compiles all formulas.
    /// @param pErrors gets a line for each formula that can't be compiled; may be null.
    /// @return true if all can.
    virtual bool ParseSwissKnifes(GenICam::gcstring_vector* pErrors = nullptr) const = 0;

    /// Makes a list for ConcatenatedWrite; the caller gives it back by its Destroy.
    virtual CNodeWriteConcatenator* NewNodeWriteConcatenator() const = 0;

    /// Writes all values of the list in their order; each write fires its callbacks. Nodes that do not exist
    /// and texts that are no value are passed over: an unknown name writes nothing, a text that is no number
    /// writes 0.
    /// @param featureStreaming allows nodes that are not streamable to be passed over as well.
    /// @param pErrorList gets a line for each write that the device refused; may be null.
    /// Each write is a change of its own; take the lock to keep others out in between.
    /// @return false if the device refused any.
    virtual bool ConcatenatedWrite(CNodeWriteConcatenator& List, bool featureStreaming = true,
                                   GenICam::gcstring_vector* pErrorList = nullptr) = 0;

    /// Deletes the map and all its nodes.
    virtual void Destroy() = 0;

protected:
    virtual ~INodeMap() = default;
};

} // namespace GenApi

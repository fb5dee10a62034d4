// SPDX-License-Identifier: Apache-2.0
// The nodes of one device.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/ConcatenatedWrite.h>
#include <GenApi/Container.h>
#include <GenApi/Synch.h>
#include <GenApi/Types.h>

namespace GenApi
{

/// A node map. Any thread; the map has one lock, which every access to a value takes. It is deleted by its
/// IDestroy; IDeviceInfo and IUserData are there besides.
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
    virtual GenICam::gcstring GetDeviceName() = 0;

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
    /// are passed over; a text that is no number or switch writes 0. A stacked port gets all writes to
    /// registers in one call at the end.
    /// @param pErrorList gets a line for each write that was refused; may be null.
    /// Take the lock to keep others out between the writes.
    /// @return false if any was refused.
    virtual bool ConcatenatedWrite(CNodeWriteConcatenator* pList, bool featureStreaming = true,
                                   GenICam::gcstring_vector* pErrorList = nullptr) = 0;

    /// Connects a port that takes many writes in one go; as above.
    virtual bool Connect(IPortStacked* pPort, const GenICam::gcstring& PortName) = 0;
    virtual bool Connect(IPortStacked* pPort) = 0;

    /// Whether changes of any node fire callbacks.
    virtual void SetSuppressCallbackMode(ECallbackSuppressMode mode) = 0;

protected:
    virtual ~INodeMap() {}
};

} // namespace GenApi

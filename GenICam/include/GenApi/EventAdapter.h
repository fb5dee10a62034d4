// SPDX-License-Identifier: Apache-2.0
// Delivery of a device's event messages to a node map.
#pragma once

#include <GenApi/EventPort.h>
#include <GenApi/GenApiLinkage.h>

#include <cstdint>
#include <vector>

namespace GenApi
{

/// Puts event messages into the ports of the node map that have the event's ID, then fires the callbacks,
/// each node's once per event. The node map must outlive the adapter, or DetachNodeMap be called before.
/// Messages may be delivered by any thread, one at a time; callbacks run in that thread. Attaching and
/// detaching must not coincide with it.
class GENAPI_DECL CEventAdapter
{
public:
    CEventAdapter(INodeMap* pNodeMap = nullptr);
    CEventAdapter(const CEventAdapter&) = delete;
    CEventAdapter& operator=(const CEventAdapter&) = delete;
    virtual ~CEventAdapter();

    /// Takes over all nodes that have an EventID; a map attached before is let go.
    virtual void AttachNodeMap(INodeMap* pNodeMap);
    /// Lets the nodes go; their ports are without implementation then.
    virtual void DetachNodeMap();

    /// Takes a message in the form of the transport standard. Raises RuntimeException, with nothing
    /// delivered, for one that breaks that form; events that the node map doesn't know are passed over.
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes) = 0;

protected:
    /// Delivers one event; `data` begins at address 0 of the port.
    void DeliverEvent(uint64_t id, const uint8_t* data, size_t length);
    void DeliverEvent(const GenICam::gcstring& id, const uint8_t* data, size_t length);

    /// The ports that serve a node, owned; programs that deliver in their own way walk them.
    std::vector<CEventPort*>* m_ppEventPorts;

private:
    template <class Id>
    void DeliverTo(const Id& id, const uint8_t* data, size_t length);

    std::vector<CEventPort*> m_ports;
};

} // namespace GenApi

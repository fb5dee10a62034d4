// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <GenApi/EventAdapter.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>

#include <memory>
#include <unordered_set>

namespace GenApi
{
namespace
{
/// The nodes that an event of the ID of `port` invalidates by way of that port.
void AddDependents(INode* port, std::unordered_set<INode*>& dependents)
{
    NodeList_t nodes;
    port->GetChildren(nodes, ctDependingNodes);
    for (INode* const node : nodes) {
        if (node->GetEventID() == port->GetEventID())
            dependents.insert(node);
    }
}
} // namespace

CEventAdapter::CEventAdapter(INodeMap* pNodeMap)
    : m_ppEventPorts(&m_ports)
{
    if (pNodeMap)
        CEventAdapter::AttachNodeMap(pNodeMap);
}

CEventAdapter::~CEventAdapter() { CEventAdapter::DetachNodeMap(); }

void CEventAdapter::AttachNodeMap(INodeMap* pNodeMap)
{
    DetachNodeMap();
    if (!pNodeMap)
        return;
    NodeList_t nodes;
    pNodeMap->GetNodes(nodes);
    // Features that carry the ID beside their port would otherwise fire twice.
    std::unordered_set<INode*> invalidatedByPorts;
    for (INode* const node : nodes) {
        if (node->GetPrincipalInterfaceType() == intfIPort && !node->GetEventID().empty())
            AddDependents(node, invalidatedByPorts);
    }
    for (INode* const node : nodes) {
        if (node->GetEventID().empty() || invalidatedByPorts.count(node) != 0)
            continue;
        auto port = std::make_unique<CEventPort>();
        if (port->AttachNode(node))
            m_ports.push_back(port.release());
    }
}

void CEventAdapter::DetachNodeMap()
{
    for (CEventPort* const port : m_ports)
        delete port;
    m_ports.clear();
}

template <class Id>
void CEventAdapter::DeliverTo(const Id& id, const uint8_t* data, size_t length)
{
    // All ports have the data before the first callback runs, which may read any of them.
    for (CEventPort* const port : m_ports) {
        if (port->CheckEventID(id))
            port->AttachEvent(data, static_cast<int64_t>(length));
    }
    for (CEventPort* const port : m_ports) {
        if (port->CheckEventID(id))
            port->InvalidateNode();
    }
}

void CEventAdapter::DeliverEvent(uint64_t id, const uint8_t* data, size_t length)
{
    DeliverTo(id, data, length);
}

void CEventAdapter::DeliverEvent(const GenICam::gcstring& id, const uint8_t* data, size_t length)
{
    DeliverTo(id, data, length);
}

} // namespace GenApi

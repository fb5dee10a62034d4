// SPDX-License-Identifier: Apache-2.0
#include "HexId.h"

#include <Base/GCException.h>
#include <GenApi/EventPort.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>

#include <cstring>

namespace GenApi
{

CEventPort::CEventPort(INode* pNode) { AttachNode(pNode); }

CEventPort::~CEventPort()
{
    try {
        DetachNode();
    } catch (...) {
        // Callbacks of the node may throw; the port is gone from it all the same.
    }
}

bool CEventPort::AttachNode(INode* pNode)
{
    DetachNode();
    const GenICam::gcstring eventId = pNode ? pNode->GetEventID() : GenICam::gcstring();
    const auto id = KxGenApi::NormalizeHexId(eventId.c_str());
    if (!id)
        return false;
    m_id = *id;
    m_node = pNode;
    if (const auto port = dynamic_cast<IPortConstruct*>(pNode))
        port->SetPortImpl(this);
    return true;
}

void CEventPort::DetachNode()
{
    INode* const node = m_node;
    m_node = nullptr;
    m_id.clear();
    m_data.clear();
    m_hasData = false;
    if (const auto port = dynamic_cast<IPortConstruct*>(node))
        port->SetPortImpl(nullptr);
}

GenICam::gcstring CEventPort::GetEventID() const { return GenICam::gcstring(m_id); }

int CEventPort::GetEventIDLength() const { return static_cast<int>((m_id.size() + 1) / 2); }

bool CEventPort::CheckEventID(uint64_t EventID) const { return m_node && m_id == KxGenApi::ToHexId(EventID); }

bool CEventPort::CheckEventID(const uint8_t* pEventIDBuffer, int EventIDLength) const
{
    return m_node && pEventIDBuffer && EventIDLength > 0 &&
           m_id == KxGenApi::ToHexId(pEventIDBuffer, static_cast<size_t>(EventIDLength));
}

bool CEventPort::CheckEventID(const GenICam::gcstring& EventID) const
{
    return m_node && KxGenApi::NormalizeHexId(EventID.c_str()) == m_id;
}

void CEventPort::AttachEvent(const uint8_t* pBaseAddress, int64_t Length)
{
    if (!m_node)
        throw LOGICAL_ERROR_EXCEPTION("An event port without a node can't take an event");
    if (Length < 0 || (Length > 0 && !pBaseAddress))
        throw INVALID_ARGUMENT_EXCEPTION("Event 0x%s: %lld bytes are no event data", m_id.c_str(),
                                         static_cast<long long>(Length));
    const AutoLock lock(m_node->GetNodeMap()->GetLock());
    m_data.assign(pBaseAddress, pBaseAddress + Length);
    m_hasData = true;
}

void CEventPort::DetachEvent()
{
    if (!m_node)
        return;
    const AutoLock lock(m_node->GetNodeMap()->GetLock());
    m_data.clear();
    m_hasData = false;
}

void CEventPort::InvalidateNode()
{
    if (m_node)
        m_node->InvalidateNode();
}

EAccessMode CEventPort::GetAccessMode() const { return m_hasData ? RO : NA; }

void CEventPort::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    if (!m_hasData)
        throw ACCESS_EXCEPTION("Event 0x%s has not come yet", m_id.c_str());
    const auto size = static_cast<int64_t>(m_data.size());
    if (Address < 0 || Length < 0 || Address > size || Length > size - Address)
        throw OUT_OF_RANGE_EXCEPTION(
            "Address = %lld with Length = %lld lies outside the %lld bytes of event 0x%s",
            static_cast<long long>(Address), static_cast<long long>(Length), static_cast<long long>(size),
            m_id.c_str());
    if (Length != 0)
        std::memcpy(pBuffer, m_data.data() + Address, static_cast<size_t>(Length));
}

void CEventPort::Write(const void*, int64_t, int64_t)
{
    throw ACCESS_EXCEPTION("The data of event 0x%s can't be written", m_id.c_str());
}

} // namespace GenApi

// SPDX-License-Identifier: Apache-2.0
// The data of an event, as a port of the node map.
#pragma once

#include <Base/GCString.h>
#include <GenApi/PortImpl.h>

#include <string>
#include <vector>

namespace GenApi
{

/// Stands behind a node with an EventID. If the node is a port it serves the bytes of the last event of that
/// ID, of which it keeps a copy; any other node it merely invalidates, which fires the node's callbacks. The
/// node map must outlive it, or DetachNode be called before. Any thread, except that attaching and detaching
/// a node must not coincide with anything else.
class GENAPI_DECL CEventPort : public CPortImpl
{
public:
    /// @param pNode as for AttachNode.
    CEventPort(INode* pNode = nullptr);
    CEventPort(const CEventPort&) = delete;
    CEventPort& operator=(const CEventPort&) = delete;
    ~CEventPort() override;

    EInterfaceType GetPrincipalInterfaceType() const { return intfIPort; }

    /// Takes over a node; false if it is null or has no EventID.
    bool AttachNode(INode* pNode);
    /// Lets go of the node.
    void DetachNode();
    /// The node, null if there is none.
    INode* GetNode() const { return m_node; }

    /// The node's event, in lower-case hexadecimal digits without leading zeros.
    GenICam::gcstring GetEventID() const;
    /// Length of the node's event ID in bytes.
    int GetEventIDLength() const;
    /// Whether the node's event is that one: given by number, by its bytes with the most significant one
    /// first, or by hexadecimal digits.
    bool CheckEventID(uint64_t EventID) const;
    bool CheckEventID(const uint8_t* pEventIDBuffer, int EventIDLength) const;
    bool CheckEventID(const GenICam::gcstring& EventID) const;

    /// Copies the bytes of an event; call InvalidateNode when all ports of the event have theirs.
    void AttachEvent(const uint8_t* pBaseAddress, int64_t Length);
    /// Forgets the last event.
    void DetachEvent();
    /// Invalidates the node, which fires its callbacks and those of all that depends on it.
    void InvalidateNode();

    /// RO while there is an event, else NA.
    EAccessMode GetAccessMode() const override;
    /// Raises AccessException without an event, OutOfRangeException beyond its end.
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    /// Raises AccessException.
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    INode* m_node = nullptr;
    std::string m_id;
    std::vector<uint8_t> m_data; // protected by the node map's lock, as is m_hasData
    bool m_hasData = false;
};

} // namespace GenApi

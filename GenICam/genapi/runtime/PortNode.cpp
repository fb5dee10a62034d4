// SPDX-License-Identifier: Apache-2.0
#include "runtime/PortNode.h"

#include "runtime/Change.h"

#include <Base/GCException.h>

namespace KxGenApi
{

// Registers are small; a stream of ever new addresses must not grow without end.
constexpr size_t kMaxCacheSize = 16u << 20;
constexpr size_t kEntryOverhead = 64;

const RegisterCache::Bytes* RegisterCache::Find(int64_t address, int64_t length, uint64_t notBefore) const
{
    const auto found = m_entries.find(Key{address, length});
    return found != m_entries.end() && found->second.age >= notBefore ? &found->second.bytes : nullptr;
}

const RegisterCache::Bytes& RegisterCache::Store(int64_t address, Bytes bytes, uint64_t age)
{
    if (m_size + bytes.size() > kMaxCacheSize)
        Clear();
    const Key key{address, static_cast<int64_t>(bytes.size())};
    const auto [entry, isNew] = m_entries.try_emplace(key);
    if (isNew)
        m_size += bytes.size() + kEntryOverhead;
    entry->second = {std::move(bytes), age};
    return entry->second.bytes;
}

void RegisterCache::Drop(int64_t address, int64_t length)
{
    const auto found = m_entries.find(Key{address, length});
    if (found == m_entries.end())
        return;
    m_size -= found->second.bytes.size() + kEntryOverhead;
    m_entries.erase(found);
}

void RegisterCache::Clear()
{
    m_entries.clear();
    m_size = 0;
}

void PortNode::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    const Call call(*this, "Read");
    Connected(*this).Read(pBuffer, Address, Length);
}

void PortNode::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    Change change(*this, "Write");
    Connected(*this).Write(pBuffer, Address, Length);
    change.Invalidate(Index()); // it may have been any register
    change.Finish();
}

void PortNode::SetPortImpl(IPort* pPort)
{
    Change change(*this, "SetPortImpl");
    m_port = pPort;
    change.Invalidate(Index());
    change.Finish();
}

EYesNo PortNode::GetSwapEndianess() { return SwapsEndianess() ? Yes : No; }

IPort& PortNode::Connected(const Node& user) const
{
    if (m_port == nullptr) {
        throw ACCESS_EXCEPTION_NODE(Map().EntryText().c_str(),
                                    user.NameText())("No port is connected to '%s'", NameText());
    }
    return *m_port;
}

bool PortNode::SwapsEndianess() const
{
    const Property* const property = Find(Prop::SwapEndianess);
    return property != nullptr && property->integer != 0;
}

void PortNode::Forget()
{
    Node::Forget();
    m_cache.Clear();
}

EAccessMode PortNode::OwnAccessMode() const { return m_port != nullptr ? m_port->GetAccessMode() : NI; }

} // namespace KxGenApi

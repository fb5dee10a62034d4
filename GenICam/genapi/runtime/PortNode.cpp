// SPDX-License-Identifier: Apache-2.0
#include "runtime/PortNode.h"

#include "runtime/Change.h"

#include <Base/GCException.h>
#include <GenApi/PortImpl.h>
#include <GenApi/PortStackedImpl.h>

#include <mutex>
#include <set>

namespace KxGenApi
{
namespace
{

// An implementation knows one node that it serves, but may serve several, and go before them.
class ServedNodes
{
public:
    void Add(const IPort* port, PortNode* node)
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_pairs.emplace(port, node);
    }
    void Remove(const IPort* port, PortNode* node)
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_pairs.erase({port, node});
    }
    /// Null if there is none.
    PortNode* AnyOf(const IPort* port)
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        const auto found = m_pairs.lower_bound({port, nullptr});
        return found != m_pairs.end() && found->first == port ? found->second : nullptr;
    }

private:
    std::mutex m_lock; // innermost: nothing is taken while it is held
    std::set<std::pair<const IPort*, PortNode*>> m_pairs;
};

ServedNodes& TheServedNodes()
{
    static ServedNodes* const nodes = new ServedNodes; // outlives maps and ports in static objects
    return *nodes;
}

} // namespace

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

PortNode::~PortNode() { Dismiss(); }

void PortNode::Dismiss()
{
    if (!m_tell)
        return;
    TheServedNodes().Remove(m_port, this);
    m_tell(TheServedNodes().AnyOf(m_port));
}

void PortNode::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    const Call call(*this, "Read");
    ReadDevice(*this, pBuffer, Address, Length);
}

void PortNode::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    Change change(*this, "Write");
    WriteDevice(*this, pBuffer, Address, Length);
    change.Invalidate(Index()); // it may have been any register
    change.Finish();
}

void PortNode::SetPortImpl(IPort* pPort)
{
    TellImpl tell;
    if (const auto impl = dynamic_cast<CPortImpl*>(pPort))
        tell = [impl](PortNode* node) { impl->SetPortImpl(node); };
    Connect(pPort, dynamic_cast<IPortStacked*>(pPort), std::move(tell), "SetPortImpl");
}

void PortNode::SetPortImpl(IPortStacked* pPort)
{
    // What such a port is given is no stacked port: the node is the one to invalidate, not to write to.
    TellImpl tell;
    if (const auto impl = dynamic_cast<CPortStackedImpl*>(pPort))
        tell = [impl](PortNode* node) { impl->Serve(node); };
    Connect(pPort, pPort, std::move(tell), "SetPortImpl");
}

void PortNode::Connect(IPort* port, IPortStacked* stacked, TellImpl tell, const char* method)
{
    Change change(*this, method);
    if (m_port != port)
        Dismiss();
    m_port = port;
    m_stacked = stacked;
    m_tell = std::move(tell);
    if (m_tell) {
        TheServedNodes().Add(port, this);
        m_tell(this);
    }
    change.Invalidate(Index());
    change.Finish();
}

void PortNode::Release(const IPort& port)
{
    while (PortNode* const node = TheServedNodes().AnyOf(&port)) {
        Change change(*node, "Release"); // not finished, so that nothing fires
        TheServedNodes().Remove(&port, node);
        if (node->m_port != &port)
            continue;
        node->m_port = nullptr;
        node->m_stacked = nullptr;
        node->m_tell = nullptr;
        change.Invalidate(node->Index());
    }
}

void PortNode::ReadDevice(const Node& user, void* buffer, int64_t address, int64_t length)
{
    FlushCollected(); // what is waiting may be what is asked for
    Connected(user).Read(buffer, address, length);
}

void PortNode::WriteDevice(const Node& user, const void* buffer, int64_t address, int64_t length)
{
    IPort& port = Connected(user);
    if (m_isCollecting && m_stacked != nullptr) {
        const auto bytes = static_cast<const uint8_t*>(buffer);
        m_collected.emplace_back(address, RegisterCache::Bytes(bytes, bytes + length));
    } else {
        port.Write(buffer, address, length);
    }
    if (m_recorder != nullptr)
        m_recorder->Write(buffer, address, length);
}

void PortNode::FlushCollected()
{
    if (m_collected.empty())
        return;
    auto collected = std::exchange(m_collected, {});
    std::vector<PORT_REGISTER_STACK_ENTRY> entries;
    entries.reserve(collected.size());
    for (auto& [address, bytes] : collected)
        entries.push_back({static_cast<uint64_t>(address), bytes.data(), bytes.size()});
    if (m_stacked == nullptr)
        return;
    try {
        m_stacked->Write(entries.data(), entries.size());
    } catch (...) {
        // Which of them the device has taken nobody knows, but they are cached as if it had.
        Change change(*this, "Write"); // not finished, so that nothing fires
        change.Invalidate(Index());
        throw;
    }
}

void PortNode::SendCollected()
{
    m_isCollecting = false;
    FlushCollected();
}

void PortNode::Replay(IPortWriteList* pPortRecorder, bool Invalidate)
{
    if (pPortRecorder == nullptr)
        return;
    Change change(*this, "Replay");
    if (Invalidate)
        change.Invalidate(Index());           // also if a part alone is written
    pPortRecorder->Replay(&Connected(*this)); // not through the recording, which may be this very list
    change.Finish();
}

void PortNode::StartRecording(IPortWriteList* pPortRecorder)
{
    const Call call(*this, "StartRecording");
    m_recorder = pPortRecorder;
}

void PortNode::StopRecording()
{
    const Call call(*this, "StopRecording");
    m_recorder = nullptr;
}

gcstring PortNode::GetChunkID() const { return TextOf(Prop::ChunkID); }

EYesNo PortNode::CacheChunkData() const
{
    const Property* const property = Find(Prop::CacheChunkData);
    return property != nullptr && property->integer != 0 ? Yes : No;
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

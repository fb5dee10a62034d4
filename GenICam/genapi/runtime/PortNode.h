// SPDX-License-Identifier: Apache-2.0
// A port node: the implementation that an application connected, and the bytes that all cached registers
// share.
#pragma once

#include "runtime/Node.h"

#include <GenApi/IChunkPort.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>

#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace KxGenApi
{

/// Bytes read through a port, by address and length. Bounded: when it is full it begins anew.
class RegisterCache
{
public:
    using Bytes = std::vector<uint8_t>;

    /// The bytes if they were stored at that age of the map or later.
    const Bytes* Find(int64_t address, int64_t length, uint64_t notBefore) const;
    const Bytes& Store(int64_t address, Bytes bytes, uint64_t age);
    void Drop(int64_t address, int64_t length);
    void Clear();

private:
    struct Key
    {
        int64_t address, length;
        bool operator==(const Key& other) const { return address == other.address && length == other.length; }
    };
    struct Hash
    {
        size_t operator()(const Key& key) const
        {
            return (static_cast<size_t>(key.address) * 31 + static_cast<size_t>(key.length)) *
                   0x9E3779B97F4A7C15u;
        }
    };

    struct Entry
    {
        Bytes bytes;
        uint64_t age = 0; // of the map when they were stored
    };

    std::unordered_map<Key, Entry, Hash> m_entries;
    size_t m_size = 0; // bytes held in all
};

class PortNode final : public Node,
                       public IPortConstruct,
                       public IPortStackedConstruct,
                       public IPortRecorder,
                       public IChunkPort
{
public:
    using Node::Node;
    ~PortNode() override;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIPort; }
    EAccessMode GetAccessMode() const override { return Node::GetAccessMode(); }

    // IPort, for users
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

    // IPortConstruct, IPortStackedConstruct
    void SetPortImpl(IPort* pPort) override;
    void SetPortImpl(IPortStacked* pPort) override;
    EYesNo GetSwapEndianess() override;

    // IPortRecorder
    void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) override;
    void StartRecording(IPortWriteList* pPortRecorder) override;
    void StopRecording() override;

    // IChunkPort
    gcstring GetChunkID() const override;
    EYesNo CacheChunkData() const override;

    // for registers; `user` is named in errors
    void ReadDevice(const Node& user, void* buffer, int64_t address, int64_t length);
    void WriteDevice(const Node& user, const void* buffer, int64_t address, int64_t length);
    RegisterCache& Cache() { return m_cache; }
    bool SwapsEndianess() const;

    // for concatenated writes: what a stacked port is to write is kept, and sent in one call
    void BeginCollecting() { m_isCollecting = m_stacked != nullptr; }
    void SendCollected();

    /// Takes an implementation that is gone off all nodes that it serves, of whatever map; fires nothing.
    static void Release(const IPort& port);

    void Forget() override;

protected:
    EAccessMode OwnAccessMode() const override;

private:
    /// Tells an implementation of this library's base classes which node it serves.
    using TellImpl = std::function<void(PortNode*)>;

    /// Tells the implementation that it serves this node no more.
    void Dismiss();
    void Connect(IPort* port, IPortStacked* stacked, TellImpl tell, const char* method);
    IPort& Connected(const Node& user) const;
    void FlushCollected();

    IPort* m_port = nullptr;
    IPortStacked* m_stacked = nullptr; // the same one, if it takes many writes at once
    TellImpl m_tell;
    IPortWriteList* m_recorder = nullptr;
    RegisterCache m_cache;
    bool m_isCollecting = false;
    std::vector<std::pair<int64_t, RegisterCache::Bytes>> m_collected;
};

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
// A port node: the implementation that an application connected, and the bytes that all cached registers
// share.
#pragma once

#include "runtime/Node.h"

#include <GenApi/IPortConstruct.h>

#include <unordered_map>

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

class PortNode final : public Node, public IPortConstruct
{
public:
    using Node::Node;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIPort; }
    EAccessMode GetAccessMode() const override { return Node::GetAccessMode(); }

    // IPort, for users
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

    // IPortConstruct
    void SetPortImpl(IPort* pPort) override;
    EYesNo GetSwapEndianess() override;

    // for registers
    IPort& Connected(const Node& user) const;
    RegisterCache& Cache() { return m_cache; }
    bool SwapsEndianess() const;

    void Forget() override;

protected:
    EAccessMode OwnAccessMode() const override;

private:
    IPort* m_port = nullptr;
    RegisterCache m_cache;
};

} // namespace KxGenApi

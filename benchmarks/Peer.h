// SPDX-License-Identifier: Apache-2.0
// Aravis, whose node maps ours are measured beside.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct _ArvGc;
struct _ArvGcNode;

namespace Bench
{

/// A node map of the peer. Raises std::runtime_error for what the peer cannot load or doesn't have.
class PeerMap
{
public:
    enum class Device
    {
        None,
        Memory, ///< the peer's fake camera: plain memory
    };

    PeerMap(const std::string& xml, Device device);
    ~PeerMap();

    /// Null if there is no such node.
    _ArvGcNode* GetNode(const char* name) const;

    /// Number of the names that are found.
    size_t GetNodes(const std::vector<std::string>& names) const;

    static int64_t GetInteger(_ArvGcNode* feature);
    static void SetFloat(_ArvGcNode* feature, double value);

private:
    struct Unref
    {
        void operator()(void* object) const;
    };

    std::unique_ptr<void, Unref> m_device; // outlives the map, which reads it
    std::unique_ptr<_ArvGc, Unref> m_map;
};

} // namespace Bench

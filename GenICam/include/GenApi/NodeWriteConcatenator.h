// SPDX-License-Identifier: Apache-2.0
// A list of values that is written in one go.
#pragma once

#include <Base/GCString.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <utility>
#include <vector>

namespace GenApi
{

/// Collects pairs of node name and value text for INodeMap::ConcatenatedWrite. One thread at a time.
class GENAPI_DECL CNodeWriteConcatenator
{
public:
    /// Name and value of one write.
    using Entry = std::pair<GenICam::gcstring, GenICam::gcstring>;

    /// Adds a write; they are done in the order in which they were added.
    void Add(const GenICam::gcstring& NodeName, const GenICam::gcstring& ValueStr)
    {
        m_entries.emplace_back(NodeName, ValueStr);
    }

    /// Forgets all writes.
    void Clear() { m_entries.clear(); }

    /// Deletes an object that INodeMap::NewNodeWriteConcatenator made.
    void Destroy() { delete this; }

    /// The writes in their order.
    const std::vector<Entry>& Entries() const { return m_entries; }

private:
    std::vector<Entry> m_entries;
};

} // namespace GenApi

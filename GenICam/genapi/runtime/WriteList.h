// SPDX-License-Identifier: Apache-2.0
// The list of values for a concatenated write.
#pragma once

#include <Base/GCStringVector.h>
#include <GenApi/ConcatenatedWrite.h>
#include <GenApi/INodeMap.h>

#include <utility>
#include <variant>
#include <vector>

namespace KxGenApi
{

/// Names with values of different types.
class WriteList final : public GenApi::CNodeWriteConcatenator
{
public:
    using gcstring = GenICam::gcstring;
    using Value = std::variant<gcstring, int64_t, double, bool>;

    void Add(const gcstring& NodeName, const gcstring& Text) override
    {
        m_entries.emplace_back(NodeName, Text);
    }
    void Add(const gcstring& NodeName, const char* pText) override
    {
        m_entries.emplace_back(NodeName, gcstring(pText));
    }
    void Add(const gcstring& NodeName, const int64_t Number) override
    {
        m_entries.emplace_back(NodeName, Number);
    }
    void Add(const gcstring& NodeName, const double Number) override
    {
        m_entries.emplace_back(NodeName, Number);
    }
    void Add(const gcstring& NodeName, const bool On) override { m_entries.emplace_back(NodeName, On); }
    void Clear() override { m_entries.clear(); }
    void Destroy() override { delete this; }

    /// Writes all values; false if any was refused, of which `errors` gets a line each.
    bool WriteTo(GenApi::INodeMap& map, GenICam::gcstring_vector* errors) const;

private:
    std::vector<std::pair<gcstring, Value>> m_entries;
};

} // namespace KxGenApi

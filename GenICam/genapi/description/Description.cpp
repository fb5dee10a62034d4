// SPDX-License-Identifier: Apache-2.0
#include "description/Description.h"

namespace KxGenApi
{

const Property* Description::Find(NodeIndex node, Prop id) const
{
    for (const Property& property : Properties(node))
        if (property.id == id)
            return &property;
    return nullptr;
}

NodeIndex Description::FindNode(std::string_view name) const noexcept
{
    return m_names.Find(name, [this](NodeIndex node) { return m_nodes[node].name; });
}

} // namespace KxGenApi

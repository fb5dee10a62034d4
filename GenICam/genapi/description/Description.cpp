// SPDX-License-Identifier: Apache-2.0
#include "description/Description.h"

#include "description/HashName.h"

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
    const size_t mask = m_nameTable.size() - 1;
    for (size_t cell = HashName(name) & mask; m_nameTable[cell] != kNoNode; cell = (cell + 1) & mask)
        if (m_nodes[m_nameTable[cell]].name == name)
            return m_nameTable[cell];
    return kNoNode;
}

} // namespace KxGenApi

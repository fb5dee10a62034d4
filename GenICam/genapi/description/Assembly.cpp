// SPDX-License-Identifier: Apache-2.0
#include "description/Assembly.h"

#include "description/Links.h"

#include <utility>

namespace KxGenApi
{
std::shared_ptr<const Description> Assemble(DescriptionParts&& parts)
{
    MarkFeatures(parts.nodes, parts.properties);
    const References references = CollectReferences(parts.nodes, parts.properties);
    CheckCycles(parts.nodes, references);
    Edges edges = CollectEdges(references);
    std::shared_ptr<Description> description(new Description);
    description->m_dependents = std::move(edges.dependents.targets);
    description->m_firstDependent = std::move(edges.dependents.first);
    description->m_selectors = std::move(edges.selectors.targets);
    description->m_firstSelector = std::move(edges.selectors.first);
    description->m_names = std::move(parts.names);
    description->m_device = std::move(parts.device);
    description->m_nodes = std::move(parts.nodes);
    description->m_properties = std::move(parts.properties);
    description->m_text = parts.text.Release();
    description->m_source = std::move(parts.source);
    return description;
}

} // namespace KxGenApi

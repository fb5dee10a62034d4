// SPDX-License-Identifier: Apache-2.0
// Reading a value through a node's cache; included where nodes are implemented.
#pragma once

#include "runtime/Change.h"

namespace KxGenApi
{

template <typename Fetch>
void Node::ReadThroughCache(ReadOptions options, const Fetch& fetch)
{
    RequireReadable();
    if (m_valueKnown && !options.ignoreCache)
        return;
    const Level level(*this);
    const uint64_t before = Map().UncachedReads();
    m_valueKnown = false;
    fetch();
    if (CachingMode() == NoCache)
        Map().CountUncachedRead();
    m_valueKnown = !options.ignoreCache && Map().UncachedReads() == before;
}

} // namespace KxGenApi

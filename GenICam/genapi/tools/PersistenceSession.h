// SPDX-License-Identifier: Apache-2.0
// What a device is told before and after its features are stored or loaded.
#pragma once

#include <GenApi/INodeMap.h>

namespace KxGenApi
{

/// Runs a command of the Standard name space, and another one at the end of the block; commands that the map
/// lacks, or that can't be run at present, are passed over.
class PersistenceSession
{
public:
    PersistenceSession(GenApi::INodeMap& nodeMap, const char* start, const char* end);
    PersistenceSession(const PersistenceSession&) = delete;
    PersistenceSession& operator=(const PersistenceSession&) = delete;
    ~PersistenceSession();

private:
    GenApi::INodeMap& m_nodeMap;
    const char* m_end;
};

} // namespace KxGenApi

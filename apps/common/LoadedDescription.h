// SPDX-License-Identifier: Apache-2.0
// A description file, loaded and connected to memory.
#pragma once

#include "MemoryPort.h"

#include <GenApi/GenApi.h>

#include <deque>
#include <string>

namespace Kx
{

/// The node map of a description file with a memory port at each of its port nodes.
class LoadedDescription
{
public:
    /// Loads the file, zipped if it begins like a zip archive, whatever its name says. Raises
    /// RuntimeException that names the file, for a file that is missing or broken.
    explicit LoadedDescription(const std::string& fileName);

    const std::string& FileName() const { return m_fileName; }
    const GenApi::CNodeMapRef& Map() const { return m_map; }

    /// All nodes in the order of the file.
    const GenApi::NodeList_t& Nodes() const { return m_nodes; }

    /// Time that loading took, in ms, from opening the file until every node could be got.
    double LoadMilliseconds() const { return m_loadMilliseconds; }

private:
    void Load();

    std::string m_fileName;
    std::deque<MemoryPort> m_ports; // before the map, which calls them until it is gone
    GenApi::CNodeMapRef m_map;
    GenApi::NodeList_t m_nodes;
    double m_loadMilliseconds = 0;
};

} // namespace Kx

// SPDX-License-Identifier: Apache-2.0
#include "PersistenceSession.h"

#include <GenApi/ICommand.h>
#include <GenApi/INode.h>

namespace KxGenApi
{
namespace
{
void RunCommand(GenApi::INodeMap& nodeMap, const char* name)
{
    GenApi::INode* const node = nodeMap.GetNode(name);
    const auto command = dynamic_cast<GenApi::ICommand*>(node);
    if (command != nullptr && node->GetNameSpace() == GenApi::Standard && GenApi::IsWritable(node))
        command->Execute();
}
} // namespace

PersistenceSession::PersistenceSession(GenApi::INodeMap& nodeMap, const char* start, const char* end)
    : m_nodeMap(nodeMap)
    , m_end(end)
{
    RunCommand(nodeMap, start);
}

PersistenceSession::~PersistenceSession()
{
    try {
        RunCommand(m_nodeMap, m_end);
    } catch (...) {
        // The features themselves are where they belong; a device that refuses to hear of it changes nothing.
    }
}

} // namespace KxGenApi

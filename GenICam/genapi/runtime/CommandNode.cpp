// SPDX-License-Identifier: Apache-2.0
#include "runtime/Change.h"
#include "runtime/ChoiceNodes.h"
#include "runtime/Relations.h"

#include <Base/GCException.h>

namespace KxGenApi
{

CommandNode::CommandNode(NodeMap& map, NodeIndex index)
    : Node(map, index)
    , m_slots(*this)
{
    for (const Prop id : {Prop::CommandValue, Prop::pCommandValue}) {
        if (const Property* const property = Find(id))
            m_commandValue = NumberLink(*property);
    }
}

gcstring CommandNode::ToString(bool, bool)
{
    Change change(*this, "ToString");
    RequireReadable();
    const bool done = Ask(change);
    change.Finish();
    return done ? "0" : "1";
}

void CommandNode::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    if (ValueStr != "1" && ValueStr != "true") {
        throw KXNODE_ERROR(InvalidArgumentException)(
            "'%s' is neither '1' nor 'true', which would start the command", ValueStr.c_str());
    }
    Run(Verify, change);
    change.Finish();
}

bool CommandNode::IsValueCacheValid() const
{
    const Call call(*this, "IsValueCacheValid");
    return !m_pending;
}

void CommandNode::Execute(bool Verify)
{
    Change change(*this, "Execute");
    Run(Verify, change);
    change.Finish();
}

bool CommandNode::IsDone(bool)
{
    Change change(*this, "IsDone");
    const bool done = Ask(change);
    change.Finish();
    return done;
}

int64_t CommandNode::ReadInteger(ReadOptions options)
{
    RequireReadable();
    const Level level(*this);
    return m_slots.Read(options);
}

void CommandNode::WriteInteger(int64_t value, bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    m_slots.Write(value, verify, change);
}

void CommandNode::Run(bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    m_slots.Write(m_commandValue.Integer(*this), verify, change);
    m_pending = true;
}

bool CommandNode::Ask(Change& change)
{
    if (!m_pending)
        return true;
    const Node* const target = m_slots.Target();
    if (target != nullptr && IsReadable(target->AccessMode())) {
        const Level level(*this);
        ReadOptions options;
        options.ignoreCache = true;
        if (m_slots.Read(options) == m_commandValue.Integer(*this))
            return false;
    }
    m_pending = false; // what can't be read back, or holds nothing, ends at once
    // The device has changed what the command wrote, so all that shows it has to know.
    change.Invalidate(Index());
    for (const NodeIndex terminal : RelatedNodes(Described(), Index(), ctTerminalNodes))
        change.Invalidate(terminal);
    return true;
}

} // namespace KxGenApi

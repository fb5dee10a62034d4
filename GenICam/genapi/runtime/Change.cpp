// SPDX-License-Identifier: Apache-2.0
#include "runtime/Change.h"

#include "runtime/Callbacks.h"
#include "runtime/RegisterAccess.h"

#include <Base/GCException.h>

#include <algorithm>

namespace KxGenApi
{

Call::Call(const Node& node, const char* method)
    : m_map(node.Map())
{
    m_map.GetLock().Lock();
    m_outermost = m_map.EnterCall(&node, method);
}

Call::~Call()
{
    if (m_outermost)
        m_map.LeaveCall();
    m_map.GetLock().Unlock();
}

Change::Change(const Node& node, const char* method)
    : m_map(node.Map())
{
    m_map.GetLock().Lock();
    m_outermost = m_map.EnterCall(&node, method);
}

Change::Change(NodeMap& map, const char* method)
    : m_map(map)
{
    m_map.GetLock().Lock();
    m_outermost = m_map.EnterCall(nullptr, method);
}

Change::~Change()
{
    if (!m_locked)
        return;
    ForgetDependents(nullptr);
    Unlock();
}

// The constructor takes the lock.
KXGC_NO_THREAD_SAFETY_ANALYSIS void Change::Unlock()
{
    m_locked = false;
    if (m_outermost)
        m_map.LeaveCall();
    m_map.GetLock().Unlock();
}

void Change::Finish()
{
    std::vector<std::shared_ptr<CallbackSlot>> callbacks;
    const bool fires = m_starts.empty() || m_map.TakeSuppression();
    ForgetDependents(fires && m_map.m_callbackCount > 0 ? &callbacks : nullptr);
    m_starts.clear();
    {
        // Calls out of a callback are calls of their own, with names and a depth of their own.
        const NodeMap::Aside aside(m_map);
        for (const auto& callback : callbacks)
            callback->Run(cbPostInsideLock);
    }
    Unlock();
    for (const auto& callback : callbacks)
        callback->Run(cbPostOutsideLock);
}

void Change::ForgetDependents(std::vector<std::shared_ptr<CallbackSlot>>* callbacks)
{
    if (m_starts.empty())
        return;
    const Description& description = m_map.Described();
    std::vector<NodeIndex>& pending = m_map.BeginWalk();
    size_t written = 0;
    for (const Start& start : m_starts) {
        if (m_map.MarkVisited(start.node))
            Visit(start.node, start.knowsContent, callbacks);
        written += start.knowsContent ? 1U : 0U;
    }
    for (size_t i = 0; i < m_starts.size(); ++i) {
        pending.push_back(m_starts[i].node);
        while (!pending.empty()) {
            const NodeIndex node = pending.back();
            pending.pop_back();
            for (const NodeIndex dependent : description.Dependents(node)) {
                if (m_map.MarkVisited(dependent)) {
                    Visit(dependent, false, callbacks);
                    pending.push_back(dependent);
                } else if (written > 1 && WasWrittenBefore(dependent, i)) {
                    Visit(dependent, false, nullptr); // what was written later may have changed it
                }
            }
        }
    }
}

bool Change::WasWrittenBefore(NodeIndex node, size_t start) const
{
    return std::any_of(m_starts.begin(), m_starts.begin() + static_cast<ptrdiff_t>(start),
                       [&](const Start& earlier) { return earlier.node == node && earlier.knowsContent; });
}

void Change::Visit(NodeIndex index, bool knowsContent, std::vector<std::shared_ptr<CallbackSlot>>* callbacks)
{
    if (!knowsContent)
        m_map.MarkInvalidated(index);
    Node* const node = m_map.ExistingNode(index);
    if (node == nullptr) { // what nobody asked for yet knows nothing, but others may have read its bytes
        if (!knowsContent)
            RegisterAccess::ForgetBytesOf(m_map, index);
        return;
    }
    if (knowsContent)
        node->ForgetAccessMode();
    else
        node->Forget();
    if (callbacks != nullptr && node->HasCallbacks())
        node->TakeCallbacks(*callbacks);
}

void Level::Raise(const Node& node)
{
    --m_map.m_depth; // the destructor does not run
    if (m_map.m_steps > NodeMap::kMaxSteps)
        throw LOGICAL_ERROR_EXCEPTION_NODE(m_map.EntryText().c_str(), node.NameText())(
            "More than %u nodes are asked by one call, or %u circles met; the description forks without end "
            "at '%s'",
            NodeMap::kMaxSteps, NodeMap::kMaxCircles, node.NameText());
    m_map.m_steps += NodeMap::kMaxSteps / NodeMap::kMaxCircles;
    throw LOGICAL_ERROR_EXCEPTION_NODE(m_map.EntryText().c_str(), node.NameText())(
        "More than %u nodes refer to each other in a row; the description goes round in circles at '%s'",
        NodeMap::kMaxDepth, node.NameText());
}

} // namespace KxGenApi

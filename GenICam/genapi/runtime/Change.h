// SPDX-License-Identifier: Apache-2.0
// What every call goes through that reads or changes a node map: the lock, the name of the call for messages,
// the nodes that a change affects, and their callbacks.
#pragma once

#include "runtime/NodeMap.h"

#include <memory>
#include <vector>

namespace KxGenApi
{

/// A reading call of a user: holds the lock and remembers the call's name while it runs.
class Call
{
public:
    Call(const Node& node, const char* method);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call();

private:
    NodeMap& m_map;
    bool m_outermost;
};

/// A changing call of a user. The nodes that it changes are told by Wrote and Invalidate; Finish then makes
/// all that depends on them forget what it knew and runs the callbacks: those inside the lock first, then,
/// with the lock given back, those outside. A change that ends by an exception fires nothing, but what was
/// changed before the failure is still forgotten, so that no stale value is shown.
class Change
{
public:
    Change(const Node& node, const char* method);
    Change(NodeMap& map, const char* method);
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change();

    /// The node has a new content and knows it.
    void Wrote(Node& node) { m_starts.push_back({node.Index(), true}); }

    /// The node's content may have changed behind its back.
    void Invalidate(NodeIndex node) { m_starts.push_back({node, false}); }

    void Finish();

private:
    struct Start
    {
        NodeIndex node;
        bool knowsContent;
    };

    void ForgetDependents(std::vector<std::shared_ptr<CallbackSlot>>* callbacks);
    bool WasWrittenBefore(NodeIndex node, size_t start) const;
    void Visit(NodeIndex node, bool knowsContent, std::vector<std::shared_ptr<CallbackSlot>>* callbacks);
    void Unlock();

    NodeMap& m_map;
    bool m_outermost;
    bool m_locked = true;
    std::vector<Start> m_starts;
};

/// One level of nodes that ask each other; raises LogicalErrorException when they go round in circles.
class Level
{
public:
    explicit Level(const Node& node)
        : m_map(node.Map())
    {
        m_map.m_steps = m_map.m_depth == 0 ? 0 : m_map.m_steps + 1;
        if (++m_map.m_depth > NodeMap::kMaxDepth || m_map.m_steps > NodeMap::kMaxSteps)
            Raise(node);
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --m_map.m_depth; }

private:
    [[noreturn]] void Raise(const Node& node);

    NodeMap& m_map;
};

} // namespace KxGenApi

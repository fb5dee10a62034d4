// SPDX-License-Identifier: Apache-2.0
// Registered callbacks: one slot each, and the registry that finds the node of a handle.
#pragma once

#include <GenApi/NodeCallback.h>

#include <atomic>
#include <memory>

namespace KxGenApi
{

/// A registered callback. A change in progress holds it too, so that it may be removed while it runs.
class CallbackSlot
{
public:
    explicit CallbackSlot(GenApi::CNodeCallback& callback)
        : m_callback(callback)
    {}
    CallbackSlot(const CallbackSlot&) = delete;
    CallbackSlot& operator=(const CallbackSlot&) = delete;
    ~CallbackSlot() { m_callback.Destroy(); }

    GenApi::CallbackHandleType Handle() const
    {
        return reinterpret_cast<GenApi::CallbackHandleType>(&m_callback);
    }

    /// Runs it unless it has been removed meanwhile.
    void Run(GenApi::ECallbackType type) const
    {
        if (m_active.load(std::memory_order_acquire))
            m_callback(type);
    }

    void Deactivate() { m_active.store(false, std::memory_order_release); }

private:
    GenApi::CNodeCallback& m_callback;
    std::atomic<bool> m_active{true};
};

/// Remembers and forgets which node a handle belongs to, for Deregister(handle). Any thread.
void RememberCallback(GenApi::CallbackHandleType handle, GenApi::INode& node);
void ForgetCallback(GenApi::CallbackHandleType handle);

} // namespace KxGenApi

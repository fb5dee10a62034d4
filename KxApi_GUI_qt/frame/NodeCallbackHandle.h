// SPDX-License-Identifier: Apache-2.0
// Owner of a callback that is registered at a node.
#pragma once

#include <GenApi/NodeCallback.h>

#include <utility>

namespace KxApi
{

/// Ends the callback's registration at its end. The node outlives it.
class CNodeCallbackHandle
{
public:
    explicit CNodeCallbackHandle(GenApi::CallbackHandleType hCallback = 0) noexcept
        : m_hCallback(hCallback)
    {}
    CNodeCallbackHandle(CNodeCallbackHandle&& other) noexcept
        : m_hCallback(std::exchange(other.m_hCallback, 0))
    {}
    CNodeCallbackHandle& operator=(CNodeCallbackHandle&& other) noexcept
    {
        std::swap(m_hCallback, other.m_hCallback);
        return *this;
    }
    CNodeCallbackHandle(const CNodeCallbackHandle&) = delete;
    CNodeCallbackHandle& operator=(const CNodeCallbackHandle&) = delete;
    ~CNodeCallbackHandle() { GenApi::Deregister(m_hCallback); }

private:
    GenApi::CallbackHandleType m_hCallback; // 0 for none
};

} // namespace KxApi

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KxApi_TL/IKxAllocator.h>

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace KxTest
{

/// An application's allocator that notes what it is asked for. Each piece is a heap block of its own, so that
/// the address sanitizer sees a step beside it.
struct Allocator final : KxApi::IKxAllocator
{
    std::vector<size_t> sizes;
    std::vector<std::string> calls;
    std::atomic<bool> empty{false};

    void Allocate(void** ppBuffer, size_t nSize, void** ppContext) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        calls.emplace_back("Allocate");
        sizes.push_back(nSize);
        *ppBuffer = empty ? nullptr : ::operator new(nSize);
        *ppContext = this;
        if (*ppBuffer)
            m_held[*ppBuffer] = nSize;
    }
    void Deallocate(void* pBuffer, size_t nSize, void* pContext) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        calls.emplace_back("Deallocate");
        EXPECT_EQ(nSize, m_held[pBuffer]);
        EXPECT_EQ(pContext, this);
        m_held.erase(pBuffer);
        ::operator delete(pBuffer);
    }
    void OnDeregister() override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        calls.emplace_back("OnDeregister");
    }

    /// The blocks that are out.
    size_t Held() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_held.size();
    }
    /// Whether its end was the last call, with nothing out any more.
    bool IsDeregistered() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return !calls.empty() && calls.back() == "OnDeregister" && m_held.empty();
    }

private:
    mutable std::mutex m_mutex;
    std::map<void*, size_t> m_held;
};

} // namespace KxTest

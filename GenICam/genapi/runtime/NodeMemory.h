// SPDX-License-Identifier: Apache-2.0
// Memory for the nodes of a map, which live as long as the map.
#pragma once

#include "description/Prefault.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace KxGenApi
{

/// Gives out pieces of chunks that grow with what has been asked for. Each node by itself would cost the heap
/// a sixth of the time that a large file takes, most of it when they go.
class NodeMemory
{
public:
    /// The object lives until its destructor is called, its memory until this one's is.
    template <class T, typename... Arguments>
    T* Make(Arguments&&... arguments)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        constexpr size_t kSize = RoundUp(sizeof(T));
        char* const piece = Take(kSize);
        try {
            return new (piece) T(std::forward<Arguments>(arguments)...);
        } catch (...) {
            GiveBack(piece, kSize);
            throw;
        }
    }

private:
    static constexpr size_t kFirstChunk = 8 * 1024;
    static constexpr size_t kLargestChunk = 2 * 1024 * 1024;

    static constexpr size_t RoundUp(size_t bytes)
    {
        constexpr size_t kAlignment = alignof(std::max_align_t);
        return (bytes + kAlignment - 1) & ~(kAlignment - 1);
    }

    char* Take(size_t size)
    {
        if (size > m_freeBytes) {
            const size_t chunk = std::max(size, std::clamp(m_taken / 2, kFirstChunk, kLargestChunk));
            m_chunks.emplace_back(new char[chunk]);
            m_free = m_chunks.back().get();
            m_freeBytes = chunk;
            m_taken += chunk;
            Prefault(m_free, chunk);
        }
        char* const piece = m_free;
        m_free += size;
        m_freeBytes -= size;
        return piece;
    }

    // The last piece; another one is lost until the map goes.
    void GiveBack(char* piece, size_t size)
    {
        if (piece + size != m_free)
            return;
        m_free = piece;
        m_freeBytes += size;
    }

    std::vector<std::unique_ptr<char[]>> m_chunks;
    char* m_free = nullptr;
    size_t m_freeBytes = 0;
    size_t m_taken = 0;
};

} // namespace KxGenApi

// SPDX-License-Identifier: Apache-2.0
// Memory for many short texts that live equally long.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

namespace KxGenApi
{

class TextArena
{
public:
    TextArena() = default;

    /// Texts that lie in `kept` needn't be copied: whoever takes the chunks keeps it too.
    explicit TextArena(std::string_view kept)
        : m_kept(kept)
    {}

    /// The text where it lies if it is kept, else a copy that lives as long as the chunks.
    std::string_view Copy(std::string_view text)
    {
        const std::less_equal<> notAfter;
        const bool isKept = !text.empty() && notAfter(m_kept.data(), text.data()) &&
                            notAfter(text.data() + text.size(), m_kept.data() + m_kept.size());
        return isKept ? text : Join({text});
    }

    /// The pieces one after the other, NUL-terminated.
    std::string_view Join(std::initializer_list<std::string_view> pieces)
    {
        size_t size = 0;
        for (const std::string_view piece : pieces)
            size += piece.size();
        if (size == 0)
            return "";
        char* const begin = Take(size + 1);
        char* end = begin;
        for (const std::string_view piece : pieces) {
            if (!piece.empty())
                std::memcpy(end, piece.data(), piece.size());
            end += piece.size();
        }
        *end = 0;
        return {begin, size};
    }

    /// Hands over the memory; the texts stay where they are.
    std::vector<std::unique_ptr<char[]>> Release()
    {
        m_free = nullptr;
        m_freeBytes = 0;
        return std::move(m_chunks);
    }

private:
    static constexpr size_t kChunk = 32 * 1024;

    char* Take(size_t size)
    {
        if (size > m_freeBytes) {
            const size_t bytes = std::max(size, kChunk);
            m_chunks.emplace_back(new char[bytes]); // not zeroed: all of it is written
            // A text longer than a chunk must not cost the rest of the open one.
            if (bytes > kChunk)
                return m_chunks.back().get();
            m_free = m_chunks.back().get();
            m_freeBytes = bytes;
        }
        char* const begin = m_free;
        m_free += size;
        m_freeBytes -= size;
        return begin;
    }

    std::string_view m_kept;
    std::vector<std::unique_ptr<char[]>> m_chunks;
    char* m_free = nullptr;
    size_t m_freeBytes = 0;
};

} // namespace KxGenApi

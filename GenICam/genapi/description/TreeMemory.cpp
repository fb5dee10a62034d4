// SPDX-License-Identifier: Apache-2.0
#include "description/TreeMemory.h"

#include "description/Prefault.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>

namespace KxGenApi
{
namespace
{

// Of the tree, by tags of the file: an element has two tags as a rule and takes 64 bytes, an attribute 40. A
// block that is too small is no fault: the rest is asked for piece by piece.
constexpr size_t kBytesPerTag = 44;
constexpr size_t kAlignment = alignof(std::max_align_t);

// What the parser's functions, which know nothing but sizes, take from.
thread_local TreeMemory* t_current = nullptr;

} // namespace

TreeMemory::TreeMemory()
    : m_outer(t_current)
{
    // The parser is linked into this library; nobody else's copy is touched.
    static const bool isSet = (pugi::set_memory_management_functions(Allocate, Free), true);
    static_cast<void>(isSet);
    t_current = this;
}

TreeMemory::~TreeMemory()
{
    t_current = m_outer;
    std::free(m_block);
}

void TreeMemory::Expect(size_t tags)
{
    constexpr size_t kSmall = 64 * 1024;
    const size_t bytes = tags * kBytesPerTag;
    if (m_block != nullptr || bytes < kSmall)
        return;
    // Where it pays, the block begins with a huge page.
    const bool isLarge = bytes >= kHugePage / 8 * 5;
    m_size = isLarge ? std::max(bytes, kHugePage) : bytes;
    void* block = nullptr;
    if (isLarge)
        block = std::aligned_alloc(kHugePage, (m_size + kHugePage - 1) & ~(kHugePage - 1));
    else
        block = std::malloc(m_size);
    if (block == nullptr)
        m_size = 0; // the parser will tell if there isn't enough for pieces either
    m_block = static_cast<char*>(block);
    Prefault(m_block, m_size);
}

void* TreeMemory::Allocate(size_t bytes)
{
    const size_t size = (bytes + kAlignment - 1) & ~(kAlignment - 1);
    TreeMemory* const current = t_current;
    if (current != nullptr && size <= current->m_size - current->m_used) {
        char* const piece = current->m_block + current->m_used;
        current->m_used += size;
        return piece;
    }
    void* const piece = std::malloc(bytes);
    if (piece != nullptr)
        Prefault(piece, bytes);
    return piece;
}

void TreeMemory::Free(void* memory)
{
    const std::less<> below;
    const TreeMemory* const current = t_current;
    if (current == nullptr || below(memory, current->m_block) ||
        !below(memory, current->m_block + current->m_size))
        std::free(memory);
}

} // namespace KxGenApi

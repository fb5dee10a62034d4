// SPDX-License-Identifier: Apache-2.0
// Memory for the trees of files, which live while a description is read.
#pragma once

#include <cstddef>

namespace KxGenApi
{

/// While it lives, trees that this thread makes take their memory from one block, as long as there is room;
/// it has to outlive them. Asking for the block at once, and giving it back at once, spares the system's work
/// for each piece of 32 kB that the parser asks for.
class TreeMemory
{
public:
    TreeMemory();
    TreeMemory(const TreeMemory&) = delete;
    TreeMemory& operator=(const TreeMemory&) = delete;
    ~TreeMemory();

    /// Gets the block for a file of that many tags, unless there is one. Small files need none.
    void Expect(size_t tags);

private:
    static void* Allocate(size_t bytes);
    static void Free(void* memory);

    TreeMemory* const m_outer; // the one that this one takes the place of
    char* m_block = nullptr;
    size_t m_size = 0;
    size_t m_used = 0;
};

} // namespace KxGenApi

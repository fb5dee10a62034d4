// SPDX-License-Identifier: Apache-2.0
#include "MemoryPort.h"

#include <algorithm>
#include <cstring>

namespace Kx
{

namespace
{

void CheckLength(int64_t address, int64_t length)
{
    if (length < 0 || length > MemoryPort::kMaxLength)
        throw RUNTIME_EXCEPTION(
            "Access of %lld bytes at address 0x%llx: the memory port takes 0 to %lld bytes",
            static_cast<long long>(length), static_cast<unsigned long long>(address),
            static_cast<long long>(MemoryPort::kMaxLength));
}

// Calls action(page number, offset in the page, offset in the buffer, bytes) for each page that the access
// touches.
template <typename Action>
void ForEachPage(int64_t address, int64_t length, uint64_t pageSize, Action action)
{
    uint64_t at = static_cast<uint64_t>(address);
    const uint64_t total = static_cast<uint64_t>(length);
    for (uint64_t done = 0; done < total;) {
        const uint64_t offset = at % pageSize;
        const uint64_t count = std::min(pageSize - offset, total - done);
        action(at / pageSize, offset, done, count);
        done += count;
        at += count; // wraps round at the end of the address space, as addresses computed by formulas do
    }
}

} // namespace

void MemoryPort::Read(void* pBuffer, int64_t Address, int64_t Length)
{
    CheckLength(Address, Length);
    const auto buffer = static_cast<uint8_t*>(pBuffer);
    ForEachPage(Address, Length, kPageSize,
                [&](uint64_t number, uint64_t offset, uint64_t done, uint64_t count) {
                    const auto page = m_pages.find(number);
                    if (page == m_pages.end())
                        std::memset(buffer + done, 0, count);
                    else
                        std::memcpy(buffer + done, page->second.data() + offset, count);
                });
}

void MemoryPort::Write(const void* pBuffer, int64_t Address, int64_t Length)
{
    CheckLength(Address, Length);
    const auto buffer = static_cast<const uint8_t*>(pBuffer);
    ForEachPage(Address, Length, kPageSize,
                [&](uint64_t number, uint64_t offset, uint64_t done, uint64_t count) {
                    std::memcpy(m_pages[number].data() + offset, buffer + done, count);
                });
}

} // namespace Kx

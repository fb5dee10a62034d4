// SPDX-License-Identifier: Apache-2.0
#include "MemoryPort.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

namespace
{

std::vector<uint8_t> Read(Kx::MemoryPort& port, int64_t address, int64_t length)
{
    std::vector<uint8_t> bytes(static_cast<size_t>(length), 0xee);
    port.Read(bytes.data(), address, length);
    return bytes;
}

// Addresses wrap round at the end of the address space.
int64_t Moved(int64_t address, int64_t by)
{
    return static_cast<int64_t>(static_cast<uint64_t>(address) + static_cast<uint64_t>(by));
}

TEST(MemoryPort, ReadsZeroUntilWritten)
{
    Kx::MemoryPort port;
    EXPECT_EQ(Read(port, 4090, 12), std::vector<uint8_t>(12, 0));
}

// An access may lie across pages, and across the end of the address space.
TEST(MemoryPort, GivesBackWhatWasWrittenWhereverItLies)
{
    std::vector<uint8_t> bytes(10000);
    std::iota(bytes.begin(), bytes.end(), uint8_t{1});
    for (const int64_t address :
         {int64_t{0}, int64_t{4095}, int64_t{-5000}, std::numeric_limits<int64_t>::max() - 10})
    {
        SCOPED_TRACE(address);
        Kx::MemoryPort port;
        port.Write(bytes.data(), address, 10000);
        EXPECT_EQ(Read(port, address, 10000), bytes);
        EXPECT_EQ(Read(port, Moved(address, 9999), 2), (std::vector<uint8_t>{bytes.back(), 0}));
        EXPECT_EQ(Read(port, Moved(address, -1), 2), (std::vector<uint8_t>{0, 1}));
    }
}

TEST(MemoryPort, RefusesAbsurdLengths)
{
    Kx::MemoryPort port;
    uint8_t byte = 0;
    for (const int64_t length :
         {int64_t{-1}, Kx::MemoryPort::kMaxLength + 1, std::numeric_limits<int64_t>::max()})
    {
        EXPECT_THROW(port.Read(&byte, 0, length), GenICam::RuntimeException) << length;
        EXPECT_THROW(port.Write(&byte, 0, length), GenICam::RuntimeException) << length;
    }
}

} // namespace

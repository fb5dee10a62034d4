// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/CLockBySemaphore.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>

using namespace KxApi;
using namespace std::chrono_literals;

namespace
{

bool Waits(std::future<void>& lock) { return lock.wait_for(50ms) == std::future_status::timeout; }

TEST(SemaphoreLock, NewLockIsFullyTaken)
{
    CLockBySemaphore lock(2);
    auto taker = std::async(std::launch::async, [&] { lock.Lock(); });
    EXPECT_TRUE(Waits(taker));
    lock.Unlock();
    taker.get();
}

TEST(SemaphoreLock, HasAsManyUnitsAsSaid)
{
    CLockBySemaphore lock(3);
    for (int i = 0; i < 10; ++i)
        lock.Unlock(); // no more than there are
    for (int i = 0; i < 3; ++i)
        lock.Lock();
    auto fourth = std::async(std::launch::async, [&] { lock.Lock(); });
    EXPECT_TRUE(Waits(fourth));
    lock.Unlock();
    fourth.get();
}

TEST(SemaphoreLock, TakingManyUnitsTakesOne)
{
    CLockBySemaphore lock(4);
    lock.UnlockMaxMinusOne(); // 3 of 4 free
    lock.LockMaxMinusOne();   // 2 free
    lock.Lock();
    lock.Lock();
    auto next = std::async(std::launch::async, [&] { lock.Lock(); });
    EXPECT_TRUE(Waits(next));
    lock.UnlockMaxMinusOne();
    next.get();
}

TEST(SemaphoreLock, OnlyUnitHasNoMaxMinusOneToWaitFor)
{
    CLockBySemaphore lock(1);
    lock.LockMaxMinusOne(); // taken beyond the only unit, at once
    lock.UnlockMaxMinusOne();
    lock.Unlock();
    auto taker = std::async(std::launch::async, [&] { lock.Lock(); });
    EXPECT_TRUE(Waits(taker));
    lock.Unlock();
    taker.get();
}

TEST(SemaphoreLock, OneUnitExcludesOthers)
{
    CLockBySemaphore lock(1);
    lock.Unlock();
    long nCounter = 0;
    const auto work = [&] {
        for (int i = 0; i < 5000; ++i) {
            lock.Lock();
            ++nCounter;
            lock.Unlock();
        }
    };
    auto other = std::async(std::launch::async, work);
    work();
    other.get();
    EXPECT_EQ(nCounter, 10000);
}

} // namespace

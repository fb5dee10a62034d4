// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/CLockBySemaphore.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>

using namespace KxApi;
using namespace std::chrono_literals;

namespace
{

struct Case
{
    const char* what;
    int64_t units;
    std::function<void(CLockBySemaphore&)> takeAll; ///< of a new lock, which has none free
};

TEST(SemaphoreLock, TakersWaitUntilAUnitIsFree)
{
    for (const Case& c : {
             Case{"a new lock is fully taken", 2, [](CLockBySemaphore&) {}},
             Case{"no more units than said can be given back", 3,
                  [](CLockBySemaphore& lock) {
                      for (int i = 0; i < 10; ++i)
                          lock.Unlock();
                      for (int i = 0; i < 3; ++i)
                          lock.Lock();
                  }},
             Case{"taking many units takes one", 4,
                  [](CLockBySemaphore& lock) {
                      lock.UnlockMaxMinusOne(); // 3 of 4 free
                      lock.LockMaxMinusOne();   // 2 free
                      lock.Lock();
                      lock.Lock();
                  }},
             Case{"the only unit has no max minus one to wait for", 1,
                  [](CLockBySemaphore& lock) {
                      lock.LockMaxMinusOne(); // taken beyond it, at once
                      lock.UnlockMaxMinusOne();
                      lock.Unlock();
                  }},
         })
    {
        SCOPED_TRACE(c.what);
        CLockBySemaphore lock(c.units);
        c.takeAll(lock);
        auto taker = std::async(std::launch::async, [&] { lock.Lock(); });
        EXPECT_EQ(taker.wait_for(50ms), std::future_status::timeout);
        lock.Unlock();
        taker.get();
    }
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

// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <Base/GCSynch.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

using namespace GenICam;

namespace
{
// The analysis works within one function and knows no recursion; these tests do nothing but recurse and
// misuse.
bool TryFromOtherThread(CLock& lock) KXGC_NO_THREAD_SAFETY_ANALYSIS
{
    bool taken = false;
    std::thread([&]() KXGC_NO_THREAD_SAFETY_ANALYSIS {
        taken = lock.TryLock();
        if (taken)
            lock.Unlock();
    }).join();
    return taken;
}

gcstring OwnLockName(const char* purpose)
{
    return gcstring(("test-" + std::to_string(getpid()) + purpose).c_str());
}
} // namespace

TEST(Lock, IsRecursiveAndFreeAfterAsManyUnlocks)
{
    struct Body
    {
        static void Run(CLock& lock) KXGC_NO_THREAD_SAFETY_ANALYSIS
        {
            lock.Lock();
            EXPECT_TRUE(lock.TryLock());
            {
                const AutoLock again(lock);
                EXPECT_FALSE(TryFromOtherThread(lock));
            }
            lock.Unlock();
            EXPECT_FALSE(TryFromOtherThread(lock));
            lock.Unlock();
            EXPECT_TRUE(TryFromOtherThread(lock));
            EXPECT_THROW(lock.Unlock(), LogicalErrorException);
        }
    };
    CLock lock;
    Body::Run(lock);
}

TEST(Lock, RefusesUnlockByAnotherThread)
{
    CLock lock;
    const AutoLock hold(lock);
    std::thread([&lock]() KXGC_NO_THREAD_SAFETY_ANALYSIS {
        EXPECT_THROW(lock.Unlock(), LogicalErrorException);
    }).join();
    EXPECT_FALSE(TryFromOtherThread(lock));
}

TEST(Lock, LetsOneThreadInAtATime)
{
    constexpr int kThreads = 4, kRounds = 20000;
    CLock lock;
    int counter = 0; // not atomic on purpose: the lock has to make it safe
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&]() KXGC_NO_THREAD_SAFETY_ANALYSIS {
            for (int round = 0; round < kRounds; ++round) {
                const AutoLock outer(lock);
                const AutoLock inner(lock);
                ++counter;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter, kThreads * kRounds);
}

TEST(GlobalLock, ExcludesOtherHoldersOfTheName)
{
    CGlobalLock first(OwnLockName("a/b")), second(OwnLockName("a/b")), other(OwnLockName("c"));
    ASSERT_TRUE(first.IsValid());
    ASSERT_TRUE(first.TryLock());
    EXPECT_FALSE(first.TryLock()) << "not recursive";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(second.Lock(30));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
    EXPECT_TRUE(other.TryLock());
    {
        CGlobalLockUnlocker unlocker(first);
    }
    EXPECT_TRUE(second.TryLock());
    unlink(("/tmp/kxapi-lock-" + std::string(OwnLockName("a_b"))).c_str());
    unlink(("/tmp/kxapi-lock-" + std::string(OwnLockName("c"))).c_str());
}

TEST(GlobalLock, IsFreedWhenItsProcessEnds)
{
    const gcstring name = OwnLockName("dead");
    const pid_t child = fork();
    if (child == 0) {
        CGlobalLock lock(name);
        _exit(lock.TryLock() ? 0 : 1); // without a destructor, like a crash
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(CGlobalLock(name).TryLock());
    unlink(("/tmp/kxapi-lock-" + std::string(name)).c_str());
}

TEST(GlobalLock, RefusesNamesOfNoUse)
{
    EXPECT_THROW(CGlobalLock(""), InvalidArgumentException);
    EXPECT_THROW(CGlobalLock(gcstring(201, 'x')), InvalidArgumentException);
}

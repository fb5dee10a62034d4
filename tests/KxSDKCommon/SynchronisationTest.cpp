// SPDX-License-Identifier: Apache-2.0
// Events, locks by semaphores, and workers.
#include <KxSDKCommon/CLockBySemaphore.h>
#include <KxSDKCommon/EventObject.h>
#include <KxSDKCommon/Worker.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <vector>

using namespace KxApi;
using namespace std::chrono_literals;

namespace
{

using Clock = std::chrono::steady_clock;

struct Automatic : CEventObject
{
    explicit Automatic(bool bSignaled = false)
        : CEventObject(nullptr, false, bSignaled, nullptr)
    {}
};

struct Manual : CEventObject
{
    explicit Manual(bool bSignaled = false)
        : CEventObject(nullptr, true, bSignaled, "manual")
    {}
};

unsigned int Look(CEventObject& event) { return WaitForSingleObject(&event, 0); }

unsigned int WaitAny(std::vector<void*> events, unsigned int nMilliseconds)
{
    return WaitForMultipleObjects(static_cast<unsigned int>(events.size()), events.data(), false,
                                  nMilliseconds);
}

unsigned int WaitAll(std::vector<void*> events, unsigned int nMilliseconds)
{
    return WaitForMultipleObjects(static_cast<unsigned int>(events.size()), events.data(), true,
                                  nMilliseconds);
}

TEST(Event, AutomaticEventEndsOneWaitAndManualOneEndsAll)
{
    Automatic automatic(true);
    EXPECT_EQ(Look(automatic), 0u);
    EXPECT_EQ(Look(automatic), 258u);
    Manual manual;
    EXPECT_EQ(Look(manual), 258u);
    manual.SetEvent();
    for (const unsigned int nMilliseconds : {0u, 10u, 0xFFFFFFFFu})
        EXPECT_EQ(WaitForSingleObject(&manual, nMilliseconds), 0u);
    manual.ResetEvent();
    EXPECT_EQ(Look(manual), 258u);
    automatic.SetEvent();
    automatic.ResetEvent();
    EXPECT_EQ(Look(automatic), 258u);
}

TEST(Event, NullObjectsFail)
{
    EXPECT_EQ(WaitForSingleObject(nullptr, 0), 0xFFFFFFFFu);
    EXPECT_EQ(WaitForSingleObject(nullptr, 0xFFFFFFFF), 0xFFFFFFFFu);
    Automatic event(true);
    EXPECT_EQ(WaitAny({}, 0), 0xFFFFFFFFu);
    EXPECT_EQ(WaitForMultipleObjects(1, nullptr, false, 0), 0xFFFFFFFFu);
    EXPECT_EQ(WaitAny({&event, nullptr}, 0xFFFFFFFF), 0xFFFFFFFFu);
    EXPECT_EQ(Look(event), 0u) << "the failed wait must not use the signal up";
}

TEST(Event, TimedWaitsLastTheirTime)
{
    Automatic event;
    Manual other;
    const auto start = Clock::now();
    EXPECT_EQ(WaitForSingleObject(&event, 990), 258u); // almost always crosses a second
    EXPECT_GE(Clock::now() - start, 988ms);
    EXPECT_EQ(WaitAny({&event, &other}, 30), 258u);
    EXPECT_GE(Clock::now() - start, 1016ms);
}

TEST(Event, OneSignalEndsTheWaitOfOneThread)
{
    Automatic event;
    std::atomic<int> nTaken{0};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 500; ++n)
                nTaken += WaitForSingleObject(&event, n % 2 ? 1 : 0) == 0;
        });
    int nSet = 0;
    for (; nSet < 100; ++nSet) {
        event.SetEvent();
        std::this_thread::sleep_for(100us);
    }
    for (std::thread& thread : threads)
        thread.join();
    nTaken += Look(event) == 0;
    EXPECT_LE(nTaken.load(), nSet);
    EXPECT_GT(nTaken.load(), 0);
}

TEST(Event, WaitForAnyTellsTheFirstSignalledEvent)
{
    Automatic first, second(true), third(true);
    EXPECT_EQ(WaitAny({&first, &second, &third}, 0), 1u);
    EXPECT_EQ(Look(second), 258u);
    EXPECT_EQ(Look(third), 258u) << "all automatic events found signalled are reset";
    third.SetEvent();
    EXPECT_EQ(WaitAny({&first, &second, &third}, 1000), 2u);
    EXPECT_EQ(WaitAny({&first, &second, &third}, 0), 258u);
    Manual manual(true);
    for (const unsigned int nMilliseconds : {0u, 100u})
        EXPECT_EQ(WaitAny({&first, &manual}, nMilliseconds), 1u);
}

TEST(Event, WaitForAllNeedsAll)
{
    Automatic first(true), second;
    Manual third(true);
    EXPECT_EQ(WaitAll({&first, &second, &third}, 0), 258u);
    EXPECT_EQ(Look(first), 0u) << "a look that fails leaves the signals";
    first.SetEvent();
    second.SetEvent();
    EXPECT_EQ(WaitAll({&first, &second, &third}, 1000), 0u);
    EXPECT_EQ(Look(first), 258u);
    EXPECT_EQ(Look(second), 258u);
    EXPECT_EQ(Look(third), 0u);
    first.SetEvent();
    EXPECT_EQ(WaitAll({&first, &second, &third}, 20), 258u);
    EXPECT_EQ(Look(first), 258u) << "a wait that times out uses the signals up";
}

TEST(Event, WaitsForSeveralAreWokenFromOtherThreads)
{
    Manual stop;
    Automatic left, right, done;
    std::thread any([&] {
        unsigned int nResult = 0;
        while ((nResult = WaitAny({&stop, &left}, 0xFFFFFFFF)) != 0) {
            EXPECT_EQ(nResult, 1u);
            done.SetEvent();
        }
    });
    for (int i = 0; i < 100; ++i) {
        left.SetEvent();
        ASSERT_EQ(WaitForSingleObject(&done, 20000), 0u) << i;
    }
    std::thread all([&] { EXPECT_EQ(WaitAll({&stop, &right}, 20000), 0u); });
    std::this_thread::sleep_for(10ms);
    right.SetEvent();
    std::this_thread::sleep_for(10ms);
    stop.SetEvent();
    any.join();
    all.join();
    EXPECT_EQ(Look(right), 258u);
}

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

/// Works until asked to stop, and notes what happens.
class Counter : public CWorker
{
public:
    Counter()
        : CWorker("Counter")
        , entered(nullptr, false, false, nullptr)
    {}
    ~Counter() override { Stop(); }

    using CWorker::m_nPriority;
    CEventObject entered;
    std::atomic<int> nRuns{0};
    std::atomic<int> nAtOnce{0};
    std::atomic<bool> bOverlap{false};

private:
    int mWork() override
    {
        if (++nAtOnce > 1)
            bOverlap = true;
        ++nRuns;
        entered.SetEvent();
        const bool bStop = IsStopRequest(kWaitInfinite);
        --nAtOnce;
        return bStop ? 0 : 1;
    }
};

TEST(Worker, StopWithoutStartDoesNothing)
{
    Counter worker;
    worker.Stop();
    worker.Stop();
    EXPECT_EQ(worker.nRuns, 0);
    EXPECT_FALSE(worker.IsStopRequest(0));
}

TEST(Worker, StartRunsTheWorkAndStopWaitsForItsEnd)
{
    Counter worker;
    worker.Start();
    ASSERT_EQ(WaitForSingleObject(&worker.entered, 20000), 0u);
    EXPECT_EQ(worker.nAtOnce, 1);
    worker.Stop();
    EXPECT_EQ(worker.nAtOnce, 0);
    EXPECT_TRUE(worker.IsStopRequest(0)) << "seen until the next start";
}

TEST(Worker, SecondStartStopsTheFirst)
{
    Counter worker;
    for (int i = 0; i < 3; ++i) {
        worker.Start();
        ASSERT_EQ(WaitForSingleObject(&worker.entered, 20000), 0u);
    }
    EXPECT_FALSE(worker.IsStopRequest(0)) << "a start takes the request back";
    worker.Stop();
    EXPECT_EQ(worker.nRuns, 3);
    EXPECT_FALSE(worker.bOverlap);
}

TEST(Worker, HighPriorityIsClampedAndStillRuns)
{
    Counter worker;
    worker.m_nPriority = 1000;
    worker.Start();
    ASSERT_EQ(WaitForSingleObject(&worker.entered, 20000), 0u);
    worker.Stop();
    EXPECT_EQ(worker.m_nPriority, 99);
}

TEST(Worker, StopRequestServesAsPause)
{
    Counter worker;
    const auto start = Clock::now();
    EXPECT_FALSE(worker.IsStopRequest(30));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(28));
    static_cast<CEventObject*>(worker.GetStopRequestEvent())->SetEvent();
    EXPECT_TRUE(worker.IsStopRequest(kWaitInfinite));
}

} // namespace

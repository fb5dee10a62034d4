// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/EventObject.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
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

} // namespace

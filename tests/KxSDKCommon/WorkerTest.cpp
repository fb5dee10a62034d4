// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/Worker.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>

using namespace KxApi;
using Clock = std::chrono::steady_clock;

namespace
{

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

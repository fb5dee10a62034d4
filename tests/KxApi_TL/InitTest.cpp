// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{

using testing::HasSubstr;

TEST(Init, EachInitializeNeedsItsTerminate)
{
    EXPECT_THROW(KxApi::CheckKxApiInitialized(), GenICam::LogicalErrorException);
    KxApi::Initialize();
    {
        const KxApi::CKxApiAutoInitTerm second;
        EXPECT_NO_THROW(KxApi::CheckKxApiInitialized());
    }
    EXPECT_NO_THROW(KxApi::CheckKxApiInitialized());
    KxApi::Terminate();
    EXPECT_THROW(KxApi::CheckKxApiInitialized(), GenICam::LogicalErrorException);
}

TEST(Init, MisuseTellsWhatToCall)
{
    try {
        KxApi::CheckKxApiInitialized();
        FAIL() << "the SDK counts as started";
    } catch (const GenICam::LogicalErrorException& e) {
        EXPECT_THAT(e.GetDescription(), HasSubstr("KxApi::Initialize"));
    }
    EXPECT_THROW(KxApi::Terminate(), GenICam::LogicalErrorException);
    // The Terminate too many must not eat the next start.
    const KxApi::CKxApiAutoInitTerm start;
    EXPECT_NO_THROW(KxApi::CheckKxApiInitialized());
}

TEST(Init, CountsCallsOfAllThreads)
{
    constexpr int kRounds = 2000;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < kRounds; ++round) {
                const KxApi::CKxApiAutoInitTerm start;
                KxApi::CheckKxApiInitialized();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THROW(KxApi::CheckKxApiInitialized(), GenICam::LogicalErrorException);
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "InThreads.h"

#include <Base/GCException.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    KxTest::InThreads(4, [](int) {
        for (int round = 0; round < 2000; ++round) {
            const KxApi::CKxApiAutoInitTerm start;
            KxApi::CheckKxApiInitialized();
        }
    });
    EXPECT_THROW(KxApi::CheckKxApiInitialized(), GenICam::LogicalErrorException);
}

} // namespace

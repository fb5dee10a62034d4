// SPDX-License-Identifier: Apache-2.0
#include "ImageTestSupport.h"

#include <KxSDKCommon/EventObject.h>
#include <KxSDKCommon/KxCallbackManager.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <vector>

using namespace KxApi;
using namespace std::chrono_literals;

namespace
{

using Param = CKxCallbackParamBase<IKxCallbackParamBase>;

/// An application's callback on the test's stack.
struct Receiver final : IKxCallback
{
    std::function<void(IKxCallbackParamBase*)> onCall;
    std::vector<uint32_t> types;
    std::atomic<int> nReleased{0};

    void OnCallback(IKxCallbackParamBase* pParam) override
    {
        types.push_back(pParam->GetCallbackType());
        if (onCall)
            onCall(pParam);
    }
    void Release() override { ++nReleased; }
};

class CallbackManager : public testing::Test
{
protected:
    std::vector<Receiver> receivers{5}; // outlive the manager, which releases what is left
    CKxCallbackManager manager;
    std::map<void*, Receiver*> handles;

    void RegisterAll()
    {
        for (Receiver& receiver : receivers)
            handles[manager.RegisterCallback(&receiver)] = &receiver;
    }
};

TEST_F(CallbackManager, RunReachesAllThatAreRegisteredInTheOrderOfHandles)
{
    Param first(9), second(13);
    manager.RunCallback(&first); // nobody is there
    RegisterAll();
    ASSERT_EQ(handles.size(), receivers.size());
    std::vector<Receiver*> order, expected;
    for (Receiver& receiver : receivers)
        receiver.onCall = [&](IKxCallbackParamBase*) { order.push_back(&receiver); };
    for (Param* const pParam : {&first, &second}) {
        manager.RunCallback(pParam);
        for (const auto& [hCallback, pReceiver] : handles)
            expected.push_back(pReceiver);
    }
    EXPECT_EQ(order, expected);
    EXPECT_EQ(receivers[0].types, (std::vector<uint32_t>{9, 13}));
}

TEST_F(CallbackManager, CallbacksAreReleasedOnceAndHandlesEnd)
{
    Receiver taken, left;
    {
        CKxCallbackManager ending;
        void* const hTaken = ending.RegisterCallback(&taken);
        ending.RegisterCallback(&left);
        ending.DeregisterCallback(hTaken);
        EXPECT_EQ(taken.nReleased, 1);
        for (void* const hUnknown : {hTaken, static_cast<void*>(nullptr), static_cast<void*>(&left)})
            EXPECT_EQ(KxTest::Raised<GenICam::InvalidArgumentException>(
                          [&] { ending.DeregisterCallback(hUnknown); }),
                      "hCallback is invalid.");
        EXPECT_THROW(ending.RegisterCallback(nullptr), GenICam::InvalidArgumentException);
        Param param(10);
        ending.RunCallback(&param);
        EXPECT_EQ(left.nReleased, 0);
    }
    EXPECT_TRUE(taken.types.empty());
    EXPECT_EQ(left.types.size(), 1u);
    EXPECT_EQ(taken.nReleased, 1);
    EXPECT_EQ(left.nReleased, 1);
}

TEST_F(CallbackManager, CallbackMayTakeItselfAndOthersOut)
{
    RegisterAll();
    for (Receiver& receiver : receivers)
        receiver.onCall = [&](IKxCallbackParamBase*) {
            for (const auto& [hCallback, pReceiver] : handles)
                manager.DeregisterCallback(hCallback);
        };
    Param param(11);
    manager.RunCallback(&param);
    manager.RunCallback(&param);
    size_t nCalls = 0;
    for (const Receiver& receiver : receivers) {
        nCalls += receiver.types.size();
        EXPECT_EQ(receiver.nReleased, 1);
    }
    EXPECT_EQ(nCalls, 1u) << "only the first was still there to be called";
}

TEST_F(CallbackManager, DeregisterWaitsForARunInAnotherThread)
{
    Receiver& receiver = receivers.front();
    CEventObject inside(nullptr, false, false, nullptr), goOn(nullptr, false, false, nullptr);
    receiver.onCall = [&](IKxCallbackParamBase*) {
        inside.SetEvent();
        WaitForSingleObject(&goOn, 20000);
    };
    void* const hCallback = manager.RegisterCallback(&receiver);
    auto run = std::async(std::launch::async, [&] {
        Param param(12);
        manager.RunCallback(&param);
    });
    ASSERT_EQ(WaitForSingleObject(&inside, 20000), 0u);
    auto deregister = std::async(std::launch::async, [&] { manager.DeregisterCallback(hCallback); });
    EXPECT_EQ(deregister.wait_for(50ms), std::future_status::timeout);
    EXPECT_EQ(receiver.nReleased, 0);
    goOn.SetEvent();
    run.get();
    deregister.get();
    EXPECT_EQ(receiver.nReleased, 1);
}

TEST(CallbackManagerDeathTest, ExceptionOutOfACallbackEndsTheProcess)
{
    EXPECT_DEATH(
        {
            Receiver receiver;
            receiver.onCall = [](IKxCallbackParamBase*) { throw RUNTIME_EXCEPTION("lost"); };
            CKxCallbackManager manager;
            manager.RegisterCallback(&receiver);
            Param param(9);
            try {
                manager.RunCallback(&param);
            } catch (const GenICam::GenericException&) {
            }
            _exit(0);
        },
        "");
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <KxSDKCommon/EventObject.h>
#include <KxSDKCommon/KxCallbackManager.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <memory>
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

TEST(CallbackManager, RunReachesAllThatAreRegisteredInTheOrderOfHandles)
{
    std::vector<int> order;
    std::vector<std::unique_ptr<Receiver>> receivers; // outlive the manager, which releases what is left
    CKxCallbackManager manager;
    std::map<void*, int> byHandle;
    Param first(9), second(13);
    manager.RunCallback(&first); // nobody is there
    for (int i = 0; i < 5; ++i) {
        receivers.push_back(std::make_unique<Receiver>());
        receivers.back()->onCall = [&order, i](IKxCallbackParamBase*) { order.push_back(i); };
        byHandle[manager.RegisterCallback(receivers.back().get())] = i;
    }
    ASSERT_EQ(byHandle.size(), 5u);
    manager.RunCallback(&first);
    manager.RunCallback(&second);
    std::vector<int> expected;
    for (int nRun = 0; nRun < 2; ++nRun)
        for (const auto& [hCallback, nReceiver] : byHandle)
            expected.push_back(nReceiver);
    EXPECT_EQ(order, expected);
    EXPECT_EQ(receivers[0]->types, (std::vector<uint32_t>{9, 13}));
}

TEST(CallbackManager, CallbacksAreReleasedOnceAndHandlesEnd)
{
    Receiver taken, left;
    {
        CKxCallbackManager manager;
        void* const hTaken = manager.RegisterCallback(&taken);
        void* const hLeft = manager.RegisterCallback(&left);
        EXPECT_NE(hTaken, hLeft);
        manager.DeregisterCallback(hTaken);
        EXPECT_EQ(taken.nReleased, 1);
        for (void* const hUnknown : {hTaken, static_cast<void*>(nullptr), static_cast<void*>(&left)}) {
            try {
                manager.DeregisterCallback(hUnknown);
                ADD_FAILURE() << "an unknown handle was taken";
            } catch (const GenICam::InvalidArgumentException& e) {
                EXPECT_STREQ(e.GetDescription(), "hCallback is invalid.");
            }
        }
        EXPECT_THROW(manager.RegisterCallback(nullptr), GenICam::InvalidArgumentException);
        Param param(10);
        manager.RunCallback(&param);
        EXPECT_EQ(left.nReleased, 0);
    }
    EXPECT_TRUE(taken.types.empty());
    EXPECT_EQ(left.types.size(), 1u);
    EXPECT_EQ(taken.nReleased, 1);
    EXPECT_EQ(left.nReleased, 1);
}

TEST(CallbackManager, CallbackMayTakeItselfAndOthersOut)
{
    std::vector<std::unique_ptr<Receiver>> receivers;
    CKxCallbackManager manager;
    std::vector<void*> handles;
    for (int i = 0; i < 4; ++i) {
        receivers.push_back(std::make_unique<Receiver>());
        handles.push_back(manager.RegisterCallback(receivers.back().get()));
    }
    for (const auto& receiver : receivers)
        receiver->onCall = [&](IKxCallbackParamBase*) {
            for (void*& hCallback : handles)
                manager.DeregisterCallback(hCallback);
            handles.clear();
        };
    Param param(11);
    manager.RunCallback(&param);
    manager.RunCallback(&param);
    size_t nCalls = 0;
    for (const auto& receiver : receivers) {
        nCalls += receiver->types.size();
        EXPECT_EQ(receiver->nReleased, 1);
    }
    EXPECT_EQ(nCalls, 1u) << "only the first was still there to be called";
}

TEST(CallbackManager, DeregisterWaitsForARunInAnotherThread)
{
    Receiver receiver;
    CKxCallbackManager manager;
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

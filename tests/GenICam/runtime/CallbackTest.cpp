// SPDX-License-Identifier: Apache-2.0
// Which callbacks a change fires, when, and what callbacks may do.
#include "TestMap.h"

#include <thread>

using namespace GenApi;
using namespace KxTest;

namespace
{

constexpr const char* kOutline = R"(
    Category Root { pFeature Sub; pFeature Alone }
    Category Sub { pFeature Gain }
    Integer Gain { pValue GainReg; Max 100 }
    Integer Other { pValue GainReg }
    IntReg GainReg { at 0 4 RW; Little }
    IntSwissKnife Twice { pVariable[Name=G] Gain; Formula G*2 }
    Integer OnTwice { pValue Twice }
    Integer Limited { Value 1; pMax Gain }
    Integer Locked { pIsLocked Gain; Value 1 }
    Integer Indexed { pIndex Gain; ValueIndexed[Index=1] 5; ValueDefault 6 }
    IntReg Elsewhere { pAddress Gain; at 64 4 RW; Little }
    Integer Watcher { pInvalidator Gain; Value 3 }
    Integer Alone { Value 5 }
    StringReg Text { at 32 8 RW })";

const std::string kAboveGain =
    "Elsewhere Gain Indexed Limited Locked OnTwice Root Sub Twice Watcher"; // what InvalidateNode(Gain)
                                                                            // reaches
const std::string kOnGainReg =
    "Elsewhere Gain GainReg Indexed Limited Locked OnTwice Other Root Sub Twice Watcher";

bool OtherThreadGetsLock(CLock& lock) KXGC_NO_THREAD_SAFETY_ANALYSIS
{
    bool taken = false;
    std::thread([&]() KXGC_NO_THREAD_SAFETY_ANALYSIS {
        taken = lock.TryLock();
        if (taken)
            lock.Unlock();
    }).join();
    return taken;
}

/// A callback that counts its runs and its end.
class CountedCallback : public CNodeCallback
{
public:
    CountedCallback(INode* pNode, int& runs, int& ends)
        : CNodeCallback(pNode, cbPostInsideLock)
        , m_runs(runs)
        , m_ends(ends)
    {}
    void operator()(ECallbackType type) const override { m_runs += type == cbPostInsideLock; }
    void Destroy() override
    {
        ++m_ends;
        delete this;
    }

private:
    int &m_runs, &m_ends;
};

} // namespace

TEST(Callbacks, AWriteByAnyRouteFiresAllThatDependsOnItOnce)
{
    TestMap test(kOutline);
    CallbackLog log(test);
    test.Int("Gain").SetValue(7);
    EXPECT_EQ(log.Take(), kOnGainReg);
    test.Int("Gain").SetValue(7);
    EXPECT_EQ(log.Take(), kOnGainReg) << "an equal value is a change too";
    test.Int("Gain").SetValue(200, false);
    EXPECT_EQ(log.Take(), kOnGainReg);
    test.Int("Other").SetValue(8);
    EXPECT_EQ(log.Take(), kOnGainReg);
    test.Int("GainReg").SetValue(9);
    EXPECT_EQ(log.Take(), kOnGainReg);
    const uint8_t bytes[4] = {1, 0, 0, 0};
    test.Reg("GainReg").Set(bytes, 4);
    EXPECT_EQ(log.Take(), kOnGainReg);
    test.Value("Gain").FromString("3");
    EXPECT_EQ(log.Take(), kOnGainReg);
    test.Int("Alone").SetValue(1);
    EXPECT_EQ(log.Take(), "Alone Root");
    test.Int("Gain").GetValue(true, true);
    EXPECT_EQ(log.Take(), "") << "reading changes nothing";
}

TEST(Callbacks, AFailedWriteFiresNothingAndKeepsTheCachedValue)
{
    TestMap test(kOutline);
    test.Int("Gain").SetValue(7);
    CallbackLog log(test);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Gain").SetValue(101); }), "OutOfRange");
    test.port.onWrite = [] { throw std::runtime_error("cable pulled"); };
    EXPECT_EQ(RaisedBy([&] { test.Int("Gain").SetValue(9); }).description, "cable pulled");
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Gain").SetValue(9, false); }), "std");
    EXPECT_EQ(log.Take(), "");
    test.port.TakeAccesses();
    EXPECT_EQ(test.Int("Gain").GetValue(), 7);
    EXPECT_EQ(test.port.TakeAccesses(), "");
    test.port.onWrite = nullptr;
    test.Int("Gain").SetValue(9);
    EXPECT_EQ(log.Take(), kOnGainReg) << "and the map is as good as before";
}

TEST(Callbacks, InvalidationFiresWhatDependsOnTheNode)
{
    TestMap test(kOutline);
    CallbackLog log(test);
    test.Get("GainReg").InvalidateNode();
    EXPECT_EQ(log.Take(), kOnGainReg);
    test.Get("Gain").InvalidateNode();
    EXPECT_EQ(log.Take(), kAboveGain);
    test.Get("Twice").InvalidateNode();
    EXPECT_EQ(log.Take(), "OnTwice Twice");
    test.Get("Watcher").InvalidateNode();
    EXPECT_EQ(log.Take(), "Watcher");

    NodeList_t nodes;
    test.map._GetNodes(nodes);
    test.map._InvalidateNodes();
    EXPECT_EQ(log.Take(), NamesOf(nodes));
    {
        TestMap lone("Integer A { Value 0 } Integer B { Value 0 }");
        CallbackLog loneLog(lone);
        lone.map._InvalidateNodes();
        EXPECT_EQ(loneLog.Take(), "A B Device Root");
    }
    const std::string onPort =
        "Device Elsewhere Gain GainReg Indexed Limited Locked OnTwice Other Root Sub Text Twice Watcher";
    test.Get("Device").InvalidateNode();
    EXPECT_EQ(log.Take(), onPort);
    test.map._Connect(&test.port);
    EXPECT_EQ(log.Take(), onPort) << "connecting the same port again counts as a change";
}

TEST(Callbacks, ImposingAccessModeOrVisibilityFiresImposingLimitsDoesNot)
{
    TestMap test(kOutline);
    CallbackLog log(test);
    test.Get("Gain").ImposeAccessMode(RO);
    EXPECT_EQ(log.Take(), kAboveGain);
    test.Get("Gain").ImposeVisibility(Guru);
    EXPECT_EQ(log.Take(), kAboveGain);
    test.Int("Gain").ImposeMin(2);
    test.Int("Gain").ImposeMax(5);
    EXPECT_EQ(log.Take(), "");
}

TEST(Callbacks, InsideOnesHoldTheMapOutsideOnesDoNot)
{
    TestMap test(kOutline);
    CLock& lock = test.map._GetLock();
    std::string free;
    for (const ECallbackType type : {cbPostInsideLock, cbPostOutsideLock})
        Register(
            &test.Get("Gain"), [&](INode*) { free += OtherThreadGetsLock(lock) ? "free " : "held "; }, type);
    test.Int("Gain").SetValue(1);
    EXPECT_EQ(std::exchange(free, ""), "held free ");
    {
        const AutoLock hold(lock);
        test.Int("Gain").SetValue(2);
    }
    EXPECT_EQ(free, "held held ") << "the caller's own lock is still there";
}

TEST(Callbacks, RunInTheWritingThreadBeforeTheWriteReturnsAndSeeTheNewValue)
{
    for (const auto& [caching, reads] : {std::pair{"WriteThrough", ""}, {"WriteAround", "r0:4"}}) {
        SCOPED_TRACE(caching);
        TestMap test(std::string("Integer X { pValue R } IntReg R { at 0 4 RW; Cachable ") + caching +
                     "; Little }");
        std::string seen;
        for (const ECallbackType type : {cbPostInsideLock, cbPostOutsideLock})
            Register(
                &test.Get("X"),
                [&, caller = std::this_thread::get_id()](INode* pNode) {
                    EXPECT_EQ(std::this_thread::get_id(), caller);
                    seen += CIntegerPtr(pNode)->ToString() + " ";
                },
                type);
        test.Int("X").GetValue();
        test.port.TakeAccesses();
        test.Int("X").SetValue(42);
        EXPECT_EQ(seen, "42 42 ");
        EXPECT_EQ(test.port.TakeAccesses(), std::string("w0:4") + (*reads ? " " : "") + reads);
    }
}

TEST(Callbacks, ANestedWriteRunsItsOwnCallbacksToTheEndFirst)
{
    TestMap test("Integer A { Value 0 } Integer B { Value 0 }");
    std::string order;
    const auto note = [&order](const char* text) { return [&order, text](INode*) { order += text; }; };
    Register(&test.Get("A"), [&](INode*) {
        order += "A-in{";
        test.Int("B").SetValue(1);
        order += "} ";
    });
    Register(&test.Get("A"), note("A-out"), cbPostOutsideLock);
    Register(&test.Get("B"), note("B-in "), cbPostInsideLock);
    Register(&test.Get("B"), note("B-out"), cbPostOutsideLock);
    test.Int("A").SetValue(1);
    EXPECT_EQ(order, "A-in{B-in B-out} A-out");
    EXPECT_EQ(test.Int("B").GetValue(), 1);
}

TEST(Callbacks, AnExceptionLeavesTheWriteDropsLaterCallbacksAndTheValueIsWritten)
{
    TestMap test("Integer A { Value 0 }");
    int others = 0;
    bool fail = true;
    Register(
        &test.Get("A"), [&](INode*) { ++others; }, cbPostInsideLock); // runs after the next one
    Register(&test.Get("A"), [&](INode*) {
        if (fail)
            throw std::runtime_error("no thanks");
    });
    Register(
        &test.Get("A"), [&](INode*) { ++others; }, cbPostOutsideLock);
    EXPECT_EQ(RaisedBy([&] { test.Int("A").SetValue(5); }).description, "no thanks");
    EXPECT_EQ(others, 0);
    EXPECT_EQ(test.Int("A").GetValue(), 5);
    EXPECT_TRUE(OtherThreadGetsLock(test.map._GetLock()));
    fail = false;
    test.Int("A").SetValue(6);
    EXPECT_EQ(others, 2);
}

TEST(Callbacks, OnOneNodeTheLastRegisteredInsideOneRunsFirst)
{
    TestMap test("Integer A { Value 0 }");
    std::string order;
    for (const char* name : {"1", "2", "3"})
        Register(&test.Get("A"), [&order, name](INode*) { order += name; });
    test.Int("A").SetValue(1);
    EXPECT_EQ(order, "321");
}

TEST(Callbacks, AreRemovedOnceByTheirHandle)
{
    TestMap test("Integer A { Value 0 } Integer B { Value 0 }");
    int runs = 0, ends = 0;
    INode& a = test.Get("A");
    const CallbackHandleType handle = a.RegisterCallback(new CountedCallback(&a, runs, ends));
    EXPECT_NE(handle, 0);
    EXPECT_FALSE(test.Get("B").DeregisterCallback(handle)) << "not registered there";
    test.Int("A").SetValue(1);
    EXPECT_TRUE(a.DeregisterCallback(handle));
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(a.DeregisterCallback(handle));
    EXPECT_FALSE(a.DeregisterCallback(0));
    Deregister(0);
    test.Int("A").SetValue(2);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(ends, 1);
}

TEST(Callbacks, MayRemoveThemselvesAndOthersWhileTheyRun)
{
    for (const ECallbackType type : {cbPostInsideLock, cbPostOutsideLock}) {
        SCOPED_TRACE(type);
        TestMap test("Integer A { Value 0 } Integer OnA { pValue A }");
        INode& a = test.Get("A");
        std::vector<CallbackHandleType> handles;
        int runs = 0;
        // Whichever comes first removes all, itself included, and those of the other node.
        for (const char* name : {"A", "A", "OnA"})
            handles.push_back(Register(
                &test.Get(name),
                [&, big = std::vector<int>(100, 1)](INode*) {
                    ++runs;
                    for (const CallbackHandleType handle : std::exchange(handles, {}))
                        Deregister(handle);
                    EXPECT_EQ(big.back(), 1) << "what the callback carries lives until it returns";
                },
                type));
        test.Int("A").SetValue(1);
        EXPECT_EQ(runs, 1);
        test.Int("A").SetValue(2);
        EXPECT_EQ(runs, 1);
        // One that registers another: the new one takes part in the next change.
        int late = 0;
        const CallbackHandleType first = Register(
            &a,
            [&](INode* pNode) {
                Register(
                    pNode, [&](INode*) { ++late; }, type);
            },
            type);
        test.Int("A").SetValue(3);
        const int lateAtOnce = late;
        Deregister(first);
        test.Int("A").SetValue(4);
        EXPECT_EQ(late, lateAtOnce + 1);
    }
}

TEST(Callbacks, EndWithTheirMapWithoutRunning)
{
    int runs = 0, ends = 0;
    {
        TestMap test("Integer A { Value 0 }");
        INode& a = test.Get("A");
        a.RegisterCallback(new CountedCallback(&a, runs, ends));
        a.RegisterCallback(new CountedCallback(&a, runs, ends));
    }
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(ends, 2);
}

TEST(Callbacks, ReachMembersOfAnObject)
{
    struct Client
    {
        void OnChange(INode* pNode) { names += pNode->GetName().c_str(); }
        std::string names;
    } client;
    TestMap test("Integer A { Value 0 }");
    const CallbackHandleType handle = Register(&test.Get("A"), client, &Client::OnChange);
    test.Int("A").SetValue(1);
    Deregister(handle);
    test.Int("A").SetValue(2);
    EXPECT_EQ(client.names, "A");
}

TEST(Callbacks, CanBeSuppressedOnceOrUntilFurtherNotice)
{
    TestMap test("Integer A { Value 0 } Integer OnA { pValue A }");
    CallbackLog log(test);
    const auto write = [&] {
        test.Int("A").SetValue(1);
        return log.Take();
    };
    test.map._SetSuppressCallbackMode(csmActive);
    EXPECT_EQ(write() + write(), "");
    test.map._InvalidateNodes();
    EXPECT_EQ(log.Take(), "");
    test.map._SetSuppressCallbackMode(csmOff);
    EXPECT_EQ(write(), "A OnA");
    test.map._SetSuppressCallbackMode(csmOnce);
    EXPECT_EQ(KindRaisedBy([&] { test.Value("A").FromString("soup"); }), "InvalidArgument");
    EXPECT_EQ(write(), "") << "a refused write is no change";
    EXPECT_EQ(write(), "A OnA");
    test.map._SetSuppressCallbackMode(csmOnce);
    test.map._SetSuppressCallbackMode(csmOff);
    EXPECT_EQ(write(), "A OnA");
}

// SPDX-License-Identifier: Apache-2.0
// Several threads in one map. Meant to be run under the thread sanitizer as well.
#include "TestMap.h"

#include <atomic>
#include <thread>

using namespace GenApi;
using namespace KxTest;

namespace
{

/// Runs the body in several threads that start together; the body gets the thread's number.
template <class Body>
void RunInThreads(int count, const Body& body)
{
    std::atomic<int> waiting{count};
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            for (--waiting; waiting > 0;)
                std::this_thread::yield();
            body(i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST(Threads, FindTheSameNodesAtFirstUse)
{
    constexpr int kNodes = 300, kThreads = 4;
    std::string outline;
    for (int i = 0; i < kNodes; ++i)
        outline += "Integer N" + std::to_string(i) + " { Value " + std::to_string(i) + " } SwissKnife K" +
                   std::to_string(i) + " { pVariable[Name=N] N" + std::to_string(i) + "; Formula N*2 } ";
    const std::string xml = DescriptionAsXml(outline);
    CNodeMapFactory factory(ContentType_Xml, xml.data(), xml.size());
    CNodeMapRef map(factory.CreateNodeMap());
    std::vector<std::vector<INode*>> found(kThreads);
    std::atomic<int> wrong{0};
    RunInThreads(kThreads, [&](int thread) {
        for (int i = 0; i < kNodes; ++i) {
            // Half of the threads come from the other end.
            const std::string number = std::to_string(thread % 2 ? kNodes - 1 - i : i);
            INode* const pNode = map._GetNode(("N" + number).c_str());
            found[static_cast<size_t>(thread)].push_back(pNode);
            CFloatPtr knife(map._GetNode(("K" + number).c_str()));
            if (CValuePtr(pNode)->ToString() != number.c_str() || knife->GetValue() != 2 * std::stoi(number))
                ++wrong;
            NodeList_t nodes;
            if (i % 50 == 0)
                map._GetNodes(nodes);
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(found[0], found[2]);
    EXPECT_EQ(found[1], found[3]);
    std::reverse(found[1].begin(), found[1].end());
    EXPECT_EQ(found[0], found[1]);
}

TEST(Threads, WriteAndReadFeaturesWhileCallbacksRun)
{
    constexpr int kRounds = 500;
    TestMap test(R"(
        MaskedIntReg Low { at 0 4 RW; LSB 0; MSB 15; Little }
        MaskedIntReg High { at 0 4 RW; LSB 16; MSB 31; Little }
        Integer A { pValue Low } Integer B { pValue High }
        IntSwissKnife Sum { pVariable[Name=A] A; pVariable[Name=B] B; Formula A+B })");
    std::atomic<int> outside{0};
    int inside = 0; // the map's lock has to guard it
    for (const char* name : {"A", "B"}) {
        Register(
            &test.Get(name), [&](INode*) { ++inside; }, cbPostInsideLock);
        Register(
            &test.Get(name),
            [&](INode*) {
                ++outside;
                test.Int("Sum").GetValue();
            },
            cbPostOutsideLock);
    }
    RunInThreads(4, [&](int thread) {
        for (int i = 1; i <= kRounds; ++i) {
            if (thread == 0)
                test.Int("A").SetValue(i);
            else if (thread == 1)
                test.Int("B").SetValue(i);
            else if (thread == 2)
                test.Get("Low").InvalidateNode();
            else
                test.Value("Sum").ToString();
        }
    });
    EXPECT_EQ(inside, 2 * kRounds + kRounds) << "A for its writes and the invalidations, B for its writes";
    EXPECT_EQ(outside, inside);
    EXPECT_EQ(test.Int("Sum").GetValue(), 2 * kRounds);
    EXPECT_EQ(test.port.Peek(0, 4), (FakePort::Bytes{0xf4, 0x01, 0xf4, 0x01}));
}

TEST(Threads, RegisterAndRemoveCallbacksWhileOthersWrite)
{
    constexpr int kRounds = 300;
    TestMap test("Integer A { Value 0 }");
    RunInThreads(3, [&](int thread) {
        for (int i = 0; i < kRounds; ++i) {
            if (thread == 0) {
                test.Int("A").SetValue(i);
                continue;
            }
            // What an inside callback uses need only live until it has been removed. One outside the lock may
            // still run in the writing thread then, so it has to own what it uses.
            const auto counter = std::make_shared<std::atomic<int>>(0);
            const CallbackHandleType handle =
                thread == 1 ? Register(&test.Get("A"), [p = counter.get()](INode*) { ++*p; })
                            : Register(
                                  &test.Get("A"), [counter](INode*) { ++*counter; }, cbPostOutsideLock);
            test.Int("A").GetValue();
            EXPECT_TRUE(test.Get("A").DeregisterCallback(handle));
        }
    });
    EXPECT_EQ(test.Int("A").GetValue(), kRounds - 1);
}

TEST(Threads, MakeMapsOfOneDescriptionAtOnce)
{
    const std::string xml = DescriptionAsXml("Integer X { pValue R } IntReg R { at 0 4 RW; Little } "
                                             "SwissKnife K { pVariable[Name=X] X; Formula X+0.5 }");
    std::atomic<int> wrong{0};
    RunInThreads(4, [&](int thread) {
        for (int i = 0; i < 20; ++i) {
            FakePort port;
            CNodeMapRef map;
            map._LoadXMLFromString(xml.c_str());
            map._Connect(&port);
            CIntegerPtr(map._GetNode("X"))->SetValue(thread);
            if (CFloatPtr(map._GetNode("K"))->GetValue() != thread + 0.5)
                ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
}

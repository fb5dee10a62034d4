// SPDX-License-Identifier: Apache-2.0
// Event messages, byte by byte as the transport standards' tables give them, as features of a node map.
#include "ToolsTestSupport.h"

#include <GenApi/EventAdapter1394.h>
#include <GenApi/EventAdapterCL.h>

using namespace GenApi;
using namespace GenICam;
using namespace KxGenApiTest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
using Bytes = std::vector<uint8_t>;

/// An event 0x9001 with a port, and features that carry the ID themselves: one on the port, one beside it.
std::string EventNodes(const std::string& order, int timestamp, int data)
{
    return "Port EndPort { EventID 9001 } Port OtherPort { EventID 0002 }"
           "Integer OnPort { EventID 9001; pValue Timestamp } Node Beside { EventID 9001 }" +
           IntReg("Channel", 4, 2, "EndPort", order, "RO") +
           IntReg("Timestamp", timestamp, 8, "EndPort", order, "RO") +
           IntReg("Data", data, 2, "EndPort", order, "RO") +
           IntReg("Other", timestamp, 8, "OtherPort", order, "RO");
}

template <class Adapter>
struct CEventTest
{
    explicit CEventTest(const std::string& nodes)
        : map(nodes)
        , adapter(map)
    {}

    void Deliver(Bytes message)
    {
        message.shrink_to_fit(); // sanitizers see each byte read too many
        adapter.DeliverMessage(message.data(), static_cast<uint32_t>(message.size()));
    }

    CTestMap map;
    Adapter adapter;
};

constexpr uint8_t kEvent = 0xC0, kEventData = 0xC2;

Bytes GevMessage(uint8_t command, uint8_t flags, const Bytes& payload)
{
    Bytes message = {0x42, flags, 0x00, command, 0x00, static_cast<uint8_t>(payload.size()), 0x00, 0x01};
    message.insert(message.end(), payload.begin(), payload.end());
    return message;
}

Bytes GevItem(uint8_t size, uint16_t id, uint8_t timestamp)
{
    return {
        0, size,     static_cast<uint8_t>(id >> 8), static_cast<uint8_t>(id), 0, 3, 0, 5, 0, 0, 0, 0, 0, 0,
        1, timestamp};
}

Bytes U3vMessage(const Bytes& payload)
{
    Bytes message = {'U', '3', 'V', 'E', 0, 0, 0x00, 0x0C, static_cast<uint8_t>(payload.size()), 0, 1, 0};
    message.insert(message.end(), payload.begin(), payload.end());
    return message;
}

Bytes Join(Bytes first, const Bytes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

struct EventAdapterGEVTest : testing::Test, CEventTest<CEventAdapterGEV>
{
    EventAdapterGEVTest()
        : CEventTest(EventNodes("Big", 8, 16))
    {}
};
struct EventAdapterU3VTest : testing::Test, CEventTest<CEventAdapterU3V>
{
    EventAdapterU3VTest()
        : CEventTest(EventNodes("Little", 4, 12))
    {}
};
} // namespace

TEST_F(EventAdapterGEVTest, DeliversEventsWithoutData)
{
    EXPECT_EQ(map["Timestamp"]->GetAccessMode(), NA);
    Deliver(GevMessage(kEvent, 0, Join(GevItem(0, 0x9001, 7), GevItem(0, 2, 8))));
    EXPECT_EQ(map.Int("Channel"), 3);
    EXPECT_EQ(map.Int("Timestamp"), 0x107);
    EXPECT_EQ(map.Int("Other"), 0x108);
    EXPECT_THROW(map.Int("Data"), OutOfRangeException) << "this event has none";
    EXPECT_NO_THROW(Deliver(GevMessage(kEvent, 0, GevItem(0, 0x1234, 9))))
        << "unknown events are passed over";
    EXPECT_EQ(map.Int("Timestamp"), 0x107);
}

TEST_F(EventAdapterGEVTest, DeliversEventsWithData)
{
    Deliver(GevMessage(kEventData, 0, Join(GevItem(0, 0x9001, 7), {0xAB, 0xCD, 0, 0})));
    EXPECT_EQ(map.Int("Timestamp"), 0x107);
    EXPECT_EQ(map.Int("Data"), 0xABCD);
    const Bytes several = Join(Join(GevItem(18, 2, 5), {1, 2}), Join(GevItem(18, 0x9001, 6), {3, 4}));
    Deliver(GevMessage(kEventData, 0, several));
    EXPECT_EQ(map.Int("Other"), 0x105);
    EXPECT_EQ(map.Int("Data"), 0x304);
}

TEST_F(EventAdapterGEVTest, TakesMessagesByTheirStructures)
{
    const Bytes event = GevMessage(kEvent, 0, GevItem(0, 0x9001, 7));
    adapter.DeliverEventMessage(reinterpret_cast<const GVCP_EVENT_REQUEST*>(event.data()));
    EXPECT_EQ(map.Int("Timestamp"), 0x107);
    const Bytes data = GevMessage(kEventData, 0, Join(GevItem(0, 0x9001, 8), {0, 1}));
    adapter.DeliverEventMessage(reinterpret_cast<const GVCP_EVENTDATA_REQUEST*>(data.data()));
    EXPECT_EQ(map.Int("Data"), 1);
}

TEST(EventAdapterGEV, KnowsBlockIdsOf64Bits)
{
    CEventTest<CEventAdapterGEV> test(EventNodes("Big", 16, 24));
    const Bytes item = {0, 0, 0x90, 0x01, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 0, 0, 0, 0, 0, 0, 1, 2};
    test.Deliver(GevMessage(kEvent, 0x10, Join(item, item)));
    EXPECT_EQ(test.map.Int("Timestamp"), 0x102);
    test.Deliver(GevMessage(kEventData, 0x10, Join(item, {5, 6})));
    EXPECT_EQ(test.map.Int("Data"), 0x506);
}

TEST_F(EventAdapterGEVTest, RefusesBrokenMessagesAsAWhole)
{
    const Bytes good = GevItem(0, 0x9001, 7);
    Bytes badMagic = GevMessage(kEvent, 0, good), tooShort = GevMessage(kEvent, 0, good);
    badMagic[0] = 0x43;
    tooShort.pop_back();
    const std::pair<Bytes, const char*> rows[] = {
        {{}, "head"},
        {{0x42, 0, 0, 0xC0, 0, 0, 0}, "head"},
        {badMagic, "0x43"},
        {tooShort, "length 16"},
        {GevMessage(0xC1, 0, good), "command 0x00c1"},
        {GevMessage(kEvent, 0, {}), "length 0"},
        {GevMessage(kEvent, 0, Join(good, {1})), "length 17"},
        {GevMessage(kEvent, 0x10, good), "24"},
        {GevMessage(kEventData, 0, {0, 0, 0x90, 1}), "too few"},
        {GevMessage(kEventData, 0, Join(GevItem(16, 0x9001, 7), GevItem(17, 2, 8))), "size 17"},
        {GevMessage(kEventData, 0, Join(GevItem(16, 0x9001, 7), GevItem(15, 2, 8))), "size 15"},
        {GevMessage(kEventData, 0, Join(GevItem(16, 0x9001, 7), {1, 2})), "too few"},
    };
    for (const auto& [message, part] : rows)
        EXPECT_THAT(RaisedBy<RuntimeException>([this, &bytes = message] { Deliver(bytes); }),
                    HasSubstr(part));
    EXPECT_EQ(map["Timestamp"]->GetAccessMode(), NA) << "nothing of a broken message is delivered";
}

TEST_F(EventAdapterU3VTest, DeliversEvents)
{
    const Bytes item = {0, 0, 0x01, 0x90, 7, 1, 0, 0, 0, 0, 0, 0, 0xCD, 0xAB};
    Deliver(U3vMessage(item));
    EXPECT_EQ(map.Int("Timestamp"), 0x107);
    EXPECT_EQ(map.Int("Data"), 0xABCD);
    const Bytes other = {12, 0, 2, 0, 5, 0, 0, 0, 0, 0, 0, 0},
                last = {0, 0, 0x01, 0x90, 6, 0, 0, 0, 0, 0, 0, 0, 1, 0};
    Deliver(U3vMessage(Join(other, last)));
    EXPECT_EQ(map.Int("Other"), 5);
    EXPECT_EQ(map.Int("Data"), 1);
    const Bytes message = U3vMessage(item);
    adapter.DeliverEventMessage(reinterpret_cast<const U3V_EVENT_MESSAGE*>(message.data()));
    EXPECT_EQ(map.Int("Timestamp"), 0x107);
}

TEST_F(EventAdapterU3VTest, RefusesBrokenMessages)
{
    const Bytes item = {0, 0, 0x01, 0x90, 7, 1, 0, 0, 0, 0, 0, 0};
    Bytes badPrefix = U3vMessage(item), badCommand = U3vMessage(item), tooShort = U3vMessage(item);
    badPrefix[3] = 'V';
    badCommand[6] = 1;
    tooShort.pop_back();
    const std::pair<Bytes, const char*> rows[] = {
        {{'U', '3', 'V', 'E'}, "head"}, {badPrefix, "0x56563355"},
        {badCommand, "command 0x0c01"}, {tooShort, "length 12"},
        {U3vMessage({}), "too few"},    {U3vMessage({11, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), "size 11"},
    };
    for (const auto& [message, part] : rows)
        EXPECT_THAT(RaisedBy<RuntimeException>([this, &bytes = message] { Deliver(bytes); }),
                    HasSubstr(part));
}

TEST(EventAdapterGeneric, TakesTheIdBesideTheMessage)
{
    CTestMap map(EventNodes("Little", 0, 8));
    CEventAdapterGeneric adapter(map);
    const uint8_t message[] = {5, 0, 0, 0, 0, 0, 0, 0, 6, 0};
    adapter.DeliverMessage(message, 10, uint64_t(0x9001));
    EXPECT_EQ(map.Int("Timestamp"), 5);
    EXPECT_EQ(map.Int("Data"), 6);
    adapter.DeliverMessage(message, 10, gcstring("00000002"));
    EXPECT_EQ(map.Int("Other"), 5);
    EXPECT_THROW(adapter.DeliverMessage(message, 10, gcstring("event")), RuntimeException);
    EXPECT_NO_THROW(adapter.DeliverMessage(message, 10)) << "an event of no ID is nobody's";
    adapter.DeliverMessage(nullptr, 0, uint64_t(0x9001));
    EXPECT_THROW(map.Int("Timestamp"), OutOfRangeException) << "an event without data";
}

TEST(EventAdapter, FiresEachNodeOfTheEventOnceWithTheNewData)
{
    CTestMap map(EventNodes("Little", 0, 8));
    CEventAdapterGeneric adapter(map);
    std::vector<std::string> fired;
    std::vector<CallbackHandleType> handles;
    for (const char* name : {"EndPort", "Timestamp", "OnPort", "Beside", "Other"}) {
        handles.push_back(
            Register(map[name], [&fired](INode* node) { fired.emplace_back(node->GetName()); }));
    }
    int64_t seen = 0;
    handles.push_back(Register(map["Beside"], [&](INode*) { seen = map.Int("Timestamp"); }));
    const uint8_t message[] = {5, 0, 0, 0, 0, 0, 0, 0, 6, 0};
    adapter.DeliverMessage(message, 10, uint64_t(0x9001));
    EXPECT_THAT(fired, testing::UnorderedElementsAre("EndPort", "Timestamp", "OnPort", "Beside"));
    EXPECT_EQ(seen, 5);
    for (const CallbackHandleType handle : handles)
        Deregister(handle);
}

TEST(EventAdapter, KeepsACopyAndLetsGoOfTheNodeMap)
{
    CTestMap map(EventNodes("Little", 0, 8));
    CEventAdapterGeneric adapter;
    adapter.DeliverMessage(nullptr, 0, uint64_t(1));
    adapter.AttachNodeMap(map);
    {
        const Bytes message = {5, 0, 0, 0, 0, 0, 0, 0};
        adapter.DeliverMessage(message.data(), 8, uint64_t(0x9001));
    }
    EXPECT_EQ(CIntegerPtr(map["Timestamp"])->GetValue(false, true), 5) << "the message is gone, its copy not";
    adapter.DetachNodeMap();
    EXPECT_EQ(map["Timestamp"]->GetAccessMode(), NI);
}

TEST(EventPort, ComparesIdsByNumberBytesAndDigits)
{
    CTestMap map(EventNodes("Little", 0, 8));
    CEventPort port(map["OtherPort"]);
    const uint8_t id[] = {0, 2};
    EXPECT_TRUE(port.CheckEventID(uint64_t(2)));
    EXPECT_TRUE(port.CheckEventID(id, 2));
    EXPECT_TRUE(port.CheckEventID(gcstring("0x02")));
    EXPECT_FALSE(port.CheckEventID(gcstring("")));
    EXPECT_FALSE(port.CheckEventID(uint64_t(0x200)));
    EXPECT_EQ(port.GetEventID(), "2");
    EXPECT_THROW(port.Write(id, 0, 1), AccessException);
    EXPECT_FALSE(port.AttachNode(map["Device"])) << "no event";
    EXPECT_THROW(port.AttachEvent(id, 2), LogicalErrorException);
}

TEST(EventAdapterCL, DeliversWhatStandsBehindTheHead)
{
    CEventTest<CEventAdapterCL> test(EventNodes("Big", 4, 12));
    const Bytes message = {1, 0, 0,    0, 0, 0, 0, 0, 0, 0, 0x0C, 0, 0,    14,  0, 1, // head
                           0, 0, 0x90, 1, 0, 0, 0, 0, 0, 0, 1,    7, 0xAB, 0xCD};
    test.Deliver(message);
    EXPECT_EQ(test.map.Int("Timestamp"), 0x107);
    EXPECT_EQ(test.map.Int("Data"), 0xABCD);
    for (const size_t broken : {0u, 10u, 13u, 17u}) { // preamble, command, length, size of the event
        Bytes bytes = message;
        bytes[broken] = 99;
        EXPECT_THROW(test.Deliver(bytes), RuntimeException) << broken;
    }
    EXPECT_THROW(test.Deliver({1, 0}), RuntimeException);
    EXPECT_THROW(test.adapter.DeliverEventData(nullptr, 12), RuntimeException);
    EXPECT_EQ(test.map.Int("Timestamp"), 0x107) << "broken messages change nothing";
}

TEST(EventAdapter1394, TakesMessagesAndDeliversNothing)
{
    CEventTest<CEventAdapter1394> test(EventNodes("Big", 4, 12));
    EXPECT_NO_THROW(test.Deliver(Bytes(64)));
    EXPECT_NO_THROW(test.Deliver({1, 2}));
    EXPECT_EQ(test.map["Timestamp"]->GetAccessMode(), NA);
}

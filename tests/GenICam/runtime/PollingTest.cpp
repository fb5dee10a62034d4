// SPDX-License-Identifier: Apache-2.0
// What the passing of time invalidates.
#include "TestMap.h"

using namespace GenApi;
using namespace KxTest;

namespace
{

/// What fires at each of the steps, separated by '|'.
std::string FiredBySteps(TestMap& test, CallbackLog& log, const std::vector<int64_t>& steps)
{
    std::string fired;
    for (const int64_t step : steps) {
        test.map._Poll(step);
        fired += "|" + log.Take();
    }
    return fired.substr(1);
}

} // namespace

TEST(Polling, FiresWhenTheTimesAddedUpReachTheNodesTime)
{
    const char* const outline = R"(
        Integer X { pValue R }
        IntReg R { at 0 4 RW; PollingTime 300; Little }
        IntReg Live { at 4 4 RW; Cachable NoCache; Little })";
    struct Case
    {
        std::vector<int64_t> steps;
        const char* fired;
    };
    for (const Case& c : {
             Case{{100, 100, 100, 100, 100, 100, 100}, "||R X|||R X|"},
             Case{{299, 1, 1}, "|R X|"},
             Case{{3000, 1}, "R X|"},
             Case{{0, -300, -1, 299, 0, 1}, "|||||R X"},
         })
    {
        TestMap test(outline);
        CallbackLog log(test);
        EXPECT_EQ(FiredBySteps(test, log, c.steps), c.fired);
        EXPECT_EQ(test.port.TakeAccesses(), "") << "polling reads nothing by itself";
    }
}

TEST(Polling, LetsTheNextReadReachTheDevice)
{
    TestMap test("Integer X { pValue R } IntReg R { at 0 4 RW; PollingTime 300; Little }");
    EXPECT_EQ(test.Int("X").GetValue(), 0);
    test.port.Put(0, {5});
    test.map._Poll(299);
    EXPECT_EQ(test.Int("X").GetValue(), 0);
    test.map._Poll(1);
    EXPECT_EQ(test.Int("X").GetValue(), 5);
    EXPECT_EQ(test.Get("R").GetPollingTime(), 300);
    EXPECT_EQ(test.Get("X").GetPollingTime(), -1);
}

TEST(Polling, IsBlockedByANonZeroFlagOfThePolledNode)
{
    TestMap test(R"(
        IntReg R { pBlockPolling Block; at 0 4 RW; PollingTime 100; Little }
        Integer Block { Value 1 })");
    CallbackLog log(test);
    EXPECT_EQ(FiredBySteps(test, log, {100, 60}), "|");
    test.Int("Block").SetValue(0);
    EXPECT_EQ(log.Take(), "Block R");
    EXPECT_EQ(FiredBySteps(test, log, {40}), "R") << "the time has run on";
    NodeList_t children, parents;
    test.Get("R").GetChildren(children, ctReadingChildren);
    test.Get("Block").GetParents(parents);
    EXPECT_EQ(NamesOf(children) + " | " + NamesOf(parents), "Block Device | R");
}

TEST(Polling, OfACommandLastsAsLongAsItRuns)
{
    TestMap test(R"(
        Command C { pValue R; CommandValue 1; PollingTime 100 }
        IntReg R { at 0 4 RW; Cachable NoCache; Little })");
    CallbackLog log(test);
    EXPECT_EQ(FiredBySteps(test, log, {100, 70}), "|");
    test.Get<ICommand>("C").Execute();
    log.Take();
    EXPECT_EQ(FiredBySteps(test, log, {70, 30, 100}), "|C|C")
        << "what passed before it started does not count";
    test.port.Put(0, {0});
    EXPECT_EQ(FiredBySteps(test, log, {100}), "C") << "nobody has looked whether it is done";
    EXPECT_TRUE(test.Get<ICommand>("C").IsDone());
    log.Take();
    EXPECT_EQ(FiredBySteps(test, log, {100, 100}), "|");
}

TEST(Polling, OfAnEnumerationLastsAsLongAsItsEntryClearsItself)
{
    TestMap test(R"(
        Enumeration E {
            EnumEntry Off { Value 0 } EnumEntry Once { Value 1; IsSelfClearing Yes }
            pValue R; PollingTime 100 }
        IntReg R { at 0 4 RW; Cachable NoCache; Little })");
    CallbackLog log(test);
    EXPECT_EQ(FiredBySteps(test, log, {100}), "");
    test.Enum("E") = "Once";
    log.Take();
    test.map._Poll(100);
    EXPECT_NE(log.Take().find("E"), std::string::npos);
    test.port.Put(0, {0});
    EXPECT_EQ(*test.Enum("E"), "Off");
    log.Take();
    EXPECT_EQ(FiredBySteps(test, log, {100, 100}), "|");
}

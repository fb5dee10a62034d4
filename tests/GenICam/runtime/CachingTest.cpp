// SPDX-License-Identifier: Apache-2.0
// What reaches the device, and what is answered from the cache.
#include "TestMap.h"

using namespace GenApi;
using namespace KxTest;

namespace
{

using Bytes = FakePort::Bytes;

/// Accesses of a write and of two reads after it, such as "w0:4|r0:4|".
std::string AccessesOfWriteReadRead(TestMap& test, const char* name, const char* value)
{
    IValue& node = test.Value(name);
    node.FromString(value);
    std::string accesses = test.port.TakeAccesses();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(node.ToString(), value) << name;
        accesses += "|" + test.port.TakeAccesses();
    }
    return accesses;
}

/// Two registers on the same bytes and one that is longer.
constexpr const char* kSharedBytes = R"(
    IntReg A { at 0x10 4 RW; Little }
    IntReg B { at 0x10 4 RW; Little }
    IntReg Longer { at 0x10 8 RW; Little }
    IntReg Uncached { at 0x10 4 RW; Cachable NoCache; Little }
    IntReg Follower { at 0x10 4 RW; pInvalidator A; Little })";

} // namespace

TEST(Caching, ModesGovernWhichReadsReachTheDevice)
{
    struct Case
    {
        const char* outline;
        ECachingMode mode;
        const char* accesses;
    };
    const char *const through = "w0:4||", *const around = "w0:4|r0:4|", *const none = "w0:4|r0:4|r0:4";
    for (const Case& c : {
             Case{"IntReg X { at 0 4 RW; Little }", WriteThrough, through},
             Case{"IntReg X { at 0 4 RW; Cachable WriteThrough; Little }", WriteThrough, through},
             Case{"IntReg X { at 0 4 RW; Cachable WriteAround; Little }", WriteAround, around},
             Case{"IntReg X { at 0 4 RW; Cachable NoCache; Little }", NoCache, none},
             Case{"IntReg X { at 0 4 RW; PollingTime 5; Little }", WriteThrough, through},
             Case{"FloatReg X { at 0 4 RW; Little }", WriteAround, around},
             Case{"Integer X { pValue R } IntReg R { at 0 4 RW; Little }", WriteThrough, through},
             Case{"Integer X { pValue R } IntReg R { at 0 4 RW; Cachable WriteAround; Little }", WriteAround,
                  around},
             Case{"Integer X { pValue R } IntReg R { at 0 4 RW; Cachable NoCache; Little }", NoCache, none},
             Case{"Boolean X { pValue R } IntReg R { at 0 4 RW; Little }", WriteThrough, through},
             Case{"Boolean X { pValue R } IntReg R { at 0 4 RW; Cachable NoCache; Little }", NoCache, none},
             Case{"Integer X { pValue R; pMin M } IntReg R { at 0 4 RW; Little } "
                  "IntReg M { at 8 4 RW; Cachable NoCache; Little }",
                  WriteThrough, nullptr},
             Case{"IntReg X { pAddress P; at 0 4 RW; Little } "
                  "IntReg P { at 8 4 RW; Cachable NoCache; Little }",
                  NoCache, nullptr},
             Case{"Integer X { pIndex I; ValueIndexed[Index=0] 5; ValueDefault 6 } "
                  "IntReg I { at 8 4 RW; Cachable NoCache; Little }",
                  NoCache, nullptr},
             Case{"IntConverter X { FormulaTo FROM; FormulaFrom TO; pValue R; Slope Increasing } "
                  "IntReg R { at 0 4 RW; Little }",
                  WriteAround, nullptr},
             Case{"Float X { pValue C } Converter C { FormulaTo FROM; FormulaFrom TO; pValue R } "
                  "IntReg R { at 0 4 RW; Little }",
                  WriteAround, nullptr},
             Case{"IntSwissKnife X { pVariable[Name=R] R; Formula R } IntReg R { at 0 4 RW; Little }",
                  WriteThrough, nullptr},
             Case{"SwissKnife X { pVariable[Name=R] R; Formula R } IntReg R { at 0 4 RW; Little }",
                  WriteAround, nullptr},
             Case{"SwissKnife X { pVariable[Name=R] R; Formula R } "
                  "IntReg R { at 0 4 RW; Cachable NoCache; Little }",
                  NoCache, nullptr},
             Case{"StringReg X { at 0 4 RW }", WriteThrough, nullptr},
             Case{"Register X { at 0 4 RW }", WriteThrough, nullptr},
             Case{"StructReg S { at 0 4 RW; Little; StructEntry X { Bit 3 } }", WriteThrough, nullptr},
         })
    {
        SCOPED_TRACE(c.outline);
        TestMap test(c.outline);
        EXPECT_EQ(test.Get("X").GetCachingMode(), c.mode);
        // The first access in a map reads limits besides, which is not what the modes are about.
        test.Value("X").ToString();
        test.port.TakeAccesses();
        if (c.accesses) {
            EXPECT_EQ(AccessesOfWriteReadRead(test, "X", "1"), c.accesses);
        }
    }
}

TEST(Caching, VerifyReadsTheSameSourceAndIgnoreCacheReadsTheDeviceTwice)
{
    TestMap test("Integer X { pValue R } IntReg R { at 0 4 RW; Little }");
    IInteger& x = test.Int("X");
    x.SetValue(7);
    x.SetValue(7);
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4 w0:4") << "an equal value is written again";
    test.port.Put(0, {9, 0, 0, 0});
    EXPECT_EQ(x.GetValue(true), 7);
    EXPECT_TRUE(x.IsValueCacheValid());
    test.port.TakeAccesses();
    EXPECT_EQ(x.GetValue(false, true), 9);
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4");
    EXPECT_EQ(x.GetValue(), 9);
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4") << "the read after one past the cache fills it again";
    EXPECT_EQ(x.GetValue(), 9);
    EXPECT_EQ(test.port.TakeAccesses(), "");
}

TEST(Caching, AFloatRegisterWrittenThroughKeepsTheDouble)
{
    TestMap test("FloatReg R { at 0 4 RW; Cachable WriteThrough; Little } Float X { pValue R }");
    test.Flt("R").SetValue(1.1);
    EXPECT_EQ(test.Flt("R").GetValue(), 1.1);
    EXPECT_EQ(test.Flt("X").GetValue(), 1.1);
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4");
    EXPECT_EQ(test.Flt("R").GetValue(false, true), static_cast<double>(1.1f));
}

TEST(Caching, APartOfARegisterIsReadAloneAndNotKept)
{
    TestMap test("Register R { at 0x1000 4096 RW }");
    IRegister& node = test.Reg("R");
    const auto accessesOfGet = [&](int64_t count) {
        std::vector<uint8_t> bytes(4096);
        node.Get(bytes.data(), count);
        return test.port.TakeAccesses();
    };
    for (const auto& [count, accesses] :
         {std::pair{8, "r1000:8"}, {8, "r1000:8"}, {0, ""}, {4096, "r1000:4096"}, {8, ""}, {4096, ""}})
        EXPECT_EQ(accessesOfGet(count), accesses) << count;
    const uint8_t byte = 1;
    node.Set(&byte, 1);
    EXPECT_EQ(test.port.TakeAccesses(), "w1000:1");
    EXPECT_EQ(accessesOfGet(8), "r1000:8") << "a part that was written leaves nothing known";
}

TEST(Caching, RegistersOfTheSameAddressAndLengthShareTheirBytes)
{
    TestMap test(kSharedBytes);
    test.port.Put(0x10, {5});
    EXPECT_EQ(test.Int("A").GetValue(), 5);
    EXPECT_EQ(test.port.TakeAccesses(), "r10:4");
    EXPECT_EQ(test.Int("B").GetValue(), 5);
    EXPECT_EQ(test.port.TakeAccesses(), "") << "B finds the bytes of A";
    EXPECT_EQ(test.Int("Longer").GetValue(), 5);
    EXPECT_EQ(test.port.TakeAccesses(), "r10:8") << "another length is another entry";

    // What B has decoded stays, but who follows A asks the device.
    test.Int("A").SetValue(6);
    test.port.TakeAccesses();
    EXPECT_EQ(test.Int("B").GetValue(), 5);
    EXPECT_EQ(test.port.TakeAccesses(), "");
    EXPECT_EQ(test.Int("Follower").GetValue(), 6);
    EXPECT_EQ(test.port.TakeAccesses(), "r10:4");
}

TEST(Caching, WritingUncachedDropsSharedBytes)
{
    TestMap test(kSharedBytes);
    test.Int("B").GetValue();
    test.port.TakeAccesses();
    test.Int("Uncached").SetValue(8);
    EXPECT_EQ(test.port.TakeAccesses(), "w10:4");
    EXPECT_EQ(test.Int("A").GetValue(), 8) << "A had decoded nothing";
    EXPECT_EQ(test.port.TakeAccesses(), "r10:4");
}

TEST(Caching, InvalidatingAFeatureKeepsTheRegister)
{
    TestMap test("Integer X { pValue R } IntReg R { at 0 4 RW; Little }");
    EXPECT_EQ(test.Int("X").GetValue(), 0);
    test.port.TakeAccesses();
    test.port.Put(0, {3});
    test.Get("X").InvalidateNode();
    EXPECT_EQ(test.Int("X").GetValue(), 0);
    EXPECT_TRUE(test.Value("X").IsValueCacheValid());
    test.Get("R").InvalidateNode();
    EXPECT_FALSE(test.Value("X").IsValueCacheValid());
    EXPECT_EQ(test.Int("X").GetValue(), 3);
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4");
}

TEST(Caching, BitFieldsOfOneWordKeepEachOthersBits)
{
    for (const bool cached : {true, false}) {
        SCOPED_TRACE(cached);
        const std::string tail = cached ? "Little }" : "Cachable NoCache; Little }";
        const auto field = [&](const char* name, const char* bits) {
            return std::string("MaskedIntReg ") + name + " { at 0 4 RW; " +
                   (cached ? "" : "Cachable NoCache; ") + bits + " Little } ";
        };
        TestMap test(field("Low", "LSB 0; MSB 3;") + field("High", "LSB 4; MSB 11;"));
        test.port.Put(0, {0, 0, 0, 0x80});
        test.Int("Low").SetValue(0xf);
        EXPECT_EQ(test.port.TakeAccesses(), "r0:4 w0:4");
        test.Int("High").SetValue(0xa5);
        EXPECT_EQ(test.port.TakeAccesses(), cached ? "w0:4" : "r0:4 w0:4");
        EXPECT_EQ(test.port.Peek(0, 4), (Bytes{0x5f, 0x0a, 0, 0x80}));
    }
}

TEST(Caching, WriteOnlyNodesCannotBeReadNorWrittenInParts)
{
    TestMap test("IntReg Whole { at 0 4 WO; Little } MaskedIntReg Part { at 4 4 WO; Bit 0; Little }");
    test.Int("Whole").SetValue(1);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Whole").GetValue(); }), "Access");
    EXPECT_EQ(KindRaisedBy([&] { test.Int("Part").SetValue(1); }), "Access");
}

TEST(Caching, AccessModesFollowTheirFlagRegister)
{
    TestMap test(R"(
        Integer X { pIsAvailable Flag; Value 1 }
        IntReg Flag { at 0 4 RW; Little }
        Integer Y { pIsAvailable Live; Value 1 }
        IntReg Live { at 4 4 RW; Cachable NoCache; Little })");
    INode &x = test.Get("X"), &y = test.Get("Y");
    EXPECT_EQ(x.GetAccessMode(), NA);
    EXPECT_EQ(x.GetAccessMode(), NA);
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4");
    test.port.Put(0, {1});
    x.InvalidateNode();
    EXPECT_EQ(x.GetAccessMode(), NA) << "only the register knows that the device has changed";
    test.Get("Flag").InvalidateNode();
    EXPECT_EQ(x.GetAccessMode(), RW);
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4");

    EXPECT_EQ(y.GetAccessMode(), NA);
    test.port.Put(4, {1});
    EXPECT_EQ(y.GetAccessMode(), RW);
    EXPECT_EQ(test.port.TakeAccesses(), "r4:4 r4:4");
}

TEST(Caching, ThePortIsAskedOnceForItsAccessMode)
{
    TestMap test("IntReg R { at 0 4 RW; Little } IntReg S { at 4 4 RW; Little }");
    const auto useAll = [&] {
        for (const char* name : {"R", "S", "R"}) {
            test.Int(name).GetValue();
            test.Get(name).GetAccessMode();
        }
    };
    useAll();
    EXPECT_EQ(test.port.modeQueries, 1);
    test.port.mode = RO;
    EXPECT_EQ(test.Get("R").GetAccessMode(), RW);
    test.Get("Device").InvalidateNode();
    EXPECT_EQ(test.Get("R").GetAccessMode(), RO);
    useAll();
    EXPECT_EQ(test.port.modeQueries, 2);
}

TEST(Caching, AnIndexDecidesWhereReadsAndWritesGo)
{
    TestMap test(R"(
        Integer X { pIndex Sel; pValueIndexed[Index=0] R0; pValueIndexed[Index=1] R1; ValueDefault 77 }
        Integer Sel { Value 0 }
        IntReg R0 { at 0 4 RW; Little }
        IntReg R1 { at 4 4 RW; Little })");
    test.port.Put(0, {10, 0, 0, 0, 11});
    for (const auto& [index, value] : {std::pair{0, 10}, {1, 11}, {2, 77}, {-1, 77}, {0, 10}}) {
        test.Int("Sel").SetValue(index);
        EXPECT_EQ(test.Int("X").GetValue(), value) << index;
    }
    test.Int("Sel").SetValue(1);
    test.Int("X").SetValue(5);
    EXPECT_EQ(test.port.Peek(0, 8), (Bytes{10, 0, 0, 0, 5, 0, 0, 0}));
    test.Int("Sel").SetValue(0);
    EXPECT_EQ(test.Int("X").GetValue(), 10);
}

// SPDX-License-Identifier: Apache-2.0
// How values lie in the bytes of the device, and where.
#include "TestMap.h"

#include <cfloat>
#include <limits>

using namespace GenApi;
using namespace KxTest;

namespace
{

using Bytes = FakePort::Bytes;
constexpr int64_t kMaxInteger = std::numeric_limits<int64_t>::max();
constexpr int64_t kMinInteger = std::numeric_limits<int64_t>::min();

} // namespace

TEST(Register, IntegersLieInTheirBytesByLengthSignAndOrder)
{
    struct Case
    {
        int length;
        const char* kind; ///< sign and byte order
        int64_t min, max, value;
        Bytes bytes;
    };
    for (const Case& c : {
             Case{1, "Sign Unsigned; Little", 0, 255, 0xab, {0xab}},
             Case{1, "Sign Signed; Big", -128, 127, -2, {0xfe}},
             Case{2, "Sign Unsigned; Little", 0, 0xffff, 0x1234, {0x34, 0x12}},
             Case{2, "Sign Unsigned; Big", 0, 0xffff, 0x1234, {0x12, 0x34}},
             Case{3, "Sign Signed; Little", -0x800000, 0x7fffff, -3, {0xfd, 0xff, 0xff}},
             Case{4, "Big", 0, 0xffffffff, 0xdeadbeef, {0xde, 0xad, 0xbe, 0xef}},
             Case{5, "Sign Unsigned; Big", 0, 0xffffffffff, 0x0102030405, {1, 2, 3, 4, 5}},
             Case{7,
                  "Sign Signed; Big",
                  -(1ll << 55),
                  (1ll << 55) - 1,
                  -256,
                  {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0}},
             Case{8,
                  "Sign Unsigned; Little",
                  0,
                  kMaxInteger,
                  kMaxInteger,
                  {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0x7f}},
             Case{8, "Sign Signed; Big", kMinInteger, kMaxInteger, kMinInteger, {0x80, 0, 0, 0, 0, 0, 0, 0}},
         })
    {
        SCOPED_TRACE(std::to_string(c.length) + c.kind);
        TestMap test("IntReg X { at 0x20 " + std::to_string(c.length) + " RW; Cachable NoCache; " + c.kind +
                     " }");
        IInteger& x = test.Int("X");
        EXPECT_EQ(x.GetMin(), c.min);
        EXPECT_EQ(x.GetMax(), c.max);
        x.SetValue(c.value);
        EXPECT_EQ(test.port.Peek(0x20, c.length), c.bytes);
        EXPECT_EQ(test.port.Peek(0x20 + c.length, 1), Bytes{0});
        test.port.Put(0x20, Bytes(8, 0));
        test.port.Put(0x20, c.bytes);
        EXPECT_EQ(x.GetValue(), c.value);
    }
    TestMap test("IntReg X { at 0 8 RW; Sign Unsigned; Little }");
    test.port.Put(0, Bytes(8, 0xff));
    EXPECT_EQ(test.Int("X").GetValue(), -1) << "more than the type can hold";
}

TEST(Register, BitFieldsAreNumberedFromTheEndThatTheByteOrderSays)
{
    struct Case
    {
        const char* bits;
        int64_t min, max, value;
        Bytes bytes; ///< with all other bits 0
    };
    for (const Case& c : {
             Case{"Bit 0; Little", 0, 1, 1, {1, 0}},
             Case{"Bit 9; Little", 0, 1, 1, {0, 2}},
             Case{"Bit 0; Big", 0, 1, 1, {0x80, 0}},
             Case{"Bit 15; Big", 0, 1, 1, {0, 1}},
             Case{"LSB 4; MSB 11; Little", 0, 255, 0xa5, {0x50, 0x0a}},
             Case{"LSB 11; MSB 4; Big", 0, 255, 0xa5, {0x0a, 0x50}},
             Case{"LSB 4; MSB 7; Sign Signed; Little", -8, 7, -3, {0xd0, 0}},
             Case{"LSB 3; MSB 0; Sign Signed; Big", -8, 7, -8, {0x80, 0}},
             Case{"LSB 0; MSB 15; Sign Signed; Little", -32768, 32767, -2, {0xfe, 0xff}},
         })
    {
        SCOPED_TRACE(c.bits);
        TestMap test(std::string("MaskedIntReg X { at 0 2 RW; Cachable NoCache; ") + c.bits + " }");
        IInteger& x = test.Int("X");
        EXPECT_EQ(x.GetMin(), c.min);
        EXPECT_EQ(x.GetMax(), c.max);
        x.SetValue(c.value);
        EXPECT_EQ(test.port.Peek(0, 2), c.bytes);
        EXPECT_EQ(x.GetValue(), c.value);
        // All other bits set: they stay, and they do not show.
        x.SetValue(c.min == 0 ? c.max : -1);
        Bytes others = test.port.Peek(0, 2);
        for (uint8_t& byte : others)
            byte = static_cast<uint8_t>(~byte);
        test.port.Put(0, others);
        EXPECT_EQ(x.GetValue(), 0);
        x.SetValue(c.value);
        EXPECT_EQ(test.port.Peek(0, 2), (Bytes{static_cast<uint8_t>(others[0] | c.bytes[0]),
                                               static_cast<uint8_t>(others[1] | c.bytes[1])}));
    }
}

TEST(Register, TheAddressIsTheSumOfItsTerms)
{
    struct Case
    {
        const char* terms;
        int64_t address;
    };
    for (const Case& c : {
             Case{"Address 0x10; Address 0x100", 0x110},
             Case{"Address 0x10; pAddress A", 0x10 + 0x40},
             Case{"pAddress A; pAddress A", 0x80},
             Case{"Address 0x10; pAddress Negative", 0x10 - 8},
             Case{"Address 0x10; IntSwissKnife S { pVariable[Name=I] I; Formula I*0x20 }", 0x10 + 3 * 0x20},
             Case{"Address 0x10; pIndex I", 0x10 + 3 * 4},
             Case{"Address 0x10; pIndex[Offset=0x100] I", 0x10 + 3 * 0x100},
             Case{"Address 0x10; pIndex[pOffset=A] I", 0x10 + 3 * 0x40},
         })
    {
        SCOPED_TRACE(c.terms);
        TestMap test(std::string("IntReg X { ") + c.terms +
                     "; Length 4; AccessMode RW; pPort Device; Little } Integer A { Value 0x40 } "
                     "Integer Negative { Value -8 } Integer I { Value 3 }");
        EXPECT_EQ(test.Reg("X").GetAddress(), c.address);
        test.Int("X").SetValue(0x55);
        EXPECT_EQ(test.port.Peek(c.address, 1).front(), 0x55);
    }
    // It moves with its terms.
    TestMap test("IntReg X { pIndex[Offset=4] I; at 0 4 RW; Little } Integer I { Value 0 }");
    test.port.Put(0, {10, 0, 0, 0, 11});
    EXPECT_EQ(test.Int("X").GetValue(), 10);
    test.Int("I").SetValue(1);
    EXPECT_EQ(test.Int("X").GetValue(), 11);
}

TEST(Register, TextsEndAtNulOrAtTheLengthAndFillTheRegister)
{
    TestMap test("StringReg X { at 0 4 RW; Cachable NoCache } String S { pValue X }");
    IString& x = test.Get<IString>("X");
    EXPECT_EQ(x.GetMaxLength(), 4);
    EXPECT_EQ(test.Get<IString>("S").GetMaxLength(), 4);
    for (const auto& [text, bytes] : {std::pair{"abcd", Bytes{'a', 'b', 'c', 'd'}},
                                      {"ab", Bytes{'a', 'b', 0, 0}},
                                      {"", Bytes{0, 0, 0, 0}}})
    {
        test.port.Put(0, Bytes(5, 0xee));
        x.SetValue(text);
        EXPECT_EQ(test.port.Peek(0, 4), bytes);
        EXPECT_EQ(test.port.Peek(4, 1), Bytes{0xee});
        EXPECT_EQ(test.Get<IString>("S").GetValue(), text);
    }
    test.port.Put(0, {'x', 0, 'y', 'z'});
    EXPECT_EQ(x.GetValue(), "x");
    for (const bool verify : {true, false})
        EXPECT_EQ(KindRaisedBy([&] { test.Get<IString>("S").SetValue("12345", verify); }), "OutOfRange");
}

TEST(Register, FloatsAreIeeeOfBothSizesAndOrders)
{
    TestMap test("FloatReg S { at 0 4 RW; Little } FloatReg D { at 8 8 RW; Big }");
    test.Flt("S").SetValue(-1.5);
    test.Flt("D").SetValue(0.1);
    EXPECT_EQ(test.port.Peek(0, 4), (Bytes{0, 0, 0xc0, 0xbf}));
    EXPECT_EQ(test.port.Peek(8, 8), (Bytes{0x3f, 0xb9, 0x99, 0x99, 0x99, 0x99, 0x99, 0x9a}));
    EXPECT_EQ(test.Flt("S").GetValue(), -1.5);
    EXPECT_EQ(test.Flt("D").GetValue(), 0.1);
    EXPECT_EQ(test.Flt("S").GetMin(), -static_cast<double>(FLT_MAX));
    EXPECT_EQ(test.Flt("D").GetMax(), DBL_MAX);
}

TEST(Register, RawBytesMayBeFewerThanTheLengthButNotMore)
{
    TestMap test("Register X { at 0 4 RW }");
    IRegister& x = test.Reg("X");
    EXPECT_EQ(x.GetLength(), 4);
    uint8_t bytes[8] = {1, 2, 3, 4};
    x.Set(bytes, 4);
    uint8_t got[8] = {};
    x.Get(got, 2);
    EXPECT_EQ((Bytes{got[0], got[1], got[2]}), (Bytes{1, 2, 0}));
    EXPECT_EQ(KindRaisedBy([&] { x.Get(got, 5); }), "OutOfRange");
    EXPECT_EQ(KindRaisedBy([&] { x.Set(bytes, 5); }), "OutOfRange");
    EXPECT_EQ(KindRaisedBy([&] { x.Get(got, -1); }), "InvalidArgument");
}

TEST(Register, AbsurdLengthsAreRefusedWhenUsed)
{
    for (const char* length : {"-1", "-9223372036854775808", "9", "4294967296", "9223372036854775807"}) {
        SCOPED_TRACE(length);
        TestMap test(std::string("Integer L { Value ") + length + R"( }
            IntReg I { Address 0; pLength L; AccessMode RW; pPort Device; Little }
            StringReg S { Address 0; pLength L; AccessMode RW; pPort Device }
            Register R { Address 0; pLength L; AccessMode RW; pPort Device }
            FloatReg F { Address 0; pLength L; AccessMode RW; pPort Device; Little })");
        EXPECT_EQ(KindRaisedBy([&] { test.Int("I").GetValue(); }), "OutOfRange");
        EXPECT_EQ(KindRaisedBy([&] { test.Flt("F").GetValue(); }), "OutOfRange");
        if (std::string(length) == "9")
            continue; // fine for the others
        for (const char* name : {"S", "R"}) {
            EXPECT_NE(KindRaisedBy([&] { test.Value(name).ToString(); }), "none") << name;
            EXPECT_NE(KindRaisedBy([&] { test.Value(name).FromString("00"); }), "none") << name;
        }
        EXPECT_EQ(test.port.TakeAccesses(), "");
    }
    TestMap test("Integer L { Value 0 } Register R { Address 0; pLength L; AccessMode RW; pPort Device }");
    EXPECT_EQ(test.Value("R").ToString(), "0x");
    EXPECT_EQ(test.port.TakeAccesses(), "r0:0");
}

TEST(Register, StructEntriesOverrideWhatTheStructSays)
{
    TestMap test(R"(
        StructReg Status { Visibility Guru; at 0x40 2 RW; Little;
            StructEntry Low { LSB 0; MSB 7 }
            StructEntry High { Visibility Expert; AccessMode RO; LSB 8; MSB 15; Sign Signed } })");
    test.port.Put(0x40, {1, 0xff});
    EXPECT_EQ(test.Int("Low").GetValue(), 1);
    EXPECT_EQ(test.Int("High").GetValue(), -1);
    EXPECT_EQ(test.port.TakeAccesses(), "r40:2");
    EXPECT_EQ(test.Get("Low").GetVisibility(), Guru);
    EXPECT_EQ(test.Get("High").GetVisibility(), Expert);
    EXPECT_EQ(KindRaisedBy([&] { test.Int("High").SetValue(0); }), "Access");
    test.Int("Low").SetValue(0xaa);
    EXPECT_EQ(test.port.Peek(0x40, 2), (Bytes{0xaa, 0xff}));
    EXPECT_EQ(test.map._GetNode("Status"), nullptr) << "the struct itself is no node";
}

TEST(Register, CopiesOfAValueAreWrittenAfterItInTheirOrder)
{
    TestMap test(R"(
        Integer X { pValueCopy C1; pValue R; pValueCopy C2 }
        IntReg R { at 0 4 RW; Little } IntReg C1 { at 4 4 RW; Little } IntReg C2 { at 8 4 RW; Little })");
    CallbackLog log(test);
    test.Int("X").SetValue(5);
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4 w4:4 w8:4");
    EXPECT_EQ(log.Take(), "C1 C2 R X");
    for (const char* name : {"X", "R", "C1", "C2"})
        EXPECT_EQ(test.Int(name).GetValue(), 5) << name;

    // Half a write fires nothing, but nobody is shown the value from before it.
    int writes = 0;
    test.port.onWrite = [&] {
        if (++writes == 2)
            throw std::runtime_error("cable pulled");
    };
    EXPECT_EQ(KindRaisedBy([&] { test.Int("X").SetValue(6); }), "std");
    EXPECT_EQ(log.Take(), "");
    EXPECT_EQ(test.Int("X").GetValue(), 6);
    EXPECT_EQ(test.Int("C1").GetValue(), 5);
}

TEST(Register, APortMaySwapTheByteOrder)
{
    TestMap test("Port Device { SwapEndianess Yes } IntReg R { at 0 4 RW; Little } "
                 "FloatReg F { at 4 4 RW; Big } StringReg S { at 8 4 RW }");
    test.Int("R").SetValue(0x01020304);
    test.Flt("F").SetValue(-1.5);
    test.Get<IString>("S").SetValue("ab");
    EXPECT_EQ(test.port.Peek(0, 12), (Bytes{1, 2, 3, 4, 0, 0, 0xc0, 0xbf, 'a', 'b', 0, 0}));
    EXPECT_EQ(test.Int("R").GetValue(true, true), 0x01020304);
}

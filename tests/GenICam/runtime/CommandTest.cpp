// SPDX-License-Identifier: Apache-2.0
// Starting something in the device and waiting for its end.
#include "TestMap.h"

using namespace GenApi;
using namespace KxTest;

TEST(Command, IsDoneWhenTheRegisterNoLongerHoldsTheCommandValue)
{
    TestMap test("Command C { pValue R; CommandValue 3 } IntReg R { at 0 4 RW; Little } "
                 "Integer Over { pValue R } Command Other { pValue R; CommandValue 4 }");
    ICommand& command = test.Get<ICommand>("C");
    EXPECT_TRUE(command.IsDone());
    EXPECT_EQ(test.port.TakeAccesses(), "") << "nothing was started";
    EXPECT_EQ(test.Value("C").ToString(), "0");
    command.Execute();
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4");
    EXPECT_EQ(test.port.Peek(0, 4), (FakePort::Bytes{3, 0, 0, 0}));

    CallbackLog log(test);
    EXPECT_FALSE(command.IsDone());
    EXPECT_FALSE(command.IsDone());
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4 r0:4") << "the cache cannot know";
    EXPECT_EQ(test.Value("C").ToString(), "1");
    test.port.TakeAccesses();
    EXPECT_EQ(log.Take(), "");

    test.port.Put(0, {0});
    EXPECT_TRUE(command.IsDone());
    EXPECT_EQ(test.port.TakeAccesses(), "r0:4");
    EXPECT_EQ(log.Take(), "C Other Over R") << "all that shows the register";
    EXPECT_TRUE(command.IsDone());
    EXPECT_EQ(test.port.TakeAccesses() + log.Take(), "");
}

TEST(Command, WithoutAReadableRegisterIsDoneAtOnce)
{
    for (const char* outline : {"Command C { pValue R; CommandValue 3 } IntReg R { at 0 4 WO; Little }",
                                "Command C { Value 0; CommandValue 3 }"})
    {
        SCOPED_TRACE(outline);
        TestMap test(outline);
        test.Get<ICommand>("C").Execute();
        test.port.TakeAccesses();
        EXPECT_TRUE(test.Get<ICommand>("C").IsDone());
        EXPECT_EQ(test.port.TakeAccesses(), "");
        const bool isReadable = IsReadable(test.Get("C").GetAccessMode());
        EXPECT_EQ(KindRaisedBy([&] { test.Value("C").ToString(); }), isReadable ? "none" : "Access");
    }
}

TEST(Command, WritesTheValueOfTheNodeItNames)
{
    TestMap test("Command C { pValue R; pCommandValue V } Integer V { Value 9 } "
                 "IntReg R { at 0 4 RW; Little }");
    test.Get<ICommand>("C")();
    EXPECT_EQ(test.port.Peek(0, 1).front(), 9);
    EXPECT_FALSE(test.Get<ICommand>("C").IsDone());
}

TEST(Command, TakesOnlyTrueAsText)
{
    TestMap test("Command C { pValue R; CommandValue 3 } IntReg R { at 0 4 RW; Little }");
    for (const char* text : {"0", "false", "", "yes"})
        EXPECT_EQ(KindRaisedBy([&] { test.Value("C").FromString(text); }), "InvalidArgument") << text;
    EXPECT_EQ(test.port.TakeAccesses(), "");
    test.Value("C").FromString("1");
    test.Value("C").FromString("true");
    EXPECT_EQ(test.port.TakeAccesses(), "w0:4 w0:4");
}

TEST(Command, FiresWithItsRegisterAndIsRefusedWhereItCannotBeWritten)
{
    TestMap test("Category Root { pFeature C } Command C { pValue R; CommandValue 3 } "
                 "IntReg R { at 0 4 RW; Little } Command Ro { pValue RoReg; CommandValue 1 } "
                 "IntReg RoReg { at 4 4 RO; Little }");
    CallbackLog log(test);
    test.Get<ICommand>("C").Execute();
    EXPECT_EQ(log.Take(), "C R Root");
    EXPECT_EQ(KindRaisedBy([&] { test.Get<ICommand>("Ro").Execute(); }), "Access");
    test.Get("C").ImposeAccessMode(NA);
    EXPECT_EQ(KindRaisedBy([&] { test.Get<ICommand>("C").Execute(); }), "Access");
}

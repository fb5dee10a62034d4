// SPDX-License-Identifier: Apache-2.0
#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

using namespace GenICam;

namespace
{
template <class E, class Base = GenericException>
void ExpectClass(const E& exception, const char* name)
{
    static_assert(std::is_base_of_v<Base, E>);
    static_assert(!std::is_base_of_v<std::exception, E>);
    const std::string expected =
        std::string("told 7 : ") + name + " thrown (file 'GenICam/ExceptionTest', line ";
    try {
        throw exception;
    } catch (const Base& e) {
        EXPECT_STREQ(e.GetDescription(), "told 7");
        EXPECT_EQ(std::string(e.what()).substr(0, expected.size()), expected);
        EXPECT_EQ(std::string(e.what()).substr(expected.size()), std::to_string(e.GetSourceLine()) + ")");
        EXPECT_STREQ(e.GetSourceFileName(), "GenICam/ExceptionTest");
    }
}

class CForeignException : public GenericException
{
public:
    CForeignException(const char* description, const char* file, int line, const char* type)
        : GenericException(description, file, line, type)
    {}
};

template <size_t N>
std::string SourceName(const char (&path)[N])
{
    return Detail::CSourceFileName<N>(path).Get();
}

template <class Function>
std::string DescriptionOf(Function&& function)
{
    try {
        function();
    } catch (const GenericException& e) {
        return e.GetDescription();
    }
    return "nothing thrown";
}
} // namespace

TEST(Exception, MacrosTellClassAndPlace)
{
    ExpectClass(BAD_ALLOC_EXCEPTION("told %d", 7), "BadAllocException");
    ExpectClass(INVALID_ARGUMENT_EXCEPTION("told %d", 7), "InvalidArgumentException");
    ExpectClass(OUT_OF_RANGE_EXCEPTION("told %d", 7), "OutOfRangeException");
    ExpectClass(PROPERTY_EXCEPTION("told %d", 7), "PropertyException");
    ExpectClass(RUNTIME_EXCEPTION("told %d", 7), "RuntimeException");
    ExpectClass(LOGICAL_ERROR_EXCEPTION("told %d", 7), "LogicalErrorException");
    ExpectClass(ACCESS_EXCEPTION("told %d", 7), "AccessException");
    ExpectClass(TIMEOUT_EXCEPTION("told %d", 7), "TimeoutException");
    ExpectClass(DYNAMICCAST_EXCEPTION("told %d", 7), "DynamicCastException");
    const int line = __LINE__ + 1;
    EXPECT_EQ(RUNTIME_EXCEPTION("x").GetSourceLine(), static_cast<unsigned int>(line));
}

TEST(Exception, IsCaughtByItsOwnClassOnly)
{
    EXPECT_THROW(throw TIMEOUT_EXCEPTION("late"), TimeoutException);
    try {
        throw ACCESS_EXCEPTION("no");
    } catch (const RuntimeException&) {
        FAIL() << "an access error is no runtime error";
    } catch (const GenericException& e) {
        EXPECT_NE(dynamic_cast<const AccessException*>(&e), nullptr);
    }
}

TEST(Exception, TellsNodeAndCall)
{
    const AccessException e =
        ExceptionReporter<AccessException>("lib/file", 12, "AccessException", "Gain.SetValue()", "Gain")
            .Report("ro");
    EXPECT_STREQ(e.what(), "ro : AccessException thrown in node 'Gain' while calling 'Gain.SetValue()' (file "
                           "'lib/file', line 12)");
    EXPECT_STREQ(e.GetDescription(), "ro");
    const std::string what = OUT_OF_RANGE_EXCEPTION_NODE("Width.SetValue()", "Width")("%d", 3).what();
    EXPECT_EQ(
        what.find("3 : OutOfRangeException thrown in node 'Width' while calling 'Width.SetValue()' (file "),
        0u);
}

TEST(Exception, CutsDescriptionsAt256Bytes)
{
    const std::string longText(1000, 'x');
    EXPECT_EQ(std::string(RUNTIME_EXCEPTION("%s", longText.c_str()).GetDescription()), std::string(255, 'x'));
    const RuntimeException own(longText.c_str(), "f", 1);
    EXPECT_EQ(own.GetDescription(), longText) << "only formatting is bounded";
}

TEST(Exception, OwnsItsTextsAndSharesThemWithCopies)
{
    static_assert(std::is_nothrow_copy_constructible_v<RuntimeException>);
    static_assert(std::is_nothrow_copy_assignable_v<RuntimeException>);
    std::string description("going"), file("a/b");
    const RuntimeException first(description.c_str(), file.c_str(), 5);
    description.assign("xxxxx");
    file.assign("xxx");
    const GenericException copy = first;
    EXPECT_STREQ(copy.what(), "going (file 'a/b', line 5)");
    EXPECT_EQ(copy.what(), first.what());
    const GenericException empty(nullptr, nullptr, -1, nullptr);
    EXPECT_STREQ(empty.GetDescription(), "");
    EXPECT_EQ(empty.GetSourceLine(), 0u);
}

TEST(Exception, ReporterTakesClassesFromOutside)
{
    const auto e =
        ExceptionReporter<CForeignException>("f", 1, "CForeignException", "call", "node").Report("%s", "x");
    EXPECT_STREQ(e.what(), "x : CForeignException thrown (file 'f', line 1)");
}

TEST(Exception, TellsLibraryFolderAndStem)
{
    EXPECT_EQ(SourceName("/home/me/kx/KxApi_GUI_qt/frame/KxBaseWnd_qt.cpp"), "KxApi_GUI_qt/KxBaseWnd_qt");
    EXPECT_EQ(SourceName("/src/GenICam/genapi/runtime/NodeMap.cpp"), "GenICam/NodeMap");
    EXPECT_EQ(SourceName("../GenICam/KxApi_TL/Stream.h"), "KxApi_TL/Stream");
    EXPECT_EQ(SourceName("/opt/MyGenICam/camera/main.tab.cpp"), "camera/main.tab");
    EXPECT_EQ(SourceName("src/main.cpp"), "src/main");
    EXPECT_EQ(SourceName("main"), "main");
    EXPECT_EQ(SourceName("/main.cpp"), "main");
    EXPECT_EQ(SourceName("a.b/main"), "a.b/main");
    EXPECT_EQ(SourceName(""), "");
}

TEST(Exception, BadAllocLeavesAsOneOfTheFamily)
{
    EXPECT_EQ(GuardBadAlloc([] { return 3; }), 3);
    int value = 0;
    int& reference = GuardBadAlloc([&value]() -> int& { return value; });
    EXPECT_EQ(&reference, &value);
    EXPECT_THROW(GuardBadAlloc([] { throw 5; }), int);
    try {
        GuardBadAlloc([]() -> void { throw std::bad_array_new_length(); });
        FAIL();
    } catch (const BadAllocException& e) {
        EXPECT_STREQ(e.GetDescription(), std::bad_array_new_length().what());
    }
}

TEST(Exception, RangeChecksTellValueAndLimit)
{
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min(), kMax = std::numeric_limits<int64_t>::max();
    EXPECT_EQ(DescriptionOf([] { CHECK_RANGE_I64(4, 5, 9, 1); }),
              "Value = 4 must be equal or greater than Min = 5");
    EXPECT_EQ(DescriptionOf([] { CHECK_RANGE_I64(10, 5, 9, 1); }),
              "Value = 10 must be equal or smaller than Max = 9");
    EXPECT_EQ(DescriptionOf([] { CHECK_RANGE_I64(8, 5, 9, 2); }),
              "Value = 8 must differ from Min = 5 by a multiple of Inc = 2");
    EXPECT_THROW(CHECK_RANGE_I64(7, 5, 9, 0), LogicalErrorException);
    EXPECT_THROW(CHECK_RANGE_I64(7, 5, 9, -2), LogicalErrorException);
    EXPECT_NO_THROW(CHECK_RANGE_I64(7, 5, 9, 2));
    EXPECT_NO_THROW(CHECK_RANGE_I64(kMax, kMin, kMax, 1));
    EXPECT_NO_THROW(CHECK_RANGE_I64(kMax - 1, kMin, kMax, 2)) << "the distance exceeds the signed range";
    EXPECT_THROW(CHECK_RANGE_I64(kMax, kMin, kMax, 2), OutOfRangeException);
    EXPECT_THROW(CHECK_RANGE_FLT(0.5, 1.0, 2.0), OutOfRangeException);
    EXPECT_THROW(CHECK_RANGE_FLT(HUGE_VAL, -1e308, 1e308), OutOfRangeException);
    EXPECT_NO_THROW(CHECK_RANGE_FLT(std::nan(""), 1.0, 2.0));
}

// Texts of a program are taken as they are; without a type what() tells none, and files go without folders.
TEST(Exception, TellsNoMoreThanItWasGiven)
{
    const auto whatOf = [](const GenericException& e) { return std::string(e.what()); };
    EXPECT_EQ(whatOf(RuntimeException("d", "/a/f.cpp", 7)), "d (file 'f.cpp', line 7)");
    EXPECT_EQ(whatOf(GenericException("d", "f.cpp", 7, "Entry()", "Nd", "Ty")),
              "d : Ty thrown in node 'Nd' while calling 'Entry()' (file 'f.cpp', line 7)");
    const std::string text = "100%d" + std::string(400, 'x');
    std::stringstream stream;
    stream << text;
    EXPECT_EQ(RUNTIME_EXCEPTION(text).GetDescription(), text);
    EXPECT_EQ(RUNTIME_EXCEPTION(stream).GetDescription(), text);
    EXPECT_STREQ(RUNTIME_EXCEPTION().GetDescription(), "");
    EXPECT_EQ(whatOf(GENERIC_EXCEPTION("a %d", 3)).find("a 3 (file "), 0u);
    const int* const null = nullptr;
    EXPECT_THROW(CHECK_DYNAMIC_CAST_POINTER(null), LogicalErrorException);
}

// SPDX-License-Identifier: Apache-2.0
#include "ImageTestSupport.h"

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/CKxAutoPtrArray.h>
#include <KxApi_TL/IKxReleasable.h>

using namespace KxApi;
using KxTest::Raised;

namespace
{

struct Face
{
    int nNumber = 0;
};

struct Object final : Face, IKxReleasable
{
    explicit Object(int number = 0) { nNumber = number; }
    int nReleased = 0;
    void Release() override { ++nReleased; }
};

using Pointer = CKxAutoPtr<Object, Face>;
using Array = CKxAutoPtrArray<Object, Face>;

TEST(AutoPtr, GivesBackOnceWhatItOwns)
{
    Object first(1), second(2), third(3);
    {
        Pointer pointer(&first);
        EXPECT_EQ(pointer->nNumber, 1);
        pointer.Reset(&second);
        EXPECT_EQ(first.nReleased, 1);
        pointer.Reset(&second);
        EXPECT_EQ(second.nReleased, 0) << "the same object stays";
        Pointer moved(std::move(pointer));
        EXPECT_EQ((*moved).nNumber, 2);
        Pointer other(&third);
        EXPECT_EQ(other.Detach(), &third);
        EXPECT_FALSE(other);
        other = std::move(moved);
        EXPECT_EQ(other.Get(), &second);
        EXPECT_EQ(second.nReleased, 0);
    }
    EXPECT_EQ(second.nReleased, 1);
    EXPECT_EQ(third.nReleased, 0);
}

TEST(AutoPtr, NullAccessRaises)
{
    const Pointer pointer;
    EXPECT_EQ(pointer.Get(), nullptr);
    EXPECT_EQ(Raised<GenICam::LogicalErrorException>([&] { static_cast<void>(pointer->nNumber); }),
              "NULL pointer dereferenced");
    EXPECT_EQ(Raised<GenICam::LogicalErrorException>([&] { static_cast<void>(*pointer); }),
              "NULL pointer dereferenced");
}

TEST(AutoPtrArray, KeepsTheOrderAndReleasesWhatIsLeft)
{
    Object objects[] = {Object(0), Object(1), Object(2)};
    {
        Array array;
        for (size_t i = 0; i < 3; ++i)
            EXPECT_EQ(array.Register(&objects[i]), i);
        EXPECT_EQ(array.Deregister(1), &objects[1]);
        ASSERT_EQ(array.GetSize(), 2u);
        EXPECT_EQ(array[0]->nNumber, 0);
        EXPECT_EQ(array[1]->nNumber, 2);
    }
    EXPECT_EQ(objects[0].nReleased, 1);
    EXPECT_EQ(objects[1].nReleased, 0);
    EXPECT_EQ(objects[2].nReleased, 1);
}

TEST(AutoPtrArray, IndexIsCheckedAsSignedNumber)
{
    Array array;
    EXPECT_EQ(Raised<GenICam::OutOfRangeException>([&] { static_cast<void>(array[0]); }),
              "nIndex = 0 must be smaller than Max = 0");
    EXPECT_EQ(Raised<GenICam::OutOfRangeException>(
                  [&] { static_cast<void>(array.Deregister(static_cast<size_t>(-2))); }),
              "nIndex = -2 must be equal or greater than Min = 0");
}

TEST(AutoPtrArrayDeathTest, NullEntryEndsTheProcessWhenAskedFor)
{
    Array array;
    array.Register(nullptr);
    EXPECT_DEATH(static_cast<void>(array[0]), "\\(pUT\\) != NULL");
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
// Files of a device as streams, against a device that does what the standard's file access control says.
#include "ToolsTestSupport.h"

#include <algorithm>
#include <iterator>
#include <map>

using namespace GenApi;
using namespace KxGenApiTest;

namespace
{
constexpr int kBufferSize = 16;
constexpr const char* kFile = "UserSet";

enum Register : int64_t
{
    kSelector,
    kOperation = 4,
    kExecute = 8,
    kMode = 12,
    kOffset = 16,
    kLength = 20,
    kStatus = 24,
    kResult = 28,
    kSize = 32,
    kBuffer = 64
};
enum Operation : uint32_t
{
    kOpen,
    kClose,
    kRead,
    kWrite,
    kDelete
};
enum Status : uint32_t
{
    kSuccess,
    kFailure
};

constexpr const char* kFileNodes = R"(
    Enumeration FileSelector { EnumEntry UserSet { Value 0 } EnumEntry Other { Value 1 } pValue SelectorReg }
    Enumeration FileOperationSelector {
        EnumEntry Open { Value 0 } EnumEntry Close { Value 1 } EnumEntry Read { Value 2 }
        EnumEntry Write { Value 3 } EnumEntry Delete { Value 4 } pValue OperationReg }
    Command FileOperationExecute { pValue ExecuteReg; CommandValue 1 }
    Enumeration FileOpenMode {
        EnumEntry Read { Value 0 } EnumEntry Write { Value 1 } EnumEntry ReadWrite { Value 2 } pValue ModeReg }
    Integer FileAccessOffset { pValue OffsetReg } Integer FileAccessLength { pValue LengthReg }
    Enumeration FileOperationStatus {
        EnumEntry Success { Value 0 } EnumEntry Failure { Value 1 } pValue StatusReg }
    Integer FileOperationResult { pValue ResultReg } Integer FileSize { pValue SizeReg }
    IntReg SelectorReg { at 0 4 RW; Little } IntReg OperationReg { at 4 4 RW; Little }
    IntReg ExecuteReg { at 8 4 RW; Little } IntReg ModeReg { at 12 4 RW; Little }
    IntReg OffsetReg { at 16 4 RW; Little } IntReg LengthReg { at 20 4 RW; Little }
    IntReg StatusReg { at 24 4 RW; Little } IntReg ResultReg { at 28 4 RW; Little }
    IntReg SizeReg { at 32 4 RW; Little } Register FileAccessBuffer { at 64 16 RW })";

/// A device with one file of limited size.
class CFileDevice : public CMemoryPort
{
public:
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        CMemoryPort::Write(pBuffer, Address, Length);
        if (Address == kExecute)
            Run();
    }

    std::string content;
    size_t capacity = 1000;
    bool isOpen = false;
    int failAt = -1; // offset at which reading and writing fail
    int operations = 0;

private:
    void Run()
    {
        Word(kExecute) = 0;
        Word(kResult) = 0;
        Word(kStatus) = Do(static_cast<Operation>(Word(kOperation))) ? kSuccess : kFailure;
        Word(kSize) = static_cast<uint32_t>(content.size());
        ++operations;
    }

    bool Do(Operation operation)
    {
        const bool wasOpen = isOpen;
        const size_t offset = Word(kOffset), length = Word(kLength);
        if (Word(kSelector) != 0)
            return false;
        switch (operation) {
        case kOpen:
            isOpen = true;
            return !wasOpen;
        case kClose:
            isOpen = false;
            return wasOpen;
        case kDelete:
            content.clear();
            return true;
        case kRead:
        case kWrite:
            break;
        }
        if (!isOpen || length > kBufferSize || static_cast<int>(offset) == failAt)
            return false;
        return operation == kRead ? Get(offset, length) : Put(offset, length);
    }

    bool Get(size_t offset, size_t length)
    {
        const std::string part = offset < content.size() ? content.substr(offset, length) : std::string();
        CMemoryPort::Write(part.data(), kBuffer, static_cast<int64_t>(part.size()));
        Word(kResult) = static_cast<uint32_t>(part.size());
        return true;
    }

    bool Put(size_t offset, size_t length)
    {
        char part[kBufferSize];
        CMemoryPort::Read(part, kBuffer, kBufferSize);
        const size_t count = std::min(length, capacity - std::min(capacity, offset));
        content.resize(std::max(content.size(), offset + count));
        std::copy_n(part, count, content.begin() + static_cast<std::ptrdiff_t>(offset));
        Word(kResult) = static_cast<uint32_t>(count);
        return true;
    }
};

struct FilestreamTest : testing::Test
{
    FilestreamTest()
    {
        map._LoadXMLFromString(KxTest::DescriptionAsXml(kFileNodes).c_str());
        map._Connect(&device);
    }

    CFileDevice device;
    CNodeMapRef map;
    const std::string text = "forty-two bytes, more than two buffers full";
};
} // namespace

TEST_F(FilestreamTest, WritesAndReadsFilesLargerThanTheBuffer)
{
    ODevFileStream out(map._Ptr, kFile);
    ASSERT_TRUE(out.is_open());
    out << text;
    out.close();
    EXPECT_TRUE(out.good());
    EXPECT_FALSE(device.isOpen);
    EXPECT_EQ(device.content, text);

    IDevFileStream in(map._Ptr, kFile);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), text);
    in.close();
    EXPECT_FALSE(device.isOpen);
}

TEST_F(FilestreamTest, ClosesTheFileAtTheEndOfTheStream)
{
    {
        ODevFileStream out(map._Ptr, kFile);
        out << "abc";
    }
    EXPECT_EQ(device.content, "abc");
    EXPECT_FALSE(device.isOpen);
}

TEST_F(FilestreamTest, TellsWhatCannotBeOpened)
{
    EXPECT_FALSE(ODevFileStream(map._Ptr, "NoFile").is_open());
    EXPECT_TRUE(ODevFileStream(map._Ptr, "Other").fail()) << "the device refuses";
    EXPECT_TRUE(IDevFileStream(nullptr, kFile).fail());
    CTestMap noFiles("Integer I { Value 0 }");
    EXPECT_TRUE(IDevFileStream(noFiles, kFile).fail());
    IDevFileStream twice(map._Ptr, kFile);
    twice.open(map._Ptr, kFile);
    EXPECT_TRUE(twice.fail());
    EXPECT_TRUE(twice.is_open());
}

TEST_F(FilestreamTest, TellsFailuresInTheMiddle)
{
    device.failAt = kBufferSize;
    ODevFileStream out(map._Ptr, kFile);
    out << text;
    out.flush();
    EXPECT_FALSE(out.good());
    out.close();
    EXPECT_FALSE(device.isOpen);

    device.failAt = -1;
    device.capacity = 20;
    ODevFileStream full(map._Ptr, kFile);
    full << text << std::flush;
    EXPECT_FALSE(full.good()) << "the file is full";
    full.close();
    EXPECT_EQ(device.content, text.substr(0, 20));
}

TEST_F(FilestreamTest, AdapterMovesBytesAtAnyPlace)
{
    FileProtocolAdapter adapter;
    EXPECT_FALSE(adapter.openFile(kFile, std::ios::out)) << "not attached";
    ASSERT_TRUE(adapter.attach(map._Ptr));
    ASSERT_TRUE(adapter.openFile(kFile, std::ios::in | std::ios::out));
    EXPECT_EQ(device.Word(kMode), 2u);
    EXPECT_EQ(adapter.getBufSize(kFile, std::ios::in), kBufferSize);
    EXPECT_EQ(adapter.write("0123456789", 0, 10, kFile), 10);
    EXPECT_EQ(adapter.write("ab", 3, 2, kFile), 2);
    char bytes[20] = {};
    EXPECT_EQ(adapter.read(bytes, 2, 20, kFile), 8);
    EXPECT_STREQ(bytes, "2ab56789");
    device.failAt = 0;
    EXPECT_THAT(RaisedBy<GenICam::RuntimeException>([&] { adapter.read(bytes, 0, 4, kFile); }),
                testing::AllOf(testing::HasSubstr(kFile), testing::HasSubstr("Failure")));
    EXPECT_TRUE(adapter.closeFile(kFile));
    EXPECT_FALSE(adapter.closeFile(kFile));
    EXPECT_TRUE(adapter.deleteFile(kFile));
    EXPECT_TRUE(device.content.empty());
}

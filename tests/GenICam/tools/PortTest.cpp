// SPDX-License-Identifier: Apache-2.0
// Ports that programs derive from.
#include "ToolsTestSupport.h"

#include <map>

using namespace GenApi;
using namespace GenICam;
using namespace KxGenApiTest;

namespace
{
class CQuadlets : public CRegisterPortImpl
{
public:
    using CRegisterPortImpl::CRegisterPortImpl;
    EAccessMode GetAccessMode() const override { return RW; }
    uint32_t ReadRegister(uint32_t Address) override { return registers[Address]; }
    void WriteRegister(uint32_t Address, uint32_t Value) override { registers[Address] = Value; }

    std::map<uint32_t, uint32_t> registers;
};

struct CSettings
{
    uint32_t width;
    uint8_t mode;
    uint8_t unused[3];
};
} // namespace

TEST(RegisterPort, SplitsAccessesIntoRegisters)
{
    CQuadlets plain, swapped(true);
    const uint8_t bytes[] = {1, 2, 3, 4, 5, 6, 7, 8};
    plain.Write(bytes, 0xFFFFFFF8, 8);
    swapped.Write(bytes, 16, 8);
    EXPECT_EQ(plain.registers,
              (std::map<uint32_t, uint32_t>{{0xFFFFFFF8, 0x04030201}, {0xFFFFFFFC, 0x08070605}}));
    EXPECT_EQ(swapped.registers, (std::map<uint32_t, uint32_t>{{16, 0x01020304}, {20, 0x05060708}}));
    uint8_t back[8] = {};
    swapped.Read(back, 16, 8);
    EXPECT_EQ(std::memcmp(back, bytes, 8), 0);
}

TEST(RegisterPort, RefusesWhatIsNoWholeRegister)
{
    CQuadlets port;
    uint8_t bytes[8] = {};
    EXPECT_THROW(port.Read(bytes, 2, 4), InvalidArgumentException);
    EXPECT_THROW(port.Write(bytes, 4, 3), InvalidArgumentException);
    EXPECT_THROW(port.Read(bytes, -4, 4), OutOfRangeException);
    EXPECT_THROW(port.Read(bytes, 0xFFFFFFFC, 8), OutOfRangeException);
    EXPECT_THROW(port.Read(bytes, INT64_MAX - 3, 4), OutOfRangeException);
    EXPECT_THROW(port.Write(bytes, 0, INT64_MAX - 3), OutOfRangeException);
    EXPECT_TRUE(port.registers.empty());
}

TEST(StructPort, ServesTheMembersOfAStructure)
{
    CTestPortStruct<CSettings> port(0x100);
    port.width = 640;
    uint32_t value = 0;
    port.Read(&value, 0x100, 4);
    EXPECT_EQ(value, 640u);
    const uint8_t mode = 3;
    port.Write(&mode, 0x104, 1);
    EXPECT_EQ(port.mode, 3);
    EXPECT_EQ(port.GetNumReads(), 1u);
    EXPECT_EQ(port.GetNumWrites(), 1u);
    for (const auto& [address, length] : {std::pair<int64_t, int64_t>{0xFF, 1},
                                          {0x104, 5},
                                          {0x100, -1},
                                          {INT64_MIN, 8},
                                          {INT64_MAX, 1},
                                          {0x100, INT64_MAX}})
        EXPECT_THROW(port.Read(&value, address, length), RuntimeException) << address << " " << length;
    EXPECT_EQ(port.GetNumReads(), 1u);
}

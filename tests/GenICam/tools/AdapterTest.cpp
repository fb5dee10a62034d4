// SPDX-License-Identifier: Apache-2.0
// Adapters of the rarer transports, arrays of selected values, texts of the public enumerators.
#include "ToolsTestSupport.h"

#include <GenApi/ChunkAdapterDcam.h>
#include <GenApi/ChunkAdapterGenDC.h>
#include <GenApi/EnumClasses.h>
#include <GenApi/ValueArrayAdapter.h>

using namespace GenApi;
using namespace GenICam;
using namespace KxGenApiTest;
using testing::ElementsAre;

namespace
{
using Bytes = std::vector<uint8_t>;

/// Gives what the class computes for those who derive from it.
struct CDcamAdapter : CChunkAdapterDcam
{
    using CChunkAdapterDcam::CChunkAdapterDcam;
    using CChunkAdapterDcam::CRC16;
};

void AppendWord(Bytes& bytes, uint32_t word)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<uint8_t>(word >> shift));
}

/// A chunk whose ID is 16 times the byte `id`, with its data.
Bytes DcamChunk(uint8_t id, Bytes chunk)
{
    chunk.insert(chunk.end(), 16, id);
    const auto length = static_cast<uint32_t>(chunk.size() + 8);
    AppendWord(chunk, length);
    AppendWord(chunk, ~length);
    return chunk;
}

int64_t SizeOf(const Bytes& bytes) { return static_cast<int64_t>(bytes.size()); }
} // namespace

TEST(ChunkAdapterDcam, ShowsChunksByTheirLongIdsAndChecksTheSum)
{
    CTestMap map("Port FirstPort { ChunkID 11111111111111111111111111111111 }"
                 "Register First { Address 0; Length 3; AccessMode RO; pPort FirstPort }");
    CDcamAdapter adapter(map);
    Bytes buffer = DcamChunk(0x11, {1, 2, 3});
    const Bytes second = DcamChunk(0x22, {});
    buffer.insert(buffer.end(), second.begin(), second.end());
    AttachStatistics_t statistics{};
    adapter.AttachBuffer(buffer.data(), SizeOf(buffer), &statistics);
    EXPECT_EQ(statistics.NumChunks, 2);
    EXPECT_EQ(statistics.NumAttachedChunks, 1);
    Bytes data(3);
    CRegisterPtr(map["First"])->Get(data.data(), 3);
    EXPECT_THAT(data, ElementsAre(1, 2, 3));
    EXPECT_FALSE(adapter.HasCRC(buffer.data(), SizeOf(buffer)));
    EXPECT_THROW(adapter.CheckCRC(buffer.data(), SizeOf(buffer)), RuntimeException);

    const Bytes nine = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(adapter.CRC16(nine.data(), 9), 0x31C3u) << "check value of this polynomial beginning with 0";
    AppendWord(buffer, adapter.CRC16(buffer.data(), static_cast<uint32_t>(buffer.size())));
    adapter.AttachBuffer(buffer.data(), SizeOf(buffer), &statistics);
    EXPECT_EQ(statistics.NumChunks, 2);
    EXPECT_TRUE(adapter.CheckCRC(buffer.data(), SizeOf(buffer)));
    buffer[0] ^= 0x40;
    EXPECT_FALSE(adapter.CheckCRC(buffer.data(), SizeOf(buffer)));
    buffer[3 + 16 + 4] ^= 1; // the inverted length
    EXPECT_THROW(adapter.AttachBuffer(buffer.data(), SizeOf(buffer)), RuntimeException);
}

TEST(ChunkAdapterGenDC, TakesLittleEndianChunks)
{
    // The map may serve several formats: the port with a long ID gets nothing.
    CTestMap map("Port Long { ChunkID 11111111111111111111111111111111 } Port P { ChunkID 000A }" +
                 IntReg("Value", 0, 2, "P", "Little", "RO"));
    CChunkAdapterGenDC adapter(map);
    Bytes buffer = {7, 1};
    AppendWord(buffer, 10);
    AppendWord(buffer, 2);
    adapter.AttachBuffer(buffer.data(), SizeOf(buffer));
    EXPECT_EQ(map.Int("Value"), 0x107);
}

TEST(ValueArray, ReadsAllSettingsOfASelectorAtOnce)
{
    CTestMap map(R"(
        Integer Sel { Value 2; Min 0; Max 3; pSelected V; pSelected F; pSelected B; pSelected Odd }
        Integer V { pValue VReg } Float F { pValue FReg } Boolean B { pValue VReg; OnValue 11 }
        Integer Odd { pValue Knife } Integer Other { Value 0 }
        IntSwissKnife Knife { pVariable[Name=S] Sel; Formula S*2 }
        String ValueArrayCandidates { Value V[Sel], X[Y]#F[Sel] }
        IntReg VReg { pIndex[Offset=4] Sel; at 16 4 RO; Sign Signed; Little }
        FloatReg FReg { pIndex[Offset=4] Sel; at 64 4 RO; Little })");
    const CIntegerPtr selector(map["Sel"]), value(map["V"]);
    for (unsigned i = 0; i < 4; ++i) {
        map.memory.Word(16 + 4 * i) = 9 + i;
        const float real = 0.5f * static_cast<float>(i);
        std::memcpy(&map.memory.Word(64 + 4 * i), &real, sizeof real);
    }
    CIntegerValueArray integers(value, selector);
    ASSERT_TRUE(integers.IsValid());
    EXPECT_THAT(integers.GetAllValues(), ElementsAre(9, 10, 11, 12));
    map.memory.Word(16) = ~0u;
    EXPECT_EQ(integers.GetAllValues().at(0), -1) << "read anew";
    EXPECT_THAT(CFloatValueArray(CFloatPtr(map["F"]), selector).GetAllValues(), ElementsAre(0, 0.5, 1, 1.5));
    EXPECT_THAT(CBooleanValueArray(CBooleanPtr(map["B"]), selector).GetAllValues(), ElementsAre(0, 0, 1, 0));
    EXPECT_EQ(selector->GetValue(), 2);

    EXPECT_TRUE(CIntegerValueArray::CheckAdvertisedCompatibility(value, selector));
    EXPECT_FALSE(CFloatValueArray::CheckAdvertisedCompatibility(CFloatPtr(map["F"]), selector)) << "a remark";
    EXPECT_FALSE(CIntegerValueArray(CIntegerPtr(map["Odd"]), selector).IsValid()) << "a formula";
    EXPECT_FALSE(CIntegerValueArray(value, CIntegerPtr(map["Other"])).IsValid()) << "not its selector";
    EXPECT_THROW(CIntegerValueArray(value, nullptr).GetAllValues(), RuntimeException);
}

TEST(EnumClasses, ConvertBothWays)
{
    EAccessMode mode = RO;
    EXPECT_TRUE(EAccessModeClass::FromString("WO", &mode));
    EXPECT_EQ(mode, WO);
    EXPECT_FALSE(EAccessModeClass::FromString("wo", &mode));
    EXPECT_FALSE(EAccessModeClass::FromString("WO", nullptr));
    EXPECT_EQ(mode, WO) << "untouched";
    EXPECT_EQ(EAccessModeClass::ToString(NI), "NI");
    EXPECT_EQ(EAccessModeClass::ToString(_UndefinedAccesMode), "_UndefinedAccessMode");
    gcstring text;
    EVisibility visibility = Guru;
    EVisibilityClass::ToString(text, &visibility);
    EXPECT_EQ(text, "Guru");
    EXPECT_THROW(EVisibilityClass::ToString(text, nullptr), InvalidArgumentException);
}

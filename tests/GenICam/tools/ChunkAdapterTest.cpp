// SPDX-License-Identifier: Apache-2.0
// Chunks of buffers as features of a node map.
#include "ToolsTestSupport.h"

using namespace GenApi;
using namespace GenICam;
using namespace KxGenApiTest;
using testing::HasSubstr;

namespace
{
using Bytes = std::vector<uint8_t>;

/// Ports for a counter, a picture that is kept beyond its buffer, and one whose ID is a feature.
std::string ChunkNodes()
{
    return "Port CounterPort { ChunkID 0000a1B2 } Port PicturePort { ChunkID 2; CacheChunkData Yes }"
           "Port ChosenPort { pChunkID ChosenId } Integer ChosenId { Value 3 }" +
           IntReg("Counter", 0, 2, "CounterPort", "Big", "RO") +
           IntReg("Picture", 0, 2, "PicturePort", "Big", "RO") +
           IntReg("PictureEnd", 2, 2, "PicturePort", "Big", "RO") +
           IntReg("Chosen", 0, 1, "ChosenPort", "Big", "RW");
}

void Append(Bytes& buffer, uint32_t id, const Bytes& data, bool bigEndian = true)
{
    buffer.insert(buffer.end(), data.begin(), data.end());
    for (const uint32_t number : {id, static_cast<uint32_t>(data.size())}) {
        for (int i = 0; i < 4; ++i)
            buffer.push_back(static_cast<uint8_t>(number >> (bigEndian ? 24 - 8 * i : 8 * i)));
    }
}

struct ChunkAdapterTest : testing::Test
{
    void Attach(Bytes& bytes)
    {
        adapter.AttachBuffer(bytes.data(), static_cast<int64_t>(bytes.size()), &statistics);
    }
    EAccessMode ModeOf(const char* name) { return map[name]->GetAccessMode(); }

    CTestMap map{ChunkNodes()};
    CChunkAdapterGEV adapter{map};
    AttachStatistics_t statistics{};
};
} // namespace

TEST_F(ChunkAdapterTest, ShowsTheChunksOfEachBuffer)
{
    EXPECT_EQ(ModeOf("Counter"), NA);
    Bytes first, second;
    Append(first, 2, {0x01, 0x02});
    Append(first, 0xA1B2, {0x00, 0x07});
    Append(first, 0x99, {0x55});
    Append(second, 0xA1B2, {0x00, 0x08});
    Attach(first);
    EXPECT_EQ(statistics.NumChunkPorts, 3);
    EXPECT_EQ(statistics.NumChunks, 3);
    EXPECT_EQ(statistics.NumAttachedChunks, 2);
    EXPECT_EQ(map.Int("Counter"), 7);
    EXPECT_EQ(map.Int("Picture"), 0x102);
    EXPECT_EQ(ModeOf("Chosen"), NA);

    Attach(second);
    EXPECT_EQ(statistics.NumAttachedChunks, 1);
    EXPECT_EQ(map.Int("Counter"), 8);
    EXPECT_EQ(ModeOf("Picture"), NA) << "not in this buffer";
    EXPECT_THROW(map.Int("Picture"), AccessException);
}

TEST_F(ChunkAdapterTest, UpdatesABufferOfTheSameLayout)
{
    Bytes first, second;
    Append(first, 2, {0, 1});
    Append(first, 0xA1B2, {0, 7});
    Append(second, 2, {0, 2});
    Append(second, 0xA1B2, {0, 9});
    Attach(first);
    EXPECT_EQ(map.Int("Counter"), 7);
    adapter.UpdateBuffer(second.data());
    EXPECT_EQ(map.Int("Counter"), 9);
    EXPECT_EQ(map.Int("Picture"), 2) << "the copy follows";
}

TEST_F(ChunkAdapterTest, KeepsOnlyWhatIsToBeKept)
{
    {
        Bytes buffer;
        Append(buffer, 2, {0x03, 0x04});
        Append(buffer, 0xA1B2, {0, 7});
        Attach(buffer);
        adapter.DetachBuffer();
    }
    EXPECT_EQ(ModeOf("Counter"), NA);
    EXPECT_EQ(map.Int("Picture"), 0x304) << "from the copy, for the buffer is gone";
    adapter.ClearCaches();
    EXPECT_EQ(ModeOf("Picture"), NA);
}

TEST_F(ChunkAdapterTest, KeepsNoMoreThanAllowed)
{
    Bytes buffer;
    Append(buffer, 2, {0x03, 0x04});
    adapter.DetachNodeMap();
    CChunkAdapterGEV limited(map, 1);
    limited.AttachBuffer(buffer.data(), static_cast<int64_t>(buffer.size()));
    EXPECT_EQ(map.Int("Picture"), 0x304);
    limited.DetachBuffer();
    EXPECT_EQ(ModeOf("Picture"), NA);
}

TEST_F(ChunkAdapterTest, RefusesReadsBeyondAChunk)
{
    Bytes buffer;
    Append(buffer, 2, {1, 2, 3});
    Append(buffer, 0xA1B2, {});
    Attach(buffer);
    EXPECT_EQ(map.Int("Picture"), 0x102);
    EXPECT_THROW(map.Int("PictureEnd"), OutOfRangeException);
    EXPECT_THROW(map.Int("Counter"), OutOfRangeException);
}

TEST_F(ChunkAdapterTest, ShowsNothingOfABrokenBuffer)
{
    Bytes good, broken;
    Append(good, 0xA1B2, {0, 7});
    Append(broken, 0xA1B2, {0, 8});
    broken.insert(broken.begin(), 0x11);
    Attach(good);
    EXPECT_EQ(map.Int("Counter"), 7);
    EXPECT_THAT(RaisedBy<RuntimeException>([&] { Attach(broken); }), HasSubstr("11 bytes"));
    EXPECT_EQ(ModeOf("Counter"), NA);
    EXPECT_THROW(adapter.AttachBuffer(nullptr, 10), RuntimeException);
}

TEST_F(ChunkAdapterTest, TakesTheLastOfSeveralChunksWithOneId)
{
    Bytes buffer;
    Append(buffer, 0xA1B2, {0, 1});
    Append(buffer, 0xA1B2, {0, 2});
    Attach(buffer);
    EXPECT_EQ(map.Int("Counter"), 2);
    EXPECT_EQ(statistics.NumAttachedChunks, 1);
}

TEST_F(ChunkAdapterTest, FollowsAnIdThatIsAFeature)
{
    Bytes buffer;
    Append(buffer, 3, {33});
    Append(buffer, 4, {44});
    Attach(buffer);
    EXPECT_EQ(map.Int("Chosen"), 33);
    map.SetInt("ChosenId", 4);
    Attach(buffer);
    EXPECT_EQ(map.Int("Chosen"), 44);
    map.SetInt("Chosen", 45);
    EXPECT_EQ(buffer[9], 45) << "what can be written is written into the buffer";
}

TEST_F(ChunkAdapterTest, FiresCallbacksOfChunkFeatures)
{
    Bytes buffer;
    Append(buffer, 0xA1B2, {0, 7});
    std::vector<int64_t> seen;
    const CallbackHandleType handle =
        Register(map["Counter"], [&](INode* node) { seen.push_back(CIntegerPtr(node)->GetValue()); });
    Attach(buffer);
    EXPECT_THAT(seen, testing::ElementsAre(7));
    Deregister(handle);
}

TEST_F(ChunkAdapterTest, LetsGoOfTheNodeMap)
{
    Bytes buffer;
    Append(buffer, 0xA1B2, {0, 7});
    Attach(buffer);
    adapter.DetachNodeMap();
    EXPECT_EQ(ModeOf("Counter"), NI) << "no implementation any more";
    adapter.AttachNodeMap(map);
    Attach(buffer);
    EXPECT_EQ(map.Int("Counter"), 7);
}

TEST(ChunkAdapterU3V, ReadsLittleEndianTrailers)
{
    CTestMap map(ChunkNodes());
    CChunkAdapterU3V adapter(map);
    Bytes buffer;
    Append(buffer, 0xA1B2, {0x01, 0x00}, false);
    adapter.AttachBuffer(buffer.data(), static_cast<int64_t>(buffer.size()));
    EXPECT_EQ(map.Int("Counter"), 0x100) << "the data keep the byte order of their register";
}

TEST(ChunkAdapterGeneric, TakesTheProducersList)
{
    CTestMap map(ChunkNodes());
    CChunkAdapterGeneric adapter(map);
    AttachStatistics_t statistics{};
    Bytes buffer = {9, 9, 0, 5, 9, 1, 2};
    const SingleChunkData_t byNumber[] = {{0xA1B2, 2, 2}, {2, 5, 2}};
    adapter.AttachBuffer(buffer.data(), 7, byNumber, 2, &statistics);
    EXPECT_EQ(statistics.NumAttachedChunks, 2);
    EXPECT_EQ(map.Int("Counter"), 5);
    EXPECT_EQ(map.Int("Picture"), 0x102);
    const SingleChunkDataStr_t byText[] = {{"0000A1b2", 0, 2}};
    adapter.AttachBuffer(buffer.data(), 7, byText, 1);
    EXPECT_EQ(map.Int("Counter"), 0x909);

    const SingleChunkData_t outside[][1] = {
        {{2, 6, 2}}, {{2, -1, 1}}, {{2, 8, 0}}, {{2, 1, SIZE_MAX}}, {{2, INT64_MAX, 1}}};
    for (const auto& list : outside)
        EXPECT_THROW(adapter.AttachBuffer(buffer.data(), 7, list, 1), RuntimeException);
    EXPECT_EQ(map["Counter"]->GetAccessMode(), NA);
    const SingleChunkDataStr_t noId[] = {{"xyz", 0, 1}}, longId[] = {{"10000000000000000", 0, 1}};
    EXPECT_THROW(adapter.AttachBuffer(buffer.data(), 7, noId, 1), RuntimeException);
    EXPECT_THROW(adapter.AttachBuffer(buffer.data(), 7, longId, 1), RuntimeException);
}

TEST(ChunkPort, ComparesIdsByNumberAndByBytes)
{
    CTestMap map(ChunkNodes());
    CChunkPort port{CPortPtr(map["CounterPort"])};
    const uint8_t id[] = {0, 0xA1, 0xB2};
    EXPECT_TRUE(port.CheckChunkID(0xA1B2));
    EXPECT_TRUE(port.CheckChunkID(id, 3));
    EXPECT_FALSE(port.CheckChunkID(id, 2));
    EXPECT_EQ(port.GetChunkID(), "a1b2");
    EXPECT_EQ(port.GetChunkIDLength(), 2);
    EXPECT_FALSE(port.AttachPort(CPortPtr(map["Device"]))) << "no chunk port";
    EXPECT_EQ(port.GetNode(), nullptr);
}

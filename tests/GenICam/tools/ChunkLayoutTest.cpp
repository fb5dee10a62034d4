// SPDX-License-Identifier: Apache-2.0
// Chunk buffers as they come from a device, well-formed and hostile, without any node map.
#include "ToolsTestSupport.h"

#include <random>

using namespace GenApi;
using namespace KxGenApiTest;

namespace
{
using Bytes = std::vector<uint8_t>;

Bytes Join(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

template <class Adapter>
bool Check(const Bytes& bytes)
{
    Bytes copy = bytes; // of exactly that size, so that sanitizers see each byte read too many
    copy.shrink_to_fit();
    return Adapter().CheckBufferLayout(copy.data(), static_cast<int64_t>(copy.size()));
}
} // namespace

// Bytes as the two standards' tables give them: data, then ID and length.
TEST(ChunkLayout, KnowsBothByteOrders)
{
    const Bytes big = {0xAA, 0xBB, 0, 0, 0x12, 0x34, 0, 0, 0, 2},
                little = {0xAA, 0xBB, 0x34, 0x12, 0, 0, 2, 0, 0, 0};
    EXPECT_TRUE(Check<CChunkAdapterGEV>(big));
    EXPECT_FALSE(Check<CChunkAdapterGEV>(little));
    EXPECT_TRUE(Check<CChunkAdapterU3V>(little));
    EXPECT_FALSE(Check<CChunkAdapterU3V>(big));
    EXPECT_TRUE(Check<CChunkAdapterGEV>(Join({big, big, big})));
    EXPECT_FALSE(Check<CChunkAdapterGEV>(Join({{0x77}, big}))) << "a byte that belongs to no chunk";
}

TEST(ChunkLayout, RefusesLengthsThatLeaveTheBuffer)
{
    const Bytes id = {0, 0, 0, 1};
    EXPECT_TRUE(Check<CChunkAdapterGEV>(Join({id, {0, 0, 0, 0}}))) << "a chunk without data";
    EXPECT_FALSE(Check<CChunkAdapterGEV>(Join({id, {0, 0, 0, 1}})));
    EXPECT_FALSE(Check<CChunkAdapterGEV>(Join({id, {0xFF, 0xFF, 0xFF, 0xFF}})));
    EXPECT_FALSE(Check<CChunkAdapterGEV>(Join({id, {0x80, 0, 0, 0}})));
    EXPECT_FALSE(Check<CChunkAdapterGEV>(Join({id, {0, 0, 0, 0}, id, {0, 0, 0, 4}})));
    EXPECT_FALSE(Check<CChunkAdapterGEV>({0, 0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(Check<CChunkAdapterGEV>({}));
    uint8_t byte = 0;
    EXPECT_FALSE(CChunkAdapterGEV().CheckBufferLayout(nullptr, 100));
    EXPECT_FALSE(CChunkAdapterU3V().CheckBufferLayout(&byte, -1));
    EXPECT_FALSE(CChunkAdapterGeneric().CheckBufferLayout(&byte, 1));
}

TEST(ChunkLayout, EndsForAnyBytes)
{
    EXPECT_TRUE(Check<CChunkAdapterU3V>(Bytes(8 * 100000, 0))) << "nothing but empty chunks";
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes(random() % 64);
        for (uint8_t& byte : bytes)
            byte = static_cast<uint8_t>(random() % 4 == 0 ? random() % 64 : 0);
        Check<CChunkAdapterGEV>(bytes);
        Check<CChunkAdapterU3V>(bytes);
    }
}

TEST(ChunkLayout, NeedsANodeMapToShowAnything)
{
    Bytes empty(8, 0);
    CChunkAdapterGEV adapter;
    EXPECT_THROW(adapter.AttachBuffer(empty.data(), 8), GenICam::LogicalErrorException);
    EXPECT_THROW(adapter.UpdateBuffer(empty.data()), GenICam::LogicalErrorException);
    EXPECT_NO_THROW(adapter.DetachBuffer());
    EXPECT_NO_THROW(CChunkAdapterGeneric().AttachBuffer(empty.data(), 8)) << "there is nothing to show";
}

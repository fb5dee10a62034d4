// SPDX-License-Identifier: Apache-2.0
// Packets of the GigE Vision control protocol and payloads with chunks, against bytes by the standard's
// tables.
#include "net/Gvcp.h"

#include "modules/Chunks.h"

#include <gmock/gmock.h>

#include <random>

namespace KxAravis
{
namespace
{

Bytes FromHex(const std::string& text)
{
    Bytes bytes;
    for (size_t i = 0; i + 1 < text.size(); i += 2)
        bytes.push_back(static_cast<uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16)));
    return bytes;
}

void Put(Bytes& bytes, size_t offset, const Bytes& part)
{
    std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

TEST(Gvcp, CommandsAreTheStandardsBytes)
{
    EXPECT_EQ(MakeDiscovery(1, true), FromHex("4211000200000001"));
    EXPECT_EQ(MakeDiscovery(0xFFFF, false), FromHex("420100020000FFFF"));
    EXPECT_EQ(MakeReadRegister(7, 0x0A00), FromHex("420100800004000700000A00"));
    EXPECT_EQ(MakeForceIp(2, 0x001122334455, {0xC0A80132, 0xFFFFFF00, 0}),
              FromHex("42110004003800020000001122334455"
                      "0000000000000000000000"
                      "00C0A80132000000000000000000000000FFFFFF00"
                      "00000000000000000000000000000000"));
}

TEST(Gvcp, AnAnswerIsTakenApartAndForeignOnesArePassedOver)
{
    Bytes payload(248);
    Put(payload, 0, {0, 2, 0, 1});
    Put(payload, 10, {0x02, 0x4B, 0x58, 0, 0x20, 3});
    Put(payload, 36, {10, 1, 2, 3});
    Put(payload, 52, {255, 0, 0, 0});
    Put(payload, 68, {10, 0, 0, 1});
    Put(payload, 72, Bytes(32, 'V')); // fills its place, without an end
    Put(payload, 104, {'M', '1'});
    Put(payload, 216, {'S'});
    Bytes datagram = FromHex("0000000300F80009");
    datagram.insert(datagram.end(), payload.begin(), payload.end());

    const auto answer = AnswerTo(EGvcpCommand::Discovery, 9, datagram);
    ASSERT_TRUE(answer);
    const auto camera = ParseDiscovery(*answer);
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->mac, 0x024B58002003U);
    EXPECT_EQ(AddressText(camera->ip.address), "10.1.2.3");
    EXPECT_EQ(AddressText(camera->ip.mask), "255.0.0.0");
    EXPECT_EQ(AddressText(camera->ip.gateway), "10.0.0.1");
    EXPECT_EQ(camera->vendor, std::string(32, 'V'));
    EXPECT_EQ(camera->model, "M1");
    EXPECT_EQ(camera->serial, "S");
    EXPECT_EQ(camera->versionMajor, 2);

    EXPECT_FALSE(AnswerTo(EGvcpCommand::Discovery, 8, datagram)) << "of another request";
    EXPECT_FALSE(AnswerTo(EGvcpCommand::ForceIp, 9, datagram)) << "of another command";
    Bytes refused = datagram;
    refused[0] = 0x80;
    EXPECT_FALSE(AnswerTo(EGvcpCommand::Discovery, 9, refused));
    for (size_t size = 0; size < datagram.size(); ++size)
        EXPECT_FALSE(AnswerTo(EGvcpCommand::Discovery, 9, Bytes(datagram.data(), datagram.data() + size)));
    EXPECT_FALSE(ParseDiscovery(Bytes(247)));
    EXPECT_FALSE(ParseRegister(Bytes(3)));
    EXPECT_EQ(ParseRegister({0, 0, 0, 2}), 2U);
}

TEST(Chunks, AreFoundFromTheEndInBothByteOrders)
{
    // An image of three bytes with ID 1, then two bytes with ID 0x1234.
    const Bytes big = FromHex("AABBCC0000000100000003EEFF0000123400000002");
    const Bytes little = FromHex("AABBCC0100000003000000EEFF3412000002000000");
    for (const bool isBig : {true, false}) {
        const Bytes& bytes = isBig ? big : little;
        const auto chunks = FindChunks(bytes.data(), bytes.size(), isBig);
        ASSERT_EQ(chunks.size(), 2U);
        EXPECT_EQ(chunks[0].ChunkID, 1U);
        EXPECT_EQ(chunks[0].ChunkOffset, 0);
        EXPECT_EQ(chunks[0].ChunkLength, 3U);
        EXPECT_EQ(chunks[1].ChunkID, 0x1234U);
        EXPECT_EQ(chunks[1].ChunkOffset, 11);
        EXPECT_TRUE(FindChunks(bytes.data(), bytes.size(), !isBig).empty());
        for (size_t cut = 1; cut < bytes.size(); ++cut)
            for (const auto& chunk : FindChunks(bytes.data(), bytes.size() - cut, isBig))
                EXPECT_LE(static_cast<size_t>(chunk.ChunkOffset) + chunk.ChunkLength, bytes.size() - cut);
    }
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same bytes each time
    for (int i = 0; i < 20000; ++i) {
        Bytes noise(random() % 64);
        for (uint8_t& byte : noise)
            byte = static_cast<uint8_t>(random() % 4 == 0 ? random() : 0);
        for (const auto& chunk : FindChunks(noise.data(), noise.size(), random() % 2 == 0))
            EXPECT_LE(static_cast<size_t>(chunk.ChunkOffset) + chunk.ChunkLength, noise.size());
    }
}

} // namespace
} // namespace KxAravis

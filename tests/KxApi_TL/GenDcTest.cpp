// SPDX-License-Identifier: Apache-2.0
// Containers that a camera sends whole, and such as no camera should send.
#include "CameraFixture.h"

#include <gmock/gmock.h>

namespace KxTest
{
namespace
{

using namespace KxApi;
using testing::HasSubstr;

using Bytes = std::vector<uint8_t>;

template <class T>
void Put(Bytes& bytes, size_t place, T value)
{
    bytes.resize(std::max(bytes.size(), place + sizeof(value)));
    std::memcpy(bytes.data() + place, &value, sizeof(value));
}

constexpr size_t kFirst = 100, kSecond = 200, kFirstPart = 300, kSecondPart = 400, kData = 512;

/// A container of 640 bytes: range of 4 by 3 pixels at byte 512, and a JPEG of 40 bytes at byte 600.
Bytes Container()
{
    Bytes bytes{'G', 'N', 'D', 'C', 1, 1};
    Put<uint16_t>(bytes, 8, 0x1000);
    Put<uint32_t>(bytes, 52, 2);
    Put<uint64_t>(bytes, 56, kFirst);
    Put<uint64_t>(bytes, 64, kSecond);
    for (const size_t component : {kFirst, kSecond}) {
        Put<uint16_t>(bytes, component, 0x2000);
        Put<uint16_t>(bytes, component + 12, 7); // source
        Put<uint32_t>(bytes, component + 16, 5); // x of its region
        Put<uint64_t>(bytes, component + 32, component == kFirst ? 4 : 1);
        Put<uint16_t>(bytes, component + 46, 1);
        Put<uint64_t>(bytes, component + 48, component == kFirst ? kFirstPart : kSecondPart);
    }
    Put<uint16_t>(bytes, kFirstPart, 0x4200);
    Put<uint32_t>(bytes, kFirstPart + 8, KxPixelFormat_Coord3D_C16);
    Put<uint64_t>(bytes, kFirstPart + 24, 3 * 10);
    Put<uint64_t>(bytes, kFirstPart + 32, kData);
    Put<uint32_t>(bytes, kFirstPart + 40, 4);
    Put<uint32_t>(bytes, kFirstPart + 44, 3);
    Put<uint16_t>(bytes, kFirstPart + 48, 2);
    Put<uint16_t>(bytes, kSecondPart, 0x4201);
    Put<uint64_t>(bytes, kSecondPart + 24, 40);
    Put<uint64_t>(bytes, kSecondPart + 32, 600);
    bytes.resize(640);
    return bytes;
}

class GenDc : public StreamFixture
{
protected:
    void Deliver(const Bytes& bytes)
    {
        {
            const std::lock_guard<std::mutex> lock(camera->mutex);
            camera->content = bytes;
        }
        ASSERT_TRUE(camera->Deliver({{GenTL::BUFFER_INFO_PAYLOADTYPE, ToldSize(GenTL::PAYLOAD_TYPE_GENDC)},
                                     {GenTL::BUFFER_INFO_SIZE_FILLED, ToldSize(bytes.size())}}));
    }
};

TEST_F(GenDc, GivesTheImagesOfAContainerAndRefusesBrokenOnes)
{
    m_stream->StartAcquisition(nullptr, kKxEndless);
    Deliver(Container());
    {
        const ImagePtr range = Fetch();
        ASSERT_TRUE(range);
        ASSERT_EQ(range->GetPartCount(), 2U);
        EXPECT_EQ(range->GetImagePixelFormat(), KxPixelFormat_Coord3D_C16);
        EXPECT_EQ(range->GetImageWidth(), 4U);
        EXPECT_EQ(range->GetImageHeight(), 3U);
        EXPECT_EQ(range->GetImageLinePitch(), 10U);
        EXPECT_EQ(range->GetPartDataType(), GenTL::PART_DATATYPE_3D_IMAGE);
        EXPECT_EQ(range->GetSourceID(), 7U);
        EXPECT_FALSE(range->IsIncomplete());
        const IKxStreamImage& jpeg = *range->GetIKxPart(1);
        EXPECT_EQ(jpeg.GetEncodedSize(), 40U);
        EXPECT_EQ(static_cast<const uint8_t*>(jpeg.GetEncodedData()) -
                      static_cast<uint8_t*>(range->GetImageBuffer()),
                  600 - 512);
    }
    // What was said wrong: at which byte, with how many bytes of a number.
    struct Case
    {
        size_t place, bytes;
        uint64_t value;
        const char* szText;
    };
    const Case cases[] = {
        {0, 1, 'X', "no GenDC container"},
        {4, 1, 2, "no GenDC container of version 1"},
        {8, 2, 0x2000, "header of type 0x2000 in place of its own"},
        {52, 4, 0xFFFFFFFF, "names 4294967295 others"},
        {52, 4, 1024, "header of type"},
        {56, 8, UINT64_MAX, "lies outside"},
        {56, 8, 639, "lies outside"},
        {64, 8, kFirstPart, "header of type 0x4200 in place of its components"},
        {kFirst + 46, 2, 0xFFFF, "names 65535 others"},
        {kFirst + 48, 8, 639, "lies outside"},
        {kFirstPart + 8, 4, 0x01080FFF, "format 0x01080FFF"},
        {kFirstPart + 24, 8, 29, "does not fit"},
        {kFirstPart + 24, 8, UINT64_MAX, "does not fit into a buffer of 4096 bytes"},
        {kFirstPart + 32, 8, UINT64_MAX - 10, "does not fit"},
        {kFirstPart + 40, 4, UINT32_MAX, "does not fit"},
        {kFirstPart + 44, 4, 0, "4 by 0 pixels"},
        {kSecondPart + 32, 8, 4097, "does not fit"},
        {kSecondPart + 24, 8, 0, "is empty"},
    };
    for (const Case& broken : cases) {
        Bytes bytes = Container();
        std::memcpy(bytes.data() + broken.place, &broken.value, broken.bytes);
        Deliver(bytes);
        EXPECT_THAT(FetchError(), HasSubstr(broken.szText)) << "byte " << broken.place;
    }
    Bytes empty = Container();
    Put<uint16_t>(empty, kFirst + 2, 1);
    Put<uint16_t>(empty, kSecondPart, 0x4000);
    Deliver(empty);
    EXPECT_THAT(FetchError(), HasSubstr("holds no image")) << "an invalid component, and one of metadata";
    Bytes cut = Container();
    cut.resize(kData + 25);
    Deliver(cut);
    EXPECT_TRUE(Fetch()->IsIncomplete());
}

} // namespace
} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Pictures of other programs: what they write that our own files don't have.

#include "FileTestSupport.h"
#include "HandMadeFiles.h"

#include <cstdio>
// after cstdio, which it relies on
#include <jpeglib.h>

using namespace KxApi;
using namespace KxTest;

namespace
{

using Values = std::vector<int64_t>;

class ForeignFileTest : public ::testing::Test
{
protected:
    void Load(const std::string& bytes)
    {
        m_filer->LoadFromMemory(m_image.Get(), bytes.data(), bytes.size());
    }
    IKxImage& Image() { return *m_image->GetIKxImage(); }
    std::string Format() { return InfoOf(Image().GetImagePixelFormat()).GetName().c_str(); }
    /// All values of the image, line by line; those of BGR as R, G, B.
    Values All()
    {
        Values values;
        for (size_t y = 0; y < Image().GetImageHeight(); ++y) {
            for (size_t x = 0; x < Image().GetImageWidth(); ++x) {
                const IKxPixelComponent& pixel = *Image().GetIKxPixelComponentValue(x, y);
                const bool isBlueFirst = Format().substr(0, 3) == "BGR";
                for (size_t k = 0; k < pixel.GetComponentCount(); ++k)
                    values.push_back(pixel.GetValue(isBlueFirst && k < 3 ? 2 - k : k));
            }
        }
        return values;
    }

    CKxApiAutoInitTerm m_sdk;
    Filer m_filer{CreateIKxFiler(KxFilerType_StillImage)};
    ImageBuffer m_image{CreateIKxImageBuffer(nullptr)};
};

/// Fields of a TIFF: width, height, bits, photometric interpretation, samples.
std::map<unsigned, std::vector<uint32_t>> Fields(uint32_t width, uint32_t height, uint32_t bits,
                                                 uint32_t photometric, uint32_t samples)
{
    return {{256, {width}}, {257, {height}},      {258, std::vector<uint32_t>(samples, bits)},
            {259, {1}},     {262, {photometric}}, {277, {samples}}};
}

TEST_F(ForeignFileTest, TiffInTilesPlanesAndInverted)
{
    auto fields = Fields(3, 2, 8, 2, 4); // RGBA, alpha apart from the colours
    fields[338] = {2};
    fields[322] = fields[323] = {2}; // tiles of 2 x 2
    Load(HandMadeTiff(fields, 324,
                      {std::string("\1\2\3\4\5\6\7\x08\x11\x12\x13\x14\x15\x16\x17\x18", 16),
                       std::string("\x21\x22\x23\x24....\x31\x32\x33\x34....", 16)}));
    EXPECT_EQ(Format(), "RGBa8");
    EXPECT_EQ(All(), (Values{1,  2,  3,  4,  5,  6,  7,  8,  33, 34, 35, 36,
                             17, 18, 19, 20, 21, 22, 23, 24, 49, 50, 51, 52}));

    fields = Fields(2, 2, 16, 2, 3); // RGB, a strip for each line of each colour
    fields[284] = {2};
    fields[278] = {1};
    const auto line = [](unsigned a, unsigned b) { return Little(a, 2) + Little(b, 2); };
    Load(HandMadeTiff(fields, 273,
                      {line(1000, 2), line(3, 4), line(5, 60000), line(7, 8), line(9, 10), line(11, 12)}));
    EXPECT_EQ(Format(), "RGB16");
    EXPECT_EQ(All(), (Values{1000, 5, 9, 2, 60000, 10, 3, 7, 11, 4, 8, 12}));

    fields = Fields(2, 1, 16, 0, 1); // white is 0
    Load(HandMadeTiff(fields, 273, {line(0, 65000)}));
    EXPECT_EQ(Format(), "Mono16");
    EXPECT_EQ(All(), (Values{65535, 535}));
    fields = Fields(3, 1, 4, 0, 1);
    Load(HandMadeTiff(fields, 273, {std::string("\x0F\x10", 2)}));
    EXPECT_EQ(All(), (Values{255, 0, 238}));
    fields = Fields(3, 1, 12, 1, 1); // values of 12 bits, one behind the other
    Load(HandMadeTiff(fields, 273, {std::string("\x12\x3A\xBC\xFF\xF0", 5)}));
    EXPECT_EQ(Format(), "Mono12");
    EXPECT_EQ(All(), (Values{0x123, 0xABC, 0xFFF}));
    fields = Fields(2, 1, 2, 3, 1); // a palette
    fields[320] = {0, 0x1100, 0x2200, 0x3300, 0, 0x4400, 0x5500, 0x6600, 0, 0x7700, 0x8800, 0x9900};
    Load(HandMadeTiff(fields, 273, {"\x70"}));
    EXPECT_EQ(All(), (Values{0x11, 0x44, 0x77, 0x33, 0x66, 0x99}));
}

/// The picture "1 2 3" over "4 5 6" as files of each orientation hold it: width, and values by line.
const std::pair<uint32_t, std::string> kTurned[] = {{0, ""},
                                                    {3, "\1\2\3\4\5\6"},
                                                    {3, "\3\2\1\6\5\4"},
                                                    {3, "\6\5\4\3\2\1"},
                                                    {3, "\4\5\6\1\2\3"},
                                                    {2, "\1\4\2\5\3\6"},
                                                    {2, "\3\6\2\5\1\4"},
                                                    {2, "\6\3\5\2\4\1"},
                                                    {2, "\4\1\5\2\6\3"}};

TEST_F(ForeignFileTest, OrientationIsFollowed)
{
    for (uint32_t orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const auto& [width, values] = kTurned[orientation];
        auto fields = Fields(width, 6 / width, 8, 1, 1);
        fields[274] = {orientation};
        Load(HandMadeTiff(fields, 273, {values}));
        EXPECT_EQ(Image().GetImageWidth(), 3U);
        EXPECT_EQ(All(), (Values{1, 2, 3, 4, 5, 6}));
    }
    // A camera of phones notes it in the Exif block of a JPEG.
    const Folder folder;
    const ImageBuffer image = ImageOf<uint8_t>(KxPixelFormat_Mono8, 16, 8, std::vector<uint8_t>(128, 90));
    m_filer->Save(image->GetIKxImage(), KxStillImageFileType_Jpeg, (folder / "jpeg").c_str());
    std::string jpeg = ReadBytes(folder / "jpeg");
    for (const std::string& exif : {std::string("MM\0*\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0\6\0\0", 22),
                                    std::string("II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\6\0\0\0", 22)})
    {
        Load(std::string(jpeg).insert(2, std::string("\xFF\xE1\0\x1E"
                                                     "Exif\0",
                                                     10) +
                                             exif.substr(0, 22)));
        EXPECT_EQ(Image().GetImageWidth(), 8U);
        EXPECT_EQ(Image().GetImageHeight(), 16U);
    }
}

TEST_F(ForeignFileTest, JpegOfFourInks)
{
    // White paper less the inks: cyan takes red away, black all. As most programs write them, upside down.
    jpeg_error_mgr errors{};
    jpeg_compress_struct jpeg{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = jpeg.image_height = 8;
    jpeg.input_components = 4;
    jpeg.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 100, TRUE);
    jpeg.write_Adobe_marker = TRUE;
    jpeg_start_compress(&jpeg, TRUE);
    std::string line;
    for (int i = 0; i < 8; ++i)
        line += std::string("\x20\xFF\x80\xFF", 4);
    auto* row = reinterpret_cast<JSAMPROW>(line.data());
    for (int i = 0; i < 8; ++i)
        jpeg_write_scanlines(&jpeg, &row, 1);
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    Load(std::string(reinterpret_cast<char*>(bytes), size));
    std::free(bytes);
    EXPECT_EQ(Format(), "RGB8");
    const Values values = All();
    EXPECT_NEAR(static_cast<double>(values[0]), 0x20, 2);
    EXPECT_NEAR(static_cast<double>(values[1]), 0xFF, 2);
    EXPECT_NEAR(static_cast<double>(values[2]), 0x80, 2);
}

TEST_F(ForeignFileTest, BitmapsOfAllDepthsOfRunsAndOfOldHeaders)
{
    const std::string twoColors("\x01\x02\x03\0\xFF\xFE\xFD\0", 8); // blue, green, red, unused
    const std::string masks("\0\xF8\0\0\xE0\x07\0\0\x1F\0\0\0", 12);
    const std::pair<std::string, Values> plain[] = {
        {HandMadeBmp(3, 1, 1, 0, twoColors, std::string("\x40\0\0\0", 4)), {3, 2, 1, 253, 254, 255, 3, 2, 1}},
        {HandMadeBmp(2, 1, 4, 0, twoColors, std::string("\x10\0\0\0", 4)), {253, 254, 255, 3, 2, 1}},
        // 16 bits: 5 for each colour; 6 for green by masks
        {HandMadeBmp(1, 1, 16, 0, "", std::string("\x00\x7C\0\0", 4)), {255, 0, 0}},
        {HandMadeBmp(1, 1, 16, 3, masks, std::string("\xE0\x07\0\0", 4)), {0, 255, 0}},
        // first line first
        {HandMadeBmp(1, -2, 32, 0, "", std::string("\1\2\3\0\4\5\6\0", 8)), {3, 2, 1, 6, 5, 4}}};
    for (const auto& [file, values] : plain) {
        Load(file);
        EXPECT_EQ(Format(), "BGR8");
        EXPECT_EQ(All(), values);
    }
    const std::string colors("\0\0\0\0\x03\x02\x01\0\x06\x05\x04\0", 12);
    // From the bottom: three of 1, end of the line; then 2, 1, 2 one by one, filled to a word; end.
    Load(HandMadeBmp(3, 2, 8, 1, colors, std::string("\3\1\0\0\0\3\2\1\2\0\0\1", 12)));
    EXPECT_EQ(All(), (Values{4, 5, 6, 1, 2, 3, 4, 5, 6, 1, 2, 3, 1, 2, 3, 1, 2, 3}));
    // Numbers of 4 bits; one pixel and one line are passed over.
    Load(HandMadeBmp(3, 2, 4, 2, colors, std::string("\2\x12\0\2\0\1\1\x20\0\1", 10)));
    EXPECT_EQ(All(), (Values{0, 0, 0, 0, 0, 0, 4, 5, 6, 1, 2, 3, 4, 5, 6, 0, 0, 0}));
    for (const auto& runs : {std::string("\4\1\0\1", 4), std::string("\3\1\1\1", 4),
                             std::string("\0\5\1\1\1\1\1\1", 8), std::string("\0\2\4\0\1\1", 6)})
        EXPECT_THAT(Failure([&] { Load(HandMadeBmp(3, 2, 8, 1, colors, runs)); }),
                    ::testing::HasSubstr("runs go beyond"));

    // The oldest header has sizes of 16 bits and colours of three bytes.
    const std::string core = "BM" + Little(0, 8) + Little(26 + 6, 4) + Little(12, 4) + Little(2, 2) +
                             Little(1, 2) + Little(1, 2) + Little(1, 2) + std::string("\3\2\1\6\5\4", 6);
    Load(core + std::string("\x40\0\0\0", 4));
    EXPECT_EQ(All(), (Values{1, 2, 3, 4, 5, 6}));
}

TEST_F(ForeignFileTest, PngOf16BitsThatSays8OfThemCount)
{
    // Stored without compression: a filter byte and 200 values.
    const std::string row(401, '\x5A');
    const std::string zlib =
        std::string("\x78\1\1", 3) + Little(401, 2) + Little(~401U, 2) + std::string(1, '\0') + row.substr(1);
    uint32_t a = 1, b = 0;
    for (const char byte : zlib.substr(7))
        a = (a + static_cast<uint8_t>(byte)) % 65521, b = (b + a) % 65521;
    const std::string sum = Little(b << 16 | a, 4);
    Load("\x89PNG\r\n\x1A\n" + PngChunk(std::string("IHDR\0\0\0\xC8\0\0\0\1\x10\0\0\0\0", 17)) +
         PngChunk("sBIT\x08") + PngChunk("IDAT" + zlib + std::string(sum.rbegin(), sum.rend())) +
         PngChunk("IEND"));
    EXPECT_EQ(Format(), "Mono16");
    EXPECT_EQ(All(), Values(200, 0x5A5A));
}

} // namespace

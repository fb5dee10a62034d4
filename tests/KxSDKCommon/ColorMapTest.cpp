// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/ColorMap.h>

#include <gtest/gtest.h>

#include <array>
#include <set>

using namespace KxApi;

namespace
{

using Table = std::array<unsigned int, 256>;

Table Map(EKxColorMapType_t eType, bool bInversion = false, int nPhase = 0)
{
    std::array<unsigned int, 257> table;
    table.fill(0xDEADBEEF);
    SetColorMap(table.data(), eType, bInversion, nPhase);
    EXPECT_EQ(table[256], 0xDEADBEEF);
    Table result;
    std::copy(table.begin(), table.end() - 1, result.begin());
    return result;
}

TEST(ColorMap, NormalIsAGreyRampThatPhaseAndInversionMove)
{
    const Table plain = Map(KxColorMapType_Normal), inverse = Map(KxColorMapType_Normal, true),
                moved = Map(KxColorMapType_Normal, false, 1),
                movedInverse = Map(KxColorMapType_Normal, true, 3);
    for (unsigned int k = 0; k < 256; ++k) {
        EXPECT_EQ(plain[k], k * 0x010101);
        EXPECT_EQ(inverse[k], (255 - k) * 0x010101);
        EXPECT_EQ(moved[k], (k + 1) % 256 * 0x010101);
        EXPECT_EQ(movedInverse[k], (508 - k) % 256 * 0x010101);
    }
    EXPECT_EQ(Map(KxColorMapType_Normal, false, 256), plain);
    EXPECT_EQ(Map(KxColorMapType_Normal, false, -1), Map(KxColorMapType_Normal, false, 255));
    EXPECT_EQ(Map(KxColorMapType_Normal, true, -257), Map(KxColorMapType_Normal, true, 255));
}

TEST(ColorMap, BlueToRedIsAWindowOnALongerCircle)
{
    const Table plain = Map(KxColorMapType_PseudoColorBGR);
    EXPECT_EQ(plain[0], 0x0000FFu);
    EXPECT_EQ(plain[63], 0x00FCFFu - 0u);
    EXPECT_EQ(plain[64], 0x00FFFFu);
    EXPECT_EQ(plain[128], 0x00FF00u);
    EXPECT_EQ(plain[192], 0xFFFF00u);
    EXPECT_EQ(plain[255], 0xFFFF00u - 63 * 0x400);
    const Table late = Map(KxColorMapType_PseudoColorBGR, false, 255);
    EXPECT_EQ(late[1], 0xFF0000u);
    EXPECT_EQ(late[65], 0xFF00FFu);
    EXPECT_EQ(late[128], 0xFF00FFu - 63 * 0x40000);
    EXPECT_EQ(late[129], 0x0000FFu) << "the circle closes";
    const Table inverse = Map(KxColorMapType_PseudoColorBGR, true);
    for (size_t k = 0; k < 256; ++k)
        EXPECT_EQ(inverse[k], plain[255 - k]);
    EXPECT_EQ(Map(KxColorMapType_PseudoColorBGR, true, 255)[1], 0xFF00FFu - 63 * 0x40000)
        << "from 0 back to the end";
}

TEST(ColorMap, WholeCircleTakesAllColoursInOneTable)
{
    const Table plain = Map(KxColorMapType_PseudoColorBGRB);
    const std::pair<size_t, unsigned int> expected[] = {
        {0, 0x0000FF},   {41, 0x00F6FF},  {42, 0x00FFFF},  {83, 0x00FF09},  {84, 0x00FF03},  {85, 0x00FF00},
        {126, 0xF6FF00}, {127, 0xFCFF00}, {128, 0xFFFF00}, {169, 0xFF0900}, {170, 0xFF0300}, {171, 0xFF0000},
        {212, 0xFF00F6}, {213, 0xFF00FF}, {254, 0x0900FF}, {255, 0x0000FF}};
    for (const auto& [nIndex, nColor] : expected)
        EXPECT_EQ(plain[nIndex], nColor) << nIndex;
    EXPECT_EQ(std::set<unsigned int>(plain.begin(), plain.end()).size(), 255u) << "only blue comes twice";
    EXPECT_EQ(Map(KxColorMapType_PseudoColorBGRB, false, 84)[0], 0x00FF03u);
}

TEST(ColorMap, UnknownTypeIsBlack)
{
    EXPECT_EQ(Map(static_cast<EKxColorMapType_t>(3)), Table{});
    EXPECT_EQ(Map(static_cast<EKxColorMapType_t>(-1), true, 77), Table{});
}

} // namespace

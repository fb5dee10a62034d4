// SPDX-License-Identifier: Apache-2.0
// The drawing tool's features and registers, beyond what each window's have to do.
#include "DrawingTest.h"

#include <gmock/gmock.h>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::HasSubstr;

using DrawingFeatures = DrawingTest;

TEST_F(DrawingFeatures, OpenAndCloseWithTheTypeOfTheObject)
{
    EXPECT_FALSE(IsAvailable("DrawingObjectSelector"));
    EXPECT_FALSE(IsAvailable("DrawingObjectName"));
    Node("DrawingObjectsCount")->SetValue(1);
    EXPECT_TRUE(IsAvailable("DrawingObjectName"));
    EXPECT_FALSE(IsAvailable("DrawingObjectDisplayTextSelector")) << "no type, no texts";
    struct CRow
    {
        const char* szType;
        bool bLine, bEndcap, bJoin, bBrush, bFillMode, bArea;
    };
    for (const CRow& row : {CRow{"Line", true, true, false, false, false, false},
                            CRow{"Rectangle", true, false, true, true, false, true},
                            CRow{"Text", false, false, false, false, false, false},
                            CRow{"Polygon", true, false, true, true, true, true},
                            CRow{"Arc", true, true, false, true, false, false},
                            CRow{"FreeHand", true, true, true, false, false, false}})
    {
        SCOPED_TRACE(row.szType);
        Set("DrawingObjectType", row.szType);
        Set("DrawingObjectDisplayTextSelector", "Area");
        EXPECT_EQ(IsAvailable("DrawingLineWidth"), row.bLine);
        EXPECT_EQ(IsAvailable("DrawingLineEndcap"), row.bEndcap);
        EXPECT_EQ(IsAvailable("DrawingLineJoin"), row.bJoin);
        EXPECT_EQ(IsAvailable("DrawingBrushStyle"), row.bBrush);
        EXPECT_EQ(IsAvailable("DrawingBrushPolyFillMode"), row.bFillMode);
        EXPECT_EQ(IsAvailable("DrawingObjectEnableDisplayText"), row.bArea);
    }
    Set("DrawingObjectType", "Ellipse");
    Set("DrawingBrushStyle", "Solid");
    EXPECT_FALSE(IsAvailable("DrawingBrushBackgroundColorMode"));
    Set("DrawingBrushStyle", "Hatch_Cross");
    EXPECT_TRUE(IsAvailable("DrawingBrushBackgroundColorMode"));
    EXPECT_FALSE(IsAvailable("DrawingBrushBackgroundColor"));
    Set("DrawingBrushBackgroundColorMode", "Opaque");
    EXPECT_TRUE(IsAvailable("DrawingBrushBackgroundColor"));
}

TEST_F(DrawingFeatures, FollowTheSelectorWithoutBeingAsked)
{
    Add("Line", {{10, 10}, {20, 30}});
    Set("DrawingObjectIsLocked", "1");
    Set("DrawingObjectName", "first");
    Set("DrawingLineWidth", "7");
    Add("Rectangle", {{100, 50}, {200, 90}});
    EXPECT_EQ(Get("DrawingObjectType"), "Rectangle");
    EXPECT_EQ(Get("DrawingObjectIsLocked"), "0");
    EXPECT_EQ(Get("DrawingObjectName"), "");
    EXPECT_EQ(Selection(), std::vector<bool>({false, true}));
    Node("DrawingObjectSelector")->SetValue(0);
    EXPECT_EQ(Get("DrawingObjectType"), "Line");
    EXPECT_EQ(Get("DrawingObjectIsLocked"), "1");
    EXPECT_EQ(Get("DrawingObjectName"), "first");
    EXPECT_EQ(Get("DrawingLineWidth"), "7");
    EXPECT_EQ(Points(), (std::vector<std::pair<int, int>>{{10, 10}, {20, 30}}));
    EXPECT_EQ(Selection(), std::vector<bool>({true, false}));
    Set("DrawingObjectDisplayTextSelector", "Height");
    Set("DrawingObjectEnableDisplayText", "1");
    uint32_t nTexts = 0;
    m_pPort->Read(&nTexts, 0x1400, sizeof(nTexts));
    EXPECT_EQ(nTexts, 0x0CU);

    Node<GenApi::CCommandPtr>("MoveDrawingObjectToFront")->Execute();
    EXPECT_EQ(Get("DrawingObjectSelector"), "1");
    EXPECT_EQ(Measured(1).strName, "first");
    EXPECT_FALSE(GenApi::IsAvailable(m_pMap->GetNode("MoveDrawingObjectToFront")));
    Node<GenApi::CCommandPtr>("RemoveDrawingObject")->Execute();
    EXPECT_EQ(Get("DrawingObjectsCount"), "1");
    EXPECT_EQ(Get("DrawingObjectSelector"), "0");
    EXPECT_EQ(Get("DrawingObjectType"), "Rectangle");
    Node("DrawingObjectsCount")->SetValue(0);
    EXPECT_FALSE(GenApi::IsAvailable(m_pMap->GetNode("DrawingObjectSelector")));
}

TEST_F(DrawingFeatures, TellWhatIsOutOfRange)
{
    const auto write = [this](int64_t nAddress, uint64_t nValue, int64_t nLength) {
        return ErrorOf([&] { m_pPort->Write(&nValue, nAddress, nLength); });
    };
    EXPECT_EQ(write(0x1018, 3, 4), "DrawingObjectSelector = 0 must be smaller than Max = 0");
    Node("DrawingObjectsCount")->SetValue(256);
    EXPECT_THAT(ErrorOf([this] { Node("DrawingObjectsCount")->SetValue(257); }), HasSubstr("257"));
    EXPECT_EQ(Get("DrawingObjectsCount"), "256");
    Node("DrawingObjectsCount")->SetValue(0);
    Add("Line", {{10, 10}, {20, 30}});
    EXPECT_EQ(write(0x1010, 7, 8), "") << "the selector only stores";
    EXPECT_EQ(write(0x1018, 3, 4), "DrawingObjectSelector = 7 must be smaller than Max = 1");
    EXPECT_EQ(write(0x1010, ~uint64_t{0}, 8), "");
    EXPECT_EQ(write(0x1018, 3, 4), "DrawingObjectSelector = -1 must be equal or greater than Min = 0");
    EXPECT_EQ(write(0x1010, 0, 8), "");
    EXPECT_EQ(write(0x1018, 13, 4), "eType = 13 must be smaller than Max = 13");
    EXPECT_EQ(PlaceOfErrorOf([&] {
                  const uint32_t nType = 13;
                  m_pPort->Write(&nType, 0x1018, sizeof(nType));
              }),
              "KxApi_GUI_qt/KxDrawingTool_qt");
    EXPECT_EQ(write(0x1200, 6, 4), "LineStyle = 6 must be smaller than Max = 6");
    EXPECT_EQ(write(0x1200, 5, 4), "");
    EXPECT_EQ(write(0x1478, 8, 4), "BrushStyle = 8 must be smaller than Max = 8");
    EXPECT_EQ(write(0x1440, 0, 8), "DrawingObjectSelector = 0 must be smaller than Max = 0");
    EXPECT_EQ(write(0x1438, 0, 8), "DrawingObjectSelector = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(write(0x11010, 0, 8), "Index = 2 must be smaller than Max = 2");
    EXPECT_NE(write(0x1028, ~uint64_t{0}, 8), "");
    EXPECT_NE(write(0x1004, uint64_t{1} << 40, 8), "");
    EXPECT_EQ(ErrorOf([this] { m_pTool->SetGridLineStyle(static_cast<_EKxLineStyle_t>(6)); }),
              "LineStyle = 6 must be smaller than Max = 6");
    // A name may fill its register.
    const std::string strName(256, 'n');
    m_pPort->Write(strName.data(), 0x1100, 256);
    EXPECT_EQ(Get("DrawingObjectName"), strName);
    // Strange numbers are drawn as well as it goes.
    for (const uint64_t nBits : {uint64_t{0x7FF0000000000000}, uint64_t{0xFFF8000000000000}, ~uint64_t{0}})
        EXPECT_EQ(write(0x11000, nBits, 8), "");
    EXPECT_EQ(write(0x13C0, ~uint64_t{0}, 4), "");
    EXPECT_EQ(write(0x1410, ~uint64_t{0}, 4), "");
    Painted();
}

TEST_F(DrawingFeatures, FollowTheApplicationsCalls)
{
    const auto pCount = Node("VerticalGridLineCount");
    EXPECT_EQ(pCount->GetValue(), 0);
    m_pTool->SetGridVLineCount(9);
    EXPECT_EQ(pCount->GetValue(), 9);
    EXPECT_EQ(Get("GridLineForegroundColor"), "64");
    m_pTool->SetGridLineColor(0x00112233);
    Set("GridLineForegroundColorSelector", "Blue");
    EXPECT_EQ(Get("GridLineForegroundColor"), "17");
    Set("DrawingDefaultLineForegroundColorSelector", "Green");
    Set("DrawingDefaultLineForegroundColor", "5");
    EXPECT_EQ(m_pTool->GetDefaultLineColor(), 0x000005FFU);
    m_pTool->SetDrawingItemType(KxDrawingItemType_Cross);
    EXPECT_EQ(Get("DrawingItemType"), "Cross");
}

} // namespace
} // namespace KxTest

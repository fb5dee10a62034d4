// SPDX-License-Identifier: Apache-2.0
// The image window's features and registers, beyond what each window's have to do.
#include "WindowTest.h"

#include <gmock/gmock.h>

#include <cstring>
#include <limits>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::HasSubstr;

class FeatureMap : public WindowTest<IKxImageDisplayWnd>
{
protected:
    FeatureMap()
        : WindowTest(KxWindowType_ImageDisplay)
    {}
};

TEST_F(FeatureMap, FollowsChangesOfTheApplicationWithoutAsking)
{
    const auto pInterval = Node("RefreshInterval");
    EXPECT_EQ(pInterval->GetValue(), 33);
    m_pWnd->SetRefreshInterval(100);
    EXPECT_EQ(pInterval->GetValue(), 100);
    const auto pInversion = Node<GenApi::CBooleanPtr>("ColorMapInversion");
    EXPECT_FALSE(pInversion->GetValue());
    m_pWnd->SetColorMapInversion(true);
    EXPECT_FALSE(pInversion->GetValue()) << "this one keeps its cached value";
    EXPECT_TRUE(pInversion->GetValue(false, true));
}

TEST_F(FeatureMap, OffersLimitsThatCannotBeMoved)
{
    EXPECT_EQ(Read32(0x2028), 1000U);
    Write32(0x2028, 5);
    EXPECT_EQ(Read32(0x2028), 1000U);
    const auto pMagnification = Node<GenApi::CFloatPtr>("FixedZoomMagnification");
    EXPECT_DOUBLE_EQ(pMagnification->GetMin(), 0.01);
    EXPECT_DOUBLE_EQ(pMagnification->GetMax(), 64.0);
}

TEST_F(FeatureMap, HidesWhatHasNoMeaning)
{
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    EXPECT_FALSE(IsAvailable("ScrollHPosition"));
    EXPECT_FALSE(IsAvailable("FixedZoomMagnification"));
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_None);
    EXPECT_FALSE(IsAvailable("ForegroundColor"));
    EXPECT_FALSE(IsAvailable("ForegroundColorSelector"));
    EXPECT_TRUE(IsAvailable("BackgroundColor"));
}

TEST_F(FeatureMap, PacksColoursByTheirSelectors)
{
    Node<GenApi::CEnumerationPtr>("ForegroundColorSelector")->FromString("Green");
    Node("ForegroundColor")->SetValue(0x12);
    EXPECT_EQ(m_pWnd->GetForegroundColor(), 0x00C012C0U);
    Node<GenApi::CEnumerationPtr>("BackgroundColorSelector")->FromString("Blue");
    Node("BackgroundColor")->SetValue(0);
    EXPECT_EQ(m_pWnd->GetBackgroundColor(), 0x0000FFFFU);
    m_pWnd->SetBackgroundColor(0x00350000);
    EXPECT_EQ(Node("BackgroundColor")->GetValue(), 0x35);
}

TEST_F(FeatureMap, ShowsNoEntryForAStretchModeThatOnlyTheRegisterTakes)
{
    Write32(0x2034, 2);
    EXPECT_EQ(m_pWnd->GetStretchMode(), 2);
    m_pMap->InvalidateNodes();
    EXPECT_NE(ErrorOf([this] { Node<GenApi::CEnumerationPtr>("StretchMode")->ToString(); }), "");
    EXPECT_THAT(ErrorOf([this] { Write32(0x2034, 4); }),
                HasSubstr("eStretchMode = 4 must be smaller than Max = 4"));
}

TEST_F(FeatureMap, SplitsAccessesToThePortAtItsRegisters)
{
    uint32_t arrValues[2] = {};
    m_pPort->Read(arrValues, 0x2024, sizeof(arrValues));
    EXPECT_EQ(arrValues[0], 0U);
    EXPECT_EQ(arrValues[1], 1000U);
    unsigned char untouched[8];
    std::memset(untouched, 0xAA, sizeof(untouched));
    m_pPort->Read(untouched, 0x0014, sizeof(untouched));
    for (const unsigned char c : untouched)
        EXPECT_EQ(c, 0xAA);
    // From within nothing to the next word and its register.
    unsigned char bytes[0x13];
    std::memset(bytes, 0xAA, sizeof(bytes));
    m_pPort->Read(bytes, 0x0001, sizeof(bytes));
    EXPECT_EQ(bytes[0xE], 0xAA);
    EXPECT_EQ(bytes[0xF], 1) << "the visible menu at 0x0010";
    unsigned char nSize = 0;
    m_pPort->Read(&nSize, 0, 1);
    EXPECT_EQ(nSize, sizeof(size_t));
    EXPECT_EQ(ErrorOf([&] { m_pPort->Read(bytes, 0x0010, 2); }),
              "Length = 2 must be equal or greater than Min = 4");
    EXPECT_EQ(ErrorOf([&] { m_pPort->Write(&nSize, 0, 1); }), "Node is not writable.");
    m_pPort->Read(bytes, 0x2000, 0);
    m_pPort->Write(bytes, 0x2000, -4);
    EXPECT_EQ(Read32(0x0030), 0xFFFFFFFFU);
}

TEST_F(FeatureMap, NamesValueAndLimitOfSettingsOutOfRange)
{
    struct CCase
    {
        std::function<void(IKxImageDisplayWnd&)> set;
        const char* szError;
    };
    // One for each kind of range.
    const CCase cases[] = {
        {[](auto& wnd) { wnd.SetZoomMode(static_cast<_EKxZoomMode_t>(2)); },
         "eZM = 2 must be smaller than Max = 2"},
        {[](auto& wnd) { wnd.SetRefreshInterval(1001); },
         "nInterval = 1001 must be equal or smaller than Max = 1000"},
        {[](auto& wnd) { wnd.SetStretchMode(KxBayerInterpolationMethod_Off); },
         "eStretchMode = 0 must be equal or greater than Min = 1"},
        {[](auto& wnd) { wnd.SetManualZoomMagnification(64.0000001); },
         "value = 64.000000 must be smaller than or equal 64.000000"},
        {[](auto& wnd) { wnd.SetManualZoomMagnification(std::numeric_limits<double>::quiet_NaN()); },
         "value = nan must be greater than or equal 0.010000"},
        {[](auto& wnd) { wnd.SetColorMapPhase(256); }, "nPhase = 256 must be smaller than Max = 256"},
    };
    for (const CCase& test : cases)
        EXPECT_EQ(ErrorOf([&] { test.set(*m_pWnd); }), test.szError);
    EXPECT_EQ(m_pWnd->GetZoomMode(), KxZoomMode_FixedZoom);
    EXPECT_EQ(m_pWnd->GetRefreshInterval(), 33U);
    EXPECT_EQ(m_pWnd->GetManualZoomMagnification(), 1.0);
    m_pWnd->SetStretchMode(KxBayerInterpolationMethod_NearestNeighbor2);
    m_pWnd->SetManualZoomMagnification(64.0);
    m_pWnd->SetRefreshInterval(0);
    EXPECT_EQ(m_pWnd->GetRefreshInterval(), 0U) << "limits are taken";
}

TEST_F(FeatureMap, TellsOfEachChangeOnceAndNeverOfNone)
{
    int nCalls = 0;
    GenApi::Register(m_pMap->GetNode("VisibleMenu"), [&](GenApi::INode*) { ++nCalls; });
    m_pWnd->SetVisibleMenu(true);
    EXPECT_EQ(nCalls, 0);
    m_pWnd->SetVisibleMenu(false);
    EXPECT_EQ(nCalls, 1);
    EXPECT_FALSE(m_pWnd->GetVisibleMenu());
    GenApi::CBooleanPtr(m_pMap->GetNode("VisibleStatusBar"))->SetValue(false);
    EXPECT_FALSE(m_pWnd->GetVisibleStatusBar());
}

} // namespace
} // namespace KxTest

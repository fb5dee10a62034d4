// SPDX-License-Identifier: Apache-2.0
// The limits of the image window's settings.
#include "Support.h"

#include <cmath>
#include <limits>

namespace KxTest
{
namespace
{

using namespace KxApi;

class Settings : public GuiTest
{
protected:
    const ImageWndPtr m_pWnd = MakeImageWnd();
};

TEST_F(Settings, NameValueAndLimitWhenOutOfRange)
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

TEST_F(Settings, InvalidateTheirNodeOnceForAChangeAndNeverForNone)
{
    int nCalls = 0;
    GenApi::Register(m_pWnd->GetINodeMap()->GetNode("VisibleMenu"), [&](GenApi::INode*) { ++nCalls; });
    m_pWnd->SetVisibleMenu(true);
    EXPECT_EQ(nCalls, 0);
    m_pWnd->SetVisibleMenu(false);
    EXPECT_EQ(nCalls, 1);
    EXPECT_FALSE(m_pWnd->GetVisibleMenu());
    GenApi::CBooleanPtr(m_pWnd->GetINodeMap()->GetNode("VisibleStatusBar"))->SetValue(false);
    EXPECT_FALSE(m_pWnd->GetVisibleStatusBar());
}

} // namespace
} // namespace KxTest

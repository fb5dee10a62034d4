// SPDX-License-Identifier: Apache-2.0
// Windows and what ends before them: the application object, memory.
#include "Allocations.h"
#include "Support.h"
#include "frame/IDlgParent.h"
#include "frame/KxStatusBar_qt.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QStringList>
#include <map>
#include <optional>

namespace KxTest
{
namespace
{

using namespace KxApi;

class ApplicationEnd : public ::testing::Test
{
protected:
    CKxApiAutoInitTerm m_objSdk;
    int m_argc = 1;
    char m_szName[5] = "test";
    char* m_argv[2] = {m_szName, nullptr};
};

TEST_F(ApplicationEnd, EndsDialogsThatAreShownAndLeavesWindowsUsable)
{
    CEventLog log;
    std::optional<QApplication> app(std::in_place, m_argc, m_argv);
    ImageWndPtr pWnd(CreateIKxWnd(KxWindowType_ImageDisplay));
    ImageWndPtr pClosed(CreateIKxWnd(KxWindowType_ImageDisplay));
    log.Watch(*pWnd);
    log.Watch(*pClosed);
    pWnd->Show(nullptr, KxWindowMode_Modaless);
    pClosed->Show(nullptr, KxWindowMode_Modaless);
    pClosed->Close();
    pClosed.Reset(); // its dialog is still to be deleted
    app.reset();
    EXPECT_EQ(log.Count(KxGUICallbackType_Destroyed), 2U);
    EXPECT_FALSE(pWnd->IsVisible());
    pWnd->SetTitle("nobody sees it");
    EXPECT_THAT(ErrorOf([&] { pWnd->Show(nullptr, KxWindowMode_Modaless); }),
                ::testing::HasSubstr("The process has no QApplication"));

    app.emplace(m_argc, m_argv);
    pWnd->Show(nullptr, KxWindowMode_Modaless);
    EXPECT_TRUE(pWnd->IsVisible());
    app.reset();
    pWnd.Reset();
    EXPECT_EQ(log.nReleased, 2);
}

TEST_F(ApplicationEnd, ProgramsWithoutWidgetsAreRefusedAndNotEnded)
{
    QCoreApplication app(m_argc, m_argv);
    const ImageWndPtr pWnd(CreateIKxWnd(KxWindowType_ImageDisplay));
    EXPECT_THAT(ErrorOf([&] { pWnd->Show(nullptr, KxWindowMode_Modaless); }),
                ::testing::HasSubstr("The process has no QApplication"));
    EXPECT_EQ(GenApi::CIntegerPtr(pWnd->GetINodeMap()->GetNode("WindowModeReg"))->GetValue(), 0xFFFFFFFF);
}

/// Where the exceptions come from that a call raises while each of its first allocations fails.
std::map<std::string, int> PlacesOfFailure(int nAllocations, const std::function<void()>& call)
{
    std::map<std::string, int> mapPlaces;
    for (int n = 1; n <= nAllocations; ++n) {
        try {
            g_failingAllocation = n;
            call();
            g_failingAllocation = 0;
        } catch (const GenICam::GenericException& e) {
            g_failingAllocation = 0;
            ++mapPlaces[e.GetSourceFileName()];
        }
    }
    return mapPlaces;
}

TEST_F(ApplicationEnd, LackOfMemoryIsToldFromWhereItWasFelt)
{
    using ::testing::Contains;
    using ::testing::Key;
    using ::testing::Not;
    QApplication app(m_argc, m_argv);
    const auto mapWindow = PlacesOfFailure(60, [] {
        ImageWndPtr(CreateIKxWnd(KxWindowType_ImageDisplay));
        ImageWndPtr(CreateIKxWnd(KxWindowType_DeviceSelection));
    });
    EXPECT_THAT(mapWindow, Contains(Key("KxApi_GUI_qt/KxApi_GUI_Main_qt")));
    EXPECT_THAT(mapWindow, Contains(Key("KxApi_GUI_qt/KxBaseWnd_qt")));
    EXPECT_THAT(mapWindow, Not(Contains(Key("GenICam/GCBadAlloc"))));

    struct CInfo final : IKxStatusBarInfo
    {
        int GetStatusBarIndicatorsCount() const override { return 2; }
        void GetStatusBarInfo(int, unsigned int* pWidth, bool* pStretch) const override
        {
            *pWidth = 0;
            *pStretch = false;
        }
        void GetStatusBarText(QStringList&) override {}
    } info;
    const auto mapBar = PlacesOfFailure(1, [&] { CKxStatusBar(&info).width(); });
    EXPECT_EQ(mapBar, (std::map<std::string, int>{{"KxApi_GUI_qt/KxStatusBar_qt", 1}}));
    const ImageWndPtr pWnd(CreateIKxWnd(KxWindowType_ImageDisplay));
    try {
        pWnd->Show(nullptr, static_cast<_EKxWindowMode_t>(4));
        FAIL();
    } catch (const GenICam::OutOfRangeException& e) {
        EXPECT_STREQ(e.GetSourceFileName(), "KxApi_GUI_qt/KxBaseWnd_qt");
    }
}

} // namespace
} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Making windows, in programs that do and don't use Qt themselves.
#include "Allocator.h"
#include "Support.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QTimer>

namespace KxTest
{
namespace
{

using ::testing::HasSubstr;
using namespace KxApi;

TEST(FactoryWithoutSdk, RaisesAndMakesNeitherWindowNorApplication)
{
    for (const auto& make : std::vector<std::function<void()>>{
             [] { CreateIKxWnd(KxWindowType_ImageDisplay); }, [] { CreateIKxImageDisplayWnd(nullptr); },
             [] { CreateIKxGraphDisplayWnd(nullptr); }, [] { SetIKxImageToClipboard(nullptr); }})
        EXPECT_THROW(make(), GenICam::LogicalErrorException);
    EXPECT_EQ(theApp, nullptr);
}

class Factory : public GuiTest
{};

TEST_F(Factory, TellsTheNumberOfTypesForOneThatThereIsNot)
{
    EXPECT_EQ(ErrorOf([] { CreateIKxWnd(static_cast<_EKxWindowType_t>(4)); }),
              "CreateIKxWnd = 4 must be smaller than Max = 4");
    EXPECT_EQ(ErrorOf([] { CreateIKxWnd(static_cast<_EKxWindowType_t>(0xFFFFFFFFU)); }),
              "CreateIKxWnd = 4294967295 must be smaller than Max = 4");
    EXPECT_EQ(theApp, nullptr);
}

TEST_F(Factory, MakesAnApplicationForAProgramWithoutQt)
{
    EXPECT_EQ(GetModuleHandleGUI(), nullptr);
    const ImageWndPtr pWnd = MakeImageWnd();
    EXPECT_NE(GetModuleHandleGUI(), nullptr);
    CKxApi_GUIApp* const pApp = theApp;
    EXPECT_EQ(processEventGUI(false, 0), 0);
    EXPECT_EQ(processEventGUI(false, 10), 0);
    QTimer::singleShot(0, [] { QCoreApplication::exit(7); });
    EXPECT_EQ(processEventGUI(true, 1), 7);
    EXPECT_EQ(theApp, pApp);
}

TEST_F(Factory, TakesTheApplicationOfAProgramWithQt)
{
    // Never destroyed, as Qt's offscreen platform leaves its screens behind.
    static int argc = 0;
    static QApplication& application = *new QApplication(argc, nullptr);
    const ImageWndPtr pWnd = MakeImageWnd();
    EXPECT_EQ(GetModuleHandleGUI(), &application);
    EXPECT_NE(theApp, nullptr);
    Show(*pWnd);
    EXPECT_TRUE(pWnd->IsVisible());
    pWnd->Close();
    Pump();
}

TEST_F(Factory, HoldsImagesInTheApplicationsMemory)
{
    processEventGUI(false, 0);
    Allocator allocator;
    {
        const ImageWndPtr pWnd(CreateIKxImageDisplayWnd(&allocator));
        pWnd->RegisterIKxImage(MakeImage(8, 8)->GetIKxImage());
        EXPECT_EQ(allocator.Held(), 1U);
        allocator.empty = true;
        const ImageBufferPtr pLarger = MakeImage(16, 16);
        for (int i = 0; i < 20; ++i)
            EXPECT_THROW(pWnd->RegisterIKxImage(pLarger->GetIKxImage()), GenICam::BadAllocException);
        EXPECT_EQ(pWnd->GetRegisteredIKxImage()->GetImageWidth(), 8U) << "the last good image is kept";
        allocator.empty = false;
        pWnd->RegisterIKxImage(pLarger->GetIKxImage());
        EXPECT_EQ(pWnd->GetRegisteredIKxImage()->GetImageWidth(), 16U);
    }
    EXPECT_EQ(allocator.Held(), 0U);
}

TEST_F(Factory, KeepsWindowsInAnArray)
{
    CIKxWndPtrArrayT<IKxImageDisplayWnd> arrWindows;
    arrWindows.Release();
    EXPECT_THAT(ErrorOf([&] { arrWindows[0]; }), HasSubstr("nIndex = 0 must be smaller than Max = 0"));
    CEventLog logs[3];
    for (CEventLog& log : logs) {
        IKxWndReleasable* const pWnd = CreateIKxWnd(KxWindowType_ImageDisplay);
        log.Watch(*pWnd);
        arrWindows[arrWindows.Register(pWnd)]->SetColorMapPhase(static_cast<int>(&log - logs));
    }
    {
        const ImageWndPtr pMiddle(arrWindows.Deregister(1));
        EXPECT_EQ(arrWindows[1]->GetColorMapPhase(), 2);
        arrWindows.Release();
        EXPECT_EQ(arrWindows.GetSize(), 0U);
        EXPECT_EQ(logs[0].nReleased + logs[2].nReleased, 2);
        EXPECT_EQ(logs[1].nReleased, 0);
    }
    EXPECT_EQ(logs[1].nReleased, 1);
}

} // namespace
} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Showing, closing and giving back windows.
#include "Support.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <thread>

namespace KxTest
{
namespace
{

using ::testing::ElementsAre;
using namespace KxApi;

class ShowWindow : public GuiTest
{
protected:
    static int ModeRegister(IKxWnd& window)
    {
        return static_cast<int>(
            GenApi::CIntegerPtr(window.GetINodeMap()->GetNode("WindowModeReg"))->GetValue());
    }

    /// Runs in another thread while this one handles events.
    static void InOtherThread(const std::function<void()>& function)
    {
        std::atomic<bool> bDone{false};
        std::thread thread([&] {
            function();
            bDone = true;
        });
        EXPECT_TRUE(PumpUntil([&] { return bDone.load(); }));
        thread.join();
    }
};

TEST_F(ShowWindow, TellsEachModeAndRefusesOthers)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    for (const int nMode : {-1, 4}) {
        EXPECT_EQ(ErrorOf([&] { pWnd->Show(nullptr, static_cast<_EKxWindowMode_t>(nMode)); }),
                  "eWM = " + std::to_string(nMode) + " must be smaller than Max = 4");
        EXPECT_FALSE(pWnd->IsVisible());
    }
    EXPECT_EQ(ModeRegister(*pWnd), -1);
    for (const auto eMode : {KxWindowMode_Modaless, KxWindowMode_ModalessOnNewThread, KxWindowMode_Child}) {
        pWnd->Show(nullptr, eMode);
        EXPECT_TRUE(pWnd->IsVisible());
        Pump();
        EXPECT_EQ(ModeRegister(*pWnd), eMode);
        EXPECT_EQ(WidgetOf(*pWnd)->windowFlags().testFlag(Qt::FramelessWindowHint),
                  eMode == KxWindowMode_Child);
    }
    pWnd->Close();
    Pump();
    EXPECT_FALSE(pWnd->IsVisible());
    EXPECT_EQ(pWnd->GetWindowHandle(), nullptr);
    EXPECT_EQ(ModeRegister(*pWnd), -1);
}

TEST_F(ShowWindow, WaitsForTheEndOfAModalDialog)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    bool bModal = false;
    QTimer::singleShot(0, [&] {
        bModal = WidgetOf(*pWnd)->isModal();
        EXPECT_EQ(ModeRegister(*pWnd), KxWindowMode_Modal);
        pWnd->Close();
    });
    pWnd->Show(nullptr, KxWindowMode_Modal);
    EXPECT_TRUE(bModal);
    EXPECT_EQ(ModeRegister(*pWnd), -1);
}

TEST_F(ShowWindow, FitsIntoTheLayoutOfAParent)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    const auto pParent = std::make_unique<QWidget>();
    EXPECT_THROW(pWnd->Show(pParent.get(), KxWindowMode_Child), GenICam::InvalidArgumentException);
    EXPECT_FALSE(pWnd->IsVisible());
    new QVBoxLayout(pParent.get());
    pParent->resize(300, 200);
    pParent->show();
    pWnd->Show(pParent.get(), KxWindowMode_Child);
    Pump();
    EXPECT_EQ(WidgetOf(*pWnd)->parentWidget(), pParent.get());
    EXPECT_TRUE(pWnd->IsVisible());
    const GenApi::CBooleanPtr pMenu(pWnd->GetINodeMap()->GetNode("VisibleMenu"));
    EXPECT_FALSE(GenApi::IsAvailable(pMenu)) << "a child has no menu";
}

TEST_F(ShowWindow, SurvivesTheEndOfItsParent)
{
    CEventLog log;
    const ImageWndPtr pWnd = MakeImageWnd();
    log.Watch(*pWnd);
    auto pParent = std::make_unique<QWidget>();
    new QVBoxLayout(pParent.get());
    pParent->show();
    pWnd->Show(pParent.get(), KxWindowMode_Child);
    pParent.reset();
    EXPECT_EQ(pWnd->GetWindowHandle(), nullptr);
    EXPECT_EQ(ModeRegister(*pWnd), -1);
    EXPECT_THAT(log.Types(), ElementsAre(10U, 12U));
    pWnd->RegisterIKxImage(MakeImage(4, 4)->GetIKxImage());
    Show(*pWnd);
    EXPECT_TRUE(pWnd->IsVisible());
    pWnd->Close();
    Pump();
}

TEST_F(ShowWindow, TellsItsLifeAndLetsTheApplicationRefuseToClose)
{
    CEventLog log;
    const ImageWndPtr pWnd = MakeImageWnd();
    void* const hCallback = log.Watch(*pWnd);
    bool bRefuse = true;
    log.onEvent = [&](IKxCallbackParamBase& param) {
        EXPECT_EQ(dynamic_cast<IKxCallbackParamKxApiGUIEventBaseWnd&>(param).GetIKxWnd(),
                  static_cast<IKxWnd*>(&*pWnd));
        if (param.GetCallbackType() == KxGUICallbackType_Close && bRefuse)
            dynamic_cast<IKxCallbackParamKxApiGUIEventBaseWndClose&>(param).CancelClose();
    };
    Show(*pWnd);
    pWnd->Close();
    Pump();
    EXPECT_TRUE(pWnd->IsVisible());
    EXPECT_THAT(log.Types(), ElementsAre(10U, 11U));
    bRefuse = false;
    pWnd->Close();
    EXPECT_EQ(pWnd->GetWindowHandle(), nullptr);
    Pump();
    EXPECT_THAT(log.Types(), ElementsAre(10U, 11U, 11U, 12U));
    pWnd->DeregisterCallback(hCallback);
    EXPECT_EQ(log.nReleased, 1);
    EXPECT_EQ(ErrorOf([&] { pWnd->DeregisterCallback(hCallback); }), "hCallback is invalid.");
}

TEST_F(ShowWindow, IsAskedOncePerCloseAndKeepsARefusedDialogReachable)
{
    CEventLog log;
    ImageWndPtr pWnd = MakeImageWnd();
    log.Watch(*pWnd);
    Show(*pWnd);
    QWidget* const pClosed = WidgetOf(*pWnd);
    pWnd->Close();
    pClosed->close();
    EXPECT_THAT(log.Types(), ElementsAre(10U, 11U)) << "it was closed already";
    Pump();

    bool bRefuse = true;
    log.onEvent = [&](IKxCallbackParamBase& param) {
        if (param.GetCallbackType() == KxGUICallbackType_Close && bRefuse)
            dynamic_cast<IKxCallbackParamKxApiGUIEventBaseWndClose&>(param).CancelClose();
    };
    Show(*pWnd);
    QWidget* const pOld = WidgetOf(*pWnd);
    Show(*pWnd);
    EXPECT_NE(WidgetOf(*pWnd), pOld);
    EXPECT_TRUE(pOld->isVisible());
    bRefuse = false;
    WidgetOf(*pWnd)->close();
    EXPECT_EQ(WidgetOf(*pWnd), pOld);
    Pump();
    EXPECT_EQ(ModeRegister(*pWnd), KxWindowMode_Modaless);
    pWnd.Reset();
    Pump();
    EXPECT_EQ(log.Count(KxGUICallbackType_Destroyed), 3U);
    EXPECT_EQ(log.nReleased, 1);
}

TEST_F(ShowWindow, LivesUntilItsDialogIsGoneWhenGivenBackOpen)
{
    for (int i = 0; i < 20; ++i) {
        CEventLog log;
        IKxWndReleasable* const pWnd = CreateIKxWnd(KxWindowType_ImageDisplay);
        log.Watch(*pWnd);
        Show(*pWnd);
        std::thread other;
        if (i > 0) {
            other = std::thread([=] { pWnd->Release(); });
        } else {
            pWnd->Release();
            EXPECT_EQ(log.nReleased, 0) << "the dialog still needs the window";
        }
        EXPECT_TRUE(PumpUntil([&] { return log.nReleased == 1; }));
        EXPECT_THAT(log.Types(), ElementsAre(10U, 11U, 12U));
        if (other.joinable())
            other.join();
    }
}

TEST_F(ShowWindow, IsShownByAnotherThread)
{
    CEventLog log;
    const ImageWndPtr pWnd = MakeImageWnd();
    log.Watch(*pWnd);
    InOtherThread([&] {
        // Twice, since the first dialog has to go before the second one.
        pWnd->Show(nullptr, KxWindowMode_Modaless);
        pWnd->Show(nullptr, KxWindowMode_ModalessOnNewThread);
        EXPECT_TRUE(pWnd->IsVisible());
    });
    EXPECT_EQ(WidgetOf(*pWnd)->thread(), QApplication::instance()->thread());
    Pump();
    EXPECT_EQ(ModeRegister(*pWnd), KxWindowMode_ModalessOnNewThread);
    EXPECT_EQ(log.Count(KxGUICallbackType_Created), 2U);
    EXPECT_EQ(log.Count(KxGUICallbackType_Destroyed), 1U);
    pWnd->Close();
    Pump();
    EXPECT_EQ(log.Count(KxGUICallbackType_Destroyed), 2U);
}

TEST_F(ShowWindow, KeepsItsPlaceBetweenDialogs)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    int x = -1, y = -1, w = -1, h = -1;
    pWnd->GetPosition(&x, &y, &w, &h);
    EXPECT_THAT((std::vector<int>{x, y, w, h}), ElementsAre(0, 0, 640, 480));
    pWnd->SetPosition(10, 20, 300, 200);
    pWnd->GetPosition(nullptr, nullptr, nullptr, nullptr);
    pWnd->GetPosition(&x, &y, &w, &h);
    EXPECT_THAT((std::vector<int>{x, y, w, h}), ElementsAre(10, 20, 300, 200));
    Show(*pWnd);
    EXPECT_EQ(WidgetOf(*pWnd)->geometry().size(), QSize(300, 200));
    pWnd->SetPosition(30, 40, 320, 240);
    pWnd->Close();
    Pump();
    pWnd->GetPosition(&x, &y, &w, &h);
    EXPECT_THAT((std::vector<int>{x, y, w, h}), ElementsAre(30, 40, 320, 240));
}

TEST_F(ShowWindow, ForgetsATitleThatWasNotReadWhileItWasShown)
{
    const ImageWndPtr pWnd = MakeImageWnd();
    pWnd->SetTitle("too early");
    EXPECT_STREQ(pWnd->GetTitle().c_str(), "Display Image");
    Show(*pWnd);
    EXPECT_EQ(WidgetOf(*pWnd)->windowTitle(), "Display Image");
    pWnd->SetTitle("not read");
    EXPECT_EQ(WidgetOf(*pWnd)->windowTitle(), "not read");
    Show(*pWnd);
    EXPECT_EQ(WidgetOf(*pWnd)->windowTitle(), "Display Image");
    pWnd->SetTitle("Kamera \xC3\xBC");
    InOtherThread([&] { EXPECT_STREQ(pWnd->GetTitle().c_str(), "Kamera \xC3\xBC"); });
    Show(*pWnd);
    EXPECT_EQ(WidgetOf(*pWnd)->windowTitle(), QString::fromUtf8("Kamera \xC3\xBC"));
    pWnd->Close();
    Pump();
    EXPECT_STREQ(pWnd->GetTitle().c_str(), "Kamera \xC3\xBC");
}

} // namespace
} // namespace KxTest

// SPDX-License-Identifier: Apache-2.0
// Programs with a loop of their own and no Qt: public functions only, and what they leave behind.
#include <GenApi/GenApi.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

namespace
{

using namespace KxApi;

/// Rounds of the long scenes; more by the environment.
int Rounds(int nDefault)
{
    const char* const szRounds = std::getenv("KXAPI_ROUNDS");
    return szRounds ? std::atoi(szRounds) : nDefault;
}

size_t Entries(const char* szFolder)
{
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(szFolder), {}));
}

/// Kilobytes that the process has in memory.
long Resident()
{
    long nPages = 0;
    std::ifstream("/proc/self/statm") >> nPages >> nPages;
    return nPages * (sysconf(_SC_PAGESIZE) / 1024);
}

class CCounter final : public IKxCallback
{
public:
    explicit CCounter(std::function<void(IKxCallbackParamBase&)> onEvent)
        : m_onEvent(std::move(onEvent))
    {}
    void OnCallback(IKxCallbackParamBase* pParam) override { m_onEvent(*pParam); }
    void Release() override { delete this; }

private:
    const std::function<void(IKxCallbackParamBase&)> m_onEvent;
};

class Host : public ::testing::Test
{
protected:
    Host() { setenv("QT_QPA_PLATFORM", "offscreen", 0); }

    IKxWndReleasable* Make(_EKxWindowType_t eType)
    {
        IKxWndReleasable* const pWnd = CreateIKxWnd(eType);
        pWnd->RegisterCallback(new CCounter([this](IKxCallbackParamBase& param) {
            ++m_nEvents[param.GetCallbackType()];
            if (onEvent)
                onEvent(param);
        }));
        return pWnd;
    }

    /// Handles events until the condition holds; false when it doesn't within a minute.
    static bool PumpUntil(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        for (; !condition(); processEventGUI(false, 1)) {
            if (std::chrono::steady_clock::now() > end)
                return false;
        }
        return true;
    }

    CKxApiAutoInitTerm m_objSdk;
    std::atomic<int> m_nEvents[14]{};
    std::function<void(IKxCallbackParamBase&)> onEvent;
};

TEST_F(Host, PumpingAloneEndsDialogsHoweverTheyAreClosed)
{
    CIKxWndPtrT<IKxImageDisplayWnd> pWnd(Make(KxWindowType_ImageDisplay));
    pWnd->Show(nullptr, KxWindowMode_Child);
    pWnd->Show(nullptr, KxWindowMode_Modaless);
    processEventGUI(false, 10);
    EXPECT_EQ(m_nEvents[KxGUICallbackType_Destroyed], 1) << "shown anew";
    std::thread([&] { pWnd->Close(); }).join();
    EXPECT_TRUE(PumpUntil([&] { return m_nEvents[KxGUICallbackType_Destroyed] == 2; })) << "by a thread";

    std::thread closer;
    onEvent = [&](IKxCallbackParamBase& param) {
        if (param.GetCallbackType() == KxGUICallbackType_Created)
            closer = std::thread([&] {
                while (!pWnd->IsVisible())
                    std::this_thread::yield();
                pWnd->Close();
            });
    };
    pWnd->Show(nullptr, KxWindowMode_Modal);
    closer.join();
    EXPECT_EQ(m_nEvents[KxGUICallbackType_Destroyed], 3) << "modal";
    onEvent = nullptr;

    pWnd->Show(nullptr, KxWindowMode_Modaless);
    pWnd.Reset();
    processEventGUI(false, 0);
    EXPECT_EQ(m_nEvents[KxGUICallbackType_Destroyed], 4) << "given back";
    EXPECT_EQ(m_nEvents[KxGUICallbackType_Close], 4);
}

TEST_F(Host, KeepsThreadsDescriptorsAndMemoryLevel)
{
    using SystemPtr = CKxAutoPtr<IKxSystemReleasable, IKxSystem>;
    CKxAutoPtr<IKxImageBufferReleasable> pBuffer(CreateIKxImageBuffer(nullptr));
    pBuffer->CreateBuffer(640, 480, KxPixelFormat_Mono8, KxMemoryInitialization_Zero);
    const auto round = [&](int n) {
        CIKxWndPtrT<IKxImageDisplayWnd> pImage(Make(KxWindowType_ImageDisplay));
        pImage->Show(nullptr, n % 2 ? KxWindowMode_Modaless : KxWindowMode_Child);
        pImage->RegisterIKxImage(pBuffer->GetIKxImage());
        processEventGUI(false, 1);
        if (n % 3 == 0)
            pImage->Close();
        if (n % 3 == 1)
            pImage->Show(nullptr, KxWindowMode_Modaless);
        {
            const SystemPtr pSystem(CreateIKxSystem(KXSIM_PRODUCER));
            CIKxWndPtrT<IKxDeviceSelectionWnd> pDevices(Make(KxWindowType_DeviceSelection));
            pDevices->RegisterTargetIKxSystem(pSystem.Get());
            pDevices->Show(nullptr, KxWindowMode_Modaless);
            processEventGUI(false, 1);
            // The search is under way; the systems go as soon as the dialog is gone.
            const int nDestroyed = m_nEvents[KxGUICallbackType_Destroyed];
            pDevices.Reset();
            EXPECT_TRUE(PumpUntil([&] { return m_nEvents[KxGUICallbackType_Destroyed] > nDestroyed; }));
        }
        pImage.Reset();
        processEventGUI(false, 0);
    };
    const int nRounds = Rounds(24);
    for (int n = 0; n < nRounds / 3; ++n)
        round(n);
    const size_t nThreads = Entries("/proc/self/task");
    const size_t nDescriptors = Entries("/proc/self/fd");
    [[maybe_unused]] const long nResident = Resident();
    for (int n = 0; n < nRounds; ++n)
        round(n);
    // The last searches end after their dialogs.
    EXPECT_TRUE(PumpUntil([&] { return Entries("/proc/self/task") <= nThreads; }));
    EXPECT_TRUE(PumpUntil([&] { return Entries("/proc/self/fd") <= nDescriptors; }));
    RecordProperty("threads", static_cast<int>(nThreads));
    RecordProperty("descriptors", static_cast<int>(nDescriptors));
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they keep what is freed
    // A dialog and its pictures take more than a megabyte each.
    EXPECT_LT(Resident() - nResident, 300 * nRounds + 8192)
        << nResident << " kB before, " << Resident() << " kB after";
#endif
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "Producers.h"

#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace KxApi;
using namespace KxTest;
using testing::ElementsAre;
using testing::HasSubstr;

/// A folder of links to the fakes, which the environment variable names.
class Producers : public testing::Test
{
protected:
    void SetUp() override
    {
        m_folder = std::filesystem::path(testing::TempDir()) / ("KxProducers" + std::to_string(getpid()));
        std::filesystem::create_directories(m_folder / "empty" / "deeper");
    }
    void TearDown() override
    {
        unsetenv("GENICAM_GENTL64_PATH");
        std::filesystem::remove_all(m_folder);
    }
    void Link(const std::string& fake, const std::string& name)
    {
        std::filesystem::create_symlink(Fake(fake), m_folder / name);
    }
    /// Those that the test put there; the SDK's own folder may hold others.
    static std::vector<CKxProducerInfo> Of(std::vector<CKxProducerInfo> infos)
    {
        std::vector<CKxProducerInfo> mine;
        for (CKxProducerInfo& info : infos) {
            const std::string path = info.strPath.c_str();
            if (path.find("/Fake") != path.npos || path.find("KxProducers") != path.npos ||
                path.find("/nowhere") != path.npos)
                mine.push_back(info);
        }
        return mine;
    }
    static std::vector<std::string> Names(const std::vector<CKxProducerInfo>& infos)
    {
        std::vector<std::string> names;
        for (const CKxProducerInfo& info : infos)
            names.push_back(std::filesystem::path(info.strPath.c_str()).filename().string());
        return names;
    }

    CKxApiAutoInitTerm m_sdk;
    std::filesystem::path m_folder;
};

TEST_F(Producers, AreFoundInFoldersAndAsFilesEachOnce)
{
    Link("Transport", "b.cti");
    Link("Version10", "a.cti");
    Link("Complete", "no producer.so");
    Link("Failing", "empty/deeper/c.cti");
    const std::string path = "::/nowhere:" + m_folder.string() + ":" + m_folder.string() +
                             "/:" + Fake("Transport") + ":" + Fake("Version13") + ":" +
                             (m_folder / "empty").string();
    setenv("GENICAM_GENTL64_PATH", path.c_str(), 1);
    const auto infos = Of(FindKxProducers());
    EXPECT_THAT(Names(infos),
                ElementsAre("nowhere", "FakeVersion10.cti", "FakeTransport.cti", "FakeVersion13.cti"));
    EXPECT_THAT(infos[0].strError.c_str(), HasSubstr("GENICAM_GENTL64_PATH names it"));
    EXPECT_STREQ(infos[2].strVersion.c_str(), "1.2.3");
    EXPECT_STREQ(infos[2].strError.c_str(), "");
    EXPECT_EQ(Names(Of(GetKxProducers())), Names(infos));
}

TEST_F(Producers, BrokenOnesTellWhyAndHideNoOther)
{
    std::ofstream(m_folder / "a.cti") << std::string(4096, 'x');
    Link("Lacking", "b.cti");
    Link("Complete", "c.cti");
    Link("Transport", "d.cti");
    std::filesystem::create_symlink("/nowhere/at/all", m_folder / "e.cti");
    setenv("GENICAM_GENTL64_PATH", m_folder.c_str(), 1);
    CIKxSystemPtrArray systems;
    const auto infos = Of(OpenIKxSystems(systems));
    ASSERT_GE(infos.size(), 4U);
    EXPECT_THAT(infos[0].strError.c_str(), HasSubstr("invalid ELF header"));
    EXPECT_THAT(infos[1].strError.c_str(), HasSubstr("lacks DSQueueBuffer"));
    EXPECT_THAT(infos[2].strError.c_str(), HasSubstr("TLOpen"));
    EXPECT_STREQ(infos[3].strError.c_str(), "");
    bool isThere = false;
    for (size_t i = 0; i < systems.GetSize(); ++i)
        isThere |= systems[i]->GetIKxSystemInfo()->GetDisplayName() == "Fake transport";
    EXPECT_TRUE(isThere);
}

/// The producer that is slow to begin with.
struct SlowProducer : LoadedProducer
{
    SlowProducer()
        : LoadedProducer("Slow")
    {}
    void LetGo() const
    {
        Call("KxFakeLetGo"); // of GCInitLib
        Call("KxFakeLetGo"); // of TLOpen
    }
};

/// Keeps what comes, and does something when the fake camera's producer is there.
struct Taker final : IKxProducersCallback
{
    explicit Taker(std::function<void()> onCamera)
        : doOnCamera(std::move(onCamera))
    {}
    void OnProducer(size_t nIndex, const CKxProducerInfo& info, IKxSystemReleasable* pSystem) override
    {
        if (pSystem)
            systems.Register(pSystem);
        order.push_back(nIndex);
        hasCamera |= pSystem && std::string(info.strPath.c_str()).find("FakeCamera") != std::string::npos;
        if (hasCamera)
            std::exchange(doOnCamera, [] {})();
    }
    bool IsWanted() override { return !hasCamera || waitsForAll; }

    CIKxSystemPtrArray systems;
    std::vector<size_t> order;
    std::function<void()> doOnCamera;
    bool hasCamera = false;
    bool waitsForAll = true;
};

TEST_F(Producers, ThatAreSlowDelayNoOther)
{
    setenv("GENICAM_GENTL64_PATH", (Fake("Slow") + ":" + Fake("Camera")).c_str(), 1);
    const SlowProducer slow;
    {
        Taker taker([&] { slow.LetGo(); }); // else it would never return
        const auto infos = Of(OpenIKxSystems(taker));
        EXPECT_THAT(Names(infos), ElementsAre("FakeSlow.cti", "FakeCamera.cti"));
        EXPECT_STREQ(infos[0].strError.c_str(), "");
        EXPECT_LT(std::find(taker.order.begin(), taker.order.end(), 1U),
                  std::find(taker.order.begin(), taker.order.end(), 0U));
    }
    slow.LetGo();
    CIKxSystemPtrArray systems;
    OpenIKxSystems(systems);
    ASSERT_GE(systems.GetSize(), 2U);
    EXPECT_STREQ(systems[0]->GetIKxSystemInfo()->GetDisplayName().c_str(), "Fake transport");
}

TEST_F(Producers, ThatNobodyWaitsForAreClosedWhenTheyAreReady)
{
    setenv("GENICAM_GENTL64_PATH", (Fake("Slow") + ":" + Fake("Camera")).c_str(), 1);
    const SlowProducer slow;
    Taker taker([] {});
    taker.waitsForAll = false;
    EXPECT_THAT(Of(OpenIKxSystems(taker))[0].strError.c_str(), HasSubstr("isn't ready"));
    EXPECT_THAT(Of(GetKxProducers())[0].strError.c_str(), HasSubstr("isn't ready"));
    slow.LetGo();
    slow.Call("KxFakeAwaitClosed");
    // Who asks again while it is being opened waits for the same opening.
    Taker again([] {}), last([&] { slow.LetGo(); });
    again.waitsForAll = false;
    OpenIKxSystems(again);
    EXPECT_STREQ(Of(OpenIKxSystems(last))[0].strError.c_str(), "");
}

TEST_F(Producers, ThatHangDoNotKeepAProgramFromEnding)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "so slow, even a producer that doesn't hang isn't ready when the end's patience is over";
#endif
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setenv("GENICAM_GENTL64_PATH", (Fake("Slow") + ":" + Fake("Camera")).c_str(), 1);
    const auto end = [] {
        {
            const SlowProducer slow;
            Taker taker([&] { slow.Call("KxFakeAwaitSlowCall"); });
            taker.waitsForAll = false;
            OpenIKxSystems(taker);
        }
        std::exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
}

} // namespace

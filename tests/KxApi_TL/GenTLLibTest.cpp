// SPDX-License-Identifier: Apache-2.0
#include "InThreads.h"
#include "Producers.h"

#include <Base/GCException.h>
#include <KxApi_TL/CKxGenTLLib.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace
{

using namespace KxTest;
using KxApi::CKxGenTLLib;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr char kLog[] = "KXAPI_FAKE_PRODUCER_LOG";

std::string LoadError(const std::string& path)
{
    try {
        CKxGenTLLib::Load(path.c_str());
    } catch (const GenICam::RuntimeException& e) {
        return e.GetDescription();
    }
    return "loaded";
}

class GenTLLib : public testing::Test
{
protected:
    void SetUp() override { setenv(kLog, "", 1); }
    void TearDown() override { unsetenv(kLog); }
    static std::string Log()
    {
        const char* const log = std::getenv(kLog);
        return log ? log : "";
    }
};

TEST_F(GenTLLib, TableOfACompleteProducerHasEveryFunction)
{
    const auto lib = CKxGenTLLib::Load(Fake("Complete").c_str());
#define KXAPI_CHECK(function) EXPECT_NE(lib->function, nullptr) << #function;
    KXAPI_GENTL_FUNCTIONS(KXAPI_CHECK)
#undef KXAPI_CHECK
    EXPECT_EQ(lib->GetVersionMinorByFunctions(), 6);
    EXPECT_EQ(lib->TLClose(nullptr), GenTL::GC_ERR_NOT_IMPLEMENTED);
}

TEST_F(GenTLLib, NewerFunctionsThanTheProducersStayNull)
{
    const auto v13 = CKxGenTLLib::Load(Fake("Version13").c_str());
    EXPECT_NE(v13->DSGetBufferChunkData, nullptr);
    EXPECT_EQ(v13->IFGetParentTL, nullptr);
    EXPECT_EQ(v13->DSGetBufferInfoStacked, nullptr);
    EXPECT_EQ(v13->GetVersionMinorByFunctions(), 3);

    const auto v10 = CKxGenTLLib::Load(Fake("Version10").c_str());
    EXPECT_EQ(v10->GCGetPortURLInfo, nullptr);
    EXPECT_EQ(v10->GetVersionMinorByFunctions(), 0);
}

TEST_F(GenTLLib, UsersOfOneFileShareItUntilTheLastLetsGo)
{
    auto first = CKxGenTLLib::Load(Fake("Complete").c_str());
    // Another way to the same file.
    auto second = CKxGenTLLib::Load((std::string(KXAPI_FAKE_PRODUCERS) + "/./FakeComplete.cti").c_str());
    EXPECT_EQ(first.get(), second.get());
    const auto other = CKxGenTLLib::Load(Fake("Version13").c_str());
    EXPECT_NE(other.get(), first.get());
    EXPECT_NE(other->TLOpen, first->TLOpen) << "functions of equal names met";
    first.reset();
    EXPECT_EQ(Log(), "init init ");
    second.reset();
    EXPECT_EQ(Log(), "init init close ");
    first = CKxGenTLLib::Load(Fake("Complete").c_str());
    EXPECT_EQ(Log(), "init init close init ");
}

TEST_F(GenTLLib, ThreadsLoadingAndLettingGoLeaveEachInitClosed)
{
    InThreads(4, [](int) {
        for (int round = 0; round < 50; ++round)
            CKxGenTLLib::Load(Fake("Complete").c_str());
    });
    std::string rest = Log();
    // Never two inits or two closes in a row.
    constexpr char kRound[] = "init close ";
    while (rest.compare(0, sizeof(kRound) - 1, kRound) == 0)
        rest.erase(0, sizeof(kRound) - 1);
    EXPECT_EQ(rest, "");
}

TEST_F(GenTLLib, UnusableFilesTellPathAndCause)
{
    EXPECT_THAT(LoadError("/nowhere/None.cti"),
                AllOf(HasSubstr("/nowhere/None.cti"), HasSubstr("No such file")));

    const std::string text = testing::TempDir() + "KxText" + std::to_string(getpid()) + ".cti";
    std::ofstream(text) << std::string(4096, 'x');
    EXPECT_THAT(LoadError(text), AllOf(HasSubstr(text), HasSubstr("invalid ELF header")));
    std::remove(text.c_str());

    EXPECT_THAT(LoadError(testing::TempDir()), HasSubstr("cannot be used"));
    // However long the path, the cause isn't cut off.
    EXPECT_THAT(LoadError("/nowhere/" + std::string(200, 'x') + "/None.cti"), HasSubstr("No such file"));
}

TEST_F(GenTLLib, FilesThatWouldKillOrHangTheLinkerAreRefused)
{
    const std::string path = testing::TempDir() + "KxCut" + std::to_string(getpid()) + ".cti";
    std::ifstream file(Fake("Complete"), std::ios::binary);
    const std::string whole((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    for (size_t size = 0; size < whole.size(); size += 509) {
        std::ofstream(path, std::ios::binary) << whole.substr(0, size);
        EXPECT_THAT(LoadError(path), HasSubstr("it ends at byte " + std::to_string(size)));
    }
    std::remove(path.c_str());
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(LoadError(path), HasSubstr("it is a FIFO"));
    std::remove(path.c_str());
}

TEST_F(GenTLLib, ProducerWithoutFunctionsOfTheFirstVersionIsRefusedBeforeItRuns)
{
    EXPECT_THAT(LoadError(Fake("Lacking")),
                AllOf(HasSubstr("FakeLacking.cti"), HasSubstr("lacks DSQueueBuffer, DSGetBufferInfo"),
                      Not(HasSubstr("GCGetNumPortURLs"))));
    EXPECT_EQ(Log(), "");
}

TEST_F(GenTLLib, FailedInitTellsCodeAndTextAndIsTriedAnew)
{
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(LoadError(Fake("Failing")), HasSubstr("GCInitLib returned -1010 the driver is missing"));
    EXPECT_EQ(Log(), "init init ") << "what was never initialised must not be closed";
}

TEST_F(GenTLLib, ProducerInUseElsewhereInTheProcessIsUsedAndLeftOpen)
{
    EXPECT_EQ(LoadError(Fake("InUse")), "loaded");
    EXPECT_EQ(Log(), "init ");
}

} // namespace

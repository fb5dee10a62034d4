// SPDX-License-Identifier: Apache-2.0
// Cameras of producers that behave badly, in the programs' lists.
#include "Cameras.h"

#include "ProgramTest.h"
#include "TestCameras.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <cstdlib>

namespace
{

using testing::HasSubstr;

constexpr const char* kWorld = "KXAPI_FAKE_WORLD";

class Cameras : public KxTest::ProgramTest
{};

TEST_F(Cameras, OfOtherProducersAreListedWhenASearchHangs)
{
    setenv(kWorld, "GEV~=camA/1", 1);
    setenv("GENICAM_GENTL64_PATH", KX_FAKE_PRODUCER, 1);
    KxApps::Cameras cameras{KxApps::Cameras::Later()};
    cameras.OpenProducers();
    void* const producer = dlopen(KX_FAKE_PRODUCER, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(producer, nullptr);
    // The simulator among the others needs no time, however busy the machine is.
    EXPECT_TRUE(KxTest::Eventually([&] {
        cameras.Update(std::chrono::milliseconds(200));
        return !cameras.All().empty();
    }));
    EXPECT_THAT(cameras.Systems().front().error, HasSubstr("hasn't come back in 200 ms"));
    reinterpret_cast<void (*)()>(dlsym(producer, "KxFakeLetGo"))();
    dlclose(producer);
    unsetenv("GENICAM_GENTL64_PATH");
    unsetenv(kWorld);
}

TEST_F(Cameras, MayHaveNamesThatAreNoText)
{
    const std::string environment = std::string("GENICAM_GENTL64_PATH=") + KX_FAKE_PRODUCER + " " + kWorld +
                                    "=\"$(printf 'GEV=a\\033b\\377c/1')\" ";
    const KxTest::Outcome listed = RunProgram(KX_PROGRAM, "list", environment);
    EXPECT_EQ(listed.exitCode, 0) << listed.errors;
    EXPECT_THAT(listed.output, HasSubstr("a b\xFF"
                                         "c"))
        << "no terminal is told what to do";
    const KxTest::Outcome json = RunProgram(KX_PROGRAM, "list --json", environment);
    EXPECT_EQ(json.exitCode, 0) << json.errors;
    EXPECT_TRUE(nlohmann::json::accept(json.output));
}

} // namespace

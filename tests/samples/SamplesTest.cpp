// SPDX-License-Identifier: Apache-2.0
// The samples, run as their readers run them, with simulated cameras and without a display.
#include "ProgramTest.h"

#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;

constexpr char kSixImages[] = "6 images\n";

struct Sample
{
    const char* szName;
    const char* szArguments;
    const char* szOutput; // a regular expression
};

constexpr Sample kSamples[] = {
    {"allocator", "6", "6 images in [1-9] of [1-9] buffers\nthe memory was given back\n"},
    {"children", "6", kSixImages},
    {"devices", "1", "no camera was chosen\n"},
    {"first", "'" SAMPLE_DESCRIPTION "'", "width 640, bytes of an image 768000\n"},
    {"graphs", "6", kSixImages},
    {"live", "6", kSixImages},
    {"measuring", "6", "the line is 61.2 mm long\n6 images\n"},
    {"nodemap", "'" SAMPLE_DESCRIPTION "' 1", "[1-9][0-9]* bytes of the camera were used\n"},
    {"overlay", "6", kSixImages},
    {"overlayqt", "6", kSixImages},
    {"qthost", "6", kSixImages},
    {"saving", "2", "saved image([0-9]+).kxraw and image[0-9]+.png\nsaved .*\n"},
    {"windowfeatures", "6", "(.*\n)*ZoomMode=FitToTheWindow\n(.*\n)*6 images\n"},
};

class Samples : public KxTest::ProgramTest, public testing::WithParamInterface<Sample>
{
protected:
    KxTest::Outcome Run(const std::string& name, const std::string& arguments) const
    {
        // A temporary folder of the test's own keeps its cameras apart from those of other tests.
        return RunProgram(SAMPLES_FOLDER + name, arguments, "TMPDIR=. QT_QPA_PLATFORM=offscreen ");
    }
};

TEST_P(Samples, DoWhatTheySayAndEnd)
{
    const KxTest::Outcome outcome = Run(GetParam().szName, GetParam().szArguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, MatchesRegex(GetParam().szOutput));
}

INSTANTIATE_TEST_SUITE_P(All, Samples, testing::ValuesIn(kSamples),
                         [](const auto& testInfo) { return std::string(testInfo.param.szName); });

TEST_F(Samples, SayInASentenceWhatFileIsWrong)
{
    for (const char* const szName : {"first", "nodemap"}) {
        const KxTest::Outcome outcome = Run(szName, "missing.xml");
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors, HasSubstr("missing.xml"));
    }
}

} // namespace

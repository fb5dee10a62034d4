// SPDX-License-Identifier: Apache-2.0
// The samples, run as their readers run them, with simulated cameras and without a display.
#include "ProgramTest.h"

#include <gmock/gmock.h>

#include <regex>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;

struct Sample
{
    std::string name, arguments, output; // the latter a regular expression
};

std::vector<Sample> SamplesOfTable()
{
    std::vector<Sample> samples;
    for (const std::string& line : KxTest::LinesOf(KxTest::ContentOf(SAMPLES_TABLE))) {
        Sample sample;
        std::istringstream columns(line);
        if (line[0] != '#' && std::getline(columns, sample.name, '\t') &&
            std::getline(columns, sample.arguments, '\t') && std::getline(columns, sample.output))
            samples.push_back(
                {sample.name,
                 std::regex_replace(sample.arguments, std::regex("DESCRIPTION"), "'" SAMPLE_DESCRIPTION "'"),
                 std::regex_replace(sample.output, std::regex(R"(\\n)"), "\n") + "\n"});
    }
    return samples;
}

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
    const KxTest::Outcome outcome = Run(GetParam().name, GetParam().arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, MatchesRegex(GetParam().output));
}

INSTANTIATE_TEST_SUITE_P(All, Samples, testing::ValuesIn(SamplesOfTable()),
                         [](const auto& testInfo) { return testInfo.param.name; });

TEST_F(Samples, SayInASentenceWhatFileIsWrong)
{
    for (const char* const szName : {"first", "nodemap"}) {
        const KxTest::Outcome outcome = Run(szName, "missing.xml");
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors, HasSubstr("missing.xml"));
    }
}

} // namespace

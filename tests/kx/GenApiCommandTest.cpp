// SPDX-License-Identifier: Apache-2.0
#include "ProgramTest.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

namespace
{

using KxTest::LinesOf;
using KxTest::Outcome;
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string kSample = "'" SAMPLE_DESCRIPTION "'";

class GenApiCommand : public KxTest::ProgramTest
{
protected:
    Outcome Run(const std::string& arguments) const { return RunProgram(KX_PROGRAM, "genapi " + arguments); }

    Outcome RunOn(const std::string& xml, const std::string& arguments = "") const
    {
        std::ofstream(m_folder / "camera.xml", std::ios::binary) << xml;
        return Run(arguments + " camera.xml");
    }

    // A description with these nodes.
    static std::string Describe(const std::string& nodes)
    {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
               "<RegisterDescription ModelName=\"Model\" VendorName=\"Maker\" StandardNameSpace=\"None\""
               " SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
               "MajorVersion=\"1\""
               " MinorVersion=\"0\" SubMinorVersion=\"0\" "
               "ProductGuid=\"0D3E8A97-51B4-4E0C-8B0A-7E9C2F6D4A20\""
               " VersionGuid=\"0D3E8A97-51B4-4E0C-8B0A-7E9C2F6D4A21\""
               " xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n" +
               nodes + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
    }
};

TEST_F(GenApiCommand, SummaryTellsWhatCanBeRead)
{
    const Outcome outcome = Run(kSample);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output,
                AllOf(HasSubstr("KxApi SampleCamera, schema 1.1, "), HasSubstr(" nodes, loaded in ")));
    EXPECT_THAT(LinesOf(outcome.output),
                Contains("features: 25, of which 22 read, 3 not readable, 0 raise an exception"));
    EXPECT_THAT(LinesOf(outcome.output), Contains("formulas: all compile"));
}

TEST_F(GenApiCommand, TreeShowsFeaturesUnderTheirCategoriesInOrder)
{
    const Outcome outcome = Run("--tree " + kSample);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("  AnalogControl/\n"
                                          "    GainSelector = AnalogAll [RW]\n"
                                          "    Gain = 0.00 dB [RW]\n"
                                          "    BlackLevel = 0 [RW]\n"
                                          "  TransportLayerControl/\n"
                                          "    PayloadSize = 2304000 B [RO]\n"
                                          "    DeviceAddress = 0.0.0.0 [RO]\n"
                                          "    UserData = 0x0000000000000000 [RW]\n"));
    EXPECT_THAT(LinesOf(outcome.output), Contains("    DeviceReset [WO]"));
}

TEST_F(GenApiCommand, JsonHoldsEveryNodeWithItsProperties)
{
    const Outcome outcome = Run("--json " + kSample);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    const auto json = nlohmann::json::parse(outcome.output);
    EXPECT_EQ(json.at("device").at("model"), "SampleCamera");
    EXPECT_GT(json.at("loadMilliseconds"), 0.0);

    const auto& nodes = json.at("nodes");
    const auto payload = std::find_if(nodes.begin(), nodes.end(), [](const nlohmann::json& node) {
        return node.at("name") == "PayloadSize";
    });
    ASSERT_NE(payload, nodes.end());
    EXPECT_EQ(payload->at("interface"), "IInteger");
    EXPECT_EQ(payload->at("access"), "RO");
    EXPECT_EQ(payload->at("visibility"), "Expert");
    EXPECT_EQ(payload->at("value"), "2304000");
    EXPECT_THAT(
        payload->at("properties"),
        AllOf(Contains(nlohmann::json{{"name", "pVariable"}, {"value", "Height"}, {"attribute", "H"}}),
              Contains(nlohmann::json{{"name", "Formula"}, {"value", "W * H * (FORMAT + 1)"}})));
}

TEST_F(GenApiCommand, TableHasALineForEachNode)
{
    const auto nodes = nlohmann::json::parse(Run("--json " + kSample).output).at("nodes");
    const auto lines = LinesOf(Run("--table " + kSample).output);
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const std::string& line) { return line[0] != '#'; }),
        static_cast<std::ptrdiff_t>(nodes.size()));
    EXPECT_THAT(lines, Contains(AllOf(StartsWith("Gain\tIFloat\tRW\tBeginner\tWriteAround\t0.00\t"),
                                      HasSubstr("\tMax=24"), HasSubstr("\tUnit=dB"))));
    EXPECT_THAT(lines, Contains(AllOf(StartsWith("GainReg\tIFloat\t"), HasSubstr("\tpIndex"),
                                      HasSubstr("=GainSelectorValue"))));
}

TEST_F(GenApiCommand, ZippedFilesAreRecognisedByTheirContent)
{
    const std::string zip = "cd " + m_folder.string() +
                            " && cp '" SAMPLE_DESCRIPTION "' plain.xml && '" CMAKE_PROGRAM
                            "' -E tar cf zipped.xml --format=zip plain.xml";
    ASSERT_EQ(std::system(zip.c_str()), 0);
    const Outcome zipped = Run("--tree zipped.xml");
    const Outcome plain = Run("--tree plain.xml");
    EXPECT_EQ(zipped.exitCode, 0) << zipped.errors;
    // The first line tells file and time.
    EXPECT_EQ(zipped.output.substr(zipped.output.find('\n')), plain.output.substr(plain.output.find('\n')));
}

struct BrokenFile
{
    const char* name;
    const char* nodes;
    const char* told; // what the line on standard error has to name
};

class GenApiCommandBroken : public GenApiCommand, public testing::WithParamInterface<BrokenFile>
{};

TEST_P(GenApiCommandBroken, GivesOneLineWithThePlaceAndExitCodeOne)
{
    const Outcome outcome = RunOn(Describe(GetParam().nodes), "--tree");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(LinesOf(outcome.errors), SizeIs(1));
    EXPECT_THAT(outcome.errors, StartsWith("kx: camera.xml: "));
    EXPECT_THAT(outcome.errors, HasSubstr(GetParam().told));
}

// The nodes begin in line 3.
INSTANTIATE_TEST_SUITE_P(
    Files, GenApiCommandBroken,
    testing::Values(
        BrokenFile{"Malformed", "<Integer Name=\"Width\">\n<Value>1</Min>\n</Integer>\n", "line 4"},
        BrokenFile{"UnknownElement", "\n<Integer Name=\"Width\"><Colour>1</Colour></Integer>\n", "line 4"},
        BrokenFile{"UnknownElementsNode", "<Integer Name=\"Width\"><Colour>1</Colour></Integer>\n", "Width"},
        BrokenFile{"Dangling", "<Integer Name=\"Width\"><pValue>WidthReg</pValue></Integer>\n", "WidthReg"},
        BrokenFile{"Cycle",
                   "<Integer Name=\"First\"><pValue>Second</pValue></Integer>\n"
                   "<Integer Name=\"Second\"><pValue>First</pValue></Integer>\n",
                   "First"}),
    [](const auto& file) { return file.param.name; });

TEST_F(GenApiCommand, FilesThatAreNoDescriptionAreNamed)
{
    EXPECT_EQ(Run("nowhere.xml").exitCode, 1);
    EXPECT_THAT(Run("nowhere.xml").errors, AllOf(StartsWith("kx: nowhere.xml: "), HasSubstr("No such file")));
    for (const std::string content : {"", "no xml at all", "PK\x03\x04 but no archive", "<html></html>"}) {
        SCOPED_TRACE(content);
        const Outcome outcome = RunOn(content);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors, StartsWith("kx: camera.xml: "));
        EXPECT_THAT(LinesOf(outcome.errors), SizeIs(1));
    }
}

// Such cameras are on the market: the file is usable, only these features are not.
TEST_F(GenApiCommand, FormulasThatDoNotCompileAreListedAndTheRestIsShown)
{
    const std::string xml =
        Describe("<Category Name=\"Root\"><pFeature>Bad</pFeature><pFeature>Good</pFeature></Category>\n"
                 "<IntSwissKnife Name=\"Bad\"><Formula>1 + * 2</Formula></IntSwissKnife>\n"
                 "<IntSwissKnife Name=\"Good\"><Formula>1 + 2</Formula></IntSwissKnife>\n");
    const Outcome summary = RunOn(xml);
    EXPECT_EQ(summary.exitCode, 0) << summary.errors;
    EXPECT_THAT(LinesOf(summary.output),
                AllOf(Contains("features: 2, of which 1 read, 0 not readable, 1 raises an exception"),
                      Contains(StartsWith("  Bad: LogicalErrorException: ")),
                      Contains("formulas: 1 does not compile")));
    EXPECT_THAT(LinesOf(RunOn(xml, "--tree").output),
                AllOf(Contains(StartsWith("  Bad ! LogicalErrorException: ")), Contains("  Good = 3 [RO]")));
}

// Each level lists the next one twice: shown out in full, these would be a thousand million lines.
TEST_F(GenApiCommand, CategoriesListedSeveralTimesAreShownOutOnce)
{
    std::string nodes = "<Category Name=\"Root\"><pFeature>C0</pFeature></Category>\n";
    for (int i = 0; i < 30; ++i) {
        const std::string next = i < 29 ? "C" + std::to_string(i + 1) : "Leaf";
        nodes += "<Category Name=\"C" + std::to_string(i) + "\"><pFeature>" + next + "</pFeature><pFeature>" +
                 next + "</pFeature></Category>\n";
    }
    nodes += "<Integer Name=\"Leaf\"><Value>5</Value></Integer>\n";
    const Outcome outcome = RunOn(Describe(nodes), "--tree");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    const auto lines = LinesOf(outcome.output);
    EXPECT_LT(lines.size(), 100U);
    EXPECT_THAT(lines, Contains(EndsWith("Leaf = 5 [RW]")));
}

TEST_F(GenApiCommand, TextsWithLineBreaksStayOnOneLine)
{
    const Outcome outcome = RunOn(Describe("<Category Name=\"Root\"><pFeature>Text</pFeature></Category>\n"
                                           "<String Name=\"Text\"><Value>two\nlines</Value></String>\n"),
                                  "--tree");
    EXPECT_THAT(LinesOf(outcome.output), Contains("  Text = two lines [RW]"));
}

TEST_F(GenApiCommand, WrongUsageIsExitCodeTwo)
{
    for (const std::string& arguments :
         std::vector<std::string>{"", "--tree", "--tree --json " + kSample, "--colour " + kSample})
    {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, 2) << arguments;
        EXPECT_THAT(outcome.output, IsEmpty()) << arguments;
        EXPECT_FALSE(outcome.errors.empty()) << arguments;
    }
    EXPECT_EQ(Run("--help").exitCode, 0);
    EXPECT_THAT(Run("--help").output, AllOf(HasSubstr("--tree"), HasSubstr("--table"), HasSubstr("--json")));
}

TEST_F(GenApiCommand, OutputThatCannotBeWrittenIsAFailure)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "needs /dev/full";
    const std::string command = "'" KX_PROGRAM "' genapi --json '" SAMPLE_DESCRIPTION "' >/dev/full 2>" +
                                (m_folder / "errors.txt").string();
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_THAT(KxTest::ContentOf(m_folder / "errors.txt"), HasSubstr("cannot write"));
}

} // namespace

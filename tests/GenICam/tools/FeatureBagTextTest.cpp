// SPDX-License-Identifier: Apache-2.0
// The text form of saved features, without any node map.
#include "ToolsTestSupport.h"

#include <sstream>

using GenApi::CFeatureBag;
using GenICam::RuntimeException;
using namespace KxGenApiTest;

namespace
{
const std::string kMark = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n";

CFeatureBag Parse(const std::string& text)
{
    CFeatureBag bag;
    std::istringstream stream(text);
    stream >> bag;
    EXPECT_FALSE(stream.fail());
    return bag;
}

std::vector<std::string> Lines(const CFeatureBag& bag)
{
    std::vector<std::string> lines;
    for (const CFeatureBag::CEntry& entry : bag)
        lines.push_back(std::string(entry.Name) + "|" + entry.Selectors.c_str() + "|" + entry.Value.c_str());
    return lines;
}
} // namespace

TEST(FeatureBagText, ReadsNamesSelectorsAndValues)
{
    const CFeatureBag bag = Parse(kMark + "# GenApi persistence file (version 3.4.0)\n"
                                          "# any text\n"
                                          "Width\t640\n"
                                          "\n"
                                          "Gain\t{GainSelector=Red}\t1.5\r\n"
                                          "  LUTValue \t{LUTSelector=Red\tLUTIndex=3}\t7\n"
                                          "DeviceUserID\t{mine}\n"
                                          "Odd\t{}\t{a}\tb\n"
                                          "Note\ta b \tc\n"
                                          "Empty\t");
    EXPECT_THAT(Lines(bag),
                testing::ElementsAre("Width||640", "Gain|{GainSelector=Red}|1.5",
                                     "LUTValue|{LUTSelector=Red\tLUTIndex=3}|7", "DeviceUserID||{mine}",
                                     "Odd||{a}\tb", "Note||a b \tc", "Empty||"));
}

TEST(FeatureBagText, WritesWhatItReads)
{
    const std::string text = kMark + "Width\t640\nGain\t{GainSelector=Red}\t1.5\nEmpty\t\nOdd\t{}\t{a}\tb\n";
    CFeatureBag bag = Parse(text);
    EXPECT_EQ(bag.ToString(), text.c_str());
    EXPECT_TRUE(Parse(text) == bag);
    EXPECT_TRUE(Parse(kMark + "Width\t641\n") != bag);

    GenICam::gcstring info("first\nsecond");
    bag.SetInfo(info);
    const std::string withInfo = bag.ToString().c_str();
    EXPECT_EQ(withInfo, kMark + "# GenApi persistence file (version 3.4.0)\n# first second\n" +
                            text.substr(kMark.size()));
    EXPECT_TRUE(Parse(withInfo) == bag);

    CFeatureBag* const clone = bag.Clone();
    EXPECT_TRUE(*clone == bag);
    clone->Destroy();
}

TEST(FeatureBagText, RefusesWhatIsNoFeatureFile)
{
    const std::pair<std::string, const char*> rows[] = {
        {"", "first line"},
        {"Width\t640\n", "first line"},
        {"# {1FE0B1D0-1234-4321-8888-096BD04049F4}\nWidth\t640\n", "first line"},
        {kMark + "Width\t640\nHeight\n", "Line 3"},
        {kMark + "\tvalue\n", "Line 2"},
    };
    for (const auto& [text, part] : rows) {
        const std::string raised = RaisedBy<RuntimeException>([&source = text] { Parse(source); });
        EXPECT_THAT(raised, testing::HasSubstr(part)) << text;
    }
}

TEST(FeatureBagText, KeepsWhatWasReadBeforeALineWithoutAValue)
{
    CFeatureBag bag = Parse("any text around it" + kMark + "Width\t640\n");
    std::istringstream broken(kMark + "Height\t480\nbroken\n");
    EXPECT_THROW(broken >> bag, RuntimeException);
    EXPECT_THAT(Lines(bag), testing::ElementsAre("Height||480"));
}

TEST(FeatureBagText, HelpersSkipCommentsAndCutWhiteSpace)
{
    std::istringstream stream("# one\n#two\n  rest ");
    GenICam::gcstring line;
    GenICam::getline(GenApi::EatComments(stream), line);
    EXPECT_EQ(GenApi::TrimSpace(line, stream), "rest");
    char text[] = "\t x ";
    EXPECT_STREQ(GenApi::TrimSpace(text, stream), "x");
}

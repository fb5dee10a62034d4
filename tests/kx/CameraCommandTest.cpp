// SPDX-License-Identifier: Apache-2.0
// The commands for cameras, against the simulated ones.
#include "ProgramTest.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace
{

using KxTest::ContentOf;
using KxTest::LinesOf;
using KxTest::Outcome;
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* kMono = "KX-U5M_1001";

class CameraCommand : public KxTest::ProgramTest
{
protected:
    // A temporary folder of the test's own keeps it apart from tests that open the same cameras at this
    // moment.
    Outcome Run(const std::string& arguments, const std::string& environment = "") const
    {
        return RunProgram(KX_PROGRAM, arguments, "TMPDIR=. " + environment);
    }
    void ExpectFailure(const Outcome& outcome, const std::string& told, int exitCode = 1) const
    {
        EXPECT_EQ(outcome.exitCode, exitCode);
        EXPECT_THAT(outcome.output, IsEmpty());
        EXPECT_THAT(outcome.errors, HasSubstr(told));
    }
    size_t Files(const std::string& ending) const
    {
        const std::filesystem::directory_iterator files(m_folder);
        return static_cast<size_t>(std::count_if(
            begin(files), end(files), [&](const auto& file) { return file.path().extension() == ending; }));
    }
};

TEST_F(CameraCommand, ListShowsCamerasWithoutAnythingSet)
{
    const Outcome outcome = Run("list", "GENICAM_GENTL64_PATH= ");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(LinesOf(outcome.output), AllOf(Contains(HasSubstr("KxSimulator.cti")),
                                               Contains(AllOf(HasSubstr(kMono), EndsWith("[ReadWrite]"))),
                                               Contains(EndsWith("[NoAccess]"))));
}

TEST_F(CameraCommand, ABrokenProducerIsToldAndHidesNoCamera)
{
    std::ofstream(m_folder / "Broken.cti") << "this is no library";
    const Outcome outcome = Run("list --json", "GENICAM_GENTL64_PATH=. ");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    const auto json = nlohmann::json::parse(outcome.output);
    ASSERT_THAT(json.at("producers"), Not(IsEmpty()));
    EXPECT_THAT(json.at("producers")[0].at("path").get<std::string>(), EndsWith("Broken.cti"));
    EXPECT_THAT(json.at("producers")[0].at("error").get<std::string>(), Not(IsEmpty()));
    ASSERT_THAT(json.at("systems"), SizeIs(json.at("producers").size() - 1));
    EXPECT_EQ(json.at("systems").back().at("interfaces")[0].at("devices")[0].at("id"), kMono);
}

TEST_F(CameraCommand, FeaturesShowTheTreeUpToAVisibility)
{
    const Outcome outcome = Run(std::string("features ") + kMono);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(LinesOf(outcome.output),
                AllOf(Contains("  ImageFormatControl/"), Contains("    Width = 2448 px [RW]"),
                      Contains("    PixelFormat = Mono8 [RW]")));
    const Outcome beginner = Run(std::string("features --visibility beginner ") + kMono);
    EXPECT_LT(LinesOf(beginner.output).size(), LinesOf(outcome.output).size());
    for (const char* module : {"local", "stream", "interface", "system"}) {
        const Outcome other = Run(std::string("features ") + kMono + " --module " + module);
        EXPECT_EQ(other.exitCode, 0) << module << ": " << other.errors;
        EXPECT_THAT(LinesOf(other.output), Contains(StartsWith("Root/"))) << module;
    }
}

TEST_F(CameraCommand, FeaturesAreChosenByNameAndToldInDetail)
{
    const std::string features = std::string("features ") + kMono;
    EXPECT_THAT(LinesOf(Run(features + " 'exposuret*'").output),
                testing::ElementsAre("Root/", "  AcquisitionControl/", "    ExposureTime = 1500 us [RW]"));
    ExpectFailure(Run(features + " --regex '('"), "'(' is no regular expression");
    const Outcome listed = Run(features + " --regex --json '^(Width|PixelFormat|TriggerSoftware)$'");
    ASSERT_EQ(listed.exitCode, 0) << listed.errors;
    const auto json = nlohmann::json::parse(listed.output);
    ASSERT_EQ(json.size(), 3U);
    EXPECT_EQ(json[0].at("max"), 2448);
    EXPECT_EQ(json[0].at("unit"), "px");
    EXPECT_EQ(json[1].at("entries")[0], "Mono8");
    EXPECT_THAT(json[2].at("notWritable").get<std::string>(), HasSubstr("available"));
    EXPECT_THAT(LinesOf(Run(std::string("get ") + kMono + " Width PayloadSize").output),
                AllOf(Contains("Width=2448"), Contains("  range: 8 to 2448 px"), Contains("  increment: 8"),
                      Contains("  can't be written: it can only be read")));
}

TEST_F(CameraCommand, WhatIsSetIsGotUntilTheCameraIsClosed)
{
    // The camera forgets when nobody has it open, so files carry settings from one run to the next.
    const Outcome got = Run(std::string("get ") + kMono + " Width PixelFormat --plain");
    EXPECT_EQ(got.output, "Width=2448\nPixelFormat=Mono8\n");
    const Outcome saved = Run(std::string("get ") + kMono + " --save camera.txt");
    EXPECT_EQ(saved.exitCode, 0) << saved.errors;
    EXPECT_THAT(LinesOf(ContentOf(m_folder / "camera.txt")), Contains("Width\t2448"));
    EXPECT_EQ(Run(std::string("set ") + kMono + " --load camera.txt Width=640").exitCode, 0);

    std::ofstream(m_folder / "wrong.txt") << ContentOf(m_folder / "camera.txt") << "Width\t1000000\n";
    ExpectFailure(Run(std::string("set ") + kMono + " --load wrong.txt"), "wrong.txt: ");
    ExpectFailure(Run(std::string("set ") + kMono + " --load nowhere.txt"), "nowhere.txt: cannot be read");
}

TEST_F(CameraCommand, FaultsNameTheThingTheValueAndTheLimit)
{
    const std::string set = std::string("set ") + kMono;
    ExpectFailure(Run(set + " Width=1000000"), "Width=1000000: ");
    ExpectFailure(Run(set + " Width=1000000"), "2448");
    ExpectFailure(Run(set + " Width"), "Width needs a value");
    ExpectFailure(Run(set + " AcquisitionStop=1"), "takes no value");
    ExpectFailure(Run(set + " Breadth=1"), "no feature 'Breadth'");
    ExpectFailure(Run(set + " PixelFormat=Mono9"),
                  "PixelFormat=Mono9: there is no such entry; entries: Mono8, ");
    ExpectFailure(Run(set + " TLParamsLocked=1 Width=8"),
                  "Width=8: it is locked while WidthLocked is 1 (TLParamsLocked");
    ExpectFailure(Run(set + " PayloadSize=1"), "PayloadSize=1: it can only be read");
    ExpectFailure(Run("get nobody Width"), "no camera is called 'nobody'; there are: ");
    ExpectFailure(Run("get KX-G1M_2003 Width"), "cannot open KX-G1M_2003 (NoAccess)");
    ExpectFailure(Run(std::string("get ") + kMono), "NAME or --save", 2);
}

TEST_F(CameraCommand, DescriptionsAreSavedAndCanBeLoaded)
{
    for (const char* const camera : {kMono, "KX-U5C_1002"}) { // the second one's is zipped
        const Outcome saved = Run(std::string("description ") + camera + " -o camera.xml");
        EXPECT_EQ(saved.exitCode, 0) << saved.errors;
        EXPECT_THAT(ContentOf(m_folder / "camera.xml"), StartsWith("<?xml"));
        EXPECT_EQ(Run("genapi camera.xml").exitCode, 0);
    }
    EXPECT_EQ(Run("description KX-U5C_1002 --raw -o camera.zip").exitCode, 0);
    EXPECT_THAT(ContentOf(m_folder / "camera.zip"), StartsWith("PK"));
    ExpectFailure(Run(std::string("description ") + kMono + " -o nowhere/x.xml"), "'nowhere/x.xml'");
}

TEST_F(CameraCommand, TheBundleTellsWhatThereIsAndWhatIsWrong)
{
    std::ofstream(m_folder / "Broken.cti") << "this is no library";
    Run("get nobody password=geheim");
    std::filesystem::create_directory(m_folder / "other");
    std::ofstream(m_folder / "other" / "Broken.cti") << "another";
    const Outcome bundled =
        Run("bundle -o all.zip --add Broken.cti --add other/Broken.cti", "GENICAM_GENTL64_PATH=. ");
    ASSERT_EQ(bundled.exitCode, 0) << bundled.errors;
    ASSERT_EQ(RunProgram(CMAKE_PROGRAM, "-E tar xf all.zip").exitCode, 0);
    EXPECT_TRUE(std::filesystem::exists(m_folder / "about.json"));
    const auto cameras = nlohmann::json::parse(ContentOf(m_folder / "cameras.json"));
    EXPECT_THAT(cameras.at("systems"), SizeIs(cameras.at("producers").size() - 1));
    const auto features = nlohmann::json::parse(ContentOf(m_folder / "cameras" / kMono / "remote.json"));
    EXPECT_GT(features.size(), 50U);
    EXPECT_THAT(ContentOf(m_folder / "errors.txt"),
                AllOf(HasSubstr("Broken.cti: "), HasSubstr("cannot open KX-G1M_2003 (NoAccess)")));
    EXPECT_THAT(ContentOf(m_folder / "errors.log"),
                AllOf(HasSubstr("no camera is called 'nobody'"), HasSubstr("  kx ")));
    EXPECT_EQ(ContentOf(m_folder / "added" / "Broken.cti"), "this is no library");
    EXPECT_EQ(ContentOf(m_folder / "added" / "2_Broken.cti"), "another");
    ExpectFailure(Run("bundle -o nowhere/all.zip"), "'nowhere/all.zip' can't be written");
}

TEST_F(CameraCommand, TheDocumentationIsThatOfTheTable)
{
    // kx --reference markdown > docs/kx.md
    EXPECT_EQ(Run("--reference markdown").output, ContentOf(KX_REFERENCE));
    EXPECT_THAT(Run("--reference man").output, HasSubstr(".SS kx grab [OPTIONS] CAMERA"));
    EXPECT_EQ(RunProgram(KX_PROGRAM, "--reference bash > kx.bash && bash -n kx.bash").exitCode, 0);
}

TEST_F(CameraCommand, GrabTellsRateAndLosses)
{
    const Outcome outcome = Run(std::string("grab ") + kMono + " -n 5 --set Width=640 --set Height=480");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output,
                MatchesRegex("5 images in .* s: .* images/s, .* MB/s, .* lost, 0 incomplete\n"));
    const Outcome json = Run(std::string("grab ") + kMono + " -n 5 --json");
    EXPECT_EQ(nlohmann::json::parse(json.output).at("images"), 5) << json.errors;
}

TEST_F(CameraCommand, GrabSavesNumberedPicturesOfAnyType)
{
    const std::string grab = std::string("grab KX-U5C_1002 -n 2 --set Width=64 --set Height=32 -o ");
    EXPECT_EQ(Run(grab + "frame-%03d.png --format RGB8").exitCode, 0);
    EXPECT_TRUE(std::filesystem::exists(m_folder / "frame-001.png"));
    EXPECT_EQ(Run(grab + ".").exitCode, 0);
    EXPECT_EQ(Files(".kxraw"), 2U);
    ExpectFailure(Run(grab + "frame.png"), "'frame.png' names one file");
    EXPECT_EQ(Run("grab KX-U5C_1002 -n 1 -o snap.png").exitCode, 0);
    EXPECT_TRUE(std::filesystem::exists(m_folder / "snap.png"));
    ExpectFailure(Run(grab + "frame-%d.gif"), "frame-0.gif");
    ExpectFailure(Run(grab + "frame-%d.png --format RGB9"), "'RGB9' is no pixel format");
    EXPECT_EQ(Run(grab + "nowhere/%d.png").exitCode, 1);
}

TEST_F(CameraCommand, GrabDecodesCompressedImagesAndLosesOnlyBrokenOnes)
{
    const Outcome outcome = Run("grab KX-G1C_2001 -n 3 --set ImageCompressionMode=JPEG "
                                "--set KxFaultIncompleteEvery=2 -o frame-%d.png");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("2 images written"));
    EXPECT_THAT(outcome.errors, HasSubstr("1 image not saved; image 2 came incomplete"));
    EXPECT_EQ(Files(".png"), 2U);
}

TEST_F(CameraCommand, GrabSavesOneFileThatConvertUnpacks)
{
    const std::string grab = "grab KX-U5M_1001 -n 3 --set Width=64 Height=32 PixelFormat=Mono12p -o ";
    const Outcome grabbed = Run(grab + "run.kxseq");
    EXPECT_EQ(grabbed.exitCode, 0) << grabbed.errors;
    EXPECT_THAT(grabbed.output, HasSubstr("3 images written"));
    EXPECT_THAT(LinesOf(Run("convert run.kxseq").output),
                AllOf(SizeIs(4), Contains(AllOf(StartsWith("2\t"), EndsWith("\tMono12p\t64x32")))));
    EXPECT_EQ(Run("convert run.kxseq f-%d.png --images 1-2").exitCode, 0);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "f-0.png"));
    EXPECT_THAT(Run("convert f-2.png f.kxraw").output, HasSubstr("Mono12, 64 x 32"));
    ExpectFailure(Run("convert run.kxseq f-%d.png --images 1-3"), "the images are 0 to 2");
    // Bits are dropped for nobody who doesn't ask for it.
    ExpectFailure(Run("convert run.kxseq f-%d.jpg"), "12 bits of Mono12p don't go into .jpg files");
    ExpectFailure(Run("convert f-2.png f.bmp --gamma 0.5"), "--format Mono8");
    EXPECT_EQ(Run("convert run.kxseq f-%d.jpg --format Mono8").exitCode, 0);
    EXPECT_THAT(Run(grab + "f-%d.jpg").errors, HasSubstr("--format Mono8"));
}

TEST_F(CameraCommand, GrabGivesUpWhenNoImageComes)
{
    const Outcome outcome = Run(std::string("grab ") + kMono +
                                " -n 1 --timeout 300 --set TriggerMode=On --set TriggerSource=Software");
    ExpectFailure(outcome, "no image came within 300 ms");
    EXPECT_THAT(outcome.errors, HasSubstr("0 images"));
}

TEST_F(CameraCommand, GrabSavesTheHistogramOfTheLastImage)
{
    const Outcome outcome =
        Run("grab " + std::string(kMono) + " -n 2 --histogram counts.CSV --set Width=64 Height=48");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    size_t pixels = 0, rows = 0;
    for (const std::string& line : LinesOf(ContentOf(m_folder / "counts.CSV"))) {
        if (line[0] < '0' || line[0] > '9')
            continue; // heads
        ++rows;
        pixels += std::stoul(line.substr(line.find(',') + 1));
    }
    EXPECT_EQ(rows, 256U);
    EXPECT_EQ(pixels, 64U * 48U);
    ExpectFailure(Run("grab " + std::string(kMono) + " --histogram counts.png"),
                  "the ending of 'counts.png' is none of .csv, .kxraw");
}

} // namespace

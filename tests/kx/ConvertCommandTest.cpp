// SPDX-License-Identifier: Apache-2.0
#include "FileTestSupport.h"
#include "ProgramTest.h"

namespace
{

using namespace KxApi;
using KxTest::ContentOf;
using KxTest::LinesOf;
using KxTest::Outcome;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class ConvertCommand : public KxTest::ProgramTest
{
protected:
    Outcome Run(const std::string& arguments) const { return RunProgram(KX_PROGRAM, "convert " + arguments); }

    template <class T>
    void MakeRaw(const std::string& name, EKxPixelFormatNamingConvention_t format, size_t width,
                 const std::vector<T>& values) const
    {
        const CKxApiAutoInitTerm sdk;
        const KxTest::ImageBuffer buffer = KxTest::ImageOf(format, width, values.size() / width, values);
        const KxTest::Filer filer(CreateIKxFiler(KxFilerType_StillImage));
        filer->Save(buffer->GetIKxImage(), KxStillImageFileType_Raw, (m_folder / name).c_str());
    }

    // The image of a file as text.
    std::string Text(const std::string& name) const
    {
        const Outcome outcome = Run(name + " text.csv");
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        return ContentOf(m_folder / "text.csv");
    }

    void ExpectFailure(const std::string& arguments, int exitCode, const std::string& part) const
    {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
        EXPECT_THAT(outcome.output, IsEmpty());
        EXPECT_THAT(outcome.errors, HasSubstr(part));
        EXPECT_FALSE(std::filesystem::exists(m_folder / "out.png"));
    }
};

TEST_F(ConvertCommand, ValuesStayTheSameWhereTheTypeHoldsThem)
{
    MakeRaw<uint16_t>("in.kxraw", KxPixelFormat_BayerRG12, 2, {1, 200, 3000, 4095});
    for (const char* const out : {"out.png", "out.TIFF", "again.kxraw"}) {
        const Outcome outcome = Run(std::string("in.kxraw ") + out);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
        EXPECT_THAT(LinesOf(outcome.output), SizeIs(1));
        EXPECT_THAT(outcome.output,
                    AllOf(StartsWith("in.kxraw: BayerRG12, 2 x 2 -> "), HasSubstr(": BayerRG12, 2 x 2")));
        EXPECT_EQ(Text(out), "R/Gb[0],Gr/B[1]\n1,200\n3000,4095\n");
    }
}

TEST_F(ConvertCommand, FormatsThatTheTypeRefusesAreConverted)
{
    MakeRaw<uint16_t>("grey.kxraw", KxPixelFormat_Mono12, 2, {0, 2048, 4095, 16});
    EXPECT_THAT(Run("grey.kxraw out.bmp --format Mono8").output, HasSubstr("-> out.bmp: Mono8"));
    EXPECT_EQ(Text("out.bmp"), "Mono[0],Mono[1]\n0,128\n255,1\n");
    MakeRaw<uint8_t>("bayer.kxraw", KxPixelFormat_BayerRG8, 4, std::vector<uint8_t>(16, 77));
    EXPECT_THAT(Run("bayer.kxraw out.jpg").output, HasSubstr("-> out.jpg: BGR8"));
}

TEST_F(ConvertCommand, OptionsReachTheConverter)
{
    MakeRaw<uint8_t>("in.kxraw", KxPixelFormat_Mono8, 1, {0, 64, 255});
    const auto text = [&](const std::string& options) {
        const Outcome outcome = Run("in.kxraw out.tif " + options);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        return Text("out.tif");
    };
    EXPECT_EQ(text("--gamma 0.5"), "Mono[0]\n0\n128\n255\n");
    EXPECT_EQ(text("--reverse-y"), "Mono[0]\n255\n64\n0\n");
    EXPECT_EQ(text("--format RGB8"), "R[0],G[0],B[0]\n0,0,0\n64,64,64\n255,255,255\n");
    EXPECT_EQ(text("--format Mono12 --bits zeros"), "Mono[0]\n0\n1024\n4080\n");
    EXPECT_EQ(text("--set DestinationPixelFormat=Mono12 --set BitExpansionMode=ZeroFill --set ReverseY=1"),
              "Mono[0]\n4080\n1024\n0\n");
    EXPECT_EQ(text("--set ColorMapInversion=1"), "B[0],G[0],R[0]\n255,255,255\n191,191,191\n0,0,0\n");
    EXPECT_THAT(Run("--settings").output, HasSubstr("\nGamma=1  (0.1 to 10)\n"));
    MakeRaw<uint8_t>("in.kxraw", KxPixelFormat_BayerRG8, 2, {10, 20, 30, 40});
    EXPECT_EQ(text("--bayer off --format Mono8"), "Mono[0],Mono[1]\n10,20\n30,40\n");
}

TEST_F(ConvertCommand, FailuresTellFileAndCauseInOneLine)
{
    MakeRaw<uint8_t>("in.kxraw", KxPixelFormat_Mono8, 1, {1});
    ExpectFailure("none.png out.png", 1, "kx: Cannot read 'none.png': No such file or directory");
    ExpectFailure("in.kxraw out.gif", 1, "the ending of 'out.gif' is none of");
    ExpectFailure("in.kxraw none/out.png", 1, "Cannot write 'none/out.png': No such file or directory");
    std::ofstream(m_folder / "cut.kxraw", std::ios::binary) << ContentOf(m_folder / "in.kxraw").substr(0, 65);
    ExpectFailure("cut.kxraw out.png", 1, "Cannot read 'cut.kxraw'");
    ExpectFailure("in.kxraw out.png --format YUV422_8", 1, "Mono8 can't be converted to YUV422_8");
    ExpectFailure("in.kxraw out.png --format RGB9", 2, "'RGB9' is no pixel format");
    ExpectFailure("in.kxraw out.png --bayer best", 2, "--bayer");
    ExpectFailure("in.kxraw out.png --set Gain=1", 1, "the converter has no setting 'Gain'");
    ExpectFailure("in.kxraw out.png --set BayerInterpolationMethod=Best", 1,
                  "BayerInterpolationMethod=Best: ");
    ExpectFailure("in.kxraw out.jpg --quality 0", 2, "--quality");
    ExpectFailure("in.kxraw", 2, "OUT is required");
}

} // namespace

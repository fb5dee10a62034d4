// SPDX-License-Identifier: Apache-2.0
// The viewer, run without a display.
#include "ProgramTest.h"

#include <gmock/gmock.h>

#include <QImage>
#include <set>

namespace
{

using KxTest::LinesOf;
using KxTest::Outcome;
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Viewer : public KxTest::ProgramTest
{
protected:
    // A temporary folder of the test's own keeps it apart from tests that open the same cameras at this
    // moment.
    Outcome Run(const std::string& arguments, const std::string& program = VIEWER_PROGRAM) const
    {
        return RunProgram(program, arguments, "TMPDIR=. QT_QPA_PLATFORM=offscreen ");
    }
    // Number of different colours in a saved picture.
    size_t Colours(const char* name) const
    {
        const QImage image(QString::fromStdString((m_folder / name).string()));
        std::set<QRgb> colours;
        for (int y = 0; y < image.height(); y += 5)
            for (int x = 0; x < image.width(); x += 5)
                colours.insert(image.pixel(x, y));
        return colours.size();
    }
};

TEST_F(Viewer, ListsCamerasWithoutADisplay)
{
    const Outcome outcome = Run("--list");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(LinesOf(outcome.output),
                AllOf(Contains(AllOf(StartsWith("KX-U5M_1001"), EndsWith("[ReadWrite]"))),
                      Contains(AllOf(StartsWith("KX-G1M_2003"), EndsWith("[NoAccess]")))));
}

TEST_F(Viewer, SavesPicturesOfItsWindowsWithTheImageInThem)
{
    const Outcome outcome = Run("--frames 3 --screenshot pictures --report --set Width=640");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(LinesOf(outcome.output), AllOf(Contains(EndsWith("pictures/viewer.png")),
                                               Contains(StartsWith("3 images acquired, "))));
    // The scene has more greys than an empty window has colours.
    EXPECT_GT(Colours("pictures/image.png"), 8U);
    EXPECT_GT(Colours("pictures/viewer.png"), 8U);
}

TEST_F(Viewer, TellsWhatKeepsItFromShowingACamera)
{
    const struct
    {
        const char* arguments;
        const char* told;
        int exitCode;
    } cases[] = {
        {"--device nobody --frames 1", "no camera is called 'nobody'; there are: ", 1},
        {"--device KX-G1M_2003 --frames 1", "cannot open KX-G1M_2003 (NoAccess)", 1},
        {"--set Width=1000000 --frames 1", "Width=1000000: ", 1},
        {"--frames 1 --screenshot /proc/pictures", "'/proc/pictures'", 1},
        {"--frames 0", "--frames", 2},
    };
    for (const auto& c : cases) {
        const Outcome outcome = Run(c.arguments);
        EXPECT_EQ(outcome.exitCode, c.exitCode) << c.arguments;
        EXPECT_THAT(outcome.errors, HasSubstr(c.told)) << c.arguments;
    }
}

TEST_F(Viewer, ShowsADescriptionWithoutACamera)
{
    const Outcome outcome = Run("--nodemap '" SAMPLE_DESCRIPTION "' --screenshot pictures");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_GT(Colours("pictures/features.png"), 8U);
    EXPECT_THAT(Run("--nodemap missing.xml").errors, HasSubstr("missing.xml: "));
}

TEST_F(Viewer, SaysInALineThatThereIsNoDisplay)
{
    const Outcome outcome = RunProgram(VIEWER_PROGRAM, "--first", "TMPDIR=. QT_QPA_PLATFORM=xcb DISPLAY= ");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(LinesOf(outcome.errors),
                testing::ElementsAre(StartsWith("kxviewer: no window can be shown")));
}

} // namespace

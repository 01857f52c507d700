#include <apps/cli/replay/commands.h>
#include <backends/cairo/picture.h>
#include <backends/headless/recording_painter.h>
#include <cli/pictures.h>
#include <cli/program.h>
#include <support/fonts/test_fonts.h>

#include <gtest/gtest.h>

namespace {

using nodeline::replay::Session;
using nodeline::replay::Words;
using test_support::ProgramResult;

constexpr const char* kSession = NODELINE_TEST_DATA "/sessions/explore.txt";

class SessionPicture : public test_support::ProgramTest {};

TEST_F(SessionPicture, OfEveryStepIsAsKept) {
    const ProgramResult result = RunProgram(std::string("replay ") + kSession);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "");
    for (const char* name : {"explore-whole.png", "explore-folded.png", "explore-unfolded.png",
                             "explore-rubber.png", "explore-zoomed.png", "explore-select.png"}) {
        // Outside of the folder, where it can be looked at if it differs.
        const std::string actual = testing::TempDir() + "nodeline-" + name;
        std::filesystem::rename(folder() / name, actual);
        test_support::ExpectAsKept(actual, name);
    }
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(SessionPicture, OfItsOverviewIsAsKept) {
    Session session;
    std::ifstream script(kSession);
    for (std::string line; std::getline(script, line);) {
        const Words words(line);
        if (words.count() > 0 && words[0] != "picture") RunCommand(session, words);
    }
    for (const char* line : {"scale 2", "start 600 40", "overview 460 66"}) {
        RunCommand(session, Words(line));
    }
    const auto picture = nodeline::cairo::MakePicture(nodeline::cairo::PictureFormat::kPng,
                                                      {460.0, 66.0}, 1.0, nullptr);
    ASSERT_NE(picture, nullptr);
    nodeline::headless::RecordingPainter painter(&picture->GetPainter());
    session.viewing.GetOverview().DrawPicture(&painter);
    const std::string actual = testing::TempDir() + "nodeline-explore-overview.png";
    ASSERT_TRUE(picture->Save(actual));
    test_support::ExpectAsKept(actual, "explore-overview.png");
}

TEST_F(SessionPicture, IsWrittenInTheFormatOfItsEnding) {
    Write("s.txt",
          "handler port\nnode 1 0 1 1\ncaption 1 a<b\nwindow 259 39\npicture a.svg\npicture a.pdf\n"
          "picture a.png\n");
    const ProgramResult result = RunProgram("replay s.txt");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(Read("a.pdf").substr(0, 5), "%PDF-");
    EXPECT_EQ(Read("a.png").substr(1, 3), "PNG");
    const std::string svg = Read("a.svg");
    EXPECT_NE(svg.find("width=\"259\" height=\"39\""), std::string::npos) << svg;
    EXPECT_NE(svg.find("a&lt;b"), std::string::npos) << svg;
}

// What is pending stays pending, and what is right stays so.
TEST_F(SessionPicture, LeavesTheSessionAsItIs) {
    const std::string before = "handler port\nnode 1 0 1 1\nwindow 259 39\n";
    const std::string after =
        "make 0\ntrace on\npaint\nscale 1\npointer 5 5\ntrace off\nview\ndump\n";
    Write("with.txt", before + "picture a.png\n" + after);
    Write("without.txt", before + after);
    const ProgramResult with = RunProgram("replay with.txt");
    EXPECT_EQ(with.status, 0) << with.err;
    EXPECT_NE(with.out, "");
    EXPECT_EQ(with.out, RunProgram("replay without.txt").out);
}

TEST_F(SessionPicture, ThatCannotBeMadeEndsTheRun) {
    Write("s.txt", "window 40000 10\nselected\npicture a.png\nselected\n");
    const ProgramResult result = RunProgram("replay s.txt");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "selected\n");
    EXPECT_EQ(result.err.rfind("s.txt:3: \"a.png\": ", 0), 0u) << result.err;
    EXPECT_FALSE(Exists("a.png"));
}

}  // namespace

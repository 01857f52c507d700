#include <golden/script_run.h>

#include <gtest/gtest.h>

#include <string>

namespace nodeline {
namespace {

using test_support::ScriptRun;

constexpr const char* kOpen = "node 1 0 10 10\nedge 1 1 1\nwindow 100 50\nselected\n";

// The line ends a script that has a window, and nothing is printed for it.
void ExpectFault(const std::string& line, const std::string& reason) {
    const ScriptRun run(kOpen + line + "\nselected\n");
    EXPECT_FALSE(run.is_done) << line;
    EXPECT_EQ(run.error.line, 5) << line;
    EXPECT_EQ(run.error.reason, reason) << line;
    EXPECT_EQ(run.printed, "selected\n") << line;
}

TEST(ViewReplay, NeedsAWindowForWhatIsSeen) {
    for (const char* line : {"view",         "selected",     "paint",         "down 1 1",
                             "up 1 1",       "pointer 1 1",  "double 1 1",    "context 1 1",
                             "leave",        "key 37",       "tooltip 1 1",   "start 0 0",
                             "scale 1",      "view-width 9", "view-height 9", "window-size 9 9",
                             "rubber zoom",  "rubber off",   "move-nodes on", "overview 9 9",
                             "picture a.svg"}) {
        const ScriptRun run(std::string("recalc\n") + line + "\nrecalc\n");
        EXPECT_FALSE(run.is_done) << line;
        EXPECT_EQ(run.error.line, 2) << line;
        EXPECT_EQ(run.error.reason, "there is no window") << line;
        EXPECT_EQ(run.printed, "recalc true\n") << line;
    }
}

TEST(ViewReplay, NeedsAnOverviewForTheOverviewsCommands) {
    for (const char* line :
         {"overview-down 1 1", "overview-up 1 1", "overview-pointer 1 1", "overview-key 37"}) {
        ExpectFault(line, "there is no overview");
    }
}

TEST(ViewReplay, OpensEachWindowOnce) {
    ExpectFault("window 100 50", "there is a window already");
    const ScriptRun run(std::string(kOpen) + "overview 10 10\noverview 10 10\n");
    EXPECT_FALSE(run.is_done);
    EXPECT_EQ(run.error.line, 6);
    EXPECT_EQ(run.error.reason, "there is an overview already");
}

TEST(ViewReplay, OpensNoWindowWithoutPixels) {
    EXPECT_EQ(ScriptRun("window 0 10\n").error.reason, "\"0\" is too small");
    EXPECT_EQ(ScriptRun("window 10 -1\n").error.reason, "\"-1\" is too small");
    ExpectFault("overview 1 0", "\"0\" is too small");
    ExpectFault("window-size 0 1", "\"0\" is too small");
    EXPECT_TRUE(ScriptRun("window 1 1\noverview 1 1\nwindow-size 1 1\nview\n").is_done);
}

TEST(ViewReplay, EndsAtWordsThatAreNotAllowed) {
    ExpectFault("handler round", "there is no handler \"round\"");
    ExpectFault("flag 1 2 maybe", "\"maybe\" is neither \"on\" nor \"off\"");
    ExpectFault("edge-flag 1 2 1", "\"1\" is neither \"on\" nor \"off\"");
    ExpectFault("rubber on", "\"on\" is neither \"zoom\" nor \"select\"");
    ExpectFault("move-nodes yes", "\"yes\" is neither \"on\" nor \"off\"");
    ExpectFault("trace yes", "\"yes\" is neither \"on\" nor \"off\"");
}

TEST(ViewReplay, EndsAtNumbersThatAreNotAllowed) {
    ExpectFault("flag 7 2 on", "node 7 does not exist");
    ExpectFault("edge-flag 7 2 on", "edge 7 does not exist");
    ExpectFault("caption 7 x", "node 7 does not exist");
    ExpectFault("edge-caption 7 x", "edge 7 does not exist");
    ExpectFault("flag 1 2.5 on", "\"2.5\" is not a whole number");
    ExpectFault("flag 1 9999999999 on", "\"9999999999\" is too large");
    ExpectFault("pointer 1.5 1", "\"1.5\" is not a whole number");
    ExpectFault("pointer 1 -9999999999", "\"-9999999999\" is too small");
    ExpectFault("key left", "\"left\" is not a whole number");
    ExpectFault("down 1 1 0", "the buttons are 1 to 3");
    ExpectFault("up 1 1 4", "the buttons are 1 to 3");
    ExpectFault("scale big", "\"big\" is not a number");
    ExpectFault("start 0 nan", "\"nan\" is not a number");
}

TEST(ViewReplay, EndsAtAWrongWordCount) {
    ExpectFault("down 1", "\"down\" takes 2 to 4 words, not 1");
    ExpectFault("pointer 1 2 3 4", "\"pointer\" takes 2 or 3 words, not 4");
    ExpectFault("overview-down 1 1 1", "\"overview-down\" takes 2 words, not 3");
    ExpectFault("caption", "\"caption\" takes at least 1 word, not 0");
    ExpectFault("leave 1", "\"leave\" takes no words, not 1");
}

// A start of which only one number is right moves nothing.
TEST(ViewReplay, ChangesNothingAtALineThatCannotBeCarriedOut) {
    const std::string script = "node 1 0 10 10\nwindow 80 34\nview\n";
    EXPECT_EQ(ScriptRun(script + "start 5 x\n").printed, "view 0 0 80 34 1\nrange 0 0 80 34\n");
}

TEST(ViewReplay, ChoosesTheLayoutBeforeTheWindow) {
    EXPECT_EQ(ScriptRun("window 10 10\nlayout stable\n").error.reason,
              "the layout is chosen before the first recalc");
}

TEST(ViewReplay, TakesAnEmptyCaption) {
    const ScriptRun run(
        "handler port\nnode 1 0 1 1\nwindow 259 39\ncaption 1 alpha\ntooltip 100 20\n"
        "caption 1\ntooltip 100 20\n");
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed, "tooltip true \"alpha\"\ntooltip true \"\"\n");
}

TEST(ViewReplay, SetsFlagsOfEdges) {
    const std::string set =
        "handler port\nnode 1 0 1 1\nnode 2 0 1 1\nedge 1 1 2\nwindow 488 39\nedge-flag 1 8 on\n";
    const std::string paint = "trace on\nscale 1\n";
    const std::string red = "SetPen #ff0000 1 1 0 0\nMoveTo 224 19.5\n";
    const std::string black = "SetPen #000000 1 1 0 0\nMoveTo 224 19.5\n";
    EXPECT_NE(ScriptRun(set + paint).printed.find(red), std::string::npos);
    EXPECT_NE(ScriptRun(set + "edge-flag 1 8 off\n" + paint).printed.find(black),
              std::string::npos);
}

// A layout outside of a paint measures with the same painter.
TEST(ViewReplay, TracesPaintsAlone) {
    const ScriptRun run(
        "handler simple\nnode 1 0 1 1\nwindow 112 39\ntrace on\nmake 0\nrecalc\nscale 1\n");
    EXPECT_EQ(run.printed.rfind("recalc true\npaint\nBeginPaint 3\n", 0), 0u) << run.printed;
    EXPECT_EQ(run.printed.find("EndPaint\npainted\n"), run.printed.size() - 17) << run.printed;
    std::size_t measured = 0;
    for (std::size_t at = run.printed.find("GetTextSize"); at != std::string::npos;
         at = run.printed.find("GetTextSize", at + 1)) {
        ++measured;
    }
    // The width that the caption may take, and its own.
    EXPECT_EQ(measured, 2u) << run.printed;
}

TEST(ViewReplay, TracesTheFirstPaintOfAWindow) {
    const ScriptRun run("trace on\nwindow 10 10\ntrace off\nscale 1\n");
    EXPECT_TRUE(run.is_done);
    EXPECT_EQ(run.printed.rfind("paint\nBeginPaint 3\n", 0), 0u) << run.printed;
    EXPECT_NE(run.printed.find("FillRect"), std::string::npos) << run.printed;
    EXPECT_EQ(run.printed.find("painted\n"), run.printed.size() - 8) << run.printed;
}

TEST(ViewReplay, PaintsBothWindowsTheViewersFirst) {
    const ScriptRun run("node 1 0 10 10\nwindow 100 50\noverview 20 30\ntrace on\nscale 1\n");
    const std::size_t second = run.printed.find("paint\n", 1);
    ASSERT_NE(second, std::string::npos);
    EXPECT_LT(run.printed.find("FillRect -10 -8 90 42\n"), second) << run.printed;
    EXPECT_NE(run.printed.find("FillRect 0 0 20 30\n", second), std::string::npos) << run.printed;
}

TEST(ViewReplay, ThatEndsInADragTakesItsWindowsDown) {
    EXPECT_TRUE(ScriptRun(std::string(kOpen) + "overview 20 20\ndown 20 20\npointer 30 30\n"
                                               "overview-down 10 10\noverview-pointer 12 12\n")
                    .is_done);
}

#ifdef NODELINE_WITH_CAIRO

TEST(ViewReplay, EndsAtAPictureWithoutAKnownEnding) {
    ExpectFault("picture view.gif", "\"view.gif\" ends in none of .svg, .pdf and .png");
    ExpectFault("picture view", "\"view\" ends in none of .svg, .pdf and .png");
}

TEST(ViewReplay, EndsAtAPictureThatCannotBeWritten) {
    const ScriptRun run(std::string(kOpen) + "picture no-such-folder/view.svg\n");
    EXPECT_FALSE(run.is_done);
    EXPECT_EQ(run.error.line, 5);
    EXPECT_EQ(run.error.reason, "cannot write no-such-folder/view.svg: No such file or directory");
}

#else

TEST(ViewReplay, EndsAtAPictureWithoutTheBackend) {
    ExpectFault("picture view.svg", "pictures need the Cairo backend, which is not in this build");
}

#endif

}  // namespace
}  // namespace nodeline

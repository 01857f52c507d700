// How the desktop program begins and ends, and what it keeps in between.
#include <desktop/viewer_fixture.h>

namespace nodeline::test {
namespace {

constexpr QRgb kTile = qRgb(255, 255, 255);
constexpr std::size_t kExamples = 7;

class ViewerStartTest : public ViewerTest {
protected:
    // Expects that a run with these arguments ends by itself; answers what it said.
    QString RunToItsEnd(const QStringList& arguments, int exit_code,
                        const QStringList& environment = {}) {
        Start(arguments, environment);
        EXPECT_EQ(program->WaitForExit(), exit_code) << arguments.join(' ').toStdString();
        return program->GetLines().join('\n');
    }

    // The middle of the ground, from 0 for black to 255 for white.
    [[nodiscard]] int Lightness() const {
        return server.Screenshot().pixelColor(300, 120).lightness();
    }
};

TEST_F(ViewerStartTest, WithoutAFileExamplesAreOffered) {
    Start({});
    TakeWindow("nodeline");
    PointAway();
    const std::vector<QRect> tiles = WaitForPlaces(kTile, kExamples);
    Click(tiles.front().center());
    EXPECT_TRUE(Says("48 of 48 nodes"));
    TakeWindow("http-parser.txt");
    Quit();
}

TEST_F(ViewerStartTest, TheExamplesAreReachedByTheTabKey) {
    Start({});
    TakeWindow("nodeline");
    WaitForPlaces(kTile, kExamples);
    Press({"Tab", "Tab", "space"});
    EXPECT_TRUE(Says(" nodes"));
}

TEST_F(ViewerStartTest, ClosingTheWindowEndsTheProgram) {
    Start({});
    server.CloseWindow(TakeWindow("nodeline"));
    EXPECT_EQ(program->WaitForExit(), 0);
    Write("fork.txt", kFork);
    Show("fork.txt");
    server.CloseWindow(TakeWindow("fork.txt"));
    EXPECT_EQ(program->WaitForExit(), 0);
}

TEST_F(ViewerStartTest, TheKeyForItEndsTheProgram) {
    Start({});
    TakeWindow("nodeline");
    Quit();
    Write("fork.txt", kFork);
    Show("fork.txt");
    Quit();
}

TEST_F(ViewerStartTest, LightAndDarkAreWhatTheyAreCalled) {
    Write("fork.txt", kFork);
    Show("fork.txt", {"--colours", "light"});
    EXPECT_TRUE(WaitUntil([this] { return Lightness() > 200; }));
    Quit();
    Show("fork.txt", {"--colours", "dark"});
    EXPECT_TRUE(WaitUntil([this] { return Lightness() > 10 && Lightness() < 60; }));
    Quit();
}

TEST_F(ViewerStartTest, ColoursAndRecentFilesAreKept) {
    Write("fork.txt", kFork);
    Show("fork.txt");
    EXPECT_TRUE(WaitUntil([this] { return Lightness() > 200; }));
    Press({"ctrl+alt+2"});
    EXPECT_TRUE(WaitUntil([this] { return Lightness() < 60; }));
    Quit();

    Start({});
    TakeWindow("nodeline");
    PointAway();
    EXPECT_TRUE(WaitUntil([this] { return Lightness() > 10 && Lightness() < 60; }));
    Press({"alt+f"});
    ASSERT_TRUE(WaitUntil([this] { return CountWindows() == 2; }));
    Press({"c"});
    ASSERT_TRUE(WaitUntil([this] { return CountWindows() == 3; }));
    Press({"Return"});
    EXPECT_TRUE(Says("4 of 4 nodes"));
}

TEST_F(ViewerStartTest, PanelsStayAwayOnceTheyAreClosed) {
    // Right of the picture as long as there are panels.
    const QRect beside{1000, 300, 100, 300};
    const auto is_empty = [&] {
        return FindPlaces(Shot(beside), kGround | 0xff000000U).size() == 1;
    };
    Write("fork.txt", kFork);
    Show("fork.txt");
    EXPECT_FALSE(is_empty());
    Press({"F9", "ctrl+f", "Escape"});
    EXPECT_TRUE(WaitUntil(is_empty));
    Quit();
    Show("fork.txt");
    EXPECT_TRUE(WaitUntil(is_empty));
    Quit();
    Start({});
    TakeWindow("nodeline");
    WaitForPlaces(kTile, kExamples);
    Quit();
    Show("fork.txt");
    EXPECT_TRUE(WaitUntil(is_empty));
}

TEST_F(ViewerStartTest, HelpAndVersionNeedNoScreen) {
    const QStringList nowhere{"QT_QPA_PLATFORM=nowhere"};
    EXPECT_TRUE(RunToItsEnd({"--help"}, 0, nowhere).contains("--layout"));
    EXPECT_TRUE(RunToItsEnd({"--version"}, 0, nowhere).startsWith("nodeline-viewer "));
}

TEST_F(ViewerStartTest, WrongUsageEndsWithTwoAndOneLine) {
    for (const QStringList& arguments : {QStringList{"--colours", "blue"},
                                         {"--layout", "fast"},
                                         {"--nonsense"},
                                         {"--layout"},
                                         {"one.txt", "two.txt"}}) {
        const QString said = RunToItsEnd(arguments, 2);
        EXPECT_TRUE(said.startsWith("nodeline-viewer: ")) << said.toStdString();
        EXPECT_FALSE(said.contains('\n')) << said.toStdString();
    }
}

}  // namespace
}  // namespace nodeline::test

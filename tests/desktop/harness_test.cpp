// What the tests of this folder stand on, tried on a small program.
#include <desktop/running_program.h>
#include <desktop/x_server.h>
#include <gtest/gtest.h>

#include <QColor>
#include <QFileInfo>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <optional>

namespace nodeline::test {
namespace {

QString Text(int n) { return QString::number(n); }

TEST(XServer, ScreenIsAsLargeAsToldAndBlack) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    const QImage screen = server.Screenshot();
    EXPECT_EQ(screen.size(), QSize(XServer::kWidth, XServer::kHeight));
    EXPECT_EQ(screen.pixelColor(640, 400), QColor(0, 0, 0));
}

TEST(XServer, TwoServersHaveDisplaysOfTheirOwn) {
    const XServer a;
    const XServer b;
    ASSERT_TRUE(a.IsRunning());
    ASSERT_TRUE(b.IsRunning());
    EXPECT_NE(a.GetDisplay(), b.GetDisplay());
}

TEST(XServer, PointerGoesWhereItIsSent) {
    const XServer server;
    ASSERT_TRUE(server.IsRunning());
    server.Xdotool({"mousemove", "--sync", "100", "200"});
    const QString place = server.Xdotool({"getmouselocation", "--shell"});
    EXPECT_TRUE(place.contains("X=100\n")) << place.toStdString();
    EXPECT_TRUE(place.contains("Y=200\n")) << place.toStdString();
}

class RunningProgramTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(server.IsRunning()); }

    [[nodiscard]] RunningProgram::Options Shell(const QString& script) const {
        return {{"-c", script}, {}, {}};
    }

    XServer server;
    const QString shell = QStringLiteral("/bin/sh");
};

TEST_F(RunningProgramTest, CollectsLinesOfBothOutputs) {
    RunningProgram program(server, shell, Shell("echo out; echo err >&2; echo last"));
    EXPECT_TRUE(program.WaitForLine("last"));
    EXPECT_EQ(program.WaitForExit(), 0);
    EXPECT_EQ(program.GetLines(), QStringList({"out", "err", "last"}));
}

TEST_F(RunningProgramTest, EachLineIsFoundOnce) {
    RunningProgram program(server, shell, Shell("echo a 1; echo b; echo a 2"));
    EXPECT_TRUE(program.WaitForLine("a"));
    EXPECT_TRUE(program.WaitForLine("a 2"));
    EXPECT_FALSE(program.WaitForLine("a")) << "the program has ended";
}

TEST_F(RunningProgramTest, TellsTheExitCode) {
    RunningProgram program(server, shell, Shell("exit 7"));
    EXPECT_EQ(program.WaitForExit(), 7);
    EXPECT_FALSE(program.IsRunning());
}

TEST_F(RunningProgramTest, ACrashHasNoExitCode) {
    RunningProgram program(server, shell, Shell("kill -SEGV $$"));
    EXPECT_EQ(program.WaitForExit(), std::nullopt);
}

TEST_F(RunningProgramTest, EnvironmentIsThatOfTheServerAndAFreshHome) {
    RunningProgram::Options options =
        Shell("echo $DISPLAY $QT_QPA_PLATFORM $EXTRA; echo $XDG_CONFIG_HOME; ls $XDG_RUNTIME_DIR");
    options.environment << "EXTRA=a=b";
    RunningProgram program(server, shell, options);
    ASSERT_EQ(program.WaitForExit(), 0);
    ASSERT_EQ(program.GetLines().size(), 2);
    EXPECT_EQ(program.GetLines()[0], server.GetDisplay() + " xcb a=b");
    EXPECT_TRUE(QFileInfo(program.GetLines()[1]).isDir());
}

TEST_F(RunningProgramTest, AHomeThatIsGivenStays) {
    const QTemporaryDir home;
    for (int run = 0; run < 2; ++run) {
        RunningProgram::Options options = Shell("echo x >>$XDG_CONFIG_HOME/kept");
        options.home = home.path();
        RunningProgram program(server, shell, options);
        ASSERT_EQ(program.WaitForExit(), 0);
    }
    EXPECT_EQ(QFileInfo(home.filePath("config/kept")).size(), 4);
}

// The graph of the example, which fills its widget, and of which "parse" stands at the very left.
class ExampleTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(server.IsRunning());
        window = server.WaitForWindow("Graph");
        ASSERT_FALSE(window.isEmpty());
        ASSERT_TRUE(WaitUntil([this] {
            return IsWhite({kGraph.topLeft(), QSize(1, 1)}) && FindInk(kGraph).has_value();
        }));
    }

    // The leftmost pixel that is not white; none if there is none.
    [[nodiscard]] std::optional<QPoint> FindInk(const QRect& area) const {
        const QImage screen = server.Screenshot();
        for (int x = area.left(); x <= area.right(); ++x) {
            for (int y = area.top(); y <= area.bottom(); ++y) {
                if (screen.pixelColor(x, y) != QColor(Qt::white)) return QPoint(x, y);
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] bool IsWhite(const QRect& area) const { return !FindInk(area); }

    // Within the widget of the graph.
    static constexpr QRect kGraph{16, 16, 540, 360};

    XServer server;
    RunningProgram program{server, NODELINE_TEST_PROGRAM};
    QString window;
};

TEST_F(ExampleTest, AClickOnANodeReachesTheProgram) {
    const QPoint parse = *FindInk(kGraph) + QPoint(8, 8);
    server.Xdotool({"mousemove", "--sync", Text(parse.x()), Text(parse.y())});
    server.Xdotool({"click", "1"});
    EXPECT_TRUE(program.WaitForLine("clicked: \"parse\""))
        << program.GetLines().join('\n').toStdString();
}

TEST_F(ExampleTest, TheWheelWithCtrlMakesThePictureSmaller) {
    const int left = FindInk(kGraph)->x();
    server.Xdotool({"windowfocus", "--sync", window});
    server.Xdotool({"mousemove", "--sync", "300", "100"});
    server.Xdotool({"keydown", "ctrl", "click", "5", "keyup", "ctrl"});
    EXPECT_TRUE(WaitUntil([&] { return FindInk(kGraph).value_or(QPoint()).x() > left; }));
}

}  // namespace
}  // namespace nodeline::test

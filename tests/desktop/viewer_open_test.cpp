// Files that the desktop program opens, and what becomes of them.
#include <desktop/viewer_fixture.h>

#include <QElapsedTimer>
#include <QFile>
#include <string>

namespace nodeline::test {
namespace {

QByteArray Number(int n) { return QByteArray::number(n); }

// Each node but the first has a parent; none has more than seven children.
QByteArray Tree(int count) {
    QByteArray text = "tree\n[nodes]\n";
    for (int i = 1; i <= count; ++i) text += Number(i) + " \"node" + Number(i) + "\" 0 0\n";
    text += "[edges]\n";
    for (int i = 2; i <= count; ++i) text += Number((i - 2) / 7 + 1) + ' ' + Number(i) + " \"\"\n";
    return text;
}

class ViewerOpenTest : public ViewerTest {
protected:
    // Over the name, as editors do that never leave half a file behind.
    void Replace(const QString& name, const QByteArray& text) const {
        const QString fresh = Write(name + ".new", text);
        QFile::remove(PathOf(name));
        ASSERT_TRUE(QFile::rename(fresh, PathOf(name)));
    }

    // The right port of the node at a point; empty as long as there is none.
    [[nodiscard]] QRect FindPortBeside(const QPoint& at) const {
        const QImage screen = server.Screenshot();
        for (int x = at.x(); x < kPicture.right(); ++x) {
            if (screen.pixel(x, at.y() - 5) == kOpenPort) return {x, at.y() - 5, 15, 10};
        }
        return {};
    }

    // The rightmost button of the status bar while something is loaded; the null point before.
    [[nodiscard]] QPoint FindCancel() const {
        const QImage screen = server.Screenshot();
        const QRgb window = screen.pixel(kStatusLine.topRight());
        for (int x = kStatusLine.right(); x > 0; --x) {
            if (screen.pixel(x, kStatusLine.top()) != window) return {x - 30, kStatusLine.top()};
        }
        return {};
    }

    // Where the picture of the window has its middle.
    static constexpr QPoint kMiddle{467, 410};
    // Where nothing but the progress of loading stands.
    static constexpr QRect kStatusLine{0, 785, 900, 1};
};

TEST_F(ViewerOpenTest, AFileOfTheCommandLineIsShown) {
    Write("fork.txt", kFork);
    Start({PathOf("fork.txt")});
    EXPECT_TRUE(Says("4 of 4 nodes, 100 %"));
    EXPECT_TRUE(Says("picture after"));
    EXPECT_FALSE(TakeWindow("fork.txt").isEmpty());
    PointAway();
    const std::vector<QRect> nodes = WaitForPlaces(kNode, 4);
    EXPECT_LT(nodes[0].right(), nodes[1].left());
    EXPECT_LT(nodes[1].right(), nodes[2].left());
    EXPECT_LT(nodes[2].bottom(), nodes[3].top());
}

TEST_F(ViewerOpenTest, BothLayoutsShowAllNodes) {
    Write("fork.txt", kFork);
    for (const char* layout : {"stable", "inc"}) {
        Show("fork.txt", {"--layout", layout});
        EXPECT_EQ(WaitForPlaces(kNode, 4).size(), 4U) << layout;
        Quit();
    }
}

TEST_F(ViewerOpenTest, ABrokenFileIsToldWithItsLine) {
    Start({Write("broken.txt", "title\n[nodes]\n1 \"alpha\" 0 0\n[edges]\n1 9 \"\"\n")});
    EXPECT_TRUE(Says("broken.txt:5: "));
    TakeWindow("nodeline");
    EXPECT_TRUE(program->IsRunning());
    Quit();
}

TEST_F(ViewerOpenTest, ABrokenFileLeavesWhatIsShown) {
    Write("fork.txt", kFork);
    Show("fork.txt");
    WaitForPlaces(kNode, 4);
    Replace("fork.txt", "title\n[edges]\n1 9 \"\"\n");
    EXPECT_TRUE(Says("fork.txt:3: "));
    EXPECT_EQ(WaitForPlaces(kNode, 4).size(), 4U);
    Quit();
}

TEST_F(ViewerOpenTest, AMissingFileIsTold) {
    Start({PathOf("nowhere.txt")});
    EXPECT_TRUE(Says("nowhere.txt: cannot be opened: No such file or directory"));
    TakeWindow("nodeline");
    Quit();
}

TEST_F(ViewerOpenTest, AFileThatGoesIsTakenUpWhenItComesBack) {
    Write("fork.txt", kFork);
    Show("fork.txt");
    ASSERT_TRUE(QFile::remove(PathOf("fork.txt")));
    EXPECT_TRUE(Says("fork.txt has gone; what it held is still shown"));
    EXPECT_EQ(WaitForPlaces(kNode, 4).size(), 4U);
    Write("fork.txt", kFork);
    EXPECT_TRUE(Says("Read again: nothing has changed"));
    Quit();
}

TEST_F(ViewerOpenTest, NodesThatComeLeaveTheOthersAsTheyAre) {
    Write("fork.txt", kFork);
    Show("fork.txt");
    const std::vector<QRect> nodes = WaitForPlaces(kNode, 4);
    const QImage before = server.Screenshot();
    QByteArray text = kFork + "4 5 \"\"\n";
    Replace("fork.txt", text.replace("[edges]", "5 \"epsilon\" 0 0\n[edges]"));
    EXPECT_TRUE(Says("5 of 5 nodes"));
    EXPECT_TRUE(Says("Read again: 1 node came, 0 went"));
    const std::vector<QRect> more = WaitForPlaces(kNode, 5);
    EXPECT_GT(more[4].left(), nodes[3].right());
    EXPECT_EQ(std::vector<QRect>(more.begin(), more.end() - 1), nodes);
    const QImage after = server.Screenshot();
    for (const QRect& node : nodes) EXPECT_EQ(after.copy(node), before.copy(node));
}

TEST_F(ViewerOpenTest, NodesThatGoLeaveTheOthersAsTheyAre) {
    Write("fork.txt", kFork);
    Show("fork.txt");
    const std::vector<QRect> nodes = WaitForPlaces(kNode, 4);
    QByteArray text = kFork;
    Write("fork.txt", text.replace("4 \"delta\" 0 0\n", "").replace("2 4 \"\"\n", ""));
    EXPECT_TRUE(Says("3 of 3 nodes"));
    EXPECT_TRUE(Says("Read again: 0 nodes came, 1 went"));
    EXPECT_EQ(WaitForPlaces(kNode, 3), std::vector<QRect>({nodes[0], nodes[1], nodes[2]}));
}

TEST_F(ViewerOpenTest, FiftyThousandNodesAreShownAndFolded) {
    Write("tree.txt", Tree(50000));
    QElapsedTimer timer;
    timer.start();
    Show("tree.txt");
    RecordProperty("picture_ms", std::to_string(timer.elapsed()));
    // In the middle, as large as it is.
    Press({"ctrl+f"});
    Type("node2");
    Press({"Return", "Escape", "ctrl+1"});
    ASSERT_TRUE(Says("100 %"));
    PointAway();
    QRect port;
    ASSERT_TRUE(WaitUntil([&] { return !(port = FindPortBeside(kMiddle)).isNull(); }));
    timer.start();
    Click(port.center());
    EXPECT_TRUE(Says(" of 50,000 nodes"));
    PointAway();
    EXPECT_TRUE(WaitUntil([&] {
        return server.Screenshot().pixel(port.left() + 3, port.center().y()) == kClosedPort;
    }));
    RecordProperty("fold_ms", std::to_string(timer.elapsed()));
    Quit();
}

TEST_F(ViewerOpenTest, LoadingCanBeCancelled) {
    Start({Write("large.txt", Tree(400000))});
    TakeWindow("nodeline");
    QPoint cancel;
    ASSERT_TRUE(WaitUntil([&] { return !(cancel = FindCancel()).isNull(); }));
    Click(cancel);
    PointAway();
    EXPECT_TRUE(WaitUntil([&] { return FindCancel().isNull(); }));
    Quit();
    EXPECT_EQ(program->GetLines(), QStringList()) << "nothing was shown";
}

}  // namespace
}  // namespace nodeline::test

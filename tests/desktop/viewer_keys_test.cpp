// What keys do in the desktop program.
#include <desktop/viewer_fixture.h>

namespace nodeline::test {
namespace {

class ViewerKeysTest : public ViewerTest {
protected:
    void SetUp() override {
        ViewerTest::SetUp();
        if (HasFatalFailure()) return;
        Write("fork.txt", kFork);
        Show("fork.txt");
        nodes = WaitForPlaces(kNode, 4);
    }

    // gamma and delta go.
    void FoldBeta() {
        Click(WaitForPlaces(kOpenPort, 5)[2].center());
        ASSERT_TRUE(Says("2 of 4 nodes"));
        PointAway();
    }

    std::vector<QRect> nodes;
};

TEST_F(ViewerKeysTest, FindingAHiddenNodeShowsItInTheMiddle) {
    FoldBeta();
    Press({"ctrl+f"});
    Type("ta");  // beta and delta
    Press({"Down", "Return"});
    EXPECT_TRUE(Says("3 of 4 nodes"));
    const QPoint middle{467, 410};
    EXPECT_TRUE(WaitUntil([&] {
        std::vector<QRect> all = FindPlaces(Shot({0, 0, 930, 770}), kNewNode | 0xff000000U);
        return all.size() == 1 && all.front().contains(middle);
    }));
}

TEST_F(ViewerKeysTest, EscapeLeavesThePanelForThePicture) {
    Press({"ctrl+f"});
    Type("ta");
    Press({"Escape", "z"});
    const QRect area = nodes[1] | nodes[2] | nodes[3];
    DragOutline(area.topLeft() - QPoint(50, 50), area.bottomRight() + QPoint(50, 50));
    EXPECT_EQ(WaitForPlaces(kNode, 3).size(), 3U) << "z switched the tool";
}

TEST_F(ViewerKeysTest, ChangesAreUndoneAndMadeAgain) {
    FoldBeta();
    Press({"ctrl+z"});
    EXPECT_TRUE(Says("4 of 4 nodes"));
    Press({"ctrl+shift+z"});
    EXPECT_TRUE(Says("2 of 4 nodes"));
    EXPECT_EQ(WaitForPlaces(kNode, 2), std::vector<QRect>({nodes[0], nodes[1]}));
}

TEST_F(ViewerKeysTest, DeleteHidesTheSelectedNodes) {
    Click(nodes[0].center());
    ASSERT_TRUE(Says("1 selected: alpha"));
    Press({"Delete"});
    EXPECT_TRUE(Says("3 of 4 nodes"));
    PointAway();
    EXPECT_EQ(WaitForPlaces(kNode, 3).size(), 3U);
}

TEST_F(ViewerKeysTest, ShowAllBringsBackWhatIsHidden) {
    FoldBeta();
    Press({"ctrl+shift+a"});
    EXPECT_TRUE(Says("4 of 4 nodes"));
    EXPECT_EQ(WaitForPlaces(kNewNode, 2), std::vector<QRect>({nodes[2], nodes[3]}));
}

TEST_F(ViewerKeysTest, BracketsFoldBothSidesOfTheSelectedNode) {
    Click(nodes[1].center());
    ASSERT_TRUE(Says("1 selected: beta"));
    Press({"bracketright"});
    EXPECT_TRUE(Says("2 of 4 nodes"));
    Press({"bracketleft"});
    EXPECT_TRUE(Says("1 of 4 nodes"));
    Press({"braceright"});
    EXPECT_TRUE(Says("3 of 4 nodes"));
    Press({"braceleft"});
    EXPECT_TRUE(Says("4 of 4 nodes"));
}

TEST_F(ViewerKeysTest, TheZoomGoesInStepsAndBackToItsActualSize) {
    Press({"ctrl+minus"});
    EXPECT_TRUE(Says("80 %"));
    Press({"ctrl+minus"});
    EXPECT_TRUE(Says("64 %"));
    Press({"ctrl+1"});
    EXPECT_TRUE(Says("100 %"));
    Press({"ctrl+plus"});
    EXPECT_TRUE(Says("125 %"));
    Press({"ctrl+0"});
    EXPECT_TRUE(Says(" %"));
    const std::vector<QRect> fitted = WaitForPlaces(kNode, 4);
    EXPECT_GT(fitted[0].width(), 2 * nodes[0].width());
}

}  // namespace
}  // namespace nodeline::test

// What the pointer does to a picture in the desktop program.
#include <desktop/viewer_fixture.h>

#include <algorithm>

namespace nodeline::test {
namespace {

// alpha, beta, gamma and delta, in this order, as `WaitForPlaces` answers them.
class ViewerPointerTest : public ViewerTest {
protected:
    void SetUp() override {
        ViewerTest::SetUp();
        if (HasFatalFailure()) return;
        Write("fork.txt", kFork);
        Show("fork.txt");
        nodes = WaitForPlaces(kNode, 4);
    }

    // All nodes stand by `way` from where they stood at first, and are as large as then.
    void ExpectMovedBy(const QPoint& way) const {
        std::vector<QRect> moved = nodes;
        for (QRect& place : moved) place.translate(way);
        EXPECT_TRUE(WaitUntil([&] { return WaitForPlaces(kNode, 4) == moved; }));
    }

    std::vector<QRect> nodes;
};

constexpr QPoint kFree{200, 200};  // a point of the ground

TEST_F(ViewerPointerTest, AClickOnAPortHidesWhatLiesBehindIt) {
    const std::vector<QRect> ports = WaitForPlaces(kOpenPort, 5);
    const QRect children = nodes[2] | nodes[3];
    Click(ports[2].center());
    EXPECT_TRUE(Says("2 of 4 nodes"));
    PointAway();
    EXPECT_EQ(WaitForPlaces(kNode, 2), std::vector<QRect>({nodes[0], nodes[1]}));
    EXPECT_EQ(WaitForPlaces(kClosedPort, 1).front(), ports[2]);
    QImage empty(children.size(), QImage::Format_RGB32);
    empty.fill(kGround);
    EXPECT_EQ(Shot(children), empty);
}

TEST_F(ViewerPointerTest, AnotherClickOnThePortBringsItBackToItsPlace) {
    const QPoint port = WaitForPlaces(kOpenPort, 5)[2].center();
    Click(port);
    ASSERT_TRUE(Says("2 of 4 nodes"));
    PointAway();
    EXPECT_EQ(WaitForPlaces(kNode, 2).size(), 2U);
    // Two clicks at one place would be a double click.
    Click(kFree);
    Click(port);
    EXPECT_TRUE(Says("4 of 4 nodes"));
    PointAway();
    EXPECT_EQ(WaitForPlaces(kNode, 2), std::vector<QRect>({nodes[0], nodes[1]}));
    EXPECT_EQ(WaitForPlaces(kNewNode, 2), std::vector<QRect>({nodes[2], nodes[3]}));
}

TEST_F(ViewerPointerTest, ADragPans) {
    Drag(kFree, kFree + QPoint(60, 100));
    PointAway();
    ExpectMovedBy({60, 100});
}

// A column of nodes that is higher than the window.
class ViewerWheelTest : public ViewerTest {
protected:
    [[nodiscard]] std::vector<QRect> Places() const {
        return FindPlaces(Shot(kPicture), kNode | 0xff000000U);
    }
};

TEST_F(ViewerWheelTest, TheWheelScrollsUpAndDown) {
    QByteArray column = "column\n[nodes]\n";
    for (int i = 1; i <= 60; ++i) column += QByteArray::number(i) + " \"node\" 0 0\n";
    Write("column.txt", column);
    Show("column.txt");
    Press({"ctrl+1"});
    ASSERT_TRUE(Says("100 %"));
    ASSERT_TRUE(WaitUntil([this] { return Places().size() > 10; }));
    const QRect before = Places()[5];
    const auto stands_at = [&](const QRect& place) {
        const std::vector<QRect> places = Places();
        return std::find(places.begin(), places.end(), place) != places.end();
    };
    Point(kFree);
    server.Xdotool({"click", "5"});
    EXPECT_TRUE(WaitUntil([&] { return stands_at(before.translated(0, -48)); }));
    EXPECT_FALSE(stands_at(before));
    server.Xdotool({"click", "4"});
    EXPECT_TRUE(WaitUntil([&] { return stands_at(before); }));
}

TEST_F(ViewerPointerTest, TheWheelWithCtrlZoomsAboutThePointer) {
    const QPoint beta = nodes[1].center();
    Point(beta);
    server.Xdotool({"keydown", "ctrl", "click", "4", "keyup", "ctrl"});
    EXPECT_TRUE(Says("125 %"));
    PointAway();
    const std::vector<QRect> larger = WaitForPlaces(kNode, 4);
    EXPECT_NEAR(larger[1].width(), nodes[1].width() * 1.25, 3.0);
    EXPECT_NEAR(larger[1].center().x(), beta.x(), 3.0);
    EXPECT_NEAR(larger[1].center().y(), beta.y(), 3.0);
    Point(beta);
    server.Xdotool({"keydown", "ctrl", "click", "5", "keyup", "ctrl"});
    EXPECT_TRUE(Says("100 %"));
    PointAway();
    ExpectMovedBy({0, 0});
}

TEST_F(ViewerPointerTest, AClickOnANodeSelectsIt) {
    Click(nodes[1].center());
    EXPECT_TRUE(Says("1 selected: beta"));
    PointAway();
    EXPECT_EQ(WaitForPlaces(kSelectedNode, 1).front().center(), nodes[1].center());
}

TEST_F(ViewerPointerTest, ARightClickOnANodeOpensItsMenu) {
    Click(nodes[1].center(), 3);
    ASSERT_TRUE(WaitUntil([this] { return CountWindows() == 2; }));
    Press({"h"});
    EXPECT_TRUE(Says("3 of 4 nodes"));
    EXPECT_TRUE(WaitUntil([this] { return CountWindows() == 1; }));
    PointAway();
    EXPECT_EQ(WaitForPlaces(kNode, 3).size(), 3U);
}

TEST_F(ViewerPointerTest, ARightClickOnTheGroundOpensTheMenuOfThePicture) {
    Click(WaitForPlaces(kOpenPort, 5)[2].center());
    ASSERT_TRUE(Says("2 of 4 nodes"));
    Click(kFree, 3);
    ASSERT_TRUE(WaitUntil([this] { return CountWindows() == 2; }));
    Press({"s"});
    EXPECT_TRUE(Says("4 of 4 nodes"));
}

TEST_F(ViewerPointerTest, TheToolForAreasZoomsToTheRectangleOfADrag) {
    Press({"z"});
    const QRect area = nodes[1] | nodes[2] | nodes[3];
    DragOutline(area.topLeft() - QPoint(50, 50), area.bottomRight() + QPoint(50, 50));
    EXPECT_TRUE(Says(" %"));
    PointAway();
    const std::vector<QRect> larger = WaitForPlaces(kNode, 3);
    EXPECT_GT(larger[0].width(), 2 * nodes[1].width());
    EXPECT_TRUE(kPicture.contains(larger[0] | larger[1] | larger[2]));
}

TEST_F(ViewerPointerTest, ADragOfANodeMovesItAloneWithTheToolForIt) {
    Press({"m"});
    Drag(nodes[0].center(), nodes[0].center() + QPoint(20, 120));
    PointAway();
    std::vector<QRect> moved = nodes;
    moved[0].translate(20, 120);
    EXPECT_TRUE(WaitUntil([&] { return WaitForPlaces(kNode, 4) == moved; }));
    Press({"ctrl+z"});
    ExpectMovedBy({0, 0});
}

}  // namespace
}  // namespace nodeline::test

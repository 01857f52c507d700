#include <apps/viewer/viewer_node_handler.h>
#include <backends/qt/qt_painter.h>
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>

#include <QColor>
#include <QImage>

namespace nodeline::app {
namespace {

using paintcore::_color;

// Two owners, one in the other, and a leaf in the inner one, all where they are put. Each state has
// a colour of its own.
class ViewerNodeHandlerTest : public testing::Test {
protected:
    void SetUp() override {
        StateLook& states = nodes.GetStateLook();
        states.outer_fill = _color(10, 0, 0);
        states.inner_fill = _color(20, 0, 0);
        states.selected_border = _color(30, 0, 0);
        states.new_border = _color(40, 0, 0);
        states.hovered_border = _color(50, 0, 0);
        CPortNodeDrawInfo& look = nodes.GetDrawInfo();
        look.fill_top = look.fill_bottom = _color(60, 0, 0);
        look.border_color = _color(70, 0, 0);
        look.selected_border_color = _color(80, 0, 0);
        for (Node* node : {&outer, &inner, &leaf}) {
            SetFlag(*node, NodeDrawn, true);
            node->SetPosition(10.0, 10.0);
            node->SetSize({150.0, 20.0});
        }
    }

    // The red part of a pixel in the picture of one node.
    [[nodiscard]] int RedAt(const Node& node, int x, int y) {
        QImage image(200, 60, QImage::Format_RGB32);
        image.fill(Qt::white);
        qt::QtPainter painter(&image);
        painter.SetDevicePaintRect({0.0, 0.0, 200.0, 60.0});
        painter.BeginPaint(IPainter::StdSettings::All);
        nodes.Draw(node, &painter);
        painter.EndPaint();
        return qRed(image.pixel(x, y));
    }
    // Where the left border of the leaf's box is: beside the room for a port.
    [[nodiscard]] int BorderOfLeaf() { return RedAt(leaf, 32, 20); }

    graph_ptr2<Graph> graph{new Graph, true};
    Node outer = graph->GetRoot().AddNode();
    Node inner = outer.AddNode();
    Node leaf = inner.AddNode();
    ViewerNodeHandler nodes;
};

TEST_F(ViewerNodeHandlerTest, OwnersInOwnersAlternate) {
    Node innermost = leaf.AddNode();
    EXPECT_EQ(RedAt(outer, 100, 27), 10);
    EXPECT_EQ(RedAt(inner, 100, 27), 20);
    EXPECT_EQ(RedAt(leaf, 100, 27), 10) << "now an owner";
    innermost.Remove();
    EXPECT_EQ(RedAt(leaf, 100, 27), 60);
}

TEST_F(ViewerNodeHandlerTest, StatesOfLeavesHaveOutlinesOfTheirOwn) {
    EXPECT_EQ(BorderOfLeaf(), 70);
    SetFlag(leaf, NodeNew, true);
    EXPECT_EQ(BorderOfLeaf(), 40);
    SetFlag(leaf, NodeHovered, true);
    EXPECT_EQ(BorderOfLeaf(), 50);
    SetFlag(leaf, NodeSelected, true);
    EXPECT_EQ(BorderOfLeaf(), 30);
}

TEST_F(ViewerNodeHandlerTest, OutlinesOfSelectedLeavesAreTwoPixelsWide) {
    EXPECT_EQ(RedAt(leaf, 31, 20), 255);
    Select(leaf);
    EXPECT_EQ(RedAt(leaf, 31, 20), 30);
}

TEST_F(ViewerNodeHandlerTest, FramesOfMarkedLeavesAreTwoPixelsWide) {
    EXPECT_EQ(RedAt(leaf, 60, 10), 70);
    EXPECT_EQ(RedAt(leaf, 60, 9), 255);
    SetFlag(leaf, NodeMarked, true);
    EXPECT_EQ(RedAt(leaf, 60, 10), 80);
    EXPECT_EQ(RedAt(leaf, 60, 9), 80);
}

TEST_F(ViewerNodeHandlerTest, LookIsAsBeforeOnceANodeIsDrawn) {
    Select(leaf);
    static_cast<void>(RedAt(outer, 0, 0));
    static_cast<void>(RedAt(leaf, 0, 0));
    const CPortNodeDrawInfo& look = nodes.GetDrawInfo();
    EXPECT_EQ(look.fill_top, _color(60, 0, 0));
    EXPECT_EQ(look.border_color, _color(70, 0, 0));
    EXPECT_EQ(look.pen_width, 1);
    EXPECT_EQ(look.font.style & paintcore::FontBold, 0);
}

TEST_F(ViewerNodeHandlerTest, SizeFollowsTheFontOfTheLook) {
    leaf.SetCaption("caption");
    nodes.GetDrawInfo().font.size = 9;
    nodes.GetDrawInfo().fixed_width = false;
    const size<double> small = nodes.GetSize(leaf);
    nodes.GetDrawInfo().font.size = 18;
    const size<double> large = nodes.GetSize(leaf);
    EXPECT_GT(small.cx, 0.0);
    EXPECT_NEAR(large.cx, 2.0 * small.cx, 1e-6);
    EXPECT_NEAR(large.cy, 2.0 * small.cy, 1e-6);
}

TEST_F(ViewerNodeHandlerTest, CaptionsOfOwnersAreWiderForTheyAreBold) {
    nodes.GetDrawInfo().fixed_width = false;
    Node plain = inner.AddNode();
    plain.SetCaption("a long caption");
    const size<double> as_leaf = nodes.GetSize(plain);
    plain.AddNode();
    EXPECT_GT(nodes.GetSize(plain).cx, as_leaf.cx);
    EXPECT_GT(nodes.GetSize(plain, {1.0, 1.0}).outer.cx, as_leaf.cx);
}

TEST_F(ViewerNodeHandlerTest, NodesHaveTheFillOfTheirFileUnlessAStateShows) {
    formats::NodeLook look;
    look.fill = _color(90, 0, 0);
    nodes.SetLooks({{leaf.GetID(), look}, {inner.GetID(), look}});
    EXPECT_EQ(RedAt(leaf, 100, 27), 90);
    EXPECT_EQ(RedAt(inner, 100, 27), 90);
    EXPECT_EQ(RedAt(outer, 100, 27), 10);
    Select(leaf);
    EXPECT_EQ(BorderOfLeaf(), 30);
    EXPECT_EQ(nodes.GetDrawInfo().fill_top, _color(60, 0, 0));
}

TEST_F(ViewerNodeHandlerTest, DrawingWithoutAPainterDoesNothing) {
    nodes.Draw(leaf, nullptr);
    EXPECT_EQ(nodes.GetDrawInfo().border_color, _color(70, 0, 0));
}

}  // namespace
}  // namespace nodeline::app

#include <backends/headless/recording_painter.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/ops/graph_ops.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using headless::RecordingPainter;
using Lines = std::vector<std::string>;

class DummyNodes : public testing::Test {
protected:
    DummyNodes() {
        node.SetPosition(10.0, 20.5);
        node.SetSize({42.0, 15.0});
    }

    Lines Draw() {
        handler.Draw(node, &painter);
        return painter.TakeLines();
    }

    graph_ptr2<Graph> graph{new Graph(), true};
    Node node = graph->GetRoot().AddNode();
    RecordingPainter painter;
    DummyNodeHandler handler;
};

TEST_F(DummyNodes, AreBareRectanglesWhateverTheirFlags) {
    EXPECT_EQ(Draw(), (Lines{"Rectangle 10 20.5 52 35.5"}));
    SetFlag(node, NodeDrawn | NodeMarked, true);
    EXPECT_EQ(Draw(), (Lines{"Rectangle 10 20.5 52 35.5"}));
    SetFlag(node, NodeDrawn, false);
    SetFlag(node, NodeHidden, true);
    EXPECT_EQ(Draw(), (Lines{"Rectangle 10 20.5 52 35.5"}));
}

TEST_F(DummyNodes, AreScaledByTheZoom) {
    handler.SetZoomFactor(2.0);
    EXPECT_EQ(Draw(), (Lines{"Rectangle 20 41 104 71"}));
}

TEST_F(DummyNodes, ScaleCornerAndSizeBeforeTheyAddThem) {
    node.SetPosition(0.1, 0.7);
    node.SetSize({0.2, 0.3});
    handler.SetZoomFactor(3.0);
    // The other way round, the bottom would come out as 3.
    EXPECT_EQ(Draw(), (Lines{"Rectangle 0.30000000000000004 2.0999999999999996 "
                             "0.9000000000000001 2.9999999999999996"}));
}

TEST_F(DummyNodes, IgnoreAZoomThatIsNotPositive) {
    handler.SetZoomFactor(2.0);
    handler.SetZoomFactor(0.0);
    handler.SetZoomFactor(-1.0);
    EXPECT_EQ(Draw(), (Lines{"Rectangle 20 41 104 71"}));
}

TEST_F(DummyNodes, AreTenByTenOrAsLargeAsTheirContents) {
    handler.SetZoomFactor(3.0);
    EXPECT_EQ(handler.GetSize(node), (size<double>{10.0, 10.0}));
    EXPECT_EQ(handler.GetSize(graph->GetRoot()), (size<double>{10.0, 10.0}));
    EXPECT_EQ(handler.GetSize(node, {3.0, 4.0}), (NodeFrame{{3.0, 4.0}, {0.0, 0.0}}));
}

TEST_F(DummyNodes, AreNotDrawnWithoutAPainter) {
    handler.Draw(node, nullptr);
    EXPECT_EQ(painter.TakeLines(), Lines());
}

}  // namespace
}  // namespace nodeline::test

#include <apps/viewer/viewer_edge_handler.h>
#include <backends/qt/qt_painter.h>
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>

#include <QImage>

namespace nodeline::app {
namespace {

using paintcore::_color;

// An edge that runs along a line of pixels, on black. Its red part tells its colour.
class ViewerEdgeHandlerTest : public testing::Test {
protected:
    void SetUp() override {
        edge.AddBreakNodesIn(graph->GetRoot(), 2);
        edge.GetBreakNodes().GetItem(0).SetPosition(10.0, 20.5);
        edge.GetBreakNodes().GetItem(1).SetPosition(180.0, 20.5);
        SetFlag(edge, EdgeDrawn, true);
        edges.background = _color(0, 0, 0);
        edges.color = _color(200, 0, 0);
        edges.strong_color = _color(60, 0, 0);
        edges.marked_color = _color(120, 0, 0);
    }

    [[nodiscard]] int RedAt(double scale, int y = 20) {
        QImage image(200, 40, QImage::Format_RGB32);
        image.fill(Qt::black);
        qt::QtPainter painter(&image);
        painter.SetDevicePaintRect({0.0, 0.0, 200.0, 40.0});
        painter.BeginPaint(IPainter::StdSettings::All);
        edges.SetZoomFactor(scale);
        edges.Draw(edge, &painter);
        painter.EndPaint();
        return qRed(image.pixel(90, y));
    }

    graph_ptr2<Graph> graph{new Graph, true};
    Node from = graph->GetRoot().AddNode();
    Node to = graph->GetRoot().AddNode();
    Edge edge = from.LinkTo(to);
    ViewerEdgeHandler edges;
};

TEST_F(ViewerEdgeHandlerTest, EdgesHaveTheirColourInReadablePictures) {
    EXPECT_EQ(RedAt(1.0), 200);
    EXPECT_EQ(RedAt(4.0), 200);
}

TEST_F(ViewerEdgeHandlerTest, EdgesFadeInSmallPicturesButNeverAway) {
    EXPECT_EQ(RedAt(0.3), 100);
    EXPECT_EQ(RedAt(0.01), 70);
}

TEST_F(ViewerEdgeHandlerTest, EdgesOfASelectedNodeAreStrongAtEveryScale) {
    for (const Node& end : {from, to}) {
        Select(end);
        EXPECT_EQ(RedAt(1.0), 60);
        EXPECT_EQ(RedAt(0.01), 60);
        Unselect(end);
    }
    EXPECT_EQ(RedAt(1.0), 200);
}

TEST_F(ViewerEdgeHandlerTest, EdgesOfASelectedNodeAreTwiceAsWide) {
    EXPECT_EQ(RedAt(1.0, 19) + RedAt(1.0, 21), 0);
    Select(from);
    EXPECT_GT(RedAt(1.0, 19) + RedAt(1.0, 21), 0);
}

TEST_F(ViewerEdgeHandlerTest, TheEdgeUnderThePointerDoesNotFade) {
    SetFlag(edge, EdgeHovered, true);
    EXPECT_EQ(RedAt(0.01), RedAt(1.0));
}

TEST_F(ViewerEdgeHandlerTest, EdgesHaveTheColourAndThePenOfTheirFile) {
    formats::EdgeLook look;
    look.line = _color(100, 0, 0);
    look.pen_width = 3.0;
    edges.SetLooks({{edge.GetID(), look}});
    EXPECT_EQ(RedAt(1.0), 100);
    EXPECT_EQ(RedAt(1.0, 19) + RedAt(1.0, 21), 200);
    EXPECT_EQ(RedAt(0.3), 50);
    Select(from);
    EXPECT_EQ(RedAt(1.0), 60);
}

TEST_F(ViewerEdgeHandlerTest, MarkedEdgesKeepTheirOwnColour) {
    SetFlag(edge, EdgeMarked, true);
    EXPECT_EQ(RedAt(0.01), 120);
}

}  // namespace
}  // namespace nodeline::app

#include <backends/qt/graph_widget.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <qt/graph_widget_stage.h>

#include <QImage>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::qt {
namespace {

using namespace nodeline::test;

// Fills the rectangle of a node, and nothing beyond it.
class TileHandler : public INodeHandler {
public:
    void Draw(Node node, IPainter* painter) override {
        const auto shade = static_cast<unsigned char>(40 + node.GetID() % 7 * 30);
        painter->SetBrush({{0, shade, 220}, 1});
        painter->FillRect(MakeDRect(node.GetPosition(), node.GetSize()));
    }
    nodeline::size<double> GetSize(Node) override { return {37.0, 19.0}; }
    NodeFrame GetSize(Node, nodeline::size<double> inner) override {
        return {{inner.cx + 10.0, inner.cy + 10.0}, {5.0, 5.0}};
    }
};

int CountDifferences(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
    }
    return count;
}

TEST_F(GraphWidgetTest, AGraphGetsALookAndALayoutOfItsOwn) {
    EXPECT_NE(graph->GetRoot().GetLayout().get(), GetDefaultLayout().get());
    EXPECT_NE(dynamic_cast<StableLayout*>(graph->GetRoot().GetLayout().get()), nullptr);
    EXPECT_NE(dynamic_cast<PortNodeHandler*>(graph->GetDefaultNodeHandler().get()), nullptr);
    EXPECT_GT(a.GetSize().cx, 20.0);
    EXPECT_LT(a.GetPosition().x + a.GetSize().cx, b.GetPosition().x);
}

TEST_F(GraphWidgetTest, WhatTheGraphBringsAlongStays) {
    const graph_ptr2<Graph> own(new Graph(), true);
    const graph_ptr2<INodeHandler> handler(new SimpleNodeHandler, true);
    const graph_ptr2<ILayout> layout(new IncLayout, true);
    own->SetDefaultNodeHandler(handler);
    own->SetDefaultLayout(layout);
    widget->setGraph(own);
    EXPECT_EQ(own->GetDefaultNodeHandler().get(), handler.get());
    EXPECT_EQ(own->GetRoot().GetLayout().get(), layout.get());
    EXPECT_EQ(widget->viewer()->GetGraph().get(), own.get());
}

TEST_F(GraphWidgetTest, ANullGraphIsAnEmptyOne) {
    widget->setGraph({});
    EXPECT_EQ(widget->viewer()->GetGraph()->GetRoot().GetOwned().GetCount(), 0);
}

TEST_F(GraphWidgetTest, TheGraphStandsInTheMiddleWhateverSizeTheWidgetGetsWhenShown) {
    const nodeline::size<double> s = graph->GetRoot().GetSize();
    const rectangle<int> r = widget->viewer()->GetContent()->GetContentRect();
    EXPECT_NEAR(Start().x + r.right / 2.0, s.cx / 2.0, 1.0);
    EXPECT_NEAR(Start().y + r.bottom / 2.0, s.cy / 2.0, 1.0);
}

TEST_F(GraphWidgetTest, AClickOnAPortFolds) {
    Click(widget, RightPortOf(a));
    Settle();
    EXPECT_TRUE(IsFlagSet(b, NodeHidden));
    EXPECT_FALSE(IsFlagSet(c, NodeHidden));
    Click(widget, RightPortOf(a));
    Settle();
    EXPECT_FALSE(IsFlagSet(b, NodeHidden));
}

TEST_F(GraphWidgetTest, ADragPans) {
    const point<double> before = Start();
    Drag(widget, {5, 290}, {25, 280});
    Settle();
    EXPECT_EQ(Start(), (point<double>{before.x - 20.0, before.y + 10.0}));
}

TEST_F(GraphWidgetTest, APanMovesThePictureToWhereAFullPaintPutsIt) {
    const graph_ptr2<Graph> tiles(new Graph(), true);
    tiles->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new TileHandler, true));
    for (int i = 0; i < 30; ++i) AddNode(tiles->GetRoot(), "tile");
    widget->setGraph(tiles);
    Settle();
    const QImage before = widget->GetImage();
    Drag(widget, {5, 290}, {25, 280});
    Settle();
    const QImage moved = widget->GetImage();
    widget->GetControl().InvalidateAll();
    Settle();
    EXPECT_GT(CountDifferences(before, moved), 500);
    EXPECT_EQ(CountDifferences(moved, widget->GetImage()), 0);
}

TEST_F(GraphWidgetTest, TheWheelWithControlZoomsAboutThePointer) {
    const QPoint at = MiddleOf(c);
    Wheel(widget, at, {0, 240}, {}, Qt::ControlModifier);
    Settle();
    EXPECT_GT(widget->viewer()->GetScale(), 1.0);
    const QPoint way = MiddleOf(c) - at;
    EXPECT_LE(way.manhattanLength(), 2);
}

TEST_F(GraphWidgetTest, ZoomToKeepsTheMiddleAndItsLimits) {
    const auto middle = [this] {
        const rectangle<int> r = widget->viewer()->GetContent()->GetContentRect();
        return Start().x + r.right * 0.5 / widget->viewer()->GetScale();
    };
    const double before = middle();
    widget->zoomTo(1.5);
    EXPECT_EQ(widget->viewer()->GetScale(), 1.5);
    EXPECT_NEAR(middle(), before, 1e-9);
    widget->zoomTo(1.0e9);
    EXPECT_EQ(widget->viewer()->GetScale(), viewkit::kMaxWheelScale);
    widget->zoomTo(0.0);
    widget->zoomTo(std::nan(""));
    EXPECT_EQ(widget->viewer()->GetScale(), viewkit::kMaxWheelScale);
}

TEST_F(GraphWidgetTest, FitToWindowBeforeTheFirstShowFitsTheSizeThatIsThenKnown) {
    GraphWidget fresh(graph);
    fresh.viewer()->ScrollbarsEnable(false);
    fresh.fitToWindow();
    fresh.resize(900, 200);
    fresh.show();
    Settle();
    const rectangle<int> r = fresh.viewer()->GetContent()->GetContentRect();
    const nodeline::size<double> s = graph->GetRoot().GetSize();
    EXPECT_EQ(fresh.viewer()->GetScale(), std::min(r.right / s.cx, r.bottom / s.cy));
}

TEST_F(GraphWidgetTest, RevealShowsANodeWithItsOwnersInTheMiddle) {
    Hide(d);
    Hide(e);
    d.GetOwner().UpdateLayout();
    d.UpdateLayout();
    widget->viewer()->RenewView(true);
    Settle();
    MarkDrawnIn(graph);
    ASSERT_FALSE(IsFlagSet(e, NodeDrawn));
    widget->reveal(e);
    Settle();
    EXPECT_FALSE(IsFlagSet(d, NodeHidden));
    EXPECT_FALSE(IsFlagSet(e, NodeHidden));
    EXPECT_TRUE(IsFlagSet(e, NodeDrawn));
    const rectangle<int> r = widget->viewer()->GetContent()->GetContentRect();
    EXPECT_LE((MiddleOf(e) - QPoint(r.right / 2, r.bottom / 2)).manhattanLength(), 2);
}

TEST_F(GraphWidgetTest, RevealIgnoresWhatIsNoNodeOfTheGraph) {
    const graph_ptr2<Graph> other(new Graph(), true);
    const Node stranger = AddNode(other->GetRoot(), "stranger");
    const point<double> before = Start();
    widget->reveal(stranger);
    widget->reveal({});
    widget->reveal(graph->GetRoot());
    EXPECT_EQ(Start(), before);
}

TEST_F(GraphWidgetTest, ClicksAreTold) {
    std::vector<std::string> heard;
    QObject::connect(widget, &GraphWidget::nodeClicked,
                     [&heard](const Node& n) { heard.push_back("click " + n.GetCaption()); });
    QObject::connect(widget, &GraphWidget::nodeDoubleClicked,
                     [&heard](const Node& n) { heard.push_back("double " + n.GetCaption()); });
    QObject::connect(widget, &GraphWidget::selectionChanged,
                     [&heard] { heard.push_back("selection"); });
    using Heard = std::vector<std::string>;
    Click(widget, MiddleOf(c));
    EXPECT_EQ(std::exchange(heard, {}), Heard({"click third", "selection"}));
    ASSERT_EQ(widget->selectedNodes().size(), 1U);
    EXPECT_EQ(widget->selectedNodes()[0], c);
    Click(widget, {5, 290});
    EXPECT_EQ(heard, Heard());
    Mouse(widget, QEvent::MouseButtonDblClick, MiddleOf(b), Qt::LeftButton, Qt::LeftButton);
    Release(widget, MiddleOf(b));
    EXPECT_EQ(std::exchange(heard, {}), Heard({"double second", "click second", "selection"}));
    const QPoint from = MiddleOf(b);
    Drag(widget, from, from + QPoint(40, 0));
    heard.erase(std::remove(heard.begin(), heard.end(), "selection"), heard.end());
    EXPECT_EQ(heard, Heard());
}

TEST_F(GraphWidgetTest, AChangeOfTheViewIsTold) {
    int count = 0;
    QObject::connect(widget, &GraphWidget::viewChanged, [&count] { ++count; });
    widget->viewer()->SetStartX(123.0);
    EXPECT_GT(count, 0);
}

TEST_F(GraphWidgetTest, ASlotMayDestroyTheWidget) {
    QObject::connect(widget, &GraphWidget::nodeClicked, [this](const Node&) { delete widget; });
    Click(widget, MiddleOf(c));
    EXPECT_TRUE(widget.isNull());
    EXPECT_EQ(c.GetCaption(), "third");
}

TEST_F(GraphWidgetTest, ASlotOfTheViewMayDestroyTheWidgetToo) {
    QObject::connect(widget, &GraphWidget::viewChanged, [this] { delete widget; });
    Wheel(widget, {100, 100}, {0, 120}, {}, Qt::ControlModifier);
    EXPECT_TRUE(widget.isNull());
}

TEST_F(GraphWidgetTest, TheWidgetOutlivesItsViewer) {
    delete widget->viewer();
    EXPECT_EQ(widget->viewer(), nullptr);
    widget->setGraph(graph);
    widget->fitToWindow();
    widget->zoomTo(2.0);
    widget->reveal(c);
    Click(widget, {50, 50});
    widget->resize(300, 200);
    Settle();
    EXPECT_TRUE(widget->selectedNodes().empty());
    QString error;
    EXPECT_FALSE(widget->exportPicture("nothing.png", false, &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(GraphWidgetTest, AGraphOutlivesItsWidgetAndIsShownByTheNext) {
    const nodeline::size<double> before = c.GetSize();
    delete widget;
    GraphWidget next(graph);
    EXPECT_EQ(c.GetSize(), before);
    EXPECT_GT(before.cx, 0.0);
}

TEST_F(GraphWidgetTest, TwoWidgetsDoNotDisturbEachOther) {
    const graph_ptr2<Graph> other(new Graph(), true);
    const Node lone = AddNode(other->GetRoot(), "lone");
    GraphWidget second(other);
    second.resize(400, 300);
    second.show();
    Settle();
    int clicks = 0;
    QObject::connect(&second, &GraphWidget::nodeClicked, [&clicks](const Node&) { ++clicks; });
    const point<double> start{second.viewer()->GetStartX(), second.viewer()->GetStartY()};
    Click(widget, MiddleOf(c));
    Drag(widget, {5, 290}, {45, 250});
    widget->zoomTo(3.0);
    Settle();
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(second.viewer()->GetScale(), 1.0);
    EXPECT_EQ((point<double>{second.viewer()->GetStartX(), second.viewer()->GetStartY()}), start);
    EXPECT_FALSE(IsFlagSet(lone, NodeSelected));
    EXPECT_NE(other->GetRoot().GetLayout().get(), graph->GetRoot().GetLayout().get());
}

}  // namespace
}  // namespace nodeline::qt

#include <backends/qt/overview_widget.h>
#include <gtest/gtest.h>
#include <nodeline/viewer/overview.h>
#include <qt/graph_widget_stage.h>

#include <QElapsedTimer>
#include <QThread>
#include <memory>
#include <string>
#include <vector>

// What a person expects of the pointer, in the widgets.

namespace nodeline::qt {
namespace {

using namespace nodeline::test;

class PointerInWidget : public GraphWidgetTest {
protected:
    [[nodiscard]] CContent& Content() const { return *widget->viewer()->GetContent(); }
    void DrawRectangles(RubberMode mode) {
        Content().GetDragTracker()->Enable(false);
        Content().GetZoomRect()->Enable(true);
        Content().SetRubberMode(mode);
    }
    [[nodiscard]] std::vector<int> Selected() const {
        std::vector<int> ids;
        for (const Node& node : widget->selectedNodes()) ids.push_back(node.GetID());
        return ids;
    }
    // A pixel left above a node, or right below.
    [[nodiscard]] QPoint Beside(const Node& node, double by) const {
        const rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
        return by < 0.0 ? PixelAt(r.left + by, r.top + by) : PixelAt(r.right + by, r.bottom + by);
    }
};

TEST_F(PointerInWidget, AllOptionsAreOn) {
    EXPECT_TRUE(Content().GetPickDrawn());
    EXPECT_TRUE(Content().GetRubberEndsPress());
    EXPECT_TRUE(Content().GetSelectTouched());
    EXPECT_TRUE(Content().GetTellRubberScroll());
    EXPECT_TRUE(Content().GetSinglePress());
    EXPECT_TRUE(Content().GetTellHover());
    EXPECT_TRUE(Content().GetZoomRect()->GetUnbounded());
}

TEST_F(PointerInWidget, AHiddenNodeTakesNoClick) {
    std::vector<int> clicked;
    QObject::connect(widget, &GraphWidget::nodeClicked,
                     [&clicked](const Node& node) { clicked.push_back(node.GetID()); });
    Hide(e);
    Click(widget, MiddleOf(e));
    EXPECT_FALSE(IsFlagSet(e, NodeSelected));
    Show(e);
    Click(widget, MiddleOf(e));
    EXPECT_TRUE(IsFlagSet(e, NodeSelected));
    EXPECT_EQ(clicked, (std::vector<int>{d.GetID(), e.GetID()}));
}

TEST_F(PointerInWidget, PassingThePointerOverThingsLeavesNoTrace) {
    widget->fitToWindow();
    Settle();
    const QImage before = widget->GetImage();
    for (const Node& node : {a, b, c, e, b, a}) {
        Move(widget, MiddleOf(node));
        Settle();
        EXPECT_NE(widget->GetImage(), before) << "it lights up";
    }
    const QPoint between = (MiddleOf(a) + MiddleOf(b)) / 2;
    Move(widget, between);
    Settle();
    Move(widget, {1, 1});
    Settle();
    EXPECT_EQ(widget->GetImage(), before);
}

TEST_F(PointerInWidget, ARectangleSelectsWhatItTouches) {
    DrawRectangles(RubberSelect);
    int changes = 0;
    QObject::connect(widget, &GraphWidget::selectionChanged, [&changes] { ++changes; });
    widget->zoomTo(0.8);
    Drag(widget, Beside(b, -5.0), Beside(b, 5.0));
    EXPECT_EQ(Selected(), std::vector<int>{b.GetID()});
    EXPECT_EQ(changes, 1);
    Press(widget, Beside(a, -5.0));
    Move(widget, Beside(a, 5.0), Qt::LeftButton);
    Release(widget, Beside(a, 5.0), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), (std::vector<int>{a.GetID(), b.GetID()}));
    EXPECT_EQ(changes, 2);
}

TEST_F(PointerInWidget, ARectangleInsideANodeDoesNotClickIt) {
    DrawRectangles(RubberZoom);
    int clicks = 0;
    QObject::connect(widget, &GraphWidget::nodeClicked, [&clicks] { ++clicks; });
    widget->zoomTo(4.0);
    widget->reveal(a);
    Settle();
    const QPoint p = MiddleOf(a);
    for (const int length : {6, 20}) Drag(widget, p, {p.x() + length, p.y() + 2});
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(IsFlagSet(a, NodeSelected));
    Click(widget, MiddleOf(a));
    EXPECT_EQ(clicks, 1);
}

TEST_F(PointerInWidget, AnUnboundedRectangleSelectsLeftOfZero) {
    DrawRectangles(RubberSelect);
    MoveNode(a, -90.0, -60.0);
    widget->viewer()->SetStartX(-130.0);
    widget->viewer()->SetStartY(-90.0);
    Drag(widget, PixelAt(2.0, -2.0), PixelAt(-20.0, -55.0));
    EXPECT_TRUE(IsFlagSet(a, NodeSelected));
}

TEST_F(PointerInWidget, TheViewIsToldWhileARectangleScrollsIt) {
    DrawRectangles(RubberSelect);
    widget->zoomTo(6.0);
    widget->viewer()->SetStartX(0.0);
    Settle();
    Press(widget, {490, 100});
    Move(widget, {495, 100}, Qt::LeftButton);
    int told = 0;
    QObject::connect(widget, &GraphWidget::viewChanged, [&told] { ++told; });
    const double before = Start().x;
    Move(widget, {530, 100}, Qt::LeftButton);
    EXPECT_GT(Start().x, before);
    EXPECT_EQ(told, 1);
    Release(widget, {530, 100});
}

TEST_F(PointerInWidget, APressThatEndsOutsideLeavesNothingBehind) {
    Content().SetMoveNodes(true);
    const QPoint outside(-30, 700);
    Press(widget, MiddleOf(a), Qt::RightButton);
    Release(widget, outside, Qt::RightButton);
    const point<double> before = a.GetPosition();
    Drag(widget, {490, 290}, {470, 280});
    EXPECT_EQ(a.GetPosition(), before);
    // A port that was pressed, too.
    Press(widget, RightPortOf(a));
    EXPECT_EQ(widget->GetControl().GetCaptured(), &Content());
    Release(widget, outside);
    EXPECT_EQ(widget->GetControl().GetCaptured(), nullptr);
    EXPECT_FALSE(IsFlagSet(b, NodeHidden));
    EXPECT_FALSE(IsFlagSet(a, NodeSelected));
}

TEST_F(PointerInWidget, AWindowThatLosesTheMouseForgetsThePress) {
    int clicks = 0;
    QObject::connect(widget, &GraphWidget::nodeClicked, [&clicks] { ++clicks; });
    Press(widget, MiddleOf(a));
    Send(widget, QEvent(QEvent::WindowDeactivate));
    Release(widget, MiddleOf(a));
    EXPECT_FALSE(IsFlagSet(a, NodeSelected));
    EXPECT_EQ(clicks, 0);
}

TEST_F(PointerInWidget, AnotherButtonDoesNotEndAPress) {
    int clicks = 0;
    QObject::connect(widget, &GraphWidget::nodeClicked, [&clicks] { ++clicks; });
    Press(widget, MiddleOf(a));
    Release(widget, MiddleOf(a), Qt::MiddleButton);
    EXPECT_EQ(clicks, 0);
    Release(widget, MiddleOf(a));
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(IsFlagSet(a, NodeSelected));
}

TEST_F(PointerInWidget, NodesAndEdgesLightUpUnderThePointerWithoutAFullPaint) {
    Move(widget, MiddleOf(a));
    EXPECT_TRUE(IsFlagSet(a, NodeHovered));
    Settle();
    const QImage lit = widget->GetImage();
    Move(widget, MiddleOf(b));
    EXPECT_FALSE(IsFlagSet(a, NodeHovered));
    EXPECT_TRUE(IsFlagSet(b, NodeHovered));
    Settle();
    EXPECT_NE(widget->GetImage(), lit);
    const int paints = widget->GetPaintCount();
    Move(widget, MiddleOf(b) + QPoint(1, 0));
    Settle();
    EXPECT_EQ(widget->GetPaintCount(), paints);
    Send(widget, QEvent(QEvent::Leave));
    EXPECT_FALSE(IsFlagSet(b, NodeHovered));
}

TEST_F(PointerInWidget, APortIsClickedByAPointerThatHasHovered) {
    Move(widget, RightPortOf(a));
    Click(widget, RightPortOf(a));
    EXPECT_TRUE(IsFlagSet(b, NodeHidden));
}

// ---------------------------------------------------------------------------------------------
// The overview

class PointerInOverview : public PointerInWidget {
protected:
    void SetUp() override {
        PointerInWidget::SetUp();
        widget->zoomTo(4.0);
        overview = std::make_unique<OverviewWidget>(widget);
        overview->resize(400, 300);
        overview->show();
        Settle();
    }
    void TearDown() override {
        overview.reset();
        PointerInWidget::TearDown();
    }
    [[nodiscard]] COverviewContent& Small() const {
        return *dynamic_cast<COverviewContent*>(overview->GetRoot()->GetChildren().at(0));
    }
    // The rectangle in pixels of the overview.
    [[nodiscard]] rectangle<double> View() const {
        const rectangle<double> r = Small().GetViewRect();
        point<double> from{r.left, r.top};
        point<double> to{r.right, r.bottom};
        Small().LP2DP(&from);
        Small().LP2DP(&to);
        return {from.x, from.y, to.x, to.y};
    }

    std::unique_ptr<OverviewWidget> overview;
};

TEST_F(PointerInOverview, AllOptionsAreOn) {
    EXPECT_TRUE(Small().GetGrabAnywhere());
    EXPECT_TRUE(Small().GetViewOverlay());
    EXPECT_EQ(Small().GetNodesHeldAbove(), 2000);
}

TEST_F(PointerInOverview, AnEdgeIsDraggedAndAPressBesideMovesTheView) {
    const rectangle<double> before = View();
    const int middle = static_cast<int>((before.top + before.bottom) / 2.0);
    const QPoint edge(static_cast<int>(before.right) + 2, middle);
    Move(overview.get(), edge);
    EXPECT_EQ(overview->cursor().shape(), Qt::SizeHorCursor);
    Drag(overview.get(), edge, edge + QPoint(20, 0));
    EXPECT_NEAR(View().left, before.left, 1.0);
    EXPECT_NEAR(View().right, before.right + 20.0, 1.0);
    Click(overview.get(), {390, 290});
    EXPECT_NEAR((View().left + View().right) / 2.0, 390.0, 1.0);
    EXPECT_NEAR((View().top + View().bottom) / 2.0, 290.0, 1.0);
}

TEST_F(PointerInOverview, CornersHaveCursorsOfTheirOwn) {
    const rectangle<double> r = View();
    Move(overview.get(), {static_cast<int>(r.right), static_cast<int>(r.bottom)});
    EXPECT_EQ(overview->cursor().shape(), Qt::SizeFDiagCursor);
    Move(overview.get(), {static_cast<int>(r.right), static_cast<int>(r.top)});
    EXPECT_EQ(overview->cursor().shape(), Qt::SizeBDiagCursor);
    Send(overview.get(), QEvent(QEvent::Leave));
    EXPECT_EQ(overview->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PointerInOverview, APanLeavesThePictureOfTheNodesAloneAndShowsTheRectangle) {
    const QImage nodes = overview->GetImage();
    const QImage shown = overview->grab().toImage();
    widget->viewer()->SetStartX(widget->viewer()->GetStartX() + 10.0);
    Settle();
    EXPECT_EQ(overview->GetImage(), nodes);
    EXPECT_NE(overview->grab().toImage(), shown);
    Select(b);
    widget->viewer()->RenewView(true);
    Settle();
    EXPECT_NE(overview->GetImage(), nodes);
}

TEST_F(PointerInOverview, ManyNodesArePaintedAgainWhenTheViewHasComeToRest) {
    const graph_ptr2<Graph> large(new Graph(), true);
    for (int i = 0; i < 2100; ++i) large->GetRoot().AddNode();
    widget->setGraph(large);
    Settle();
    const QImage before = overview->GetImage();
    for (Node node : large->GetRoot().GetOwned()) Select(node);
    widget->viewer()->RenewView(true);
    // Without the event loop no time is up.
    EXPECT_TRUE(overview->PaintPending());
    EXPECT_EQ(overview->GetImage(), before);
    QElapsedTimer clock;
    clock.start();
    while (overview->GetImage() == before && !clock.hasExpired(10000)) {
        QThread::msleep(5);
        Settle();
    }
    EXPECT_NE(overview->GetImage(), before);
}

}  // namespace
}  // namespace nodeline::qt

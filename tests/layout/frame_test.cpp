#include <gtest/gtest.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/internal/layout_engine.h>
#include <nodeline/ops/graph_ops.h>
#include <support/layout_graphs.h>
#include <support/layout_log.h>

#include <string>
#include <vector>

namespace nodeline::test {
namespace {

using Names = std::vector<std::string>;

Names NamesOf(const internal::Pipeline& pipeline) {
    Names names;
    for (const internal::Step& step : pipeline) names.emplace_back(step.name);
    return names;
}

Names Twice(Names names) {
    const Names once = names;
    names.insert(names.end(), once.begin(), once.end());
    return names;
}

const Names kMake{
    "determine_levels", "place_nodes_on_levels", "barycentric_adjust", "calculate_initial_y_coords",
    "force_adjust",     "calculate_x_coords",    "make_epilogue"};
const Names kUpdate{"restore_old_levels",
                    "make_y_shifts",
                    "determine_new_nodes_levels",
                    "place_nodes_on_levels",
                    "calculate_new_nodes_y_coords",
                    "calculate_x_coords",
                    "update_epilogue"};
const Names kResize{"restore_old_levels", "make_y_shifts", "calculate_x_coords", "resize_epilogue"};

TEST(LayoutFrame, ThreeTablesHoldTheStepsInOrder) {
    internal::LayoutEngine engine;
    EXPECT_TRUE(engine.make_steps.empty());
    engine.AppendSteps();
    EXPECT_EQ(NamesOf(engine.make_steps), kMake);
    EXPECT_EQ(NamesOf(engine.update_steps), kUpdate);
    EXPECT_EQ(NamesOf(engine.resize_steps), kResize);
}

TEST(LayoutFrame, ASecondInitAppendsTheStepsAgain) {
    internal::LayoutEngine engine;
    engine.AppendSteps();
    engine.AppendSteps();
    EXPECT_EQ(NamesOf(engine.make_steps), Twice(kMake));
    EXPECT_EQ(NamesOf(engine.update_steps), Twice(kUpdate));
    EXPECT_EQ(NamesOf(engine.resize_steps), Twice(kResize));
}

// The second round finds the nodes on their levels, and places them by the new spacings.
TEST(LayoutFrame, ASecondInitChangesTheSpacings) {
    BoxArrow g;
    const graph_ptr2<IncLayout> wide = IncLayout::Create();
    wide->Init(100.0, 20.0, 4.0, 7.0);
    g.graph->SetDefaultLayout(wide);
    g.Make();
    EXPECT_EQ(g.a.GetPosition().x, 107.0);
    EXPECT_GE(g.b.GetPosition().x, g.a.GetPosition().x + 40.0 + 7.0 + 100.0 + 7.0);
}

TEST(LayoutFrame, ALeafOnlyGetsTheSizeOfItsHandler) {
    Measured g;
    Node leaf = g.AddBox(70, 30);
    leaf.SetPosition(5.0, 6.0);
    g.layout->Make(leaf);
    EXPECT_EQ(leaf.GetSize().cx, 70.0);
    EXPECT_EQ(leaf.GetSize().cy, 30.0);
    EXPECT_EQ(leaf.GetPosition(), (point<double>{5.0, 6.0}));
    leaf.SetTag(SizeTag(10, 20));
    g.layout->Update(leaf);
    EXPECT_EQ(leaf.GetSize().cx, 1.0);
    leaf.SetTag(SizeTag(30, 40));
    g.layout->Resize(leaf);
    EXPECT_EQ(leaf.GetSize().cx, 3.0);
    EXPECT_EQ(leaf.GetSize().cy, 4.0);
}

TEST(LayoutFrame, AnEmptyRootGetsTheSizeOfItsHandler) {
    Measured g;
    g.root.SetSize({9.0, 9.0});
    g.Make();
    EXPECT_EQ(g.root.GetSize().cx, 0.0);
    EXPECT_EQ(g.root.GetSize().cy, 0.0);
}

// A make of the empty root forgets what the layout knew: the nodes that come later are all new.
TEST(LayoutFrame, AMakeOfAnEmptyRootForgetsTheOldPicture) {
    BoxArrow g;
    g.Make();
    g.a.Remove();
    g.b.Remove();
    g.Make();
    const Node c = g.AddBox(100, 20);
    g.Update();
    EXPECT_EQ(c.GetPosition(), (point<double>{35.0, 12.0}));
    EXPECT_EQ(g.root.GetSize().cx, 170.0);
}

TEST(LayoutFrame, AnUpdateOfAnOwnerThatWasNeverMadeTakesEveryNodeForNew) {
    BoxArrow made;
    made.Make();
    BoxArrow updated;
    updated.layout->Update(updated.root);
    EXPECT_EQ(updated.a.GetPosition(), made.a.GetPosition());
    EXPECT_EQ(updated.b.GetPosition(), made.b.GetPosition());
    EXPECT_EQ(updated.edge.GetBreakNodes().GetCount(), 4);
}

TEST(LayoutFrame, AResizeOfAnOwnerThatWasNeverMadePlacesNothing) {
    BoxArrow g;
    g.a.SetPosition(1.0, 2.0);
    g.layout->Resize(g.root);
    EXPECT_EQ(g.a.GetPosition(), (point<double>{1.0, 2.0}));
    EXPECT_EQ(g.root.GetSize().cx, 30.0);
    EXPECT_EQ(g.root.GetSize().cy, 0.0);
}

TEST(LayoutFrame, AnOwnerWithNothingButHiddenNodesIsLaidOut) {
    BoxArrow g;
    Hide(g.a);
    Hide(g.b);
    g.root.SetTag(SizeTag(5000, 5000));
    g.Make();
    // Two levels of no width, and the margin below nothing.
    EXPECT_EQ(g.root.GetSize().cx, 30.0);
    EXPECT_EQ(g.root.GetSize().cy, 12.0);
}

TEST(LayoutFrame, ANodeThatNamesItsOwnLayoutIsLeftToIt) {
    Measured g;
    LayoutLog::Lines lines;
    Node box = g.AddBox(11, 13);
    Node inside = Measured::AddBox(box, 40, 20);
    Node beside = g.AddBox();
    inside.SetSize({0.0, 0.0});
    box.SetLayout({new LayoutLog(lines, "own"), true});
    g.Make();
    EXPECT_EQ(lines, (LayoutLog::Lines{"own " + Line("make", box)}));
    EXPECT_EQ(inside.GetSize().cx, 0.0);
    EXPECT_EQ(beside.GetSize().cx, 40.0);
    g.Update();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1], "own " + Line("update", box));
}

// Contents of the contents that name the outer layout again go through it, inner ones first.
TEST(LayoutFrame, LayoutsMayTakeTurnsFromTheInsideOut) {
    Measured g;
    Node outer = g.AddBox(0, 0);
    Node middle = Measured::AddBox(outer, 0, 0);
    Node inner = Measured::AddBox(middle, 0, 0);
    const Node leaf = Measured::AddBox(inner, 100, 20);
    middle.SetLayout(IncLayout::Create());
    inner.SetLayout(g.layout);
    leaf.store()->set_node_layout(leaf.record(), middle.GetLayout());
    g.Make();
    EXPECT_EQ(inner.GetSize().cx, 170.0);
    EXPECT_EQ(inner.GetSize().cy, 44.0);
    EXPECT_EQ(middle.GetSize().cx, 240.0);
    EXPECT_EQ(outer.GetSize().cx, 310.0);
    EXPECT_EQ(outer.GetSize().cy, 92.0);
    EXPECT_EQ(leaf.GetPosition(), (point<double>{4 * 35.0, 4 * 12.0}));
}

TEST(LayoutFrame, TwoLayoutObjectsKnowNothingOfEachOther) {
    BoxArrow g;
    g.Make();
    const graph_ptr2<IncLayout> other = IncLayout::Create();
    // The other one has no record: a resize finds nothing to place, and forgets nothing of ours.
    other->Resize(g.root);
    EXPECT_EQ(g.root.GetSize().cy, 0.0);
    const point<double> before = g.b.GetPosition();
    g.Update();
    EXPECT_EQ(g.b.GetPosition(), before);
    EXPECT_EQ(g.root.GetSize().cy, 44.0);
}

TEST(LayoutFrame, AMakeOfAnInnerOwnerForgetsThatOwnerAlone) {
    Measured g;
    Node box = g.AddBox(0, 0);
    const Node inside = Measured::AddBox(box, 100, 20);
    Node beside = g.AddBox(100, 20);
    g.Make();
    beside.SetTag(SizeTag(100, 200));
    box.MakeLayout();
    g.Update();
    // The band of the root's level keeps the width that it had.
    EXPECT_EQ(beside.GetSize().cx, 10.0);
    EXPECT_EQ(beside.GetPosition().x, 30.0 + 5.0 + 0.5 * (170.0 - 10.0));
    EXPECT_EQ(inside.GetSize().cx, 100.0);
}

TEST(LayoutFrame, TheDefaultLayoutIsMadeOnce) {
    const graph_ptr2<ILayout> layout = GetDefaultLayout();
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout.get(), GetDefaultLayout().get());
    EXPECT_NE(dynamic_cast<IncLayout*>(layout.get()), nullptr);
    EXPECT_EQ(NewGraph()->GetRoot().GetLayout().get(), layout.get());
}

TEST(LayoutFrame, FreeFunctionsGoThroughTheLayoutOfTheNode) {
    Measured g;
    LayoutLog::Lines lines;
    Node node = g.AddBox();
    node.SetLayout({new LayoutLog(lines), true});
    _make_layout(node);
    _update_layout(node);
    EXPECT_EQ(lines, (LayoutLog::Lines{Line("make", node), Line("update", node)}));
}

TEST(LayoutFrame, AnUpdateTakesTheCaptionOffYAndNotOffX) {
    Measured g;
    Node box = g.AddBox(0, 50);
    const Node first = Measured::AddBox(box, 100, 20);
    g.Make();
    const double x = first.GetPosition().x - box.GetPosition().x;
    // A drawing that would begin above the margin comes back down to it: nothing moves.
    g.Update();
    EXPECT_EQ(first.GetPosition().x - box.GetPosition().x, x);
    EXPECT_EQ(first.GetPosition().y - box.GetPosition().y, 12.0);
    Node below = Measured::AddBox(box, 100, 20);
    Node link = Measured::AddBox(box, 100, 20);
    below.LinkTo(link);
    g.Update();
    EXPECT_GE(below.GetPosition().y, box.GetPosition().y + 12.0);
}

}  // namespace
}  // namespace nodeline::test

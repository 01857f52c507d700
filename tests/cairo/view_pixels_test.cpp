// What partial paints leave on the screen is what one paint of everything would leave.
#include <backends/cairo/image_window.h>
#include <backends/headless/headless_window.h>
#include <gtest/gtest.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>
#include <support/random_graph.h>
#include <support/view_session.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace nodeline {
namespace {

using cairo::ImageWindow;
using headless::HeadlessWindow;
using Pixels = std::vector<std::uint32_t>;

// Fills the rectangle of a node, and nothing beyond it. A click selects.
class TileHandler : public INodeHandler {
public:
    void Draw(Node node, IPainter* painter) override {
        if (!IsFlagSet(node, NodeDrawn)) return;
        const auto shade = static_cast<unsigned char>(40 + node.GetID() % 7 * 30);
        const bool selected = IsFlagSet(node, NodeSelected);
        painter->SetBrush(
            {selected ? paintcore::_color(250, shade, 0) : paintcore::_color(0, shade, 220), 1});
        painter->FillRect(MakeDRect(node.GetPosition(), node.GetSize()));
    }
    size<double> GetSize(Node) override { return {37.0, 19.0}; }
    NodeFrame GetSize(Node, size<double> inner) override {
        return {{inner.cx + 10.0, inner.cy + 10.0}, {5.0, 5.0}};
    }
    int HandleClick(Node node, double x, double y, int keys, MouseButton button) override {
        INodeHandler::HandleClick(node, x, y, keys, button);
        SetFlag(node, NodeSelected, !IsFlagSet(node, NodeSelected));
        return HandlerRepaint;
    }
};

class InvisibleEdges : public IEdgeHandler {
public:
    void Draw(Edge, IPainter*) override {}
    double GetWidth(Edge) const override { return 1.0; }
};

graph_ptr2<Graph> TiledGraph(std::uint64_t seed) {
    test::RandomGraphPlan plan;
    plan.nodes = 30;
    plan.edges = 40;
    plan.depth = 3;
    const test::RandomGraph random_graph(seed, plan);
    const graph_ptr2<Graph> graph = random_graph.graph;
    graph->SetDefaultLayout(checked_upcast<ILayout>(StableLayout::Create()));
    graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new TileHandler, true));
    graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(new InvisibleEdges, true));
    return graph;
}

// How many pixels differ.
int CountDifferences(const Pixels& a, const Pixels& b) {
    if (a.size() != b.size()) return -1;
    int count = 0;
    for (std::size_t i = 0; i < a.size(); ++i) count += a[i] != b[i] ? 1 : 0;
    return count;
}

struct PixelCase {
    std::uint64_t seed;
    bool keeps_scale;
};

class ViewPixels : public ::testing::TestWithParam<PixelCase> {};

TEST_P(ViewPixels, AfterPartialPaintsAreThoseOfAFullOne) {
    ImageWindow window({320, 220});
    HeadlessWindow overview_window({100, 60});
    test::ViewSessionPlan plan;
    plan.keeps_scale = GetParam().keeps_scale;
    test::ViewSession session(GetParam().seed, plan, &window, &overview_window,
                              TiledGraph(GetParam().seed));
    test::Random random(GetParam().seed);
    std::string steps;
    for (int i = 0; i < 1500; ++i) {
        steps += session.Step() + ", ";
        if (!random.OneIn(12)) continue;
        session.Paint();
        const Pixels partial = window.GetPixels();
        window.GetControl().InvalidateAll();
        window.PaintPending();
        ASSERT_EQ(CountDifferences(partial, window.GetPixels()), 0) << i << ": " << steps;
        steps.clear();
    }
}

INSTANTIATE_TEST_SUITE_P(Sessions, ViewPixels,
                         ::testing::Values(PixelCase{1, true}, PixelCase{2, true},
                                           PixelCase{3, true}, PixelCase{4, false},
                                           PixelCase{5, false}, PixelCase{6, false}));

// The stock handlers draw a little beyond: half a pen around a node, the wings of an arrowhead.
class StockView : public ::testing::TestWithParam<int> {
protected:
    static constexpr int kReach = 8;   // pixels that a handler may draw beyond
    static constexpr int kShade = 16;  // of 255

    StockView() {
        const auto seed = static_cast<std::uint64_t>(GetParam());
        test::RandomGraph random_graph(seed);
        for (Node node : random_graph.nodes) {
            node.SetCaption("node " + std::to_string(node.GetID() % 50));
        }
        graph = random_graph.graph;
        graph->SetDefaultLayout(checked_upcast<ILayout>(StableLayout::Create()));
        const graph_ptr2<PortNodeHandler> handler(new PortNodeHandler, true);
        handler->SetIPainter(window.GetPainter());
        graph->SetDefaultNodeHandler(handler);
        viewer->SetGraph(graph);
        viewer->ScrollbarsEnable(false);
        window.PaintPending();
    }

    // Slanted lines are cut off at the edges of the picture or of a strip, and the rounding of the
    // cut shades them anew.
    static bool IsClearlyOther(std::uint32_t a, std::uint32_t b) {
        for (const int shift : {0, 8, 16}) {
            const auto level = [shift](std::uint32_t pixel) {
                return static_cast<int>(pixel >> shift & 0xffU);
            };
            if (std::abs(level(a) - level(b)) > kShade) return true;
        }
        return false;
    }

    // The pixels that a full paint changes.
    std::vector<point<int>> PaintAllAndCompare() {
        const Pixels partial = window.GetPixels();
        window.GetControl().InvalidateAll();
        window.PaintPending();
        const Pixels full = window.GetPixels();
        std::vector<point<int>> changed;
        for (std::size_t i = 0; i < full.size(); ++i) {
            if (!IsClearlyOther(full[i], partial[i])) continue;
            const int at = static_cast<int>(i);
            changed.push_back({at % kWidth, at / kWidth});
        }
        return changed;
    }

    static constexpr int kWidth = 420;
    static constexpr int kHeight = 300;
    ImageWindow window{{kWidth, kHeight}};
    CGraphViewer* viewer = new CGraphViewer(window.GetRoot(), {}, true);
    graph_ptr2<Graph> graph;
};

TEST_P(StockView, AfterAScrollDiffersFromAFullPaintOnlyAlongTheStrips) {
    test::Random random(static_cast<std::uint64_t>(GetParam()));
    for (int i = 0; i < 40; ++i) {
        const int dx = random.Between(-30, 30);
        const int dy = random.Between(-20, 20);
        viewer->SetStartX(viewer->GetStartX() + dx);
        viewer->SetStartY(viewer->GetStartY() + dy);
        window.PaintPending();
        const int edge_x = dx > 0 ? kWidth - dx : -dx;
        const int edge_y = dy > 0 ? kHeight - dy : -dy;
        for (const point<int>& at : PaintAllAndCompare()) {
            const bool is_at_edge = at.x < kReach || at.x >= kWidth - kReach || at.y < kReach ||
                                    at.y >= kHeight - kReach;
            ASSERT_TRUE(is_at_edge || std::abs(at.x - edge_x) <= kReach ||
                        std::abs(at.y - edge_y) <= kReach)
                << at.x << ", " << at.y << " after a scroll by " << dx << ", " << dy;
        }
    }
}

TEST_P(StockView, AfterASelectionDiffersFromAFullPaintOnlyWhereItWasPaintedOver) {
    std::vector<Node> leaves;
    ForEachNodeIn(
        graph->GetRoot(),
        [&leaves](const Node& node) {
            if (node.GetOwned().GetCount() == 0) leaves.push_back(node);
        },
        false, false);
    test::Random random(static_cast<std::uint64_t>(GetParam()));
    for (int i = 0; i < 20; ++i) {
        const Node node = random.Of(leaves);
        SetFlag(node, NodeSelected, !IsFlagSet(node, NodeSelected));
        viewer->GetContent()->NoteRepaint(node);
        viewer->RenewView(false);
        window.PaintPending();
        // The node, and the edges that meet it.
        std::vector<rectangle<double>> painted{MakeDRect(node.GetPosition(), node.GetSize())};
        CollectEdgesInNodes collect{{}, graph};
        collect(node);
        for (const Edge& edge : collect.edges) {
            rectangle<double> box{1e9, 1e9, -1e9, -1e9};
            const NodeSet bends = edge.GetBreakNodes();
            for (int b = 0; b < bends.GetCount(); ++b) {
                const point<double> p = bends.GetItem(b).GetPosition();
                box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
                       std::max(box.bottom, p.y)};
            }
            painted.push_back(box);
        }
        for (const point<int>& at : PaintAllAndCompare()) {
            const double x = at.x + viewer->GetStartX();
            const double y = at.y + viewer->GetStartY();
            ASSERT_TRUE(std::any_of(painted.begin(), painted.end(),
                                    [x, y](const auto& r) {
                                        return x > r.left - kReach && x < r.right + kReach &&
                                               y > r.top - kReach && y < r.bottom + kReach;
                                    }))
                << at.x << ", " << at.y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Graphs, StockView, ::testing::Range(1, 6));

// A surface of coloured squares, to see what a window does with pixels alone.
TEST(ImageWindow, MovesPixelsInEveryDirection) {
    class Squares : public viewkit::CVisualElement {
    public:
        explicit Squares(CVisualElement* parent)
            : CVisualElement(parent, {1, 1}, viewkit::Alignment::Client) {}
        void DrawContent(IPainter* painter) override {
            for (int y = 0; y < 20; ++y) {
                for (int x = 0; x < 30; ++x) {
                    painter->SetBrush({paintcore::_color(static_cast<unsigned char>(8 * x),
                                                         static_cast<unsigned char>(12 * y), 7),
                                       1});
                    painter->FillRect(x, y, x + 1.0, y + 1.0);
                }
            }
        }
    };
    // The second one reaches beyond the window on all sides.
    for (const rectangle<int>& area : {rectangle<int>{5, 4, 25, 18}, {-40, -50, 60, 70}}) {
        const auto is_in = [&area](int x, int y) {
            return x >= std::max(0, area.left) && x < std::min(30, area.right) &&
                   y >= std::max(0, area.top) && y < std::min(20, area.bottom);
        };
        for (const auto [dx, dy] :
             {point<int>{3, 0}, {-3, 0}, {0, 4}, {0, -4}, {2, -5}, {-7, 6}, {35, 0}, {-9, 45}}) {
            ImageWindow window({30, 20});
            new Squares(window.GetRoot());
            window.PaintPending();
            const Pixels before = window.GetPixels();
            EXPECT_TRUE(window.MovePixels(area, dx, dy));
            const Pixels after = window.GetPixels();
            for (int y = 0; y < 20; ++y) {
                for (int x = 0; x < 30; ++x) {
                    if (is_in(x, y) && !is_in(x - dx, y - dy)) continue;  // uncovered
                    const int from = is_in(x, y) ? (y - dy) * 30 + x - dx : y * 30 + x;
                    EXPECT_EQ(after[static_cast<std::size_t>(y * 30 + x)],
                              before[static_cast<std::size_t>(from)])
                        << x << ", " << y << " by " << dx << ", " << dy;
                }
            }
        }
    }
}

// The picture of a surface that is larger than its window, moved, is that of one painted at once.
TEST(ImageWindow, ShowsASurfaceThatReachesBeyondIt) {
    const graph_ptr2<Graph> graph = TiledGraph(3);
    const auto paint = [&graph](bool in_steps) {
        ImageWindow window({100, 80});
        auto* viewer = new CGraphViewer(window.GetRoot(), {1, 1}, viewkit::Alignment::None);
        viewer->SetPos({-20, -10, 400, 300}, true);
        viewer->SetGraph(graph);
        for (int i = 1; i <= 3; ++i) {
            if (in_steps) window.PaintPending();
            viewer->SetStartX(15.0 * i);
            viewer->SetStartY(5.0 * i);
        }
        window.PaintPending();
        return window.GetPixels();
    };
    EXPECT_EQ(paint(true), paint(false));
}

TEST(ImageWindow, ShowsOverlaysButDoesNotPaintThem) {
    class Dot : public viewkit::CVisualElement {
    public:
        explicit Dot(CVisualElement* parent)
            : CVisualElement(parent, {1, 1}, viewkit::Alignment::Client) {}
        void DrawOverlay(IPainter* painter) override {
            painter->SetBrush({paintcore::_color(1, 2, 3), 1});
            painter->FillRect(4.0, 5.0, 5.0, 6.0);
        }
    };
    ImageWindow window({10, 10});
    new Dot(window.GetRoot());
    window.PaintPending();
    EXPECT_NE(window.GetPixels()[54], 0x010203U);
    EXPECT_EQ(window.GetShownPixels()[54], 0x010203U);
    EXPECT_NE(window.GetPixels()[54], 0x010203U);
}

TEST(ImageWindow, MayBeResizedFromWithinItsPaint) {
    class Grower : public viewkit::CVisualElement {
    public:
        explicit Grower(ImageWindow* window)
            : CVisualElement(window->GetRoot(), {1, 1}, viewkit::Alignment::Client),
              window_(window) {}
        void DrawContent(IPainter* painter) override {
            if (window_->GetRect().right == 10) window_->Resize({20, 20});
            painter->SetBrush({paintcore::_color(1, 2, 3), 1});
            painter->FillRect(0.0, 0.0, 20.0, 20.0);
        }

    private:
        ImageWindow* window_;
    };
    ImageWindow window({10, 10});
    new Grower(&window);
    while (window.PaintPending()) {
    }
    const Pixels pixels = window.GetPixels();
    ASSERT_EQ(pixels.size(), 400U);
    EXPECT_EQ(pixels[399], 0x010203U);
}

TEST(ImageWindow, WritesAPngOrSaysWhyNot) {
    ImageWindow window({10, 10});
    window.PaintPending();
    const std::string path = ::testing::TempDir() + "nodeline-image-window.png";
    std::string error;
    EXPECT_TRUE(window.SavePng(path, &error)) << error;
    EXPECT_FALSE(window.SavePng(::testing::TempDir() + "no-such-folder/x.png", &error));
    EXPECT_NE(error.find("cannot write"), std::string::npos);
}

}  // namespace
}  // namespace nodeline

#include <apps/cli/laid_out_graph.h>

#include <apps/cli/input.h>
#include <apps/cli/progress.h>
#include <formats/attribute_handlers.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/measuring_painter.h>
#else
#include <backends/headless/recording_painter.h>
#endif

#include <algorithm>
#include <iostream>
#include <iterator>
#include <utility>

namespace nodeline::cli {

namespace {

// Texts are as wide as pictures will show them; a build without pictures takes fixed widths.
std::unique_ptr<paintcore::IPainter> make_measuring_painter() {
#ifdef NODELINE_WITH_CAIRO
    return std::make_unique<cairo::MeasuringPainter>();
#else
    auto painter = std::make_unique<headless::RecordingPainter>();
    painter->SetRecording(false);
    return painter;
#endif
}

template <class Item>
void sort_by_id(std::vector<Item>& items) {
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.GetID() < b.GetID(); });
}

// How far a route reaches, with a margin.
paintcore::size<double> extent_of(const NodeSet& route) {
    constexpr double kMargin = 12.0;
    paintcore::size<double> extent{0.0, 0.0};
    for (const Node& bend : route) {
        const point<double> position = bend.GetPosition();
        extent = {std::max(extent.cx, position.x + kMargin),
                  std::max(extent.cy, position.y + kMargin)};
    }
    return extent;
}

// The route between a node and one that owns it may lead far away from both, so it is no measure.
bool owns(const Node& owner, const Node& node) {
    for (Node p = node.GetOwner(); p; p = p.GetOwner()) {
        if (p == owner) return true;
    }
    return false;
}

// "3 nodes", or "1 of 3 nodes" where some are hidden.
template <class Item>
std::string count_shown(const std::vector<Item>& items, int drawn_flag, const std::string& name) {
    const auto is_shown = [&](const Item& item) { return IsFlagSet(item, drawn_flag); };
    const auto shown = std::count_if(items.begin(), items.end(), is_shown);
    const auto all = std::ssize(items);
    const std::string count = shown == all ? "" : std::to_string(shown) + " of ";
    return count + std::to_string(all) + " " + name + (all == 1 ? "" : "s");
}

}  // namespace

LaidOutGraph::LaidOutGraph(const GraphOptions& options)
    : measure_(make_measuring_painter()), graph_(new Graph, true) {
    looks_ = ReadGraph(graph_, options.input, {.show_all = options.show_all}).looks;
    choose_handlers(options.handler);
    choose_layout(options.layout);
    collect();
    was_narrowed_ = hides_nodes();
    lay_out(options);
    MarkDrawnIn(graph_);
}

void LaidOutGraph::lay_out(const GraphOptions& options) {
    std::vector<Node> changed;
    for (const ViewChange& change : options.changes) {
        changed.push_back(FindNode(nodes_, change.node, options.input));
    }
    const Progress progress("laying out " + std::to_string(nodes_.size()) + " nodes");
    graph_->RecalculateLayout(measure_.get());
    for (std::size_t i = 0; i < changed.size(); ++i) {
        Apply(options.changes[i], changed[i]);
        graph_->RecalculateLayout(measure_.get());
    }
}

void LaidOutGraph::choose_handlers(const std::string& handler) {
    if (handler == "default") {
        graph_->SetDefaultNodeHandler(GetDefaultNodeHandler());
        return;
    }
    if (handler == "simple") {
        graph_ptr2<SimpleNodeHandler> boxes(new SimpleNodeHandler, true);
        boxes->SetIPainter(measure_.get());
        graph_->SetDefaultNodeHandler(boxes);
        return;
    }
    const graph_ptr2<PortNodeHandler> nodes = formats::MakePortNodeHandler(looks_);
    nodes->SetIPainter(measure_.get());
    graph_->SetDefaultNodeHandler(nodes);
    if (const graph_ptr2<IEdgeHandler> edges = formats::MakeEdgeHandler(looks_)) {
        graph_->SetDefaultEdgeHandler(edges);
    }
}

void LaidOutGraph::choose_layout(const std::string& layout) {
    if (layout == "inc") {
        graph_->SetDefaultLayout(IncLayout::Create());
    } else {
        graph_->SetDefaultLayout(
            StableLayout::Create({.caption_room = StableLayout::Options::kCaptionRoom}));
    }
}

void LaidOutGraph::collect() {
    const auto take = [this](const Node& node) {
        nodes_.push_back(node);
        for (const Edge& edge : node.GetEdgesOut()) edges_.push_back(edge);
    };
    ForEachNodeIn(graph_->GetRoot(), take, false, false);
    sort_by_id(nodes_);
    sort_by_id(edges_);
}

std::string LaidOutGraph::Summary() const {
    const int levels = count_levels();
    return count_shown(nodes_, NodeDrawn, "node") + ", " + count_shown(edges_, EdgeDrawn, "edge") +
           ", " + std::to_string(levels) + (levels == 1 ? " level" : " levels");
}

bool LaidOutGraph::hides_nodes() const {
    return std::any_of(nodes_.begin(), nodes_.end(),
                       [](const Node& node) { return IsFlagSet(node, NodeHidden); });
}

bool LaidOutGraph::IsNarrowed() const { return was_narrowed_ && hides_nodes(); }

// The nodes of a level are centred in a band of their own, so all of them meet its middle, and
// those of the next one begin further right than all of them end.
int LaidOutGraph::count_levels() const {
    std::vector<std::pair<double, double>> spans;
    for (const Node& node : graph_->GetRoot().GetOwned()) {
        if (!IsFlagSet(node, NodeDrawn)) continue;
        const double left = node.GetPosition().x;
        spans.emplace_back(left, left + node.GetSize().cx);
    }
    std::sort(spans.begin(), spans.end());
    int levels = 0;
    double end = 0.0;
    for (const auto& [left, right] : spans) {
        if (levels == 0 || left > end) {
            ++levels;
            end = right;
        }
        end = std::max(end, right);
    }
    return levels;
}

paintcore::size<double> LaidOutGraph::PictureSize() const {
    paintcore::size<double> size = graph_->GetRoot().GetSize();
    for (const Edge& edge : edges_) {
        if (!IsFlagSet(edge, EdgeDrawn)) continue;
        const paintcore::size<double> extent = extent_of(edge.GetBreakNodes());
        const bool is_inside = extent.cx <= size.cx && extent.cy <= size.cy;
        if (is_inside || owns(edge.From(), edge.To()) || owns(edge.To(), edge.From())) continue;
        size = {std::max(size.cx, extent.cx), std::max(size.cy, extent.cy)};
    }
    return size;
}

void LaidOutGraph::Draw(paintcore::IPainter& painter, double scale) const {
    DrawGraph(graph_, &painter, scale);
}

}  // namespace nodeline::cli

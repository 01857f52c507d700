// Lays a graph out, and measures drawings: what the script next to this compares layouts with.
//
//   bench-quality graph GRAPH               the nodes and edges, for other programs to lay out
//   bench-quality draw inc|stable GRAPH     a drawing, as `quality_drawing.h` describes it
//   bench-quality measure < DRAWING         a line for each measure: its name and its value
//
// GRAPH is a graph file, or a generated graph like "nested:200". All of it is shown, in nodes whose
// sizes go by the lengths of their captions, but for edges between a node and one that owns it:
// not every program can draw those. `graph` prints
//
//   n NODE OWNER WIDTH HEIGHT
//   e EDGE FROM TO
//
// with the numbers that the drawing has; the size of a node that owns others is that of its
// contents.
#include <bench/built_graph.h>
#include <bench/quality_measures.h>
#include <bench/stopwatch.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>
#include <paintcore/utf8.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nodeline::bench {

namespace {

class CaptionHandler : public INodeHandler {
public:
    void Draw(Node, IPainter*) override {}
    nodeline::size<double> GetSize(Node node) override {
        if (node.GetOwned().GetCount() > 0) return {0.0, 0.0};
        constexpr std::size_t kLongest = 24;
        const std::size_t length = paintcore::CountCodePoints(node.GetCaption());
        return {12.0 + 7.0 * static_cast<double>(std::clamp<std::size_t>(length, 2, kLongest)),
                20.0};
    }
    NodeFrame GetSize(Node, nodeline::size<double> inner) override { return {inner, {0.0, 0.0}}; }
};

graph_ptr2<Graph> load_file(const std::string& path) {
    std::ifstream in(path);
    if (!in) throw std::runtime_error("cannot read " + path);
    graph_ptr2<Graph> graph(new Graph, true);
    LoadError error;
    if (!Load(graph, in, &error)) {
        throw std::runtime_error(path + ":" + std::to_string(error.line) + ": " + error.reason);
    }
    return graph;
}

// Nothing if the name is not that of a generated graph.
graph_ptr2<Graph> generate(const std::string& name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos) return {};
    const Family* family = FindFamily(std::string_view(name).substr(0, colon));
    int nodes = 0;
    std::from_chars(name.data() + colon + 1, name.data() + name.size(), nodes);
    if (family == nullptr || nodes < 10) return {};
    return Build(family->plan(nodes)).graph;
}

bool owns(const Node& owner, Node node) {
    while (node && node != owner) node = node.GetOwner();
    return node == owner;
}

// A graph that is ready to be laid out, with its nodes and edges in order.
class Subject {
public:
    explicit Subject(const std::string& name) : graph_(generate(name)) {
        if (!graph_) graph_ = load_file(name);
        graph_->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(new CaptionHandler, true));
        ForEachNodeIn(
            graph_->GetRoot(), [this](const Node& node) { nodes_.push_back(node); }, false, false);
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            nodes_[i].SetTag(static_cast<int>(i));
            Show(nodes_[i]);
            MarkOld(nodes_[i]);
        }
        for (const Node& node : nodes_) take_edges_of(node);
    }

    void PrintGraph() const {
        const graph_ptr2<INodeHandler> handler = graph_->GetDefaultNodeHandler();
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            const nodeline::size<double> box = handler->GetSize(nodes_[i]);
            std::printf("n %zu %d %g %g\n", i, owner_of(nodes_[i]), box.cx, box.cy);
        }
        for (std::size_t i = 0; i < edges_.size(); ++i) {
            std::printf("e %zu %d %d\n", i, edges_[i].From().GetTag(), edges_[i].To().GetTag());
        }
    }

    Drawing Draw(const graph_ptr2<ILayout>& layout) {
        graph_->SetDefaultLayout(layout);
        Drawing drawing;
        const Stopwatch watch;
        graph_->RecalculateLayout(nullptr);
        drawing.milliseconds = 1e3 * watch.Seconds();
        for (const Node& node : nodes_) {
            drawing.nodes.push_back(
                {owner_of(node), MakeDRect(node.GetPosition(), node.GetSize())});
        }
        for (const Edge& edge : edges_) {
            DrawnEdge drawn{edge.From().GetTag(), edge.To().GetTag(), {}, {}};
            for (const Node& bend : edge.GetBreakNodes()) {
                drawn.route.push_back(bend.GetPosition());
            }
            drawing.edges.push_back(std::move(drawn));
        }
        return drawing;
    }

private:
    static int owner_of(const Node& node) {
        const Node owner = node.GetOwner();
        return IsRoot(owner) ? kInRoot : owner.GetTag();
    }

    void take_edges_of(const Node& node) {
        std::vector<Edge> edges;
        for (const Edge& edge : node.GetEdgesOut()) edges.push_back(edge);
        for (Edge& edge : edges) {
            const Node to = edge.To();
            if (node != to && (owns(node, to) || owns(to, node))) {
                edge.Remove();
            } else {
                edges_.push_back(edge);
            }
        }
    }

    graph_ptr2<Graph> graph_;
    std::vector<Node> nodes_;
    std::vector<Edge> edges_;
};

void print_measures(const Measures& measures) {
    std::printf("edges %lld\ncrossings %lld\nbends %lld\nlength %.6g\nwidth %.6g\nheight %.6g\n",
                measures.edges, measures.crossings, measures.bends, measures.length, measures.width,
                measures.height);
    std::printf("over %lld\n", measures.runs_over);
}

bool run(const std::vector<std::string>& words) {
    if (words == std::vector<std::string>{"measure"}) {
        const Drawing drawing = ReadDrawing(std::cin);
        print_measures(Measure(drawing));
        std::printf("ms %.6g\n", drawing.milliseconds);
    } else if (words.size() == 2 && words[0] == "graph") {
        Subject(words[1]).PrintGraph();
    } else if (words.size() == 3 && words[0] == "draw" && words[1] == "inc") {
        WriteDrawing(std::cout, Subject(words[2]).Draw(IncLayout::Create()));
    } else if (words.size() == 3 && words[0] == "draw" && words[1] == "stable") {
        WriteDrawing(std::cout, Subject(words[2]).Draw(StableLayout::Create()));
    } else {
        return false;
    }
    return true;
}

int answer(const std::vector<std::string>& words) {
    try {
        if (!run(words)) {
            std::fprintf(stderr,
                         "usage: bench-quality graph GRAPH\n"
                         "       bench-quality draw inc|stable GRAPH\n"
                         "       bench-quality measure < DRAWING\n");
            return 2;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-quality: %s\n", error.what());
        return 1;
    }
    std::cout.flush();
    return std::cout && std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) { return nodeline::bench::answer({argv + 1, argv + argc}); }

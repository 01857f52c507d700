#include <formats/file_graph.h>
#include <formats/file_ids.h>
#include <nodeline/ops/graph_ops.h>

#include <charconv>
#include <cstddef>
#include <utility>

namespace nodeline::formats {

namespace {

std::optional<int> integer_of(const std::string& name) {
    int value = 0;
    const char* end = name.data() + name.size();
    const std::from_chars_result result = std::from_chars(name.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

class Filler {
public:
    Filler(const graph_ptr2<Graph>& graph, const FileGraph& file, const ReadOptions& options,
           ReadReport& report)
        : root_(graph->GetRoot()), file_(file), options_(options), report_(report) {}

    void Run() {
        root_.Remove();
        nodes_.resize(file_.nodes.size());
        std::vector<std::optional<int>> names;
        for (const FileNode& node : file_.nodes) names.push_back(integer_of(node.name));
        const std::vector<int> tags = ChooseIds(names);
        find_siblings();
        for (int place = 0; place < file_.CountNodes(); ++place) make_node(place);
        for (std::size_t i = 0; i < nodes_.size(); ++i) nodes_[i].SetTag(tags[i]);
        for (const FileEdge& edge : file_.edges) make_edge(edge);
        if (!file_.place) return;
        hide_nodes();
        if (options_.show_all && has_hidden_) return;
        place_nodes();
        place_edges();
        // A new graph has asked for a layout, which would undo this one.
        root_.store()->clear_make_list();
        root_.store()->clear_update_list();
        root_.store()->clear_resize_list();
        report_.has_layout = true;
    }

private:
    [[nodiscard]] const FileNode& in_file(int place) const {
        return file_.nodes[static_cast<std::size_t>(place)];
    }
    Node& made(int place) { return nodes_[static_cast<std::size_t>(place)]; }

    void find_siblings() {
        previous_.resize(file_.nodes.size(), FileGraph::kRoot);
        if (!file_.owners_have_places) return;
        // The last node so far in each owner; the root comes first.
        std::vector<int> last(file_.nodes.size() + 1, FileGraph::kRoot);
        for (std::size_t i = 0; i < file_.nodes.size(); ++i) {
            int& in_owner = last[static_cast<std::size_t>(file_.nodes[i].owner + 1)];
            previous_[i] = in_owner;
            in_owner = static_cast<int>(i);
        }
    }

    [[nodiscard]] bool is_missing(int place) { return place != FileGraph::kRoot && !made(place); }

    // What has to be there first is made first: the owner, and the siblings ahead in the file.
    void make_node(int place) {
        waiting_.push_back(place);
        while (!waiting_.empty()) {
            const int next = waiting_.back();
            const int previous = previous_[static_cast<std::size_t>(next)];
            if (is_missing(in_file(next).owner)) {
                waiting_.push_back(in_file(next).owner);
            } else if (is_missing(previous)) {
                waiting_.push_back(previous);
            } else {
                if (is_missing(next)) add_node(next);
                waiting_.pop_back();
            }
        }
    }

    void add_node(int place) {
        if (options_.check) options_.check();
        const FileNode& from = in_file(place);
        Node& node = made(place);
        node = (from.owner == FileGraph::kRoot ? root_ : made(from.owner)).AddNode();
        node.SetCaption(from.caption);
        if (!from.look.IsPlain()) report_.looks.nodes.emplace(node.GetID(), from.look);
    }

    void make_edge(const FileEdge& from) {
        Edge edge = made(from.from).LinkTo(made(from.to));
        edge.SetCaption(from.caption);
        if (!from.look.IsPlain()) report_.looks.edges.emplace(edge.GetID(), from.look);
        edges_.push_back(edge);
    }

    void hide_nodes() {
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            if (!file_.nodes[i].is_hidden) continue;
            has_hidden_ = true;
            if (!options_.show_all) Hide(nodes_[i]);
        }
    }

    static void place_node(Node node, const Place& place) {
        node.SetPosition(place.position);
        node.SetSize(place.extent);
    }

    void place_nodes() {
        place_node(root_, *file_.place);
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            place_node(nodes_[i], file_.nodes[i].place.value_or(Place()));
        }
    }

    // The root is an owner that every edge runs through, or may be said to.
    void place_edges() {
        for (std::size_t i = 0; i < edges_.size(); ++i) {
            const std::vector<point<double>>& route = file_.edges[i].route;
            if (route.empty()) continue;
            edges_[i].AddBreakNodesIn(root_, static_cast<int>(route.size()));
            const NodeSet bends = edges_[i].GetBreakNodesIn(root_);
            for (std::size_t k = 0; k < route.size(); ++k) {
                bends.GetItem(static_cast<int>(k)).SetPosition(route[k].x, route[k].y);
            }
        }
    }

    Node root_;
    const FileGraph& file_;
    const ReadOptions& options_;
    ReadReport& report_;
    std::vector<Node> nodes_;
    // The sibling ahead of each node in the file; none of the first ones.
    std::vector<int> previous_;
    std::vector<int> waiting_;  // to be made; empty between nodes
    std::vector<Edge> edges_;
    bool has_hidden_ = false;
};

}  // namespace

int FileGraph::AddNode(FileNode node) {
    nodes.push_back(std::move(node));
    return CountNodes() - 1;
}

void FillGraph(const graph_ptr2<Graph>& graph, const FileGraph& file, const ReadOptions& options,
               ReadReport& report) {
    Filler(graph, file, options, report).Run();
}

}  // namespace nodeline::formats

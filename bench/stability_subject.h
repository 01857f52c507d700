// A graph that changes while one of several keepers keeps its picture up to date.
//
//   bench::Subject subject(graph, bench::Keepers().front());
//   subject.Apply(change);
//   rectangle<double> box = subject.BoxOf(7);
#pragma once

#include <bench/stability_graphs.h>
#include <nodeline/model/graph.h>

#include <string_view>
#include <vector>

namespace nodeline::bench {

// A way to keep a picture up to date. A further layout is one more entry of `Keepers`.
struct Keeper {
    std::string_view name;
    graph_ptr2<ILayout> (*new_layout)();
    // Whether every change is followed by a layout from scratch, in place of what it asks for.
    bool afresh;
    // Whether the handler answers with the box of the caption for owners and the root too, as the
    // stock handler does; else with a box without height.
    bool headers;
};
const std::vector<Keeper>& Keepers();

enum class ChangeKind { kFold, kUnfold, kAddLeaf, kAddEdge, kGrow };
std::string_view NameOf(ChangeKind kind);

// Nodes go by number, in the order of making.
struct Change {
    ChangeKind kind;
    // Whose children are folded or unfolded, next to which the leaf is put, where the edge starts,
    // which grows.
    int node;
    // The other end of an added edge.
    int other = -1;
    // Whether the edge of an added leaf leads to it.
    bool to_leaf = true;
    int caption_length = 0;
    nodeline::size<double> growth{0.0, 0.0};
};

class Subject {
public:
    // Lays the graph out from scratch.
    Subject(const WatchedGraph& watched, const Keeper& keeper);

    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;

    // Changes the graph and brings the picture up to date.
    void Apply(const Change& change);

    [[nodiscard]] int node_count() const { return static_cast<int>(nodes_.size()); }
    [[nodiscard]] const Node& NodeAt(int number) const {
        return nodes_[static_cast<std::size_t>(number)];
    }
    // `kInRoot` for the root.
    [[nodiscard]] static int NumberOf(const Node& node);
    // Whether neither the node nor an owner of it is hidden.
    [[nodiscard]] bool IsVisible(int number) const;
    // In the coordinates of the picture.
    [[nodiscard]] rectangle<double> BoxOf(int number) const;
    // The size of the node without regard to what it owns.
    [[nodiscard]] nodeline::size<double> OwnSizeOf(int number) const {
        return own_sizes_[static_cast<std::size_t>(number)];
    }

private:
    Node add_node(Node owner, int caption_length);
    void fold(Node node, bool unfold);
    void ask_for_update(const Node& a, const Node& b);

    const Keeper& keeper_;
    // The handler of the graph reads it.
    std::vector<nodeline::size<double>> own_sizes_;
    graph_ptr2<Graph> graph_;
    std::vector<Node> nodes_;
};

}  // namespace nodeline::bench

// The working state of one layout run: one owner, in dense arrays.
#pragma once

#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/internal/layout_records.h>
#include <nodeline/model/graph.h>
#include <nodeline/ops/internal/owner_edges.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace nodeline::internal {

// A place in the arrays of a run: first the real nodes, as the owner holds them, then the dummy
// nodes, which are the break nodes that stand on a level.
using Vertex = std::int32_t;
// A place in the edges of a run.
using EdgeIndex = std::int32_t;

constexpr Vertex kNoVertex = -1;

template <class T>
T& at(std::vector<T>& items, std::int32_t index) {
    return items[static_cast<std::size_t>(index)];
}
template <class T>
const T& at(const std::vector<T>& items, std::int32_t index) {
    return items[static_cast<std::size_t>(index)];
}

// The table of levels: entry i holds the vertices of level i in drawing order, from the top down.
// Level 0 and the last one are the borders, where edges cross into the owner and out of it.
using LevelTable = std::vector<std::vector<Vertex>>;

// An edge of the run.
struct EdgeState {
    graph_ptr<DefaultEdgeVis> vis;           // null for a foreign one
    BreakChain* chain = nullptr;             // its bends in the owner; null where it has none
    const BreakChain* inner_from = nullptr;  // its bends inside the end nodes, where these are open
    const BreakChain* inner_to = nullptr;
    Vertex from = kNoVertex;  // the owner's node that holds the source; none if outside
    Vertex to = kNoVertex;
    std::int32_t region = -1;  // the records of the chain stand in `breaks` from here on
    std::int32_t bends = 0;    // in `chain`
    int first_break_id = 0;    // of the first of them
    std::int32_t old_entry = -1;
    bool old = false;         // laid out by a finished run, with bends that are still there
    bool untouched = false;   // `old`, and the bends are those that this run left, one by one
    bool marked_old = false;  // laid out by this run
};

// How an edge runs, apart from the rest of its state: the walks over many edges ask for this alone.
struct EdgeDirection {
    // The ends whose degrees count this edge in the enumeration, until it is marked.
    Vertex counted_in = kNoVertex;
    Vertex counted_out = kNoVertex;
    bool marked = false;
    bool reversed = false;  // runs against the levels
    bool flat = false;      // both ends have the same level
};

// A dummy node.
struct DummyState {
    EdgeIndex edge;
    std::int32_t region;
    std::int32_t index;  // its place in the chain
    bool is_new;         // not in the picture that the last run left
    bool is_dead;        // a ghost on its level: its edge was given another chain
};

// One link between neighbouring levels, from the lower level index to the higher one.
struct Segment {
    Vertex lower;
    Vertex higher;
    EdgeIndex edge;
};

class LayoutRun {
public:
    using Kind = OwnerEdges::Kind;

    struct Link {
        Vertex node;
        EdgeIndex edge;
    };
    struct Links {
        const Link* first;
        const Link* last;
        [[nodiscard]] const Link* begin() const { return first; }
        [[nodiscard]] const Link* end() const { return last; }
        [[nodiscard]] bool empty() const { return first == last; }
    };

    // Collects the nodes of `owner` and the edges around them. `old` is what the last run left of
    // this owner, `local` what the last run of the layout left.
    LayoutRun(const LayoutSettings& settings, Node owner, OwnerStore old, LocalInfos& local);

    LayoutRun(const LayoutRun&) = delete;
    LayoutRun& operator=(const LayoutRun&) = delete;

    // --- Structure

    [[nodiscard]] const LayoutSettings& settings() const { return settings_; }
    [[nodiscard]] Vertex node_count() const { return edges_of_.node_count(); }
    [[nodiscard]] EdgeIndex edge_count() const { return edges_of_.edge_count(); }
    [[nodiscard]] bool is_dummy(Vertex v) const { return v >= node_count(); }
    [[nodiscard]] OwnerEdges::Run neighbours(Kind kind, Vertex v) const {
        return edges_of_.Of(kind, v);
    }
    [[nodiscard]] int owner_id() const { return owner_id_; }
    [[nodiscard]] int id_of(Vertex v) const;
    [[nodiscard]] int edge_id(EdgeIndex e) const { return at(edges_of_.edge_ids, e); }
    [[nodiscard]] INodeImpl& record(Vertex v) const { return *at(edges_of_.nodes, v); }
    [[nodiscard]] IEdgeImpl& edge_record(EdgeIndex e) const { return *at(edges_of_.edges, e); }
    [[nodiscard]] const graph_ptr<INodeVis>& vis(Vertex v) const { return at(vis_, v); }
    [[nodiscard]] const Node& owner() const { return owner_; }
    [[nodiscard]] Node handle(const graph_ptr<INodeImpl>& node) const {
        return Node(owner_.store(), node);
    }
    // Whether the stages that honour it pass a hidden node over.
    [[nodiscard]] bool skips(Vertex v) const {
        return !settings_.include_hidden && at(hidden, v) != 0;
    }

    // --- Dummy nodes and chains

    // Gives the edge a fresh chain of `count` bends in the place of what it has in the owner.
    void replace_chain(EdgeIndex e, int count);
    // The records of a chain that is kept; made at the first call.
    void keep_chain(EdgeIndex e);
    [[nodiscard]] BreakInfo& break_info(EdgeIndex e, int index) {
        return at(breaks, at(edges, e).region + index);
    }
    // The vertex of a bend of the present chain; made at the first call.
    Vertex dummy(EdgeIndex e, int index);
    // The same, for a bend that has none yet.
    Vertex make_dummy(EdgeIndex e, int index, bool is_new) {
        const EdgeState& edge = at(edges, e);
        const auto vertex = static_cast<Vertex>(y.size());
        at(break_vertices_, edge.region + index) = vertex;
        dummies.push_back({e, edge.region, index, is_new, false});
        y.push_back(edge.chain->GetPositionAt(index).y);
        return vertex;
    }
    // The vertices of all bends that have one, edge by edge; `kNoVertex` for the others.
    [[nodiscard]] const std::vector<Vertex>& break_vertices() const { return break_vertices_; }
    [[nodiscard]] const DummyState& dummy_state(Vertex v) const {
        return at(dummies, v - node_count());
    }
    [[nodiscard]] bool is_dead(Vertex v) const { return dummy_state(v).is_dead; }
    // What the last run recorded of the bends of an untouched edge, from the first one on.
    [[nodiscard]] const BreakInfo* old_breaks(EdgeIndex e) const {
        return old_.breaks.data() + at(old_.edges, at(edges, e).old_entry).region;
    }
    // What the last run recorded of a bend of the present chain.
    [[nodiscard]] BreakInfo old_break_info(EdgeIndex e, int index) const;
    // Moves a vertex along its level; a bend moves in its chain too, where it stays if the vertex
    // should drop out of the table.
    void shift_along(Vertex v, double delta);
    // Moves a bend of the present chain; a bend that does not exist is passed over.
    void move_bend(EdgeIndex e, int index, double bend_x, double bend_y);

    // --- Levels and links

    [[nodiscard]] int level_of(Vertex v) const {
        if (!is_dummy(v)) return at(infos, v).level;
        const DummyState& d = dummy_state(v);
        return at(breaks, d.region + d.index).level;
    }
    // Entries past the end come into being when they are asked for.
    std::vector<Vertex>& level_at(int index);
    Level& extent_at(int index);
    // Links two vertices of neighbouring levels.
    void mark_as_neighbours(Vertex lower, Vertex higher, EdgeIndex edge) {
        segments.push_back({lower, higher, edge});
    }
    // Makes the links of all vertices readable; they keep the order of their making.
    void index_links();
    [[nodiscard]] Links links(Order side, Vertex v) const;
    // Gives the dummy nodes the numbers of their order in the table, so that what stands side by
    // side lies side by side. Every dummy node has to stand there, once. Gives the new vertices by
    // the old ones, without the real nodes.
    std::vector<Vertex> number_by_level();
    // Notes how the present chain of an edge is linked.
    void set_shape(EdgeIndex e, const LinkShape& shape) { at(shapes_, e) = shape; }
    // Calls `f(shape)` for what is known of the links of an edge's chain, the earliest first, until
    // it answers true.
    template <class F>
    void find_shape(EdgeIndex e, F f) const {
        if (const OwnerStore::EdgeEntry* entry = earlier_links(e)) {
            if (f(entry->links)) return;
            for (const LinkShape& shape : entry->more_links) {
                if (f(shape)) return;
            }
        }
        f(at(shapes_, e));
    }

    // --- Room and age

    // The room that a vertex takes along its level: a dummy node is as high as its edge is wide, a
    // real node has a lane below it for each flat or reversed edge.
    double get_height(Vertex v) {
        if (is_dummy(v)) return edge_width(dummy_state(v).edge);
        return at(backedge_count, v) < 1 ? at(sizes, v).cy : height_with_lanes(v);
    }
    double edge_width(EdgeIndex e) {
        const double width = at(widths_, e);
        return width >= 0.0 ? width : ask_width(e);
    }
    // Half of the gap that a vertex keeps to its neighbours in the level.
    [[nodiscard]] double half_spacing(Vertex v) const {
        return 0.5 * (is_dummy(v) ? settings_.dummy_spacing : settings_.node_spacing);
    }
    // Whether the last run did not know the vertex as visible.
    [[nodiscard]] bool is_new(Vertex v) const {
        if (is_dummy(v)) return dummy_state(v).is_new;
        return !at(old_infos, v).old || at(old_infos, v).was_hidden;
    }
    // Whether there was a picture before.
    [[nodiscard]] bool has_past() const { return !old_.nodes.empty(); }
    // Whether this run holds the vertex for one that was in the picture before.
    [[nodiscard]] bool is_old_here(Vertex v) const;
    // The y at which an edge meets a vertex on its right side: that of the port where the edge goes
    // on inside an open node, the middle of the side otherwise.
    [[nodiscard]] double port_y(const Link& link) const;
    // The height of the port at which an edge meets an open node, measured from that node's top;
    // `middle` for any other node.
    [[nodiscard]] double port_offset(EdgeIndex e, Vertex v, Order side, double middle) const;
    // The bends of an edge inside the end node `v`; null where it has none there.
    [[nodiscard]] const BreakChain* inner_chain(EdgeIndex e, Vertex v) const;

    // Turns old positions into those of the owner: by its position, and down by `header` alone.
    void move_old_by(const point<double>& origin, double header);
    void load_positions();
    // Begins with what the last run of the layout counted and decided, as a resize does.
    void load_scratch();
    // Records what the next run may treat as old.
    void mark_old();

    // Writes positions back, leaves scratch records to the next runs, and gives the new record.
    OwnerStore finish();
    // What the run has collected, for the next one; the run has no nodes and edges from then on.
    OwnerEdges release_neighbourhood() { return std::move(edges_of_); }

    // --- Columns by real node
    std::vector<char> hidden;
    std::vector<size<double>> sizes;
    std::vector<double> x;
    std::vector<NodeInfo> infos;      // of this run
    std::vector<NodeInfo> old_infos;  // as the last run left them
    std::vector<int> backedge_count;
    std::vector<int> number;   // place in the acyclic enumeration
    std::vector<int> arrived;  // longest path found so far; INT_MIN outside of `mark_levels`

    // --- Columns by vertex
    std::vector<double> y;

    std::vector<EdgeState> edges;
    std::vector<EdgeDirection> directions;  // by edge
    std::vector<BreakInfo> breaks;
    std::vector<DummyState> dummies;
    LevelTable levels;
    std::vector<Level> level_extents;
    std::vector<Segment> segments;
    // The extent of the finished drawing.
    size<double> extent{0.0, 0.0};
    // Whether no bend is written twice, so that nodes and bends may be placed in any order: every
    // old chain is as the last run left it, no edge was given two chains, and no vertex stands in
    // the table more or less than once.
    bool in_any_order = true;

private:
    void collect_nodes();
    void collect_edges();
    void find_old_entries();
    [[nodiscard]] double height_with_lanes(Vertex v);
    double ask_width(EdgeIndex e);
    void find_old_nodes();
    void find_old_edges();
    [[nodiscard]] bool is_plain(const EdgeState& edge) const;
    void reserve_dummies();
    void remember_places();
    void write_positions();
    void leave_scratch();
    [[nodiscard]] const OwnerStore::EdgeEntry* earlier_links(EdgeIndex e) const;
    void keep_links(EdgeIndex e, OwnerStore::EdgeEntry& entry) const;

    LayoutSettings settings_;
    Node owner_;
    int owner_id_;
    OwnerStore old_;
    LocalInfos& local_;
    OwnerEdges edges_of_;
    graph_ptr2<IEdgeHandler> edge_handler_;
    std::vector<graph_ptr<INodeVis>> vis_;
    std::vector<BreakChain*> old_chains_;  // by entry of `old_.edges`; null unless untouched
    std::vector<char> stands_;  // whether a real node stands on a level; for the end of the run
    std::vector<Vertex> break_vertices_;
    std::vector<LinkShape> shapes_;  // by edge
    std::vector<double> widths_;     // by edge; below 0 until it is asked for
    // Whether the run goes on with the scratch records of earlier ones, as a resize does.
    bool keeps_scratch_ = false;
    std::vector<std::size_t> link_starts_[2];
    std::vector<Link> links_[2];
};

}  // namespace nodeline::internal

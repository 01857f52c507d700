// Break nodes: the bends of a routed edge, as positions and, where somebody asks, as nodes.
//
// A route has many bends and few of them are ever asked for as nodes. So the bends of an edge in
// one owner are a `BreakChain`, plain arrays of ids and positions that layout and hit tests work
// on, and a `DummyNodeImpl` comes into being only when a bend is handed out as a node.
#pragma once

#include <nodeline/model/vis.h>

#include <atomic>
#include <vector>

namespace nodeline {

// The bends of one edge inside one owner, in order from source to target.
class NODELINE_API BreakChain : public Countable {
public:
    // A chain without bends. `revision`, which is not null, advances with each change.
    BreakChain(graph_ptr<IEdgeImpl> edge, graph_ptr<Revision> revision)
        : edge_(std::move(edge)), revision_(std::move(revision)) {}

    // Appends `count` bends at (0, 0), with the next ids of the process.
    void Append(int count);

    // The bends, counted from 0 at the source; an index must be in range.
    [[nodiscard]] int GetCount() const { return static_cast<int>(positions_.size()); }
    [[nodiscard]] int GetIdAt(int index) const;
    [[nodiscard]] const point<double>& GetPositionAt(int index) const {
        return positions_[static_cast<std::size_t>(index)];
    }
    // Moves a bend; an index out of range is passed over.
    void SetPositionAt(int index, double x, double y) {
        if (index < 0 || index >= GetCount()) return;
        positions_[static_cast<std::size_t>(index)] = {x, y};
        revision_->Advance();
    }
    // The positions of all bends, for whoever moves many of them at once.
    [[nodiscard]] point<double>* EditPositions() {
        revision_->Advance();
        return positions_.data();
    }
    // Whether the ids of the bends are the `count` ones that fall from `first_id`, and no others.
    [[nodiscard]] bool IsRun(int first_id, int count) const {
        return first_id_ == first_id && first_count_ == count && more_ids_.empty();
    }
    // Adds to the positions of all bends.
    void Shift(const point<double>& delta);

    // The edge that bends.
    [[nodiscard]] const graph_ptr<IEdgeImpl>& edge() const { return edge_; }
    // The set that holds the edge alone; shared by all bends of the chain.
    graph_ptr<EdgeImplSet> GetEdges();

private:
    graph_ptr<IEdgeImpl> edge_;
    graph_ptr<Revision> revision_;
    graph_ptr<EdgeImplSet> edges_;
    std::vector<point<double>> positions_;
    // The ids of the first call of `Append` fall from `first_id_`; later ones stand on their own.
    int first_id_ = 0;
    int first_count_ = 0;
    std::vector<int> more_ids_;
};

// The record of a break node. It keeps its position also when its edge was routed anew.
class NODELINE_API DummyNodeImpl : public INodeImpl {
public:
    // The id of the next break node of the process.
    static std::atomic<int> current_id;

    // The node of bend `index` of `chain`, which must have one.
    DummyNodeImpl(graph_ptr<BreakChain> chain, int index)
        : id_(chain->GetIdAt(index)), index_(index), chain_(std::move(chain)) {}

    [[nodiscard]] int get_id() const override { return id_; }
    [[nodiscard]] std::string get_caption() const override { return {}; }
    void set_caption(const std::string&) override {}
    [[nodiscard]] int get_tag() const override { return 0; }
    void set_tag(const int&) override {}
    [[nodiscard]] int get_condition() const override { return condition_; }
    void set_condition(int condition) override { condition_ = condition; }
    graph_ptr<NodeImplSet> get_parents() override { return {new NodeImplSet}; }
    graph_ptr<NodeImplSet> get_children() override { return {new NodeImplSet}; }
    graph_ptr<EdgeImplSet> get_edges_in() override { return chain_->GetEdges(); }
    graph_ptr<EdgeImplSet> get_edges_out() override { return chain_->GetEdges(); }
    graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl>) override { return {}; }
    graph_ptr<INodeImpl> add_node() override { return {}; }
    void remove() override {}
    [[nodiscard]] graph_ptr<INodeImpl> get_owner() const override { return {}; }
    graph_ptr<NodeImplSet> get_owned() override { return {new NodeImplSet}; }
    void set_owner(graph_ptr<INodeImpl>) override {}

    // The position of the bend, which the chain keeps.
    [[nodiscard]] point<double> position() const { return chain_->GetPositionAt(index_); }
    void set_position(const point<double>& p) { chain_->SetPositionAt(index_, p.x, p.y); }
    // The size of the node, zero at first; it lasts as long as this record.
    [[nodiscard]] const size<double>& extent() const { return size_; }
    void set_extent(const size<double>& value) { size_ = value; }

private:
    int id_;
    int condition_ = 0;
    int index_;
    graph_ptr<BreakChain> chain_;
    size<double> size_{0.0, 0.0};
};

// The stock route of an edge.
class NODELINE_API DefaultEdgeVis : public IEdgeVis {
public:
    // A route without bends. `revision`, which is not null, advances with each change.
    DefaultEdgeVis(graph_ptr<IEdgeImpl> impl, graph_ptr<Revision> revision)
        : impl_(std::move(impl)), revision_(std::move(revision)) {}

    [[nodiscard]] graph_ptr<IEdgeImpl> get_edge_impl() const override { return impl_; }
    graph_ptr<NodeImplSet> get_break_nodes() override;
    void remove_break_nodes() override;
    graph_ptr<NodeImplSet> get_break_nodes_in(int owner_id) override;
    void add_break_nodes_in(int owner_id, int count) override;
    void remove_break_nodes_in(int owner_id) override;

    // The chain of an owner without making anything; null where there is none.
    [[nodiscard]] BreakChain* FindChain(int owner_id) const;
    // The same, but like `get_break_nodes_in` it leaves a stretch of the owner behind, if an empty
    // one: where a route turns from going up to going down depends on the owners that have one.
    BreakChain* AskChain(int owner_id) { return make(owner_id).chain.get(); }
    // Drops what the edge has in owners other than these, which an edge has left when one of its
    // ends has moved; the route would run through them still.
    void KeepStretchesIn(const std::vector<int>& owner_ids);
    // In how many owners the edge has a stretch, if an empty one.
    [[nodiscard]] int GetStretchCount() const { return static_cast<int>(stretches_.size()); }
    // Puts a new chain of `count` bends in the place of the owner's; `count` must be positive.
    graph_ptr<BreakChain> ReplaceChain(int owner_id, int count);
    // The stretches of the whole route, in order; as valid as the set of `get_break_nodes`, which
    // they stand for.
    const std::vector<graph_ptr<BreakChain>>& GetRoute();

    // The record without a count.
    [[nodiscard]] IEdgeImpl* impl() const { return impl_.get(); }

private:
    struct Stretch {
        int owner_id = 0;
        // Null until there is a bend.
        graph_ptr<BreakChain> chain;
        // The bends as nodes; null until they are asked for.
        graph_ptr<NodeImplSet> nodes;
    };

    Stretch* find(int owner_id);
    Stretch& make(int owner_id);
    BreakChain& chain_of(Stretch& stretch);
    void drop_route();
    static void append_nodes(NodeImplSet& set, const graph_ptr<BreakChain>& chain, int from);
    static const graph_ptr<NodeImplSet>& nodes_of(Stretch& stretch);
    void compute_route();

    graph_ptr<IEdgeImpl> impl_;
    graph_ptr<Revision> revision_;
    // Few: an edge runs through as many owners as it crosses borders, and one.
    std::vector<Stretch> stretches_;
    std::vector<graph_ptr<BreakChain>> route_;
    bool has_route_ = false;
    graph_ptr<NodeImplSet> break_cache_;
};

}  // namespace nodeline

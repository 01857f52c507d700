// The records of a graph: which nodes exist, which node owns which, which edges join them.
//
// Applications use the handles of `graph.h`; these records are what the handles point at. Storage
// knows nothing of positions or drawing. Nodes form a tree of owners under the root, and edges run
// between any two real nodes.
//
// Records hold reference cycles on purpose (a node its edges, an edge its nodes): they stay alive
// until `remove` takes them apart. Nothing here reports an error.
#pragma once

#include <corvex/export.h>
#include <nodeline/model/graph_set.h>

#include <atomic>
#include <string>

namespace nodeline {

class INodeImpl;
class IEdgeImpl;

namespace internal {
struct RecordAccess;
}

// Sets of records. The same record may stand in one more than once.
using NodeImplSet = GraphSet<graph_ptr<INodeImpl>>;
using EdgeImplSet = GraphSet<graph_ptr<IEdgeImpl>>;

// The record of a node: the root (id 0), a real node (ids from 1 up) or a break node (ids from -1
// down). A node id identifies a node across all graphs of the process.
class NODELINE_API INodeImpl : public Countable {
public:
    // The same for the whole life of the record.
    [[nodiscard]] virtual int get_id() const = 0;
    // UTF-8. The root and break nodes keep none.
    [[nodiscard]] virtual std::string get_caption() const = 0;
    virtual void set_caption(const std::string& caption) = 0;
    // A number for the application's use, 0 at first. The root and break nodes keep none.
    [[nodiscard]] virtual int get_tag() const = 0;
    virtual void set_tag(const int& tag) = 0;
    // The condition word, 0 at first; see `NodeCondition`. The root keeps none.
    [[nodiscard]] virtual int get_condition() const = 0;
    virtual void set_condition(int condition) = 0;
    // The nodes with an edge into this one, and out of this one: distinct, by rising id.
    virtual graph_ptr<NodeImplSet> get_parents() = 0;
    virtual graph_ptr<NodeImplSet> get_children() = 0;
    // The live edge sets; callers must not change them.
    virtual graph_ptr<EdgeImplSet> get_edges_in() = 0;
    virtual graph_ptr<EdgeImplSet> get_edges_out() = 0;
    // Makes an edge from this node to `other`. Parallel edges and self-loops are allowed.
    virtual graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl> other) = 0;
    // Makes a node that this one owns; null from a break node and from a node that was removed.
    virtual graph_ptr<INodeImpl> add_node() = 0;
    // Takes the node and all it owns out of the graph.
    virtual void remove() = 0;
    // The owner; null for the root, a break node and a removed node.
    [[nodiscard]] virtual graph_ptr<INodeImpl> get_owner() const = 0;
    // The live set of owned nodes; callers must not change it.
    virtual graph_ptr<NodeImplSet> get_owned() = 0;
    // Moves the node to the end of another node's owned set. Silently refused where `owner` is null
    // or lies under this node.
    virtual void set_owner(graph_ptr<INodeImpl> owner) = 0;
};

// The record of an edge. Edge ids count up from 0 and are a range of their own.
class NODELINE_API IEdgeImpl : public Countable {
public:
    // The same for the whole life of the record.
    [[nodiscard]] virtual int get_id() const = 0;
    // UTF-8.
    [[nodiscard]] virtual std::string get_caption() const = 0;
    virtual void set_caption(const std::string& caption) = 0;
    // A number for the application's use; 0 at first.
    [[nodiscard]] virtual int get_tag() const = 0;
    virtual void set_tag(const int& tag) = 0;
    // The condition word, 0 at first; see `EdgeCondition`.
    [[nodiscard]] virtual int get_condition() const = 0;
    virtual void set_condition(int condition) = 0;
    // The ends; null once the edge is removed.
    [[nodiscard]] virtual graph_ptr<INodeImpl> from() const = 0;
    [[nodiscard]] virtual graph_ptr<INodeImpl> to() const = 0;
    // Takes the edge out of the sets of both ends.
    virtual void remove() = 0;
};

// Where a graph keeps its root.
class NODELINE_API IGraphStorage : public Countable {
public:
    // The node that owns all others; null after `remove_root`.
    [[nodiscard]] virtual graph_ptr<INodeImpl> get_root() const = 0;
    // Lets go of the root; takes nothing apart.
    virtual void remove_root() = 0;
};

// Record handles compare by id, not by address; neither side may be null. Compared with 0, a node
// handle tells whether it is the root.
inline bool operator<(const graph_ptr<INodeImpl>& a, const graph_ptr<INodeImpl>& b) {
    return a->get_id() < b->get_id();
}
inline bool operator==(const graph_ptr<INodeImpl>& a, const graph_ptr<INodeImpl>& b) {
    return a->get_id() == b->get_id();
}
inline bool operator==(const graph_ptr<INodeImpl>& a, int id) { return a->get_id() == id; }
inline bool operator<(const graph_ptr<IEdgeImpl>& a, const graph_ptr<IEdgeImpl>& b) {
    return a->get_id() < b->get_id();
}
inline bool operator==(const graph_ptr<IEdgeImpl>& a, const graph_ptr<IEdgeImpl>& b) {
    return a->get_id() == b->get_id();
}
inline bool operator==(const graph_ptr<IEdgeImpl>& a, int id) { return a->get_id() == id; }

// The root of a graph, and what every node that can own nodes has.
class NODELINE_API DefaultRootNodeImpl : public INodeImpl {
public:
    [[nodiscard]] int get_id() const override { return 0; }
    [[nodiscard]] std::string get_caption() const override { return {}; }
    void set_caption(const std::string&) override {}
    [[nodiscard]] int get_tag() const override { return 0; }
    void set_tag(const int&) override {}
    [[nodiscard]] int get_condition() const override { return 0; }
    void set_condition(int) override {}
    graph_ptr<NodeImplSet> get_parents() override { return {new NodeImplSet}; }
    graph_ptr<NodeImplSet> get_children() override { return {new NodeImplSet}; }
    graph_ptr<EdgeImplSet> get_edges_in() override { return {new EdgeImplSet}; }
    graph_ptr<EdgeImplSet> get_edges_out() override { return {new EdgeImplSet}; }
    graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl>) override { return {}; }
    graph_ptr<INodeImpl> add_node() override;
    // Takes apart everything that is owned, at any depth, with all edges. The node itself stays.
    void remove() override;
    [[nodiscard]] graph_ptr<INodeImpl> get_owner() const override { return {}; }
    graph_ptr<NodeImplSet> get_owned() override;
    void set_owner(graph_ptr<INodeImpl>) override {}

protected:
    friend class DefaultNodeImpl;
    friend struct internal::RecordAccess;

    // Sets come into being when they are first asked for: most nodes own nothing.
    graph_ptr<NodeImplSet> owned_;
};

// The record of a real node; made by `add_node` alone.
class NODELINE_API DefaultNodeImpl : public DefaultRootNodeImpl {
public:
    // The id of the next node of the process; graphs may grow on several threads at once.
    static std::atomic<int> current_id;

    // A node with the next id, which is in the set of its owner only once `add_node` puts it there.
    explicit DefaultNodeImpl(graph_ptr<INodeImpl> owner);

    [[nodiscard]] int get_id() const override { return id_; }
    [[nodiscard]] std::string get_caption() const override { return caption_; }
    void set_caption(const std::string& caption) override;
    [[nodiscard]] int get_tag() const override { return tag_; }
    void set_tag(const int& tag) override { tag_ = tag; }
    [[nodiscard]] int get_condition() const override { return condition_; }
    void set_condition(int condition) override;
    // Computed at first use, and kept until an edge comes or goes.
    graph_ptr<NodeImplSet> get_parents() override;
    graph_ptr<NodeImplSet> get_children() override;
    graph_ptr<EdgeImplSet> get_edges_in() override;
    graph_ptr<EdgeImplSet> get_edges_out() override;
    // Nothing is made, and null is answered, where `other` is null, the root or a break node, and
    // where one of the two was removed.
    graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl> other) override;
    void remove() override;
    [[nodiscard]] graph_ptr<INodeImpl> get_owner() const override { return owner_; }
    // A node may become its own owner; a node under it may not.
    void set_owner(graph_ptr<INodeImpl> owner) override;

    // For storage code. Takes this node out of its owner's set; `owner_` stays.
    void unlink_owner();
    // Takes the node apart, contents first: edges that arrive are removed, edges that leave are
    // only dropped from this node, so whoever removes a single node removes those first.
    void delete_node();
    // Takes the edge out of its source's set and removes it, and out of its target's set alone.
    void delete_edge_from(graph_ptr<IEdgeImpl> edge);
    void delete_edge_to(graph_ptr<IEdgeImpl> edge);
    // Takes an edge that leaves this node out of both ends' sets.
    void remove_edge(graph_ptr<IEdgeImpl> edge);
    // Appends the ends of `edges` that `member` names to `result`: distinct, by rising id.
    void get_neighbours(graph_ptr<EdgeImplSet> edges,
                        graph_ptr<INodeImpl> (IEdgeImpl::*member)() const,
                        graph_ptr<NodeImplSet> result);

private:
    friend class TearDown;
    friend struct internal::RecordAccess;

    // The part of `delete_node` that concerns this node alone.
    void delete_own_links();
    void clear_sets();

    int id_;
    int tag_ = 0;
    int condition_ = 0;
    std::string caption_;
    graph_ptr<EdgeImplSet> edges_out_;
    graph_ptr<EdgeImplSet> edges_in_;
    graph_ptr<NodeImplSet> parents_;
    graph_ptr<NodeImplSet> children_;
    graph_ptr<INodeImpl> owner_;
};

// The record of an edge; made by `link_to` alone.
class NODELINE_API DefaultEdgeImpl : public IEdgeImpl {
public:
    // The id of the next edge of the process.
    static std::atomic<int> current_id;

    // An edge with the next id, which is in the sets of its ends only once `link_to` puts it there.
    // Neither end may be null.
    DefaultEdgeImpl(graph_ptr<INodeImpl> from, graph_ptr<INodeImpl> to);

    [[nodiscard]] int get_id() const override { return id_; }
    [[nodiscard]] std::string get_caption() const override { return caption_; }
    void set_caption(const std::string& caption) override;
    [[nodiscard]] int get_tag() const override { return tag_; }
    void set_tag(const int& tag) override { tag_ = tag; }
    [[nodiscard]] int get_condition() const override { return condition_; }
    void set_condition(int condition) override;
    [[nodiscard]] graph_ptr<INodeImpl> from() const override { return from_; }
    [[nodiscard]] graph_ptr<INodeImpl> to() const override { return to_; }
    void remove() override;

private:
    friend class TearDown;
    friend struct internal::RecordAccess;

    graph_ptr<INodeImpl> from_;
    graph_ptr<INodeImpl> to_;
    // A walk over edges reads the ids of far ends here, without a look at the far records.
    int from_id_;
    int to_id_;
    int tag_ = 0;
    int condition_ = 0;
    int id_;
    std::string caption_;
};

// The storage that a graph makes for itself.
class NODELINE_API DefaultStorage : public IGraphStorage {
public:
    // `root` may be null, as after `remove_root`.
    explicit DefaultStorage(graph_ptr<INodeImpl> root) : root_(std::move(root)) {}

    [[nodiscard]] graph_ptr<INodeImpl> get_root() const override { return root_; }
    void remove_root() override { root_ = graph_ptr<INodeImpl>(); }

private:
    graph_ptr<INodeImpl> root_;
};

// Forward to `delete_node`, `delete_edge_from` and `delete_edge_to`.
NODELINE_API void _delete_node(graph_ptr<INodeImpl> node);
NODELINE_API void _del_from(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge);
NODELINE_API void _del_to(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge);

}  // namespace nodeline

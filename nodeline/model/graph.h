// Graphs as applications see them: `Graph`, the value handles `Node` and `Edge`, and `ILayout`.
//
//   graph_ptr2<Graph> graph(new Graph(), true);
//   Node parse = graph->GetRoot().AddNode();
//   Node check = graph->GetRoot().AddNode();
//   parse.SetCaption("parse");
//   Edge edge = parse.LinkTo(check);
//   graph->RecalculateLayout(painter);   // parse.GetPosition(), edge.GetBreakNodes() ...
//
// A graph is compound: any node may own nodes, and edges run between any two nodes, wherever they
// stand in the tree of owners. Changing a graph lays nothing out: ask for work with `MakeLayout`,
// `UpdateLayout`, `ResizeSelf` or `ResizeAll`, and have it done by `Graph::RecalculateLayout`. A
// new graph has asked for a layout of its root already.
//
// A graph belongs to one thread at a time. Two graphs may be filled and laid out on two threads if
// they share no layout and no handler: a new graph shares those of the process until it is given
// its own, so make it and give it those first, and hand it to its thread then.
//
// Misuse (an empty handle, an index out of range) is caught by an assertion in debug builds;
// release builds do nothing and answer an empty value.
#pragma once

#include <corvex/export.h>
#include <nodeline/functor/subscriber.h>
#include <nodeline/model/geometry.h>
#include <nodeline/model/graph_set.h>
#include <nodeline/model/storage.h>
#include <nodeline/model/vis.h>

#include <cstdint>
#include <string>
#include <vector>

namespace paintcore {
class IPainter;
}

namespace nodeline {

using paintcore::IPainter;

class Edge;
class EdgeSet;
class NodeSet;

// A node: a small value that joins a storage record to the visual store of its graph. Two handles
// on one record are the same node. A handle keeps record and store alive, not the graph; after the
// graph is gone, the node has no owner and its sets are empty.
class NODELINE_API Node {
public:
    // An empty handle: it may be copied, assigned and tested, and nothing else.
    Node() = default;
    // For code that stores graphs itself; applications get nodes from graphs and other nodes.
    Node(graph_ptr<IGraphVis> store, graph_ptr<INodeImpl> record)
        : store_(std::move(store)), record_(std::move(record)) {}

    // Whether the handle holds a node. The owner of the root does not.
    explicit operator bool() const { return static_cast<bool>(record_); }
    // What the handle joins.
    [[nodiscard]] const graph_ptr<IGraphVis>& store() const { return store_; }
    [[nodiscard]] const graph_ptr<INodeImpl>& record() const { return record_; }

    // 0 for the root, positive for a real node, negative for a break node.
    [[nodiscard]] int GetID() const;
    // UTF-8; the root and break nodes have no caption.
    [[nodiscard]] std::string GetCaption() const;
    void SetCaption(const std::string& caption);
    // A number for the application's use; 0 at first.
    [[nodiscard]] int GetTag() const;
    void SetTag(const int& tag);
    // The condition word; see `SetFlag` and `IsFlagSet` in `graph_ops.h`.
    [[nodiscard]] int GetCondition() const;
    void SetCondition(int condition);

    // Neighbours: distinct, by rising id, however many edges join them. When an edge of the node
    // comes or goes, sets that were given out before may become empty: ask again.
    [[nodiscard]] NodeSet GetParents() const;
    [[nodiscard]] NodeSet GetChildren() const;
    // By rising id. The sets are live: they follow the graph.
    [[nodiscard]] EdgeSet GetEdgesIn() const;
    [[nodiscard]] EdgeSet GetEdgesOut() const;
    // What the node owns itself, in no order to rely on; live as well.
    [[nodiscard]] NodeSet GetOwned() const;
    // The empty handle for the root and for break nodes.
    [[nodiscard]] Node GetOwner() const;
    // Moves the node, with all it owns, under another. Silently refused under its own contents.
    void SetOwner(Node owner);
    // Makes a node inside this one; none, and an empty handle, in a break node and in a node that
    // was removed.
    Node AddNode();
    // Makes an edge from this node; parallel edges and self-loops are allowed. A link to or from
    // the root, a break node or a node that was removed is misuse, and gives an empty handle.
    Edge LinkTo(Node other);
    // True for break nodes, for the root, and for a node that was removed: they have no owner.
    [[nodiscard]] bool IsDummy() const;
    // Takes the node and all it owns out of the graph. Remove the edges that leave it first.
    void Remove();

    // The node's own layout or handler, or the default of its graph. Setting an empty one goes back
    // to the default.
    [[nodiscard]] graph_ptr2<ILayout> GetLayout() const;
    void SetLayout(graph_ptr2<ILayout> layout);
    [[nodiscard]] graph_ptr2<INodeHandler> GetHandler() const;
    void SetHandler(graph_ptr2<INodeHandler> handler);

    // Logical units; the position is the top left corner.
    [[nodiscard]] size<double> GetSize() const;
    void SetSize(const size<double>& size);
    [[nodiscard]] point<double> GetPosition() const;
    void SetPosition(const point<double>& position);
    void SetPosition(double x, double y);

    // Ask for work at the next `Graph::RecalculateLayout`: to arrange the contents from scratch, to
    // fit changes into the old picture, to compute coordinates anew after sizes changed, and the
    // last also for everything inside.
    void MakeLayout();
    void UpdateLayout();
    void ResizeSelf();
    void ResizeAll();

    // By id; neither handle may be empty.
    bool operator==(const Node& other) const { return GetID() == other.GetID(); }
    bool operator!=(const Node& other) const { return GetID() != other.GetID(); }

private:
    graph_ptr<IGraphVis> store_;
    graph_ptr<INodeImpl> record_;
};

// The step of `Node::ResizeAll` for one owned node. The result is 0 and means nothing.
NODELINE_API int _apply_resize_all(Node node);

// An edge: a small value like `Node`.
class NODELINE_API Edge {
public:
    // An empty handle, as with nodes.
    Edge() = default;
    // For code that stores graphs itself.
    Edge(graph_ptr<IGraphVis> store, graph_ptr<IEdgeImpl> record)
        : store_(std::move(store)), record_(std::move(record)) {}

    // Whether the handle holds an edge, and what it joins.
    explicit operator bool() const { return static_cast<bool>(record_); }
    [[nodiscard]] const graph_ptr<IGraphVis>& store() const { return store_; }
    [[nodiscard]] const graph_ptr<IEdgeImpl>& record() const { return record_; }

    // Counts up from 0; a range of its own.
    [[nodiscard]] int GetID() const;
    // Caption, tag and condition word are as with nodes.
    [[nodiscard]] std::string GetCaption() const;
    void SetCaption(const std::string& caption);
    [[nodiscard]] int GetTag() const;
    void SetTag(const int& tag);
    [[nodiscard]] int GetCondition() const;
    void SetCondition(int condition);
    // The ends; empty handles once the edge is removed.
    [[nodiscard]] Node From() const;
    [[nodiscard]] Node To() const;
    // The default edge handler of the graph: edges have none of their own.
    [[nodiscard]] graph_ptr2<IEdgeHandler> GetHandler() const;

    // The whole route, in order from source to target; empty while the edge has none.
    [[nodiscard]] NodeSet GetBreakNodes() const;
    // The positions of the same nodes, which need not be made for that.
    [[nodiscard]] std::vector<point<double>> GetRoute() const;
    // The stretch of the route inside one owner.
    [[nodiscard]] NodeSet GetBreakNodesIn(Node owner) const;
    // For layouts: appends `count` break nodes at (0, 0) to a stretch, and takes away those of one
    // stretch, or all.
    void AddBreakNodesIn(Node owner, int count);
    void RemoveBreakNodesIn(Node owner);
    void RemoveBreakNodes();
    // Takes the edge out of the graph, with its route.
    void Remove();

    // By id; neither handle may be empty.
    bool operator==(const Edge& other) const { return GetID() == other.GetID(); }
    bool operator!=(const Edge& other) const { return GetID() != other.GetID(); }

private:
    graph_ptr<IGraphVis> store_;
    graph_ptr<IEdgeImpl> record_;
};

// Shows a set of records as a set of handles. A value: copy it freely.
class NODELINE_API NodeSet : public IGraphSet<Node> {
public:
    NodeSet() = default;
    // Keeps `records` alive and follows them; null is an empty set.
    NodeSet(graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> records, graph_ptr<IGraphVis> store)
        : records_(std::move(records)), store_(std::move(store)) {}

    [[nodiscard]] int GetCount() const override;
    [[nodiscard]] Node GetItem(int index) const override;

private:
    graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> records_;
    graph_ptr<IGraphVis> store_;
};

// The same for edges.
class NODELINE_API EdgeSet : public IGraphSet<Edge> {
public:
    EdgeSet() = default;
    // As with nodes.
    EdgeSet(graph_ptr<IGraphSet<graph_ptr<IEdgeImpl>>> records, graph_ptr<IGraphVis> store)
        : records_(std::move(records)), store_(std::move(store)) {}

    [[nodiscard]] int GetCount() const override;
    [[nodiscard]] Edge GetItem(int index) const override;

private:
    graph_ptr<IGraphSet<graph_ptr<IEdgeImpl>>> records_;
    graph_ptr<IGraphVis> store_;
};

// A neighbour and the edge that leads to it.
struct NodeEdgePair {
    Node node;
    Edge edge;
};

// By node id, then by edge id. No handle in a pair may be empty.
inline bool operator<(const NodeEdgePair& a, const NodeEdgePair& b) {
    const int a_id = a.node.GetID();
    const int b_id = b.node.GetID();
    return a_id != b_id ? a_id < b_id : a.edge.GetID() < b.edge.GetID();
}

// Arranges the contents of one owner node. Called by `Graph::RecalculateLayout`; set one on a node
// with `Node::SetLayout` or on a graph with `Graph::SetDefaultLayout`.
class NODELINE_API ILayout {
public:
    virtual ~ILayout() = default;

    // Arranges from scratch, contents of contents first; leaves positions relative to `owner`.
    virtual void Make(Node owner) = 0;
    // Fits what changed into the old picture; leaves positions relative to `owner`.
    virtual void Update(Node owner) = 0;
    // Keeps levels and order, and computes coordinates anew; leaves positions absolute.
    virtual void Resize(Node owner) = 0;
};

// A compound directed graph with its picture.
class NODELINE_API Graph : public subscriber_base_t {
public:
    // A null storage makes one with an empty root.
    explicit Graph(graph_ptr<IGraphStorage> storage = graph_ptr<IGraphStorage>());
    // Takes all nodes and edges apart; handles that remain may still be copied and destroyed.
    ~Graph() override;

    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    // The node that owns the graph's topmost nodes.
    [[nodiscard]] Node GetRoot() const;
    // Puts another storage behind the graph and changes nothing else: the visual store stays.
    void SetStorage(graph_ptr<IGraphStorage> storage);

    // The nodes and edges that meet a closed rectangle, given by its left top and its right bottom
    // corner; see `IGraphVis`.
    NodeSet HitNodeTest(double x1, double y1, double x2, double y2);
    EdgeSet HitEdgeTest(double x1, double y1, double x2, double y2);

    // What serves nodes and edges without a handler or layout of their own: at first the default of
    // the process, and so again when an empty one is set. Setting a layout asks for no work.
    graph_ptr2<INodeHandler> GetDefaultNodeHandler();
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler);
    void SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler> handler);
    void SetDefaultLayout(graph_ptr2<ILayout> layout);

    // Does all the work that was asked for since the last call: makes, then updates, then resizes,
    // each from the last request back, and owners of what changed are resized after it. Returns
    // false if there was nothing to do; then the painter is not touched. Otherwise the pass runs
    // inside a paint bracket of `painter`, opened if there is none; null means that none is needed.
    bool RecalculateLayout(IPainter* painter);

    // A number that rises whenever the picture of the graph may have changed: what is in it and who
    // owns what, captions and conditions (without those that say what is drawn and what is under
    // the pointer), positions, sizes, routes and handlers. It tells nothing of what handlers keep
    // themselves, may rise for changes of other graphs, and rises at each call where the storage or
    // the visual store is an application's own. Numbers of different graphs do not compare.
    // O(1).
    [[nodiscard]] std::uint64_t GetRevision();

private:
    graph_ptr<IGraphStorage> storage_;
    graph_ptr<IGraphVis> store_;
    // What an application has replaced, and what it has asked of that.
    std::uint64_t own_changes_ = 0;
};

}  // namespace nodeline

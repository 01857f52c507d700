// Operations on graphs: condition flags, folding, traversal, neighbourhood and moving.
#pragma once

#include <corvex/export.h>
#include <nodeline/model/graph.h>

#include <vector>

namespace nodeline {

// ---------------------------------------------------------------------------------------------
// Condition flags

// Bits of `Node::GetCondition`. The root has no bits, and setting one on it does nothing.
enum NodeCondition {
    NodeHidden = 1,    // not in the picture, nor what it owns
    NodeSelected = 2,  // selected by the user
    NodeDrawn = 4,     // may be painted; kept by `MarkDrawnIn`
    NodeMarked = 8,    // marked by the application
    NodeNew = 16,      // brought back by the last unfold
    NodeHovered = 32   // under the pointer
};

// Bits of `Edge::GetCondition`.
enum EdgeCondition {
    EdgeDrawn = 4,    // may be painted; kept by `MarkDrawnIn`
    EdgeMarked = 8,   // marked by the application
    EdgeHovered = 16  // under the pointer
};

// Sets or clears all bits of `flag`.
NODELINE_API void SetFlag(Node node, int flag, bool on);
NODELINE_API void SetFlag(Edge edge, int flag, bool on);
// Whether any bit of `flag` is set.
[[nodiscard]] NODELINE_API bool IsFlagSet(Node node, int flag);
[[nodiscard]] NODELINE_API bool IsFlagSet(Edge edge, int flag);

// Set and clear `NodeSelected`.
NODELINE_API void Select(Node node);
NODELINE_API void Unselect(Node node);
// Clears `NodeNew`.
NODELINE_API void MarkOld(Node node);

// Recomputes the drawn bits of the whole graph: a hidden node takes its contents out of the
// picture, and an edge is drawn if neither end is out of it. Linear in the graph, and free when
// nothing has changed that the bits depend on.
NODELINE_API void MarkDrawnIn(graph_ptr2<Graph> graph);
// The second sweep of `MarkDrawnIn` on one subtree, whose owner is `visible` or not.
NODELINE_API void _mark_node_drawn(Node node, bool visible);
NODELINE_API void _mark_edge_drawn(Edge edge);
NODELINE_API void _mark_edge_nondrawn(Edge edge);

// ---------------------------------------------------------------------------------------------
// Visibility

// Sets `NodeHidden`.
NODELINE_API void Hide(Node node);
// Clears `NodeHidden`; a node that was hidden becomes `NodeNew`.
NODELINE_API void Show(Node node);

// Whether the node or one that owns it carries `NodeHidden`, so that it is not in the picture.
[[nodiscard]] NODELINE_API bool IsOutOfSight(const Node& node);
// Shows a node and every node that owns it, and asks for an update of each owner that this changes.
NODELINE_API void ShowWithOwners(const Node& node);

// Which neighbours a fold concerns. Any other value acts as `FoldParents`.
enum FoldDirection : int { FoldParents = 0, FoldChildren = 1 };

// Hide and show a node's direct neighbours on one side, and ask for an update of its owner. Both
// clear `NodeNew` in the whole graph first, so that afterwards it marks what was brought back. A
// neighbour that another path reaches too is hidden all the same. Nothing happens on the root and
// on break nodes, and `Unfold` leaves a node without neighbours alone.
NODELINE_API void Fold(Node node, FoldDirection direction);
NODELINE_API void Unfold(Node node, FoldDirection direction);

// ---------------------------------------------------------------------------------------------
// Traversal

// Applies `f` to every node of a subtree, and gives it back. Each node comes before what it owns,
// or after it if `children_first`; `with_self` says whether `node` itself counts. `f` may not
// change who owns what. The stack is as deep as the nesting, on the heap.
template <class F>
F ForEachNodeIn(const Node& node, F f, bool children_first, bool with_self) {
    struct Level {
        Node node;
        NodeSet owned;
        int next;
    };
    if (with_self && !children_first) f(node);
    std::vector<Level> path{{node, node.GetOwned(), 0}};
    while (!path.empty()) {
        Level& level = path.back();
        if (level.next < level.owned.GetCount()) {
            Node child = level.owned.GetItem(level.next++);
            // A node that owns itself is no content of itself.
            if (child.record().get() == level.node.record().get()) continue;
            if (!children_first) f(child);
            path.push_back({child, child.GetOwned(), 0});
            continue;
        }
        if (children_first && (with_self || path.size() > 1)) f(level.node);
        path.pop_back();
    }
    return f;
}

// Applies `F` to each edge that leaves a node.
template <class F>
struct ProcessOutgoingEdges {
    F f;

    // By rising edge id. `f` may not add or remove edges that leave the node.
    void operator()(const Node& node) {
        const EdgeSet edges = node.GetEdgesOut();
        for (int i = 0; i < edges.GetCount(); ++i) f(edges.GetItem(i));
    }
};
// Deduces `F` from the function.
template <class F>
ProcessOutgoingEdges(F) -> ProcessOutgoingEdges<F>;

// The root of the node's graph; works for break nodes too. An empty handle for a node that was
// removed.
[[nodiscard]] NODELINE_API Node GetRoot(Node node);
// Whether the node is the root of its graph. It may not be empty.
[[nodiscard]] NODELINE_API bool IsRoot(Node node);

// ---------------------------------------------------------------------------------------------
// Neighbourhood

// A layout looks at the nodes of one owner, each standing for all that it holds. These collect the
// edges of a node's whole subtree and lift their far ends to the level of the node itself. The
// results are sorted by node id, then edge id; parallel edges give a pair each. The root and break
// nodes have no such neighbours. Linear in the subtree and its edges, times the nesting of far
// ends.

// Siblings from which edges enter the node's subtree, and to which edges leave it.
[[nodiscard]] NODELINE_API graph_ptr2<IGraphSet<NodeEdgePair>> GetParentsEx(Node node);
[[nodiscard]] NODELINE_API graph_ptr2<IGraphSet<NodeEdgePair>> GetChildrenEx(Node node);
// Edges between the subtree and what lies outside the owner, each with the root; an edge to the
// owner itself stands twice, with the owner.
[[nodiscard]] NODELINE_API graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesInEx(Node node);
[[nodiscard]] NODELINE_API graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesOutEx(Node node);
// The number of distinct nodes in a set that is sorted by node.
[[nodiscard]] NODELINE_API int CalcDegreeEx(graph_ptr2<IGraphSet<NodeEdgePair>> set);

// The number of distinct parents and of distinct children.
[[nodiscard]] NODELINE_API int InDegree(Node node);
[[nodiscard]] NODELINE_API int OutDegree(Node node);
// Whether the node is an end of the edge, or one of its break nodes.
[[nodiscard]] NODELINE_API bool NodeOnEdge(Node node, Edge edge);
// Whether an edge runs from `a` to `b`.
[[nodiscard]] NODELINE_API bool ExistEdgeBetweenNodes(Node a, Node b);
// A sort order: owners ahead of what they own, unrelated nodes by id, break nodes last.
[[nodiscard]] NODELINE_API bool NodeByOwnershipComparator(Node a, Node b);
// Puts nodes into the order of `NodeByOwnershipComparator`; the root goes behind them all. Where
// ids are at odds with ownership the comparator goes in circles, and no sort may be given it: here
// owners come first all the same, and otherwise the lower ids. O(n log n), times the nesting depth.
NODELINE_API void SortByOwnership(std::vector<Node>& nodes);
// The rectangle of a node at `p` of the size `s`.
[[nodiscard]] NODELINE_API rectangle<double> MakeDRect(point<double> p, size<double> s);

// ---------------------------------------------------------------------------------------------
// Moving

// A layout leaves positions relative to the owner; a picture has them relative to the root. These
// convert between the two, and move nodes with the bends of their edges.

// Adds to a node's position.
NODELINE_API void _shift(Node node, const point<double>& delta);
// Moves the bends that each edge of `pairs` holds in `owner`, as often as the edge stands there.
NODELINE_API void _break_nodes_shift(graph_ptr2<IGraphSet<NodeEdgePair>> pairs,
                                     const point<double>& delta, Node owner);
// Moves a node and the bends around it: of edges to siblings and of edges that cross the owner's
// border. Edges from siblings move with those.
NODELINE_API void ShiftWithEdges(Node node, point<double> delta);
// Moves a node by `delta` and the position of its owner, with its edges.
NODELINE_API void _shift_position(Node node, point<double> delta);
// Moves a node, and makes everything in it absolute: each node inside is moved by `delta` and the
// position of its owner, owners first. A zero `delta` is the plain conversion.
NODELINE_API void ShiftPosition(Node node, point<double> delta);
NODELINE_API void ShiftPosition(Node node, double dx, double dy);
// Makes one node relative to its owner, with its edges.
NODELINE_API void UnshiftWithEdges(Node node);
// Makes everything inside a node relative again; the node itself stays.
NODELINE_API void UnshiftPosition(Node node);
// Puts a node somewhere and takes the ends of its routes along; contents and the other bends stay.
NODELINE_API void MoveNode(Node node, double x, double y);

}  // namespace nodeline

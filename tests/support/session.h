// A graph that changes at random, with a layout run after each change.
#pragma once

#include <nodeline/model/graph.h>
#include <support/random.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace nodeline::test {

struct SessionPlan {
    int nodes = 16;
    int edges = 24;
    // A node lies at most so deep under the root; 1 keeps the graph flat.
    int depth = 3;
    // Every so manieth node gets a layout object of its own; 0 for none.
    int own_layouts = 0;
    // Edges only lead on to nodes that were made later, and never into or out of a node's contents.
    bool acyclic = false;
    // Nodes move to other owners, and parts of the graph are made anew.
    bool upheavals = true;
    // Nodes are also dragged about and grow, which adds to the upheavals.
    bool drags = false;
    // A graph that has grown to `nodes` or `edges` loses some before it changes further.
    bool bounded = false;
};

// A place in a picture: what stands there, and where.
struct Spot {
    // 'n' a node's position, 's' its size, 'b' a bend, 'r' a bend of a whole route.
    char kind;
    int item;   // the number of the node or edge, in the order of making
    int index;  // the number of the bend, counted over all owners
    double x;
    double y;
};
using Picture = std::vector<Spot>;

// Whether two pictures have the same bits; tells the first difference otherwise.
std::string Difference(const Picture& a, const Picture& b);

// Two sessions of one seed and plan go through the same changes, whatever their layouts do.
class Session {
public:
    using NewLayout = std::function<graph_ptr2<ILayout>()>;

    Session(std::uint64_t seed, const SessionPlan& plan, NewLayout new_layout);

    // Changes something and asks for layout work. The answer says what was done.
    std::string Change();
    void Recalculate() { graph->RecalculateLayout(nullptr); }
    [[nodiscard]] Picture Look() const;

    graph_ptr2<Graph> graph;
    Node root;
    // What is in the graph, in the order of making.
    std::vector<Node> nodes;
    std::vector<Edge> edges;

private:
    Node add_node(const Node& owner);
    bool add_edge(Node from, const Node& to);
    int random_size();
    Node random_owner();
    void add_random_edge();
    void resize_random_node();
    void grow_node(Node node);
    void make_room();
    void remove_node();
    void remove_edge();
    void move_node();
    void ask(Node node);

    Random random_;
    SessionPlan plan_;
    NewLayout new_layout_;
};

}  // namespace nodeline::test

// Small graphs with names; the picture of each stands above it.
#pragma once

#include <nodeline/model/graph.h>

namespace nodeline::test {

inline graph_ptr2<Graph> NewGraph() { return {new Graph(), true}; }

// Nothing but the root.
struct Empty {
    graph_ptr2<Graph> graph = NewGraph();
    Node root = graph->GetRoot();
};

//   a ---> b
struct Arrow : Empty {
    Node a = root.AddNode();
    Node b = root.AddNode();
    Edge edge = a.LinkTo(b);
};

//          .--> b
//   a ---<
//          '--> c
struct Fork : Empty {
    Node a = root.AddNode();
    Node b = root.AddNode();
    Node c = root.AddNode();
    Edge to_b = a.LinkTo(b);
    Edge to_c = a.LinkTo(c);
};

//   +-a-----------+
//   | +-b-------+ |
//   | | +-c---+ | |
//   | | +-----+ | |
//   | +---------+ |
//   +-------------+
struct Stairs : Empty {
    Node a = root.AddNode();
    Node b = a.AddNode();
    Node c = b.AddNode();
};

//   +-a---+      +-b---+
//   |  x -|------|> y  |
//   +-----+      +-----+
struct TwoBoxes : Empty {
    Node a = root.AddNode();
    Node b = root.AddNode();
    Node x = a.AddNode();
    Node y = b.AddNode();
    Edge edge = x.LinkTo(y);
};

//   +-c------------------+     +-d------+
//   | +-a----+           |     |        |
//   | |  x --|-> b  -----|-----|-> z    |
//   | +------+           |     |        |
//   +--------------------+     +--------+
struct Courts : Empty {
    Node c = root.AddNode();
    Node d = root.AddNode();
    Node a = c.AddNode();
    Node b = c.AddNode();
    Node x = a.AddNode();
    Node z = d.AddNode();
    Edge x_to_b = x.LinkTo(b);
    Edge b_to_z = b.LinkTo(z);
};

}  // namespace nodeline::test

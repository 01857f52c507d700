// Small graphs for the layout, with boxes of known sizes; the picture of each stands above it.
#pragma once

#include <nodeline/layout/inc_layout.h>
#include <support/measures.h>
#include <support/named_graphs.h>

#include <vector>

namespace nodeline::test {

// Nothing yet: sizes go by tags, and the graph has a layout object of its own.
struct Measured : Empty {
    Measured() {
        MeasureByTags(graph);
        graph->SetDefaultLayout(layout);
    }

    // A node of a width and a height in units, measured already.
    static Node AddBox(const Node& owner, int width, int height) {
        Node node = Node(owner).AddNode();
        node.SetTag(SizeTag(10 * width, 10 * height));
        node.SetSize({1.0 * width, 1.0 * height});
        return node;
    }
    Node AddBox(int width = 40, int height = 20) const { return AddBox(root, width, height); }

    void Make() {
        root.MakeLayout();
        graph->RecalculateLayout(nullptr);
    }
    void Update() {
        root.UpdateLayout();
        graph->RecalculateLayout(nullptr);
    }
    void Resize() {
        root.ResizeAll();
        graph->RecalculateLayout(nullptr);
    }

    graph_ptr2<ILayout> layout = IncLayout::Create();
};

//   [a] ---> [b]
struct BoxArrow : Measured {
    Node a = AddBox();
    Node b = AddBox();
    Edge edge = a.LinkTo(b);
};

//   [a] ---> [b] ---> [c] ---> [d]
struct Row : Measured {
    Node a = AddBox();
    Node b = AddBox();
    Node c = AddBox();
    Node d = AddBox();
    Edge ab = a.LinkTo(b);
    Edge bc = b.LinkTo(c);
    Edge cd = c.LinkTo(d);
};

//   [a] ---> [b] ---> [c] ---> [d]
//     '-------------------------^
struct RowWithShortcut : Row {
    Edge far = a.LinkTo(d);
};

//   [a] ---> [b] ---> [c] ---> [d]
//    ^--------------------------'
struct Ring : Row {
    Edge back = d.LinkTo(a);
};

//            .--> [b1]
//   [a] ----+---> [b2]
//            '--> [b3]
struct Fan : Measured {
    Node a = AddBox();
    Node b1 = AddBox();
    Node b2 = AddBox();
    Node b3 = AddBox();
    Edge to_b1 = a.LinkTo(b1);
    Edge to_b2 = a.LinkTo(b2);
    Edge to_b3 = a.LinkTo(b3);
};

//   [a0] ---> [b0]
//   [a1] ---> [b1]
//    ...
struct Rungs : Measured {
    explicit Rungs(int count) {
        for (int i = 0; i < count; ++i) {
            a.push_back(AddBox());
            b.push_back(AddBox());
            edges.push_back(a.back().LinkTo(b.back()));
        }
    }

    std::vector<Node> a;
    std::vector<Node> b;
    std::vector<Edge> edges;
};

//            +-box------------------------+
//            | [p] ---> [q] ---> [r]      |
//   [o] -----|--------------------^  '----|----> [z]
//            +----------------------------+
struct Box : Measured {
    Node o = AddBox();
    Node box = AddBox(0, 0);
    Node z = AddBox();
    Node p = AddBox(box, 40, 20);
    Node q = AddBox(box, 40, 20);
    Node r = AddBox(box, 40, 20);
    Edge pq = p.LinkTo(q);
    Edge qr = q.LinkTo(r);
    Edge into = o.LinkTo(r);
    Edge out = r.LinkTo(z);
};

}  // namespace nodeline::test

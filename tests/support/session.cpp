#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/graph_ops.h>
#include <support/bits.h>
#include <support/measures.h>
#include <support/session.h>

#include <algorithm>
#include <sstream>

namespace nodeline::test {

namespace {

int DepthOf(Node node) {
    int depth = 0;
    for (node = node.GetOwner(); node; node = node.GetOwner()) ++depth;
    return depth;
}

bool LiesIn(Node node, const Node& owner) {
    for (; node; node = node.GetOwner()) {
        if (node == owner) return true;
    }
    return false;
}

std::string Told(const Spot& spot) {
    std::ostringstream text;
    text.precision(17);
    text << spot.kind << spot.item << '[' << spot.index << "] (" << spot.x << ", " << spot.y << ')';
    return text.str();
}

bool SameSpot(const Spot& a, const Spot& b) {
    return a.kind == b.kind && a.item == b.item && a.index == b.index && SameBits(a.x, b.x) &&
           SameBits(a.y, b.y);
}

}  // namespace

std::string Difference(const Picture& a, const Picture& b) {
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (!SameSpot(a[i], b[i])) return Told(a[i]) + " against " + Told(b[i]);
    }
    if (a.size() == b.size()) return {};
    return std::to_string(a.size()) + " spots against " + std::to_string(b.size());
}

Session::Session(std::uint64_t seed, const SessionPlan& plan, NewLayout new_layout)
    : graph(new Graph(), true),
      root(graph->GetRoot()),
      random_(seed),
      plan_(plan),
      new_layout_(std::move(new_layout)) {
    MeasureByTags(graph);
    graph->SetDefaultLayout(new_layout_());
    for (int i = 0; i < plan.nodes; ++i) add_node(random_owner());
    for (int i = 0; i < plan.edges; ++i) add_random_edge();
}

Node Session::random_owner() {
    if (nodes.empty() || random_.OneIn(3)) return root;
    Node owner = random_.Of(nodes);
    while (DepthOf(owner) >= plan_.depth) owner = owner.GetOwner();
    return owner;
}

// Drawn one after the other: arguments are not evaluated in any order.
int Session::random_size() {
    const int width = random_.Between(0, 900);
    const int height = random_.Between(0, 600);
    return SizeTag(width, height);
}

Node Session::add_node(const Node& owner) {
    Node node = Node(owner).AddNode();
    node.SetTag(random_size());
    if (plan_.own_layouts > 0 && random_.OneIn(plan_.own_layouts)) node.SetLayout(new_layout_());
    nodes.push_back(node);
    return node;
}

bool Session::add_edge(Node from, const Node& to) {
    if (plan_.acyclic && (LiesIn(from, to) || LiesIn(to, from))) return false;
    Edge edge = from.LinkTo(to);
    edge.SetTag(random_.Below(4));
    edges.push_back(edge);
    return true;
}

void Session::add_random_edge() {
    if (nodes.empty()) return;
    const int a = random_.Below(static_cast<int>(nodes.size()));
    const int b = random_.OneIn(10) ? a : random_.Below(static_cast<int>(nodes.size()));
    const auto i = static_cast<std::size_t>(plan_.acyclic ? std::min(a, b) : a);
    const auto k = static_cast<std::size_t>(plan_.acyclic ? std::max(a, b) : b);
    if (!plan_.acyclic && random_.OneIn(8) && !edges.empty()) {
        const Edge& like = random_.Of(edges);
        add_edge(like.From(), like.To());
    } else {
        add_edge(nodes[i], nodes[k]);
    }
}

void Session::ask(Node node) {
    Node owner = node == root ? root : node.GetOwner();
    owner.UpdateLayout();
}

void Session::resize_random_node() {
    Node node = random_.Of(nodes);
    node.SetTag(random_size());
    switch (random_.Below(4)) {
        case 0:
            node.ResizeAll();
            break;
        case 1:
            root.ResizeAll();
            break;
        case 2:
            node.UpdateLayout();
            break;
        default:
            node.ResizeSelf();
            break;
    }
}

// Along its level: what grows the other way pushes whole levels on.
void Session::grow_node(Node node) {
    const int width = node.GetTag() / 10000;
    const int height = node.GetTag() % 10000 + random_.Between(20, 400);
    node.SetTag(SizeTag(width, std::min(height, 2000)));
    random_.OneIn(2) ? node.ResizeSelf() : ask(node);
}

void Session::make_room() {
    if (!plan_.bounded) return;
    while (static_cast<int>(nodes.size()) >= plan_.nodes) remove_node();
    while (static_cast<int>(edges.size()) >= plan_.edges) remove_edge();
}

// Edges that leave a node do not go with it by themselves.
void Session::remove_node() {
    Node node = random_.Of(nodes);
    Node owner = node.GetOwner();
    for (Edge edge : edges) {
        if (LiesIn(edge.From(), node) || LiesIn(edge.To(), node)) edge.Remove();
    }
    node.Remove();
    edges.erase(std::remove_if(edges.begin(), edges.end(), [](const Edge& e) { return !e.From(); }),
                edges.end());
    nodes.erase(
        std::remove_if(nodes.begin(), nodes.end(), [](const Node& n) { return n.IsDummy(); }),
        nodes.end());
    random_.OneIn(3) ? owner.ResizeSelf() : owner.UpdateLayout();
}

void Session::remove_edge() {
    if (edges.empty()) return;
    const auto i = static_cast<std::size_t>(random_.Below(static_cast<int>(edges.size())));
    Node owner = edges[i].From().GetOwner();
    edges[i].Remove();
    edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(i));
    random_.OneIn(3) ? owner.ResizeSelf() : owner.UpdateLayout();
}

void Session::move_node() {
    Node node = random_.Of(nodes);
    Node before = node.GetOwner();
    Node after = random_owner();
    if (LiesIn(after, node)) return;
    node.SetOwner(after);
    before.UpdateLayout();
    after.UpdateLayout();
}

std::string Session::Change() {
    if (nodes.empty()) {
        ask(add_node(root));
        return "add a first node";
    }
    make_room();
    if (nodes.empty()) return "remove all nodes";
    Node node = random_.Of(nodes);
    const auto direction = random_.OneIn(2) ? FoldParents : FoldChildren;
    switch (random_.Below(!plan_.upheavals ? 11 : plan_.drags ? 18 : 16)) {
        case 0:
            Fold(node, direction);
            return "fold";
        case 1:
        case 2:
            Unfold(node, direction);
            return "unfold";
        case 3:
            ask(add_node(random_owner()));
            return "add a node";
        case 4: {
            const Node added = add_node(random_owner());
            if (add_edge(node, added)) ask(node);
            for (int i = random_.Below(3); i > 0; --i) add_random_edge();
            ask(added);
            return "add a node with edges";
        }
        case 5:
            for (int i = random_.Between(1, 3); i > 0; --i) add_random_edge();
            root.UpdateLayout();
            return "add edges";
        case 6:
        case 7:
            resize_random_node();
            return "resize";
        case 8:
            remove_edge();
            return "remove an edge";
        case 9:
            random_.OneIn(2) ? Hide(node) : Show(node);
            ask(node);
            return "hide or show";
        case 10:
            root.UpdateLayout();
            return "update";
        case 11:
            remove_node();
            return "remove a node";
        case 12:
            move_node();
            return "move a node";
        case 13:
            node.MakeLayout();
            return "make a part";
        case 14:
            root.MakeLayout();
            return "make";
        case 15:
            add_random_edge();
            node.ResizeAll();
            root.ResizeSelf();
            return "resize what is not laid out";
        case 16: {
            const double x = random_.Real(-20.0, 400.0);
            const double y = random_.Real(-20.0, 400.0);
            MoveNode(node, x, y);
            return "drag a node";
        }
        default:
            grow_node(node);
            return "grow a node";
    }
}

Picture Session::Look() const {
    Picture picture;
    const auto add_node = [&](const Node& node, int number) {
        const point<double> p = node.GetPosition();
        const size<double> s = node.GetSize();
        picture.push_back({'n', number, 0, p.x, p.y});
        picture.push_back({'s', number, 0, s.cx, s.cy});
    };
    add_node(root, -1);
    for (std::size_t i = 0; i < nodes.size(); ++i) add_node(nodes[i], static_cast<int>(i));
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const graph_ptr<IEdgeVis> vis = edges[i].store()->get_edge_vis(edges[i].record());
        const auto* route = dynamic_cast<const DefaultEdgeVis*>(vis.get());
        int index = 0;
        for (const Node& end : {edges[i].From(), edges[i].To()}) {
            for (Node owner = end; owner; owner = owner.GetOwner()) {
                const BreakChain* chain = route->FindChain(owner.GetID());
                for (int k = 0; chain != nullptr && k < chain->GetCount(); ++k) {
                    const point<double> p = chain->GetPositionAt(k);
                    picture.push_back({'b', static_cast<int>(i), index++, p.x, p.y});
                }
            }
        }
        index = 0;
        for (const Node& bend : edges[i].GetBreakNodes()) {
            const point<double> p = bend.GetPosition();
            picture.push_back({'r', static_cast<int>(i), index++, p.x, p.y});
        }
    }
    return picture;
}

}  // namespace nodeline::test

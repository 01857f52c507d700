#include <nodeline/model/graph.h>

#include <nodeline/handlers/handlers.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/model/internal/revision.h>

#include <cassert>
#include <typeinfo>
#include <vector>

namespace nodeline {

namespace {

template <class Handle>
bool is_usable(const Handle& record) {
    assert(record && "operation on an empty handle");
    return static_cast<bool>(record);
}

}  // namespace

int Node::GetID() const { return is_usable(record_) ? record_->get_id() : 0; }

std::string Node::GetCaption() const {
    return is_usable(record_) ? record_->get_caption() : std::string();
}

void Node::SetCaption(const std::string& caption) {
    if (is_usable(record_)) record_->set_caption(caption);
}

int Node::GetTag() const { return is_usable(record_) ? record_->get_tag() : 0; }

void Node::SetTag(const int& tag) {
    if (is_usable(record_)) record_->set_tag(tag);
}

int Node::GetCondition() const { return is_usable(record_) ? record_->get_condition() : 0; }

void Node::SetCondition(int condition) {
    if (is_usable(record_)) record_->set_condition(condition);
}

NodeSet Node::GetParents() const {
    return is_usable(record_) ? NodeSet(record_->get_parents(), store_) : NodeSet();
}

NodeSet Node::GetChildren() const {
    return is_usable(record_) ? NodeSet(record_->get_children(), store_) : NodeSet();
}

EdgeSet Node::GetEdgesIn() const {
    return is_usable(record_) ? EdgeSet(record_->get_edges_in(), store_) : EdgeSet();
}

EdgeSet Node::GetEdgesOut() const {
    return is_usable(record_) ? EdgeSet(record_->get_edges_out(), store_) : EdgeSet();
}

NodeSet Node::GetOwned() const {
    return is_usable(record_) ? NodeSet(record_->get_owned(), store_) : NodeSet();
}

Node Node::GetOwner() const {
    return is_usable(record_) ? Node(store_, record_->get_owner()) : Node();
}

void Node::SetOwner(Node owner) {
    if (is_usable(record_)) record_->set_owner(owner.record_);
}

Node Node::AddNode() { return is_usable(record_) ? Node(store_, record_->add_node()) : Node(); }

Edge Node::LinkTo(Node other) {
    return is_usable(record_) ? Edge(store_, record_->link_to(other.record_)) : Edge();
}

bool Node::IsDummy() const { return is_usable(record_) && !record_->get_owner(); }

void Node::Remove() {
    if (!is_usable(record_)) return;
    if (store_) store_->remove_node_vis(record_);
    record_->remove();
}

graph_ptr2<ILayout> Node::GetLayout() const {
    return is_usable(store_) ? store_->get_node_layout(record_) : graph_ptr2<ILayout>();
}

void Node::SetLayout(graph_ptr2<ILayout> layout) {
    if (is_usable(store_)) store_->set_node_layout(record_, layout);
}

graph_ptr2<INodeHandler> Node::GetHandler() const {
    return is_usable(store_) ? store_->get_node_painter(record_) : graph_ptr2<INodeHandler>();
}

void Node::SetHandler(graph_ptr2<INodeHandler> handler) {
    if (is_usable(store_)) store_->set_node_painter(record_, handler);
}

size<double> Node::GetSize() const {
    if (!is_usable(record_) || !is_usable(store_)) return {0.0, 0.0};
    return store_->get_node_vis(record_)->get_size();
}

void Node::SetSize(const nodeline::size<double>& size) {
    if (is_usable(record_) && is_usable(store_)) store_->get_node_vis(record_)->set_size(size);
}

point<double> Node::GetPosition() const {
    if (!is_usable(record_) || !is_usable(store_)) return {0.0, 0.0};
    return store_->get_node_vis(record_)->get_position();
}

void Node::SetPosition(const point<double>& position) {
    if (!is_usable(record_) || !is_usable(store_)) return;
    store_->get_node_vis(record_)->set_position(position);
}

void Node::SetPosition(double x, double y) { SetPosition(point<double>{x, y}); }

void Node::MakeLayout() {
    if (is_usable(record_) && is_usable(store_)) store_->add_to_make_list(record_);
}

void Node::UpdateLayout() {
    if (is_usable(record_) && is_usable(store_)) store_->add_to_update_list(record_);
}

void Node::ResizeSelf() {
    if (is_usable(record_) && is_usable(store_)) store_->add_to_resize_list(record_);
}

// Owners ahead of what they own, without a call level for each level of nesting.
void Node::ResizeAll() {
    if (!is_usable(record_) || !is_usable(store_)) return;
    std::vector<graph_ptr<INodeImpl>> open{record_};
    while (!open.empty()) {
        const graph_ptr<INodeImpl> node = open.back();
        open.pop_back();
        store_->add_to_resize_list(node);
        const graph_ptr<NodeImplSet> owned = node->get_owned();
        for (int i = owned->GetCount() - 1; i >= 0; --i) {
            if ((*owned)[i].get() != node.get()) open.push_back((*owned)[i]);
        }
    }
}

int _apply_resize_all(Node node) {
    node.ResizeAll();
    return 0;
}

int Edge::GetID() const { return is_usable(record_) ? record_->get_id() : 0; }

std::string Edge::GetCaption() const {
    return is_usable(record_) ? record_->get_caption() : std::string();
}

void Edge::SetCaption(const std::string& caption) {
    if (is_usable(record_)) record_->set_caption(caption);
}

int Edge::GetTag() const { return is_usable(record_) ? record_->get_tag() : 0; }

void Edge::SetTag(const int& tag) {
    if (is_usable(record_)) record_->set_tag(tag);
}

int Edge::GetCondition() const { return is_usable(record_) ? record_->get_condition() : 0; }

void Edge::SetCondition(int condition) {
    if (is_usable(record_)) record_->set_condition(condition);
}

Node Edge::From() const { return is_usable(record_) ? Node(store_, record_->from()) : Node(); }
Node Edge::To() const { return is_usable(record_) ? Node(store_, record_->to()) : Node(); }

graph_ptr2<IEdgeHandler> Edge::GetHandler() const {
    return is_usable(store_) ? store_->get_default_edge_painter() : graph_ptr2<IEdgeHandler>();
}

NodeSet Edge::GetBreakNodes() const {
    if (!is_usable(record_) || !is_usable(store_)) return {};
    return {store_->get_edge_vis(record_)->get_break_nodes(), store_};
}

std::vector<point<double>> Edge::GetRoute() const {
    std::vector<point<double>> route;
    if (!is_usable(record_) || !is_usable(store_)) return route;
    const graph_ptr<IEdgeVis> vis = store_->get_edge_vis(record_);
    auto* const stock = dynamic_cast<DefaultEdgeVis*>(vis.get());
    if (stock == nullptr) {
        for (const Node& bend : GetBreakNodes()) route.push_back(bend.GetPosition());
        return route;
    }
    for (const auto& chain : stock->GetRoute()) {
        const int count = chain->GetCount();
        for (int i = 0; i < count; ++i) route.push_back(chain->GetPositionAt(i));
    }
    return route;
}

NodeSet Edge::GetBreakNodesIn(Node owner) const {
    if (!is_usable(record_) || !is_usable(store_) || !is_usable(owner.record())) return {};
    return {store_->get_edge_vis(record_)->get_break_nodes_in(owner.GetID()), store_};
}

void Edge::AddBreakNodesIn(Node owner, int count) {
    if (!is_usable(record_) || !is_usable(store_) || !is_usable(owner.record())) return;
    store_->get_edge_vis(record_)->add_break_nodes_in(owner.GetID(), count);
}

void Edge::RemoveBreakNodesIn(Node owner) {
    if (!is_usable(record_) || !is_usable(store_) || !is_usable(owner.record())) return;
    store_->get_edge_vis(record_)->remove_break_nodes_in(owner.GetID());
}

void Edge::RemoveBreakNodes() {
    if (is_usable(record_) && is_usable(store_))
        store_->get_edge_vis(record_)->remove_break_nodes();
}

void Edge::Remove() {
    if (!is_usable(record_)) return;
    RemoveBreakNodes();
    if (store_) store_->remove_edge_vis(record_);
    record_->remove();
}

int NodeSet::GetCount() const { return records_ ? records_->GetCount() : 0; }

Node NodeSet::GetItem(int index) const {
    return records_ ? Node(store_, records_->GetItem(index)) : Node();
}

int EdgeSet::GetCount() const { return records_ ? records_->GetCount() : 0; }

Edge EdgeSet::GetItem(int index) const {
    return records_ ? Edge(store_, records_->GetItem(index)) : Edge();
}

Graph::Graph(graph_ptr<IGraphStorage> storage) : storage_(std::move(storage)) {
    if (!storage_) {
        const graph_ptr<INodeImpl> root(new DefaultRootNodeImpl);
        storage_ = graph_ptr<IGraphStorage>(new DefaultStorage(root));
    }
    store_ = graph_ptr<IGraphVis>(new DefaultGraphVis);
    GetRoot().MakeLayout();
}

Graph::~Graph() {
    if (Node root = GetRoot()) root.Remove();
    store_ = graph_ptr<IGraphVis>();
    storage_ = graph_ptr<IGraphStorage>();
}

Node Graph::GetRoot() const {
    return {store_, storage_ ? storage_->get_root() : graph_ptr<INodeImpl>()};
}

void Graph::SetStorage(graph_ptr<IGraphStorage> storage) {
    ++own_changes_;
    storage_ = std::move(storage);
}

std::uint64_t Graph::GetRevision() {
    const auto* const store = dynamic_cast<const DefaultGraphVis*>(store_.get());
    const Node root = GetRoot();
    const INodeImpl* const record = root.record().get();
    const bool is_stock = record != nullptr && typeid(*record) == typeid(DefaultRootNodeImpl);
    if (store == nullptr || !is_stock) ++own_changes_;
    return own_changes_ + internal::look_revision +
           (store != nullptr ? store->picture_revision() : 0);
}

NodeSet Graph::HitNodeTest(double x1, double y1, double x2, double y2) {
    return {store_->test_node_hit(x1, y1, x2, y2), store_};
}

EdgeSet Graph::HitEdgeTest(double x1, double y1, double x2, double y2) {
    return {store_->test_edge_hit(x1, y1, x2, y2), store_};
}

graph_ptr2<INodeHandler> Graph::GetDefaultNodeHandler() {
    return store_->get_default_node_painter();
}

void Graph::SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) {
    store_->set_default_node_painter(handler);
}

void Graph::SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler> handler) {
    store_->set_default_edge_painter(handler);
}

void Graph::SetDefaultLayout(graph_ptr2<ILayout> layout) { store_->set_default_layout(layout); }

}  // namespace nodeline

#include <nodeline/model/internal/revision.h>
#include <nodeline/model/storage.h>
#include <nodeline/ops/graph_ops.h>

#include <cassert>
#include <utility>
#include <vector>

namespace nodeline {

namespace internal {

std::atomic<std::uint64_t> drawn_revision = 1;
std::atomic<std::uint64_t> look_revision = 1;

}  // namespace internal

namespace {

void note_change() {
    ++internal::drawn_revision;
    ++internal::look_revision;
}

// `changed` are the bits that differ. What is drawn follows from the other bits, and what is under
// the pointer changes too often to count as another picture.
void note_bits(int changed, int hidden, int drawn, int hovered) {
    if ((changed & (hidden | drawn)) != 0) ++internal::drawn_revision;
    if ((changed & ~(drawn | hovered)) != 0) ++internal::look_revision;
}

template <class Set>
graph_ptr<Set>& made(graph_ptr<Set>& set) {
    if (!set) set = graph_ptr<Set>(new Set);
    return set;
}

template <class Set>
void clear(const graph_ptr<Set>& set) {
    if (set) set->Clear();
}

template <class Set, class Item>
void erase(const graph_ptr<Set>& set, const Item& item) {
    if (set) set->Remove(item);
}

template <class Set>
bool is_empty(const graph_ptr<Set>& set) {
    return !set || set->GetCount() == 0;
}

DefaultNodeImpl* as_node(const graph_ptr<INodeImpl>& record) {
    return dynamic_cast<DefaultNodeImpl*>(record.get());
}

// Erases the first item of `set` by the one removal procedure, and gives it.
template <class Item>
Item take_first(const graph_ptr<GraphSet<Item>>& set) {
    Item item = (*set)[0];
    set->Remove(item);
    return item;
}

}  // namespace

std::atomic<int> DefaultNodeImpl::current_id = 1;
std::atomic<int> DefaultEdgeImpl::current_id = 0;

// Takes a whole tree of nodes apart at once. Every set ends empty and every edge without ends, so
// the order among nodes and edges leaves no trace, and one linear walk does.
class TearDown {
public:
    static void run(NodeImplSet& owned) {
        std::vector<graph_ptr<INodeImpl>> found;
        collect(owned, found);
        for (std::size_t i = 0; i < found.size(); ++i) {
            if (DefaultNodeImpl* node = as_node(found[i]); node != nullptr && node->owned_) {
                collect(*node->owned_, found);
            }
        }
        for (const auto& record : found) take_apart(record);
    }

private:
    static void collect(NodeImplSet& owned, std::vector<graph_ptr<INodeImpl>>& found) {
        for (int i = 0; i < owned.GetCount(); ++i) found.push_back(owned[i]);
        owned.Clear();
    }

    static void take_apart(const graph_ptr<INodeImpl>& record) {
        DefaultNodeImpl* node = as_node(record);
        if (node == nullptr) return;
        cut(node->edges_in_);
        cut(node->edges_out_);
        node->owner_ = graph_ptr<INodeImpl>();
        node->clear_sets();
    }

    static void cut(const graph_ptr<EdgeImplSet>& edges) {
        if (!edges) return;
        for (int i = 0; i < edges->GetCount(); ++i) {
            auto* edge = dynamic_cast<DefaultEdgeImpl*>((*edges)[i].get());
            if (edge == nullptr) continue;
            edge->from_ = graph_ptr<INodeImpl>();
            edge->to_ = graph_ptr<INodeImpl>();
        }
    }
};

graph_ptr<INodeImpl> DefaultRootNodeImpl::add_node() {
    // A node that was removed would hold its new contents, and they it, for ever.
    if (get_id() != 0 && !get_owner()) return {};
    graph_ptr<INodeImpl> node(new DefaultNodeImpl(graph_ptr<INodeImpl>(this)));
    made(owned_)->Add(node);
    note_change();
    return node;
}

void DefaultRootNodeImpl::remove() {
    note_change();
    if (owned_) TearDown::run(*owned_);
}

graph_ptr<NodeImplSet> DefaultRootNodeImpl::get_owned() { return made(owned_); }

DefaultNodeImpl::DefaultNodeImpl(graph_ptr<INodeImpl> owner)
    : id_(current_id++), owner_(std::move(owner)) {}

void DefaultNodeImpl::set_caption(const std::string& caption) {
    ++internal::look_revision;
    caption_ = caption;
}

void DefaultNodeImpl::set_condition(int condition) {
    note_bits(condition ^ condition_, NodeHidden, NodeDrawn, NodeHovered);
    condition_ = condition;
}

graph_ptr<NodeImplSet> DefaultNodeImpl::get_parents() {
    if (is_empty(parents_)) get_neighbours(edges_in_, &IEdgeImpl::from, made(parents_));
    return parents_;
}

graph_ptr<NodeImplSet> DefaultNodeImpl::get_children() {
    if (is_empty(children_)) get_neighbours(edges_out_, &IEdgeImpl::to, made(children_));
    return children_;
}

graph_ptr<EdgeImplSet> DefaultNodeImpl::get_edges_in() { return made(edges_in_); }
graph_ptr<EdgeImplSet> DefaultNodeImpl::get_edges_out() { return made(edges_out_); }

graph_ptr<IEdgeImpl> DefaultNodeImpl::link_to(graph_ptr<INodeImpl> other) {
    DefaultNodeImpl* target = as_node(other);
    assert(target != nullptr && "an edge ends at a real node");
    if (target == nullptr || !owner_ || !target->owner_) return {};
    note_change();
    graph_ptr<IEdgeImpl> edge(new DefaultEdgeImpl(graph_ptr<INodeImpl>(this), other));
    made(edges_out_)->Add(edge);
    clear(children_);
    made(target->edges_in_)->Add(edge);
    clear(target->parents_);
    return edge;
}

void DefaultNodeImpl::get_neighbours(graph_ptr<EdgeImplSet> edges,
                                     graph_ptr<INodeImpl> (IEdgeImpl::*member)() const,
                                     graph_ptr<NodeImplSet> result) {
    const int count = edges ? edges->GetCount() : 0;
    for (int i = 0; i < count; ++i) {
        // An edge that outlived its other end has none to give.
        if (auto end = ((*edges)[i].get()->*member)()) result->Add(end);
    }
    result->SortUnique();
}

void DefaultNodeImpl::set_owner(graph_ptr<INodeImpl> owner) {
    if (!owner) return;
    auto* new_owner = dynamic_cast<DefaultRootNodeImpl*>(owner.get());
    assert(owner_ && new_owner != nullptr && "owner and owned are nodes of a graph");
    if (!owner_ || new_owner == nullptr) return;
    // The walk starts one step above the new owner, so a node may become its own owner.
    for (graph_ptr<INodeImpl> p = owner; p->get_id() != 0;) {
        graph_ptr<INodeImpl> above = p->get_owner();
        if (!above || above->get_id() == id_) return;
        if (above.get() == p.get()) break;
        p = above;
    }
    const graph_ptr<INodeImpl> keep(this);
    unlink_owner();
    owner_ = owner;
    made(new_owner->owned_)->Add(keep);
}

void DefaultNodeImpl::unlink_owner() {
    note_change();
    if (auto* owner = dynamic_cast<DefaultRootNodeImpl*>(owner_.get())) {
        erase(owner->owned_, graph_ptr<INodeImpl>(this));
    }
}

void DefaultNodeImpl::remove() {
    assert(owner_ && "a node is removed once");
    if (!owner_) return;
    const graph_ptr<INodeImpl> keep(this);
    unlink_owner();
    delete_node();
}

// The owned nodes go first, depth first, without a call level for each level of nesting.
void DefaultNodeImpl::delete_node() {
    note_change();
    std::vector<graph_ptr<INodeImpl>> path{graph_ptr<INodeImpl>(this)};
    while (!path.empty()) {
        DefaultNodeImpl* node = as_node(path.back());
        if (node != nullptr && !is_empty(node->owned_)) {
            path.push_back(take_first(node->owned_));
            continue;
        }
        if (node != nullptr) node->delete_own_links();
        path.pop_back();
    }
}

void DefaultNodeImpl::delete_own_links() {
    while (!is_empty(edges_in_)) _del_from(this, take_first(edges_in_));
    owner_ = graph_ptr<INodeImpl>();
    clear_sets();
}

void DefaultNodeImpl::clear_sets() {
    clear(owned_);
    clear(edges_out_);
    clear(edges_in_);
    clear(parents_);
    clear(children_);
}

void DefaultNodeImpl::delete_edge_from(graph_ptr<IEdgeImpl> edge) {
    note_change();
    if (DefaultNodeImpl* source = as_node(edge->from())) {
        erase(source->edges_out_, edge);
        clear(source->children_);
    }
    edge->remove();
}

void DefaultNodeImpl::delete_edge_to(graph_ptr<IEdgeImpl> edge) {
    note_change();
    if (DefaultNodeImpl* target = as_node(edge->to())) {
        erase(target->edges_in_, edge);
        clear(target->parents_);
    }
}

void DefaultNodeImpl::remove_edge(graph_ptr<IEdgeImpl> edge) {
    erase(edges_out_, edge);
    clear(children_);
    delete_edge_to(edge);
}

DefaultEdgeImpl::DefaultEdgeImpl(graph_ptr<INodeImpl> from, graph_ptr<INodeImpl> to)
    : from_(std::move(from)),
      to_(std::move(to)),
      from_id_(from_->get_id()),
      to_id_(to_->get_id()),
      id_(current_id++) {}

void DefaultEdgeImpl::set_caption(const std::string& caption) {
    ++internal::look_revision;
    caption_ = caption;
}

void DefaultEdgeImpl::set_condition(int condition) {
    note_bits(condition ^ condition_, 0, EdgeDrawn, EdgeHovered);
    condition_ = condition;
}

void DefaultEdgeImpl::remove() {
    note_change();
    const graph_ptr<IEdgeImpl> keep(this);
    if (DefaultNodeImpl* source = as_node(from_)) source->remove_edge(keep);
    from_ = graph_ptr<INodeImpl>();
    to_ = graph_ptr<INodeImpl>();
}

void _delete_node(graph_ptr<INodeImpl> node) {
    if (DefaultNodeImpl* record = as_node(node)) record->delete_node();
}

void _del_from(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge) { node->delete_edge_from(edge); }
void _del_to(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge) { node->delete_edge_to(edge); }

}  // namespace nodeline

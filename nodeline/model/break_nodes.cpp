#include <nodeline/model/break_nodes.h>

#include <algorithm>
#include <limits>

namespace nodeline {

std::atomic<int> DummyNodeImpl::current_id = -1;

namespace {

// The first of `count` ids that fall one by one. They start over in the far case that a process has
// used them all up.
int take_ids(int count) {
    int next = DummyNodeImpl::current_id;
    while (true) {
        const int first = next < std::numeric_limits<int>::min() + count ? -1 : next;
        if (DummyNodeImpl::current_id.compare_exchange_weak(next, first - count)) return first;
    }
}

}  // namespace

void BreakChain::Append(int count) {
    const int first = take_ids(count);
    if (positions_.empty()) {
        first_id_ = first;
        first_count_ = count;
    } else {
        for (int i = 0; i < count; ++i) more_ids_.push_back(first - i);
    }
    positions_.resize(positions_.size() + static_cast<std::size_t>(count), {0.0, 0.0});
    revision_->Advance();
}

int BreakChain::GetIdAt(int index) const {
    if (index < first_count_) return first_id_ - index;
    return more_ids_[static_cast<std::size_t>(index - first_count_)];
}

void BreakChain::Shift(const point<double>& delta) {
    for (auto& p : positions_) p = p + delta;
    revision_->Advance();
}

graph_ptr<EdgeImplSet> BreakChain::GetEdges() {
    if (!edges_) {
        edges_ = graph_ptr<EdgeImplSet>(new EdgeImplSet);
        edges_->Add(edge_);
    }
    return edges_;
}

DefaultEdgeVis::Stretch* DefaultEdgeVis::find(int owner_id) {
    for (auto& stretch : stretches_) {
        if (stretch.owner_id == owner_id) return &stretch;
    }
    return nullptr;
}

DefaultEdgeVis::Stretch& DefaultEdgeVis::make(int owner_id) {
    if (Stretch* found = find(owner_id)) return *found;
    stretches_.reserve(stretches_.size() + 1);
    stretches_.push_back({owner_id, {}, {}});
    return stretches_.back();
}

BreakChain& DefaultEdgeVis::chain_of(Stretch& stretch) {
    if (!stretch.chain) stretch.chain = graph_ptr<BreakChain>(new BreakChain(impl_, revision_));
    return *stretch.chain;
}

void DefaultEdgeVis::drop_route() {
    has_route_ = false;
    route_.clear();
    break_cache_ = graph_ptr<NodeImplSet>();
    revision_->Advance();
}

void DefaultEdgeVis::append_nodes(NodeImplSet& set, const graph_ptr<BreakChain>& chain, int from) {
    for (int i = from; i < chain->GetCount(); ++i) {
        set.Add(graph_ptr<INodeImpl>(new DummyNodeImpl(chain, i)));
    }
}

const graph_ptr<NodeImplSet>& DefaultEdgeVis::nodes_of(Stretch& stretch) {
    if (!stretch.nodes) {
        stretch.nodes = graph_ptr<NodeImplSet>(new NodeImplSet);
        if (stretch.chain) append_nodes(*stretch.nodes, stretch.chain, 0);
    }
    return stretch.nodes;
}

BreakChain* DefaultEdgeVis::FindChain(int owner_id) const {
    for (const auto& stretch : stretches_) {
        if (stretch.owner_id == owner_id) return stretch.chain.get();
    }
    return nullptr;
}

graph_ptr<BreakChain> DefaultEdgeVis::ReplaceChain(int owner_id, int count) {
    Stretch& stretch = make(owner_id);
    stretch.chain = graph_ptr<BreakChain>(new BreakChain(impl_, revision_));
    stretch.nodes = graph_ptr<NodeImplSet>();
    stretch.chain->Append(count);
    drop_route();
    return stretch.chain;
}

void DefaultEdgeVis::add_break_nodes_in(int owner_id, int count) {
    if (count < 1) return;
    Stretch& stretch = make(owner_id);
    BreakChain& chain = chain_of(stretch);
    const int old_count = chain.GetCount();
    chain.Append(count);
    if (stretch.nodes) append_nodes(*stretch.nodes, stretch.chain, old_count);
    drop_route();
}

void DefaultEdgeVis::remove_break_nodes_in(int owner_id) {
    stretches_.erase(std::remove_if(stretches_.begin(), stretches_.end(),
                                    [&](const Stretch& s) { return s.owner_id == owner_id; }),
                     stretches_.end());
    drop_route();
}

void DefaultEdgeVis::KeepStretchesIn(const std::vector<int>& owner_ids) {
    const auto is_stale = [&](const Stretch& s) {
        return std::find(owner_ids.begin(), owner_ids.end(), s.owner_id) == owner_ids.end();
    };
    const auto stale = std::remove_if(stretches_.begin(), stretches_.end(), is_stale);
    if (stale == stretches_.end()) return;
    stretches_.erase(stale, stretches_.end());
    drop_route();
}

void DefaultEdgeVis::remove_break_nodes() {
    stretches_.clear();
    drop_route();
}

graph_ptr<NodeImplSet> DefaultEdgeVis::get_break_nodes_in(int owner_id) {
    return nodes_of(make(owner_id));
}

// Up from the source through every owner that holds a stretch, then down to the target, below the
// highest of them.
void DefaultEdgeVis::compute_route() {
    route_.clear();
    has_route_ = true;
    const graph_ptr<INodeImpl> source = impl_->from();
    const graph_ptr<INodeImpl> target = impl_->to();
    if (!source || !target) return;
    graph_ptr<INodeImpl> top = source->get_owner();
    for (graph_ptr<INodeImpl> p = top; p; p = p->get_owner()) {
        if (const Stretch* stretch = find(p->get_id())) {
            if (stretch->chain) route_.push_back(stretch->chain);
            top = p;
        }
        if (p->get_owner().get() == p.get()) break;
    }
    const std::size_t up = route_.size();
    for (graph_ptr<INodeImpl> q = target->get_owner(); q; q = q->get_owner()) {
        if (top && q->get_id() == top->get_id()) break;
        const Stretch* stretch = find(q->get_id());
        if (stretch != nullptr && stretch->chain) route_.push_back(stretch->chain);
        if (q->get_owner().get() == q.get()) break;
    }
    std::reverse(route_.begin() + static_cast<std::ptrdiff_t>(up), route_.end());
}

const std::vector<graph_ptr<BreakChain>>& DefaultEdgeVis::GetRoute() {
    if (!has_route_) compute_route();
    return route_;
}

graph_ptr<NodeImplSet> DefaultEdgeVis::get_break_nodes() {
    if (break_cache_) return break_cache_;
    graph_ptr<NodeImplSet> all(new NodeImplSet);
    for (const auto& chain : GetRoute()) {
        for (auto& stretch : stretches_) {
            if (stretch.chain.get() != chain.get()) continue;
            const NodeImplSet& nodes = *nodes_of(stretch);
            for (int i = 0; i < nodes.GetCount(); ++i) all->Add(nodes[i]);
        }
    }
    break_cache_ = all;
    return break_cache_;
}

}  // namespace nodeline

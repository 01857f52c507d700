#include <nodeline/layout/internal/layout_run.h>

#include <nodeline/model/internal/record_access.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>

namespace nodeline::internal {

LayoutRun::LayoutRun(const LayoutSettings& settings, Node owner, OwnerStore old, LocalInfos& local)
    : settings_(settings),
      owner_(std::move(owner)),
      owner_id_(owner_.GetID()),
      old_(std::move(old)),
      local_(local) {
    edges_of_ = std::move(old_.neighbourhood);
    edges_of_.Refresh(*owner_.record());
    edge_handler_ = owner_.store()->get_default_edge_painter();
    collect_nodes();
    collect_edges();
    find_old_nodes();
    find_old_edges();
    reserve_dummies();
}

void LayoutRun::collect_nodes() {
    const auto n = static_cast<std::size_t>(node_count());
    vis_.reserve(n);
    hidden.reserve(n);
    sizes.reserve(n);
    for (INodeImpl* node : edges_of_.nodes) {
        vis_.push_back(owner_.store()->get_node_vis(graph_ptr<INodeImpl>(node)));
        hidden.push_back((node->get_condition() & NodeHidden) != 0 ? 1 : 0);
        sizes.push_back(vis_.back()->get_size());
    }
    x.assign(n, 0.0);
    y.assign(n, 0.0);
    infos.assign(n, NodeInfo());
    old_infos.assign(n, NodeInfo());
    backedge_count.assign(n, 0);
    number.assign(n, -1);
    arrived.assign(n, std::numeric_limits<int>::min());
    stands_.assign(n, 0);
}

void LayoutRun::collect_edges() {
    edges.resize(static_cast<std::size_t>(edge_count()));
    directions.resize(edges.size());
    shapes_.resize(edges.size());
    widths_.assign(edges.size(), -1.0);
    // In rounds, so that one look-up need not wait for the one before it.
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        EdgeState& edge = at(edges, e);
        edge.from = at(edges_of_.ends, e).from;
        edge.to = at(edges_of_.ends, e).to;
        const graph_ptr<IEdgeVis> vis =
            owner_.store()->get_edge_vis(graph_ptr<IEdgeImpl>(at(edges_of_.edges, e)));
        edge.vis = graph_ptr<DefaultEdgeVis>(dynamic_cast<DefaultEdgeVis*>(vis.get()));
    }
    for (EdgeState& edge : edges) {
        if (!edge.vis) continue;
        // Asking leaves a stretch behind also where no bend will be: the conversion to coordinates
        // of the whole picture asks all edges, and passes over a root at the origin.
        edge.chain = edge.vis->AskChain(owner_id_);
        if (edge.from != kNoVertex) edge.inner_from = edge.vis->FindChain(id_of(edge.from));
        if (edge.to != kNoVertex) edge.inner_to = edge.vis->FindChain(id_of(edge.to));
    }
    for (EdgeState& edge : edges) {
        if (edge.chain == nullptr) continue;
        edge.bends = edge.chain->GetCount();
        if (edge.bends == 0) {
            edge.chain = nullptr;
        } else {
            edge.first_break_id = edge.chain->GetIdAt(0);
        }
    }
}

void LayoutRun::find_old_nodes() {
    if (old_.nodes.empty()) return;
    IdMap numbers;
    number_by_id(old_.nodes, numbers);
    for (Vertex v = 0; v < node_count(); ++v) {
        const std::int32_t found = numbers.Find(id_of(v));
        if (found == IdMap::kNone) continue;
        at(old_infos, v) = at(old_.nodes, found).info;
        // A node that no run has placed is not old, whatever a resize marked.
        if (at(old_infos, v).level == -1) at(old_infos, v).old = false;
    }
}

void LayoutRun::find_old_edges() {
    if (old_.edges.empty()) return;
    IdMap numbers;
    number_by_id(old_.edges, numbers);
    old_chains_.assign(old_.edges.size(), nullptr);
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        EdgeState& edge = at(edges, e);
        edge.old_entry = numbers.Find(edge_id(e));
        if (edge.old_entry == IdMap::kNone || edge.chain == nullptr) continue;
        const auto& entry = at(old_.edges, edge.old_entry);
        edge.old = entry.old;
        if (!edge.old) continue;
        edge.untouched = entry.vis.get() == edge.vis.get() &&
                         edge.chain->IsRun(entry.first_break_id, entry.count);
        if (edge.untouched) at(old_chains_, edge.old_entry) = edge.chain;
        if (!is_plain(edge)) in_any_order = false;
    }
}

// Whether the bends that the ends of an edge place, and the lanes beside its nodes, lie apart from
// each other and from those that stand on levels.
bool LayoutRun::is_plain(const EdgeState& edge) const {
    if (!edge.untouched || edge.from == kNoVertex || edge.to == kNoVertex) return false;
    const NodeInfo& from = at(old_infos, edge.from);
    const NodeInfo& to = at(old_infos, edge.to);
    if (!from.old || !to.old) return false;
    const int least = from.level < to.level ? 4 : from.level == to.level ? 6 : 8;
    return edge.bends >= least;
}

// An update has about as many dummy nodes as the run before it.
void LayoutRun::reserve_dummies() {
    const std::size_t vertex_count = y.size() + old_.dummy_count;
    y.reserve(vertex_count + vertex_count / 8);
    dummies.reserve(old_.dummy_count + old_.dummy_count / 8);
    breaks.reserve(old_.breaks.size() + old_.breaks.size() / 8);
    break_vertices_.reserve(breaks.capacity());
}

int LayoutRun::id_of(Vertex v) const {
    if (!is_dummy(v)) return at(edges_of_.node_ids, v);
    const DummyState& d = dummy_state(v);
    // A dead dummy node is never looked up again.
    return d.is_dead ? 0 : at(edges, d.edge).chain->GetIdAt(d.index);
}

void LayoutRun::replace_chain(EdgeIndex e, int count) {
    EdgeState& edge = at(edges, e);
    if (!edge.vis) return;
    if (edge.region >= 0) {
        in_any_order = false;
        for (int i = 0; i < edge.bends; ++i) {
            const Vertex v = at(break_vertices_, edge.region + i);
            if (v == kNoVertex) continue;
            DummyState& state = at(dummies, v - node_count());
            state.is_new = true;
            state.is_dead = true;
        }
    }
    edge.chain = edge.vis->ReplaceChain(owner_id_, count).get();
    edge.bends = count;
    edge.first_break_id = edge.chain->GetIdAt(0);
    edge.untouched = false;
    edge.region = -1;
    keep_chain(e);
}

void LayoutRun::keep_chain(EdgeIndex e) {
    EdgeState& edge = at(edges, e);
    if (edge.region >= 0 || edge.chain == nullptr) return;
    edge.region = static_cast<std::int32_t>(breaks.size());
    breaks.resize(breaks.size() + static_cast<std::size_t>(edge.bends));
    break_vertices_.resize(breaks.size(), kNoVertex);
}

Vertex LayoutRun::dummy(EdgeIndex e, int index) {
    const Vertex vertex = at(break_vertices_, at(edges, e).region + index);
    if (vertex != kNoVertex) return vertex;
    return make_dummy(e, index, !at(edges, e).untouched && !old_break_info(e, index).old);
}

BreakInfo LayoutRun::old_break_info(EdgeIndex e, int index) const {
    const EdgeState& edge = at(edges, e);
    if (edge.old_entry == IdMap::kNone || edge.chain == nullptr) return {};
    const auto& entry = at(old_.edges, edge.old_entry);
    if (index >= entry.count || edge.chain->GetIdAt(index) != entry.first_break_id - index) {
        return {};
    }
    return at(old_.breaks, entry.region + index);
}

void LayoutRun::shift_along(Vertex v, double delta) {
    at(y, v) += delta;
    if (!is_dummy(v) || is_dead(v)) return;
    const DummyState& d = dummy_state(v);
    BreakChain* chain = at(edges, d.edge).chain;
    chain->SetPositionAt(d.index, chain->GetPositionAt(d.index).x, at(y, v));
}

void LayoutRun::move_bend(EdgeIndex e, int index, double bend_x, double bend_y) {
    const EdgeState& edge = at(edges, e);
    if (edge.chain == nullptr || index < 0 || index >= edge.chain->GetCount()) return;
    edge.chain->SetPositionAt(index, bend_x, bend_y);
    if (edge.region < 0) return;
    const Vertex vertex = at(break_vertices_, edge.region + index);
    if (vertex != kNoVertex) at(y, vertex) = bend_y;
}

std::vector<Vertex>& LayoutRun::level_at(int index) {
    if (static_cast<std::size_t>(index) >= levels.size()) {
        levels.resize(static_cast<std::size_t>(index) + 1);
    }
    return levels[static_cast<std::size_t>(index)];
}

Level& LayoutRun::extent_at(int index) {
    if (static_cast<std::size_t>(index) >= level_extents.size()) {
        level_extents.resize(static_cast<std::size_t>(index) + 1);
    }
    return level_extents[static_cast<std::size_t>(index)];
}

std::vector<Vertex> LayoutRun::number_by_level() {
    std::vector<Vertex> new_numbers(dummies.size(), kNoVertex);
    std::vector<DummyState> new_dummies;
    std::vector<double> new_y(y.begin(), y.begin() + node_count());
    new_dummies.reserve(dummies.size());
    new_y.reserve(y.size());
    const auto renumber = [&](Vertex& v) {
        if (v != kNoVertex && is_dummy(v)) v = at(new_numbers, v - node_count());
    };
    for (auto& level : levels) {
        for (Vertex& v : level) {
            if (!is_dummy(v)) continue;
            const auto next = static_cast<Vertex>(new_y.size());
            at(new_numbers, v - node_count()) = next;
            new_dummies.push_back(dummy_state(v));
            new_y.push_back(at(y, v));
            v = next;
        }
    }
    for (Vertex& v : break_vertices_) renumber(v);
    for (Segment& s : segments) {
        renumber(s.lower);
        renumber(s.higher);
    }
    dummies = std::move(new_dummies);
    y = std::move(new_y);
    return new_numbers;
}

void LayoutRun::index_links() {
    const std::size_t n = y.size();
    for (const Order side : {ORDER_IN, ORDER_OUT}) {
        auto& starts = link_starts_[side];
        auto& items = links_[side];
        starts.assign(n + 2, 0);
        for (const Segment& s : segments) {
            ++starts[static_cast<std::size_t>(side == ORDER_IN ? s.higher : s.lower) + 2];
        }
        for (std::size_t i = 2; i < starts.size(); ++i) starts[i] += starts[i - 1];
        items.resize(segments.size());
        for (const Segment& s : segments) {
            const Vertex at_node = side == ORDER_IN ? s.higher : s.lower;
            const Vertex far = side == ORDER_IN ? s.lower : s.higher;
            items[starts[static_cast<std::size_t>(at_node) + 1]++] = {far, s.edge};
        }
    }
}

LayoutRun::Links LayoutRun::links(Order side, Vertex v) const {
    const auto& starts = link_starts_[side];
    const Link* base = links_[side].data();
    return {base + starts[static_cast<std::size_t>(v)],
            base + starts[static_cast<std::size_t>(v) + 1]};
}

double LayoutRun::ask_width(EdgeIndex e) {
    return at(widths_, e) = edge_handler_->GetWidth(
               Edge(owner_.store(), graph_ptr<IEdgeImpl>(at(edges_of_.edges, e))));
}

double LayoutRun::height_with_lanes(Vertex v) {
    // One edge sets the width of all lanes of its node.
    OwnerEdges::Run around = neighbours(OwnerEdges::kParents, v);
    if (around.empty()) around = neighbours(OwnerEdges::kChildren, v);
    const double width = around.empty() ? 0.0 : edge_width(around.first->edge);
    return at(sizes, v).cy + at(backedge_count, v) * (settings_.dummy_spacing + width);
}

bool LayoutRun::is_old_here(Vertex v) const {
    if (!is_dummy(v)) return at(infos, v).old && !at(infos, v).was_hidden;
    const DummyState& d = dummy_state(v);
    return at(breaks, d.region + d.index).old;
}

const BreakChain* LayoutRun::inner_chain(EdgeIndex e, Vertex v) const {
    const EdgeState& edge = at(edges, e);
    const BreakChain* inner = v == edge.from ? edge.inner_from : edge.inner_to;
    return inner != nullptr && inner->GetCount() > 0 ? inner : nullptr;
}

double LayoutRun::port_offset(EdgeIndex e, Vertex v, Order side, double middle) const {
    const BreakChain* inner = inner_chain(e, v);
    if (inner == nullptr) return middle;
    return inner->GetPositionAt(side == ORDER_OUT ? inner->GetCount() - 1 : 0).y;
}

double LayoutRun::port_y(const Link& link) const {
    const double top = at(y, link.node);
    if (is_dummy(link.node)) return top;
    return top + port_offset(link.edge, link.node, ORDER_OUT, 0.5 * at(sizes, link.node).cy);
}

void LayoutRun::move_old_by(const point<double>& origin, double header) {
    for (const auto& entry : old_.nodes) {
        const point<double> p = entry.vis->get_position();
        entry.vis->set_position({p.x - origin.x, p.y - origin.y - header});
    }
    for (std::size_t k = 0; k < old_.edges.size(); ++k) {
        const auto& entry = old_.edges[k];
        if (BreakChain* untouched = old_chains_[k]) {
            point<double>* bends = untouched->EditPositions();
            for (int i = 0; i < entry.count; ++i) {
                bends[i] = {bends[i].x - origin.x, bends[i].y - origin.y - header};
            }
            continue;
        }
        BreakChain* chain = entry.vis->FindChain(owner_id_);
        if (chain == nullptr) continue;
        for (int i = 0; i < std::min(entry.count, chain->GetCount()); ++i) {
            if (chain->GetIdAt(i) != entry.first_break_id - i) continue;
            if (!at(old_.breaks, entry.region + i).known) continue;
            const point<double> p = chain->GetPositionAt(i);
            chain->SetPositionAt(i, p.x - origin.x, p.y - origin.y - header);
        }
    }
}

void LayoutRun::load_scratch() {
    keeps_scratch_ = true;
    for (Vertex v = 0; v < node_count(); ++v) {
        const auto found = local_.backedge_counts.find(id_of(v));
        if (found != local_.backedge_counts.end()) at(backedge_count, v) = found->second;
    }
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        // A resize gives no edge a chain, so what others have put there is what gets placed.
        const EdgeState& edge = at(edges, e);
        if (edge.chain != nullptr && !edge.untouched) in_any_order = false;
        const auto found = local_.directions.find(edge_id(e));
        if (found == local_.directions.end()) continue;
        at(directions, e).reversed = found->second.reversed;
        at(directions, e).flat = found->second.flat;
    }
}

void LayoutRun::load_positions() {
    for (Vertex v = 0; v < node_count(); ++v) at(y, v) = at(vis_, v)->get_position().y;
}

void LayoutRun::mark_old() {
    for (Vertex u = 0; u < node_count(); ++u) {
        if (skips(u)) continue;
        at(infos, u).was_hidden = at(hidden, u) != 0;
        at(infos, u).old = true;
        if (at(hidden, u) != 0) continue;
        for (const auto& entry : neighbours(OwnerEdges::kChildren, u)) {
            if (at(hidden, entry.node) != 0) continue;
            EdgeState& edge = at(edges, entry.edge);
            edge.marked_old = true;
            keep_chain(entry.edge);
            for (int i = 0; i < edge.bends; ++i) {
                BreakInfo& info = at(breaks, edge.region + i);
                info.known = true;
                info.old = true;
            }
        }
    }
}

// The order of the levels, so that the next run need not find it anew.
void LayoutRun::remember_places() {
    for (const auto& level : levels) {
        std::int32_t place = 0;
        for (const Vertex v : level) {
            if (!is_dummy(v)) {
                at(infos, v).place = place;
                at(stands_, v) = 1;
            } else if (const DummyState& d = dummy_state(v); !d.is_dead) {
                at(breaks, d.region + d.index).place = place;
            }
            ++place;
        }
    }
}

void LayoutRun::write_positions() {
    for (Vertex v = 0; v < node_count(); ++v) {
        if (at(stands_, v) != 0) at(vis_, v)->set_position({at(x, v), at(y, v)});
    }
}

void LayoutRun::leave_scratch() {
    if (keeps_scratch_) return;
    local_.Clear();
    for (Vertex v = 0; v < node_count(); ++v) {
        if (at(backedge_count, v) > 0) local_.backedge_counts[id_of(v)] = at(backedge_count, v);
    }
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        const EdgeDirection& way = at(directions, e);
        if (!way.reversed && !way.flat) continue;
        local_.directions[edge_id(e)] = {way.reversed, way.flat};
    }
}

// What earlier runs linked counts only while the scratch records of that time are in force, and for
// the chain that they linked.
const OwnerStore::EdgeEntry* LayoutRun::earlier_links(EdgeIndex e) const {
    const EdgeState& edge = at(edges, e);
    if (!keeps_scratch_ || old_.scratch_epoch != local_.epoch) return nullptr;
    if (edge.old_entry == IdMap::kNone || edge.chain == nullptr) return nullptr;
    const auto& entry = at(old_.edges, edge.old_entry);
    return entry.first_break_id == edge.first_break_id ? &entry : nullptr;
}

void LayoutRun::keep_links(EdgeIndex e, OwnerStore::EdgeEntry& entry) const {
    const LinkShape& made = at(shapes_, e);
    const OwnerStore::EdgeEntry* earlier = earlier_links(e);
    if (earlier == nullptr) {
        entry.links = made;
        return;
    }
    entry.links = earlier->links;
    entry.more_links = earlier->more_links;
    bool is_covered = entry.links.Covers(made);
    for (const LinkShape& shape : entry.more_links) is_covered = is_covered || shape.Covers(made);
    if (!is_covered) entry.more_links.push_back(made);
}

OwnerStore LayoutRun::finish() {
    remember_places();
    write_positions();
    leave_scratch();
    OwnerStore result;
    result.nodes.reserve(infos.size());
    for (Vertex v = 0; v < node_count(); ++v) {
        result.nodes.push_back({at(vis_, v), id_of(v), at(infos, v)});
    }
    result.edges.reserve(edges.size());
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        const EdgeState& edge = at(edges, e);
        if (edge.region < 0) continue;
        result.edges.push_back({edge.vis,
                                edge_id(e),
                                edge.marked_old,
                                edge.first_break_id,
                                edge.region,
                                edge.bends,
                                {},
                                {}});
        keep_links(e, result.edges.back());
    }
    result.dummy_count = dummies.size();
    result.scratch_epoch = local_.epoch;
    result.breaks = std::move(breaks);
    result.level_extents = std::move(level_extents);
    return result;
}

}  // namespace nodeline::internal

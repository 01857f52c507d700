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
    edges_of_.Collect(*owner_.record());
    edge_handler_ = owner_.store()->get_default_edge_painter();
    collect_nodes();
    collect_edges();
    find_old_entries();
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
    moved_.assign(n, 0);
}

void LayoutRun::collect_edges() {
    edges.resize(static_cast<std::size_t>(edge_count()));
    directions.resize(edges.size());
    shapes_.resize(edges.size());
    widths_.assign(edges.size(), -1.0);
    place_edge_ends(OwnerEdges::kChildren, &EdgeState::from, &EdgeState::to);
    place_edge_ends(OwnerEdges::kParents, &EdgeState::to, &EdgeState::from);
    place_edge_ends(OwnerEdges::kEdgesOut, &EdgeState::from, nullptr);
    place_edge_ends(OwnerEdges::kEdgesIn, &EdgeState::to, nullptr);
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        EdgeState& edge = at(edges, e);
        const graph_ptr<IEdgeVis> vis =
            owner_.store()->get_edge_vis(graph_ptr<IEdgeImpl>(at(edges_of_.edges, e)));
        edge.vis = graph_ptr<DefaultEdgeVis>(dynamic_cast<DefaultEdgeVis*>(vis.get()));
        if (!edge.vis) continue;
        // Asking leaves a stretch behind also where no bend will be: the conversion to coordinates
        // of the whole picture asks all edges, and passes over a root at the origin.
        edge.chain = edge.vis->AskChain(owner_id_);
        if (edge.chain != nullptr && edge.chain->GetCount() == 0) edge.chain = nullptr;
        if (edge.from != kNoVertex) edge.inner_from = edge.vis->FindChain(id_of(edge.from));
        if (edge.to != kNoVertex) edge.inner_to = edge.vis->FindChain(id_of(edge.to));
    }
}

void LayoutRun::place_edge_ends(Kind kind, Vertex EdgeState::*near, Vertex EdgeState::*far) {
    for (Vertex v = 0; v < node_count(); ++v) {
        for (const auto& entry : neighbours(kind, v)) {
            EdgeState& edge = at(edges, entry.edge);
            edge.*near = v;
            if (far != nullptr) edge.*far = entry.node;
        }
    }
}

void LayoutRun::find_old_entries() {
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::min();
    for (const auto& entry : old_.nodes) {
        lowest = std::min(lowest, entry.id);
        highest = std::max(highest, entry.id);
    }
    old_nodes_.Reset(lowest, highest, old_.nodes.size());
    for (std::size_t i = 0; i < old_.nodes.size(); ++i) {
        old_nodes_.Set(old_.nodes[i].id, static_cast<std::int32_t>(i));
    }
    for (Vertex v = 0; v < node_count(); ++v) {
        const std::int32_t found = old_nodes_.Find(internal::id_of(record(v)));
        if (found == IdMap::kNone) continue;
        at(old_infos, v) = at(old_.nodes, found).info;
        // A node that no run has placed is not old, whatever a resize marked.
        if (at(old_infos, v).level == -1) at(old_infos, v).old = false;
    }
    if (old_.edges.empty()) return;
    IdMap numbers;
    lowest = std::numeric_limits<int>::max();
    highest = std::numeric_limits<int>::min();
    for (const auto& entry : old_.edges) {
        lowest = std::min(lowest, entry.id);
        highest = std::max(highest, entry.id);
    }
    numbers.Reset(lowest, highest, old_.edges.size());
    for (std::size_t i = 0; i < old_.edges.size(); ++i) {
        numbers.Set(old_.edges[i].id, static_cast<std::int32_t>(i));
    }
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        EdgeState& edge = at(edges, e);
        edge.old_entry = numbers.Find(internal::id_of(*at(edges_of_.edges, e)));
        if (edge.old_entry == IdMap::kNone) continue;
        edge.old = at(old_.edges, edge.old_entry).old && edge.chain != nullptr;
    }
}

int LayoutRun::id_of(Vertex v) const {
    if (!is_dummy(v)) return internal::id_of(record(v));
    const DummyState& d = dummy_state(v);
    // A dead dummy node is never looked up again.
    return is_dead(v) ? 0 : at(edges, d.edge).chain->GetIdAt(d.index);
}

void LayoutRun::replace_chain(EdgeIndex e, int count) {
    EdgeState& edge = at(edges, e);
    if (!edge.vis) return;
    edge.chain = edge.vis->ReplaceChain(owner_id_, count).get();
    if (edge.region >= 0) in_any_order = false;
    edge.region = -1;
    keep_chain(e);
}

void LayoutRun::keep_chain(EdgeIndex e) {
    EdgeState& edge = at(edges, e);
    if (edge.region >= 0 || edge.chain == nullptr) return;
    edge.region = static_cast<std::int32_t>(breaks.size());
    breaks.resize(breaks.size() + static_cast<std::size_t>(edge.chain->GetCount()));
    break_vertices_.resize(breaks.size(), kNoVertex);
}

Vertex LayoutRun::dummy(EdgeIndex e, int index) {
    const EdgeState& edge = at(edges, e);
    Vertex& vertex = at(break_vertices_, edge.region + index);
    if (vertex == kNoVertex) {
        vertex = static_cast<Vertex>(y.size());
        dummies.push_back({e, edge.region, index});
        y.push_back(edge.chain->GetPositionAt(index).y);
    }
    return vertex;
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

int LayoutRun::level_of(Vertex v) const {
    if (!is_dummy(v)) return at(infos, v).level;
    const DummyState& d = dummy_state(v);
    return at(breaks, d.region + d.index).level;
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

void LayoutRun::number_by_level() {
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

double LayoutRun::edge_width(EdgeIndex e) {
    double& width = at(widths_, e);
    if (!(width >= 0.0)) {
        width = edge_handler_->GetWidth(
            Edge(owner_.store(), graph_ptr<IEdgeImpl>(at(edges_of_.edges, e))));
    }
    return width;
}

double LayoutRun::get_height(Vertex v) {
    if (is_dummy(v)) return edge_width(dummy_state(v).edge);
    const double height = at(sizes, v).cy;
    const int lanes = at(backedge_count, v);
    if (lanes < 1) return height;
    // One edge sets the width of all lanes of its node.
    OwnerEdges::Run around = neighbours(OwnerEdges::kParents, v);
    if (around.empty()) around = neighbours(OwnerEdges::kChildren, v);
    const double width = around.empty() ? 0.0 : edge_width(around.first->edge);
    return height + lanes * (settings_.dummy_spacing + width);
}

bool LayoutRun::is_new(Vertex v) const {
    if (is_dummy(v))
        return is_dead(v) || !old_break_info(dummy_state(v).edge, dummy_state(v).index).old;
    return !at(old_infos, v).old || at(old_infos, v).was_hidden;
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
    for (const auto& entry : old_.edges) {
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
        const auto found = local_.directions.find(internal::id_of(*at(edges_of_.edges, e)));
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
        for (const auto& entry : neighbours(OwnerEdges::kChildren, u)) {
            if (at(hidden, u) != 0 || at(hidden, entry.node) != 0) continue;
            EdgeState& edge = at(edges, entry.edge);
            edge.marked_old = true;
            keep_chain(entry.edge);
            if (edge.chain == nullptr) continue;
            for (int i = 0; i < edge.chain->GetCount(); ++i) {
                BreakInfo& info = break_info(entry.edge, i);
                info.known = true;
                info.old = true;
            }
        }
    }
}

void LayoutRun::write_positions() {
    for (const auto& level : levels) {
        for (const Vertex v : level) {
            if (is_dummy(v) || at(moved_, v) != 0) continue;
            at(moved_, v) = 1;
            at(vis_, v)->set_position({at(x, v), at(y, v)});
        }
    }
}

void LayoutRun::leave_scratch() {
    if (!keeps_scratch_) {
        local_.Clear();
        for (Vertex v = 0; v < node_count(); ++v) {
            if (at(backedge_count, v) > 0) {
                local_.backedge_counts[internal::id_of(record(v))] = at(backedge_count, v);
            }
        }
        for (EdgeIndex e = 0; e < edge_count(); ++e) {
            const EdgeDirection& way = at(directions, e);
            if (!way.reversed && !way.flat) continue;
            local_.directions[internal::id_of(*at(edges_of_.edges, e))] = {way.reversed, way.flat};
        }
    }
}

// What earlier runs linked counts only while the scratch records of that time are in force, and for
// the chain that they linked.
const OwnerStore::EdgeEntry* LayoutRun::earlier_links(EdgeIndex e) const {
    const EdgeState& edge = at(edges, e);
    if (!keeps_scratch_ || old_.scratch_epoch != local_.epoch) return nullptr;
    if (edge.old_entry == IdMap::kNone || edge.chain == nullptr) return nullptr;
    const auto& entry = at(old_.edges, edge.old_entry);
    return entry.first_break_id == edge.chain->GetIdAt(0) ? &entry : nullptr;
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
    write_positions();
    leave_scratch();
    OwnerStore result;
    result.nodes.reserve(infos.size());
    for (Vertex v = 0; v < node_count(); ++v) {
        result.nodes.push_back({at(vis_, v), internal::id_of(record(v)), at(infos, v)});
    }
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        const EdgeState& edge = at(edges, e);
        if (edge.region < 0) continue;
        const std::int32_t count = edge.chain->GetCount();
        result.edges.push_back({edge.vis,
                                internal::id_of(*at(edges_of_.edges, e)),
                                edge.marked_old,
                                edge.chain->GetIdAt(0),
                                edge.region,
                                count,
                                {},
                                {}});
        keep_links(e, result.edges.back());
    }
    result.scratch_epoch = local_.epoch;
    result.breaks = std::move(breaks);
    result.level_extents = std::move(level_extents);
    return result;
}

}  // namespace nodeline::internal

#include <nodeline/ops/internal/owner_edges.h>

#include <nodeline/model/internal/record_access.h>

#include <algorithm>
#include <limits>

namespace nodeline::internal {

namespace {

// Whether the owners of a node lead to a root: not those of a node that was removed, nor of one
// that owns itself and of what it holds.
bool is_under_root(const INodeImpl& node) {
    const INodeImpl* p = &node;
    while (p->get_id() != 0) {
        const INodeImpl* above = p->get_owner().get();
        if (above == nullptr || above == p) return false;
        p = above;
    }
    return true;
}

}  // namespace

void OwnerEdges::Collect(INodeImpl& owner, bool sorted) {
    nodes.clear();
    edges.clear();
    found_.clear();
    walk(owner);
    for (const Member& member : members_) look_at(owner, *member.node, member.top);
    number_edges();
    fill(sorted);
}

void OwnerEdges::walk(INodeImpl& owner) {
    members_.clear();
    const auto owned = owned_of(owner);
    for (std::int32_t i = 0; i < owned.size(); ++i) {
        nodes.push_back(owned[i].get());
        members_.push_back({owned[i].get(), i});
    }
    for (std::size_t i = 0; i < members_.size(); ++i) {
        const Member member = members_[i];
        // A node that owns itself is no content of itself.
        if (member.node == &owner) continue;
        const auto inner = owned_of(*member.node);
        for (int k = 0; k < inner.size(); ++k) {
            if (inner[k].get() != member.node) members_.push_back({inner[k].get(), member.top});
        }
    }
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::min();
    for (const Member& member : members_) {
        lowest = std::min(lowest, id_of(*member.node));
        highest = std::max(highest, id_of(*member.node));
    }
    tops_.Reset(lowest, highest, members_.size());
    for (const Member& member : members_) tops_.Set(id_of(*member.node), member.top);
}

// An edge whose far end lies in another node of the owner joins siblings. One whose far end is the
// owner itself counts twice as an edge across the border, one that ends outside counts once. An
// edge within one node is none of its neighbourhood, but for a loop on the node itself.
void OwnerEdges::look_at(INodeImpl& owner, INodeImpl& inner, std::int32_t top) {
    const bool is_top = nodes[static_cast<std::size_t>(top)] == &inner;
    const auto judge = [&](Kind sibling, Kind border, IEdgeImpl* edge, EdgeEnd far) {
        if (far.node == nullptr) return;
        const std::int32_t far_top = tops_.Find(far.id);
        if (far_top == top) {
            if (far.node == &inner && is_top) add(sibling, top, far_top, far.id, edge);
        } else if (far_top != IdMap::kNone) {
            const int id = id_of(*nodes[static_cast<std::size_t>(far_top)]);
            add(sibling, top, far_top, id, edge);
        } else if (far.node == &owner) {
            add(border, top, IdMap::kNone, far.id, edge);
            add(border, top, IdMap::kNone, far.id, edge);
        } else if (is_under_root(*far.node)) {
            add(border, top, IdMap::kNone, 0, edge);
        }
    };
    const auto in = edges_in_of(inner);
    for (int i = 0; i < in.size(); ++i) {
        judge(kParents, kEdgesIn, in[i].get(), from_of(*in[i]));
    }
    const auto out = edges_out_of(inner);
    for (int i = 0; i < out.size(); ++i) {
        judge(kChildren, kEdgesOut, out[i].get(), to_of(*out[i]));
    }
}

void OwnerEdges::add(Kind kind, std::int32_t top, std::int32_t node, int far_id, IEdgeImpl* edge) {
    const std::int32_t place = static_cast<std::int32_t>(kind) * node_count() + top;
    found_.push_back({place, far_id, id_of(*edge), edge, node, 0});
}

void OwnerEdges::number_edges() {
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::min();
    for (const Found& found : found_) {
        lowest = std::min(lowest, found.edge_id);
        highest = std::max(highest, found.edge_id);
    }
    edge_numbers_.Reset(lowest, highest, found_.size());
    for (Found& found : found_) {
        std::int32_t number = edge_numbers_.Find(found.edge_id);
        if (number == IdMap::kNone) {
            number = edge_count();
            edge_numbers_.Set(found.edge_id, number);
            edges.push_back(found.edge);
        }
        found.edge_index = number;
    }
}

void OwnerEdges::fill(bool sorted) {
    starts_.assign(4 * nodes.size() + 1, 0);
    for (const Found& found : found_) ++starts_[static_cast<std::size_t>(found.place) + 1];
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    std::vector<Found> placed(found_.size());
    std::vector<std::size_t> next(starts_.begin(), starts_.end() - 1);
    for (const Found& found : found_) placed[next[static_cast<std::size_t>(found.place)]++] = found;
    const auto before = [](const Found& a, const Found& b) {
        return a.far_id != b.far_id ? a.far_id < b.far_id : a.edge_id < b.edge_id;
    };
    for (std::size_t i = 0; sorted && i + 1 < starts_.size(); ++i) {
        const auto first = placed.begin() + static_cast<std::ptrdiff_t>(starts_[i]);
        const auto last = placed.begin() + static_cast<std::ptrdiff_t>(starts_[i + 1]);
        if (last - first > 1) std::sort(first, last, before);
    }
    entries_.clear();
    entries_.reserve(placed.size());
    for (const Found& found : placed) entries_.push_back({found.node, found.edge_index});
}

}  // namespace nodeline::internal

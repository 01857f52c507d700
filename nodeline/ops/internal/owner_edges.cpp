#include <nodeline/ops/internal/owner_edges.h>

#include <nodeline/model/internal/record_access.h>

#include <algorithm>
#include <limits>
#include <typeinfo>

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

template <class Record, class Stock>
bool is_exactly(const Record& record) {
    return typeid(record) == typeid(Stock);
}

}  // namespace

void OwnerEdges::Collect(INodeImpl& owner, bool sorted) {
    remembers_ = false;
    collect(owner, sorted);
}

void OwnerEdges::Refresh(INodeImpl& owner) {
    if (remembers_ && is_current(owner)) return;
    remembers_ = true;
    collect(owner, true);
}

void OwnerEdges::collect(INodeImpl& owner, bool sorted) {
    nodes.clear();
    node_ids.clear();
    edges.clear();
    edge_ids.clear();
    seen_.clear();
    is_stock_ = true;
    Search search;
    walk(owner, search);
    for (const Member& member : members_) look_at(owner, member, search);
    number_edges(search.found);
    fill(search.found, sorted);
    find_ends();
}

void OwnerEdges::walk(INodeImpl& owner, Search& search) {
    members_.clear();
    const auto enter = [this](INodeImpl* node, std::int32_t top) {
        members_.push_back({node, id_of(*node), top});
        is_stock_ = is_stock_ && is_exactly<INodeImpl, DefaultNodeImpl>(*node);
    };
    const auto owned = owned_of(owner);
    for (std::int32_t i = 0; i < owned.size(); ++i) {
        enter(owned[i].get(), i);
        nodes.push_back(owned[i].get());
        node_ids.push_back(members_.back().id);
    }
    for (std::size_t i = 0; i < members_.size(); ++i) {
        const Member member = members_[i];
        // A node that owns itself is no content of itself.
        if (member.node == &owner) continue;
        const auto inner = owned_of(*member.node);
        for (int k = 0; k < inner.size(); ++k) {
            if (inner[k].get() != member.node) enter(inner[k].get(), member.top);
        }
    }
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::min();
    for (const Member& member : members_) {
        lowest = std::min(lowest, member.id);
        highest = std::max(highest, member.id);
    }
    search.tops.Reset(lowest, highest, members_.size());
    for (const Member& member : members_) search.tops.Set(member.id, member.top);
}

// An edge whose far end lies in another node of the owner joins siblings. One whose far end is the
// owner itself counts twice as an edge across the border, one that ends outside counts once. An
// edge within one node is none of its neighbourhood, but for a loop on the node itself.
void OwnerEdges::look_at(INodeImpl& owner, const Member& member, Search& search) {
    const std::int32_t top = member.top;
    const bool is_top = nodes[static_cast<std::size_t>(top)] == member.node;
    const auto judge = [&](Kind sibling, Kind border, IEdgeImpl* edge, EdgeEnd far) {
        const int edge_id = id_of(*edge);
        const auto place = [&](Kind kind) {
            return static_cast<std::int32_t>(kind) * node_count() + top;
        };
        const std::int32_t far_top = far.node == nullptr ? IdMap::kNone : search.tops.Find(far.id);
        if (far_top != IdMap::kNone) {
            remember(edge, Verdict::kInside);
            if (far_top != top) {
                const int id = node_ids[static_cast<std::size_t>(far_top)];
                search.Add(place(sibling), id, edge, edge_id, far_top);
            } else if (far.node == member.node && is_top) {
                search.Add(place(sibling), far.id, edge, edge_id, far_top);
            }
            return;
        }
        const Verdict verdict = judge_outside(owner, far.node);
        remember(edge, verdict);
        if (verdict == Verdict::kToOwner) {
            search.Add(place(border), far.id, edge, edge_id, IdMap::kNone);
            search.Add(place(border), far.id, edge, edge_id, IdMap::kNone);
        } else if (verdict == Verdict::kToOutside) {
            search.Add(place(border), 0, edge, edge_id, IdMap::kNone);
        }
    };
    const auto in = edges_in_of(*member.node);
    for (int i = 0; i < in.size(); ++i) {
        judge(kParents, kEdgesIn, in[i].get(), from_of(*in[i]));
    }
    const auto out = edges_out_of(*member.node);
    for (int i = 0; i < out.size(); ++i) {
        judge(kChildren, kEdgesOut, out[i].get(), to_of(*out[i]));
    }
}

OwnerEdges::Verdict OwnerEdges::judge_outside(const INodeImpl& owner, const INodeImpl* far) {
    if (far == nullptr) return Verdict::kNowhere;
    if (far == &owner) return Verdict::kToOwner;
    return is_under_root(*far) ? Verdict::kToOutside : Verdict::kNowhere;
}

void OwnerEdges::remember(IEdgeImpl* edge, Verdict verdict) {
    if (!remembers_) return;
    is_stock_ = is_stock_ && is_exactly<IEdgeImpl, DefaultEdgeImpl>(*edge);
    seen_.push_back({graph_ptr<IEdgeImpl>(edge), verdict});
}

void OwnerEdges::number_edges(std::vector<Found>& found) {
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::min();
    for (const Found& item : found) {
        lowest = std::min(lowest, item.edge_id);
        highest = std::max(highest, item.edge_id);
    }
    IdMap numbers;
    numbers.Reset(lowest, highest, found.size());
    for (Found& item : found) {
        std::int32_t number = numbers.Find(item.edge_id);
        if (number == IdMap::kNone) {
            number = edge_count();
            numbers.Set(item.edge_id, number);
            edges.push_back(item.edge);
            edge_ids.push_back(item.edge_id);
        }
        item.edge_index = number;
    }
}

void OwnerEdges::fill(const std::vector<Found>& found, bool sorted) {
    starts_.assign(4 * nodes.size() + 1, 0);
    for (const Found& item : found) ++starts_[static_cast<std::size_t>(item.place) + 1];
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    std::vector<Found> placed(found.size());
    std::vector<std::size_t> next(starts_.begin(), starts_.end() - 1);
    for (const Found& item : found) placed[next[static_cast<std::size_t>(item.place)]++] = item;
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
    for (const Found& item : placed) entries_.push_back({item.node, item.edge_index});
}

void OwnerEdges::find_ends() {
    ends.assign(edges.size(), Ends());
    const auto enter = [&](Kind kind, std::int32_t Ends::*near, std::int32_t Ends::*far) {
        for (std::int32_t v = 0; v < node_count(); ++v) {
            for (const Entry& entry : Of(kind, v)) {
                Ends& edge = ends[static_cast<std::size_t>(entry.edge)];
                edge.*near = v;
                if (far != nullptr) edge.*far = entry.node;
            }
        }
    };
    enter(kChildren, &Ends::from, &Ends::to);
    enter(kParents, &Ends::to, &Ends::from);
    enter(kEdgesOut, &Ends::from, nullptr);
    enter(kEdgesIn, &Ends::to, nullptr);
}

bool OwnerEdges::is_member(std::size_t place, const INodeImpl& node, std::int32_t top) const {
    if (place >= members_.size()) return false;
    const Member& member = members_[place];
    return member.node == &node && member.top == top &&
           is_exactly<INodeImpl, DefaultNodeImpl>(node) && member.id == id_of(node);
}

// Walks as `Collect` does, and compares what it meets. The ends of an edge never change while it
// stands in the sets of both, so an edge between members of the same sets is what it was; what lies
// outside may have moved, and is judged anew.
bool OwnerEdges::is_current(INodeImpl& owner) const {
    const auto owned = owned_of(owner);
    if (!is_stock_ || static_cast<std::size_t>(owned.size()) != nodes.size()) return false;
    std::size_t met = 0;
    for (int i = 0; i < owned.size(); ++i) {
        if (!is_member(met++, *owned[i], i)) return false;
    }
    std::size_t seen = 0;
    const auto is_as_seen = [&](const auto& set, EdgeEnd (*far_of)(IEdgeImpl&)) {
        if (static_cast<std::size_t>(set.size()) > seen_.size() - seen) return false;
        for (int i = 0; i < set.size(); ++i) {
            const Seen& known = seen_[seen++];
            if (set[i].get() != known.edge.get()) return false;
            if (known.verdict != Verdict::kInside &&
                judge_outside(owner, far_of(*set[i]).node) != known.verdict) {
                return false;
            }
        }
        return true;
    };
    for (std::size_t i = 0; i < met; ++i) {
        // Met above, so it is there.
        INodeImpl& node = *members_[i].node;
        if (&node != &owner) {
            const auto inner = owned_of(node);
            for (int k = 0; k < inner.size(); ++k) {
                if (inner[k].get() == &node) continue;
                if (!is_member(met++, *inner[k], members_[i].top)) return false;
            }
        }
        if (!is_as_seen(edges_in_of(node), from_of)) return false;
        if (!is_as_seen(edges_out_of(node), to_of)) return false;
    }
    return met == members_.size() && seen == seen_.size();
}

}  // namespace nodeline::internal

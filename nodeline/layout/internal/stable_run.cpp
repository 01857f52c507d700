#include <nodeline/layout/internal/stable_run.h>

#include <nodeline/model/internal/record_access.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace nodeline::internal {

namespace {

OwnerStore with(OwnerEdges neighbourhood) {
    OwnerStore store;
    store.neighbourhood = std::move(neighbourhood);
    return store;
}

}  // namespace

StableRun::StableRun(const LayoutSettings& settings, const StableLayout::Options& options,
                     const Node& owner, OwnerMemory& memory, LocalInfos& local)
    : LayoutRun(settings, owner, with(std::move(memory.neighbourhood)), local),
      options_(options),
      memory_(memory) {
    top_margin_ = settings.node_spacing;
    if (!IsRoot(owner)) top_margin_ = std::max(top_margin_, options_.caption_room);
    number_by_id(memory.nodes, node_places_);
    number_by_id(memory.edges, edge_places_);
    courses.resize(edges.size());
    placing.assign(static_cast<std::size_t>(node_count()), Placing::kFresh);
    places.assign(placing.size(), -1);
    lane_room.assign(placing.size(), 0.0);
    bands = memory.bands;
    hide_owner();
    forget_own_ends();
    for (Vertex v = 0; v < node_count() && !has_boxes_; ++v) {
        has_boxes_ = owned_of(record(v)).size() > 0;
    }
}

// A node that owns itself lies outside of its own contents.
void StableRun::hide_owner() {
    for (Vertex v = 0; v < node_count(); ++v) {
        if (&record(v) == owner().record().get()) at(hidden, v) = 1;
    }
}

// Edges end at a node that they lead to, also where it was once an owner through which they ran on.
void StableRun::forget_own_ends() {
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        EdgeState& edge = at(edges, e);
        if (edge.inner_from != nullptr && from_of(edge_record(e)).node == &record(edge.from)) {
            edge.inner_from = nullptr;
        }
        if (edge.inner_to != nullptr && to_of(edge_record(e)).node == &record(edge.to)) {
            edge.inner_to = nullptr;
        }
    }
}

namespace {

class Mixer {
public:
    void Add(std::uint64_t value) {
        sum_ = (sum_ ^ value) * 0x9E3779B97F4A7C15ULL;
        sum_ ^= sum_ >> 29;
    }
    void Add(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        Add(bits);
    }
    [[nodiscard]] std::uint64_t sum() const { return sum_; }

private:
    std::uint64_t sum_ = 1;
};

}  // namespace

std::uint64_t StableRun::Fingerprint() {
    Mixer mixer;
    const auto mix = [&](std::int64_t value) { mixer.Add(static_cast<std::uint64_t>(value)); };
    mix(node_count());
    for (Vertex v = 0; v < node_count(); ++v) {
        mix(id_of(v));
        mix(at(hidden, v));
        mixer.Add(at(sizes, v).cx);
        mixer.Add(at(sizes, v).cy);
    }
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        const EdgeState& edge = at(edges, e);
        mix(edge_id(e));
        mix(edge.from);
        mix(edge.to);
        if (!is_drawn(e)) continue;
        if (!joins_nodes(e)) {
            // The way to an end decides which stretches the edge may have.
            IEdgeImpl& impl = edge_record(e);
            for (INodeImpl* end : {from_of(impl).node, to_of(impl).node}) {
                for_each_owner(end, [&](const INodeImpl& above) { mix(above.get_id()); });
            }
        }
        mixer.Add(edge_width(e));
        if (edge.from != kNoVertex) mixer.Add(port_offset(e, edge.from, ORDER_OUT, -1.0));
        if (edge.to != kNoVertex) mixer.Add(port_offset(e, edge.to, ORDER_IN, -1.0));
    }
    return mixer.sum();
}

bool StableRun::IsWhole() const {
    for (EdgeIndex e = 0; e < edge_count(); ++e) {
        const BreakChain* chain = at(edges, e).chain;
        const OwnerMemory::EdgeEntry* entry = remembered_edge(e);
        const int known = entry == nullptr ? 0 : entry->bend_count;
        if (known != (chain == nullptr ? 0 : chain->GetCount())) return false;
    }
    return true;
}

const OwnerMemory::NodeEntry* StableRun::remembered_node(Vertex v) const {
    const std::int32_t place = node_places_.Find(id_of(v));
    return place == IdMap::kNone ? nullptr : &at(memory_.nodes, place);
}

const OwnerMemory::EdgeEntry* StableRun::remembered_edge(EdgeIndex e) const {
    const std::int32_t place = edge_places_.Find(edge_id(e));
    return place == IdMap::kNone ? nullptr : &at(memory_.edges, place);
}

StableRun::Spots StableRun::remembered_spots(EdgeIndex e, int level) const {
    const OwnerMemory::EdgeEntry* entry = remembered_edge(e);
    if (entry == nullptr) return {nullptr, nullptr};
    const Spot* const first = memory_.spots.data() + entry->first_spot;
    const Spot* const last = first + entry->spot_count;
    return {std::lower_bound(first, last, level - lifted,
                             [](const Spot& spot, int wanted) { return spot.level < wanted; }),
            last};
}

// A node of the owner answers for itself; what lies deeper is asked on the way up.
bool StableRun::shows(INodeImpl* end, Vertex top) const {
    INodeImpl* stop = top == kNoVertex ? nullptr : &record(top);
    if (stop != nullptr && at(hidden, top) != 0) return false;
    for (INodeImpl* node = end; node != nullptr && node != stop;) {
        if ((node->get_condition() & NodeHidden) != 0) return false;
        INodeImpl* above = node->get_owner().get();
        node = above == node ? nullptr : above;
    }
    return true;
}

bool StableRun::is_drawn(EdgeIndex e) const {
    const EdgeState& edge = at(edges, e);
    if (!edge.vis) return false;
    if (joins_nodes(e)) return at(hidden, edge.from) == 0 && at(hidden, edge.to) == 0;
    IEdgeImpl& impl = edge_record(e);
    return shows(from_of(impl).node, edge.from) && shows(to_of(impl).node, edge.to);
}

Vertex StableRun::vertex_on(EdgeIndex e, int level) const {
    return at(break_vertices(), at(edges, e).region + at(courses, e).bend_on(level));
}

double StableRun::spacing(Vertex above, Vertex below) const {
    const int bends = (is_dummy(above) ? 1 : 0) + (is_dummy(below) ? 1 : 0);
    if (bends == 2) return settings().dummy_spacing;
    return bends == 0 ? settings().node_spacing : 0.5 * settings().node_spacing;
}

}  // namespace nodeline::internal

#include <nodeline/layout/internal/stable_engine.h>

#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/layout/internal/steps.h>
#include <nodeline/model/internal/record_access.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/internal/absolute.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace nodeline::internal {

namespace {

template <void (*step)(LayoutRun&)>
void shared(StableRun& run) {
    step(run);
}

const StablePipeline& make_steps() {
    static const StablePipeline steps = {
        {"determine_levels", shared<determine_levels>},
        {"lay_courses", lay_courses},
        {"drop_stale_stretches", drop_stale_stretches},
        {"barycentric_adjust", shared<barycentric_adjust>},
        {"reduce_crossings", reduce_crossings},
        {"number_by_level", number_by_level},
        {"calculate_initial_y_coords", shared<calculate_initial_y_coords>},
        {"force_adjust", shared<force_adjust>},
        {"straighten", straighten},
        {"open_drawing", open_drawing},
        {"move_to_margin", move_to_margin},
        {"draw_routes", draw_routes},
        {"remember", remember},
    };
    return steps;
}

// The steps of a make as far as the order.
const StablePipeline& order_steps() {
    static const StablePipeline steps = {
        {"determine_levels", shared<determine_levels>},
        {"lay_courses", lay_courses},
        {"barycentric_adjust", shared<barycentric_adjust>},
        {"reduce_crossings", reduce_crossings},
    };
    return steps;
}

const StablePipeline& update_steps() {
    static const StablePipeline steps = {
        {"recall", recall},
        {"determine_new_nodes_levels", shared<determine_new_nodes_levels>},
        {"lift_levels", lift_levels},
        {"lay_courses", lay_courses},
        {"drop_stale_stretches", drop_stale_stretches},
        {"fit_in", fit_in},
        {"open_drawing", open_drawing},
        {"draw_routes", draw_routes},
        {"remember", remember},
    };
    return steps;
}

class TokenOfALayout : public Countable {};

bool is_leaf(const graph_ptr<INodeImpl>& node) { return owned_of(*node).size() == 0; }

void size_leaf(Node node) {
    if (const graph_ptr2<INodeHandler> handler = node.GetHandler()) {
        node.SetSize(handler->GetSize(node));
    }
}

// Whether anything of the owner has stood in a picture.
bool has_picture(const OwnerMemory* memory) {
    return memory != nullptr && std::any_of(memory->nodes.begin(), memory->nodes.end(),
                                            [](const auto& entry) { return entry.has_place; });
}

void write_nodes(const OwnerMemory& memory, const point<double>& origin) {
    for (const auto& entry : memory.nodes) {
        entry.vis->set_position({entry.position.x + origin.x, entry.position.y + origin.y});
    }
}

void write_bends(const OwnerMemory& memory, int owner_id, const point<double>& origin) {
    for (const auto& entry : memory.edges) {
        BreakChain* chain = entry.vis->FindChain(owner_id);
        if (chain == nullptr) continue;
        for (int i = 0; i < std::min(entry.bend_count, chain->GetCount()); ++i) {
            const point<double>& bend = at(memory.bends, entry.first_bend + i);
            chain->SetPositionAt(i, bend.x + origin.x, bend.y + origin.y);
        }
    }
}

// The coordinate that becomes `wanted` when `origin` is added to it twice. Rounding may miss it by
// a last bit or two.
double halve_shift(double wanted, double origin) {
    double value = wanted - origin - origin;
    for (int i = 0; i < 4; ++i) {
        const double reached = value + origin + origin;
        if (reached == wanted) break;
        value = std::nextafter(value, reached < wanted ? std::numeric_limits<double>::infinity()
                                                       : -std::numeric_limits<double>::infinity());
    }
    return value;
}

// An edge between a node and its owner is moved twice when the picture becomes absolute: it lies so
// much further back until then.
void move_owner_edges_back(const OwnerMemory& memory, int owner_id, const point<double>& origin) {
    for (const auto& entry : memory.edges) {
        BreakChain* chain = entry.meets_owner ? entry.vis->FindChain(owner_id) : nullptr;
        if (chain == nullptr) continue;
        for (int i = 0; i < std::min(entry.bend_count, chain->GetCount()); ++i) {
            const point<double>& bend = at(memory.bends, entry.first_bend + i);
            chain->SetPositionAt(i, halve_shift(bend.x + origin.x, origin.x),
                                 halve_shift(bend.y + origin.y, origin.y));
        }
    }
}

}  // namespace

StableEngine::StableEngine(const StableLayout::Options& options)
    : options_(options), token_(new TokenOfALayout) {
    settings_.level_spacing = options.level_spacing;
    settings_.node_spacing = options.node_spacing;
    settings_.dummy_spacing = options.dummy_spacing;
    settings_.backedge_spacing = options.backedge_spacing;
}

GraphMemory& StableEngine::memory_of(const Node& node) {
    auto* store = dynamic_cast<DefaultGraphVis*>(node.store().get());
    if (store == nullptr) {
        spare_ = graph_ptr<GraphMemory>(new GraphMemory);
        return *spare_;
    }
    graph_ptr<Countable>& memory = store->attachment(token_);
    if (!memory) {
        const graph_ptr<GraphMemory> fresh(new GraphMemory);
        memory = fresh;
    }
    return static_cast<GraphMemory&>(*memory);
}

void StableEngine::Make(const Node& node, ILayout& self) {
    order_outside_in(node, self);
    run_inside_out(node, self, Mode::kMake);
    anchors_.Clear();
    prepare_shift(node, self, node.GetPosition());
}

void StableEngine::Update(const Node& node, ILayout& self) {
    run_inside_out(node, self, Mode::kUpdate);
    prepare_shift(node, self, node.GetPosition());
}

void StableEngine::Resize(const Node& node, ILayout& self) {
    if (is_leaf(node.record())) {
        size_leaf(node);
        return;
    }
    make_foreign_relative(node, self);
    run_inside_out(node, self, Mode::kResize);
    publish(node, self, memory_of(node));
}

// Contents are laid out ahead of their owners, for sizes grow from the inside out. What lies
// outside of a box can tell the order of the edges across its border all the same, for order asks
// for no sizes. So owners of boxes are ordered beforehand, from the outside in.
void StableEngine::order_outside_in(const Node& top, ILayout& self) {
    if (options_.sweeps <= 3) return;
    const graph_ptr<IGraphVis>& store = top.store();
    std::vector<graph_ptr<INodeImpl>> owners{top.record()};
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const graph_ptr<INodeImpl> owner = owners[i];
        const std::size_t before = owners.size();
        const auto owned = owned_of(*owner);
        for (int k = 0; k < owned.size(); ++k) {
            if (owned[k].get() == owner.get() || is_leaf(owned[k])) continue;
            if (store->get_node_layout(owned[k]).get() == &self) owners.push_back(owned[k]);
        }
        if (owners.size() == before) continue;
        OwnerMemory nothing;
        StableRun run(settings_, options_, Node(store, owner), nothing, local_);
        run.anchors = &anchors_;
        for (const StableStep& step : order_steps()) step.run(run);
        find_anchors(run, anchors_);
    }
}

// Contents that another object arranges are shifted as they are; the rest is written anew.
void StableEngine::make_foreign_relative(const Node& top, ILayout& self) {
    const graph_ptr<IGraphVis>& store = top.store();
    std::vector<graph_ptr<INodeImpl>> owners{top.record()};
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const graph_ptr<INodeImpl> owner = owners[i];
        const auto owned = owned_of(*owner);
        for (int k = 0; k < owned.size(); ++k) {
            if (owned[k].get() == owner.get() || is_leaf(owned[k])) continue;
            if (store->get_node_layout(owned[k]).get() == &self) {
                owners.push_back(owned[k]);
            } else {
                make_relative(Node(store, owned[k]));
            }
        }
    }
}

// Contents before their owners, in a loop; only contents that another layout object arranges cost
// a call level. A resize leaves the sizes of leaves and the work of other layouts alone.
void StableEngine::run_inside_out(const Node& node, ILayout& self, Mode mode) {
    struct Frame {
        graph_ptr<INodeImpl> owner;
        int next;
    };
    GraphMemory& memory = memory_of(node);
    const graph_ptr<IGraphVis>& store = node.store();
    std::vector<Frame> path{{node.record(), 0}};
    std::size_t owners = 0;
    while (!path.empty()) {
        Frame& frame = path.back();
        const auto owned = owned_of(*frame.owner);
        if (frame.next < owned.size()) {
            const graph_ptr<INodeImpl>& child = owned[frame.next++];
            if (child.get() == frame.owner.get()) continue;
            const graph_ptr2<ILayout> layout = store->get_node_layout(child);
            if (!layout) continue;
            if (layout.get() == &self) {
                path.push_back({child, 0});
            } else if (mode == Mode::kMake) {
                layout->Make(Node(store, child));
            } else if (mode == Mode::kUpdate) {
                layout->Update(Node(store, child));
            }
            continue;
        }
        const Node done(store, frame.owner);
        path.pop_back();
        if (!is_leaf(done.record())) {
            run_owner(done, memory, mode == Mode::kMake);
            ++owners;
            continue;
        }
        memory.Forget(done.GetID());
        if (mode != Mode::kResize) size_leaf(done);
    }
    if (IsRoot(node) && owners < memory.GetCount()) memory.ForgetRemoved();
}

void StableEngine::run_owner(const Node& owner, GraphMemory& memory, bool afresh) {
    const int id = owner.GetID();
    if (afresh || !has_picture(memory.Find(id))) memory.Forget(id);
    OwnerMemory& known = memory.Get(id);
    const bool is_new = known.nodes.empty();
    StableRun run(settings_, options_, owner, known, local_);
    run.anchors = &anchors_;
    const std::uint64_t fingerprint = run.Fingerprint();
    if (is_new || fingerprint != known.fingerprint || !run.IsWhole()) {
        for (const StableStep& step : is_new ? make_steps() : update_steps()) step.run(run);
        known.fingerprint = fingerprint;
    } else {
        write_bends(known, id, {0.0, 0.0});
    }
    known.neighbourhood = run.release_neighbourhood();
    write_nodes(known, {0.0, 0.0});
    Node(owner).SetSize(known.extent);
}

// Calls `f(owner, memory, origin)` for each owner that this object has laid out under `top`, owners
// first, with the place that the owner will have in the whole picture when `top` has `place`.
template <class F>
void StableEngine::for_each_owner(const Node& top, const point<double>& place, ILayout& self,
                                  GraphMemory& memory, F f) {
    struct Owner {
        graph_ptr<INodeImpl> record;
        point<double> origin;
    };
    const graph_ptr<IGraphVis>& store = top.store();
    std::vector<Owner> owners{{top.record(), place}};
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const Owner owner = owners[i];
        const OwnerMemory* known = memory.Find(owner.record->get_id());
        if (known == nullptr) continue;
        f(owner.record, *known, owner.origin);
        for (const auto& entry : known->nodes) {
            const graph_ptr<INodeImpl> child = entry.vis->get_node_impl();
            if (child.get() == owner.record.get() || is_leaf(child)) continue;
            const point<double> origin{entry.position.x + owner.origin.x,
                                       entry.position.y + owner.origin.y};
            if (store->get_node_layout(child).get() == &self) owners.push_back({child, origin});
        }
    }
}

// The caller makes the picture absolute. Owners that another object of this kind arranges have been
// prepared for the place that they had before this run.
void StableEngine::prepare_shift(const Node& top, ILayout& self, const point<double>& place) {
    const graph_ptr<IGraphVis>& store = top.store();
    const auto prepare = [&](const auto& owner, const OwnerMemory& known,
                             const point<double>& origin) {
        move_owner_edges_back(known, owner->get_id(), origin);
        for (const auto& entry : known.nodes) {
            const graph_ptr<INodeImpl> child = entry.vis->get_node_impl();
            if (child.get() == owner.get() || is_leaf(child)) continue;
            const graph_ptr2<ILayout> layout = store->get_node_layout(child);
            if (layout.get() == &self) continue;
            if (auto* other = dynamic_cast<StableLayout*>(layout.get())) {
                engine_of(*other).prepare_shift(
                    Node(store, child), *other,
                    {entry.position.x + origin.x, entry.position.y + origin.y});
            }
        }
    };
    for_each_owner(top, place, self, memory_of(top), prepare);
}

// Turns what has been laid out into coordinates of the whole picture, from the memories: sums that
// are taken anew each time do not drift.
void StableEngine::publish(const Node& top, ILayout& self, GraphMemory& memory) {
    const graph_ptr<IGraphVis>& store = top.store();
    for_each_owner(top, top.GetPosition(), self, memory,
                   [&](const auto& owner, const OwnerMemory& known, const point<double>& origin) {
                       write_nodes(known, origin);
                       write_bends(known, owner->get_id(), origin);
                       for (const auto& entry : known.nodes) {
                           const graph_ptr<INodeImpl> child = entry.vis->get_node_impl();
                           if (child.get() == owner.get() || is_leaf(child)) continue;
                           if (store->get_node_layout(child).get() == &self) continue;
                           make_absolute(Node(store, child));
                       }
                   });
}

}  // namespace nodeline::internal

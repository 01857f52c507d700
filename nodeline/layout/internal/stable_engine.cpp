#include <nodeline/layout/internal/stable_engine.h>

#include <nodeline/layout/internal/owner_walk.h>
#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/layout/internal/steps.h>
#include <nodeline/model/internal/attachment.h>
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
        {"order_levels", order_levels},
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
        {"order_levels_ahead", order_levels_ahead},
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
        {"number_by_level", number_by_level},
        {"fit_in", fit_in},
        {"open_drawing", open_drawing},
        {"draw_routes", draw_routes},
        {"remember", remember},
    };
    return steps;
}

class TokenOfALayout : public Countable {};

// Whether anything of the owner has stood in a picture.
bool has_picture(const OwnerMemory& memory) {
    return std::any_of(memory.nodes.begin(), memory.nodes.end(),
                       [](const auto& entry) { return entry.has_place; });
}

// What is there to draw does not depend on how it was drawn, nor does what is found ahead of a run.
void forget_picture(OwnerMemory& memory) {
    OwnerMemory fresh;
    fresh.neighbourhood = std::move(memory.neighbourhood);
    fresh.order = std::move(memory.order);
    memory = std::move(fresh);
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

// Routes ask for the library's own store as well, so there is nothing to do in any other.
GraphMemory* StableEngine::memory_of(const Node& node) {
    return attached_to<GraphMemory>(node.store(), token_);
}

void StableEngine::Make(const Node& node, ILayout& self) {
    GraphMemory* memory = memory_of(node);
    if (memory == nullptr) return;
    order_outside_in(node, self, *memory);
    run_inside_out(node, self, *memory, Mode::kMake);
    anchors_.Clear();
    prepare_shift(node, self, *memory, node.GetPosition());
}

void StableEngine::Update(const Node& node, ILayout& self) {
    GraphMemory* memory = memory_of(node);
    if (memory == nullptr) return;
    run_inside_out(node, self, *memory, Mode::kUpdate);
    prepare_shift(node, self, *memory, node.GetPosition());
}

void StableEngine::Resize(const Node& node, ILayout& self) {
    GraphMemory* memory = memory_of(node);
    if (memory == nullptr) return;
    if (is_leaf(node.record())) {
        size_leaf(node);
        return;
    }
    make_foreign_relative(node, self);
    run_inside_out(node, self, *memory, Mode::kResize);
    publish(node, self, *memory);
}

// Contents are laid out ahead of their owners, for sizes grow from the inside out. What lies
// outside of a box can tell the order of the edges across its border all the same, for order asks
// for no sizes. So owners of boxes are ordered beforehand, from the outside in. What that collects
// and finds serves their runs as well.
void StableEngine::order_outside_in(const Node& top, ILayout& self, GraphMemory& memory) {
    if (options_.sweeps <= 3) return;
    std::vector<Node> owners{top};
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const Node owner = owners[i];
        const std::size_t before = owners.size();
        for_each_inner_owner(owner, [&](const Node& inner, const ILayout& layout) {
            if (&layout == &self) owners.push_back(inner);
        });
        if (owners.size() == before) continue;
        OwnerMemory& known = memory.Get(owner.GetID());
        forget_picture(known);
        StableRun run(settings_, options_, owner, known, local_);
        run.anchors = &anchors_;
        for (const StableStep& step : order_steps()) step.run(run);
        find_anchors(run, anchors_);
        known.neighbourhood = run.release_neighbourhood();
    }
}

// Contents that another object arranges are shifted as they are; the rest is written anew.
void StableEngine::make_foreign_relative(const Node& top, ILayout& self) {
    std::vector<Node> owners{top};
    for (std::size_t i = 0; i < owners.size(); ++i) {
        for_each_inner_owner(Node(owners[i]), [&](const Node& inner, const ILayout& layout) {
            if (&layout == &self) {
                owners.push_back(inner);
            } else {
                make_relative(inner);
            }
        });
    }
}

// A resize leaves the sizes of leaves and the work of other layouts alone.
void StableEngine::run_inside_out(const Node& node, ILayout& self, GraphMemory& memory, Mode mode) {
    std::size_t owners = 0;
    const auto run_own = [&](const Node& owner) {
        if (is_leaf(owner.record())) {
            memory.Forget(owner.GetID());
            if (mode != Mode::kResize) size_leaf(owner);
        } else {
            run_owner(owner, memory, mode == Mode::kMake);
            ++owners;
        }
    };
    const auto run_foreign = [&](const Node& owner, ILayout& layout) {
        if (mode == Mode::kMake) layout.Make(owner);
        if (mode == Mode::kUpdate) layout.Update(owner);
    };
    walk_inside_out(node, self, run_own, run_foreign);
    if (IsRoot(node) && owners < memory.GetCount()) memory.ForgetRemoved();
}

void StableEngine::run_owner(const Node& owner, GraphMemory& memory, bool afresh) {
    const int id = owner.GetID();
    OwnerMemory& known = memory.Get(id);
    if (afresh || !has_picture(known)) forget_picture(known);
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

// Calls `own(owner, memory, origin)` for each owner that this object has laid out under `top`,
// owners first, with the place that the owner has in the whole picture when `top` has `place`; and
// `foreign(node, layout, origin)` for the owners in them that another object arranges.
template <class Own, class Foreign>
void StableEngine::for_each_owner(const Node& top, const point<double>& place, ILayout& self,
                                  GraphMemory& memory, Own own, Foreign foreign) {
    struct Owner {
        Node node;
        point<double> origin;
    };
    std::vector<Owner> owners{{top, place}};
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const Owner owner = owners[i];
        const OwnerMemory* known = memory.Find(owner.node.GetID());
        if (known == nullptr) continue;
        own(owner.node, *known, owner.origin);
        for (const auto& entry : known->nodes) {
            const graph_ptr<INodeImpl> record = entry.vis->get_node_impl();
            if (record.get() == owner.node.record().get() || is_leaf(record)) continue;
            const Node child(top.store(), record);
            const point<double> origin{entry.position.x + owner.origin.x,
                                       entry.position.y + owner.origin.y};
            const graph_ptr2<ILayout> layout = child.GetLayout();
            if (layout.get() == &self) {
                owners.push_back({child, origin});
            } else {
                foreign(child, layout.get(), origin);
            }
        }
    }
}

// The caller makes the picture absolute. Owners that another object of this kind arranges have been
// prepared for the place that they had before this run.
void StableEngine::prepare_shift(const Node& top, ILayout& self, GraphMemory& memory,
                                 const point<double>& place) {
    const auto prepare = [](const Node& owner, const OwnerMemory& known,
                            const point<double>& origin) {
        move_owner_edges_back(known, owner.GetID(), origin);
    };
    const auto prepare_foreign = [](const Node& owner, ILayout* layout,
                                    const point<double>& origin) {
        auto* other = dynamic_cast<StableLayout*>(layout);
        if (other == nullptr) return;
        StableEngine& engine = *other->engine_;
        if (GraphMemory* known = engine.memory_of(owner)) {
            engine.prepare_shift(owner, *other, *known, origin);
        }
    };
    for_each_owner(top, place, self, memory, prepare, prepare_foreign);
}

// Turns what has been laid out into coordinates of the whole picture, from the memories: sums that
// are taken anew each time do not drift.
void StableEngine::publish(const Node& top, ILayout& self, GraphMemory& memory) {
    const auto write = [](const Node& owner, const OwnerMemory& known,
                          const point<double>& origin) {
        write_nodes(known, origin);
        write_bends(known, owner.GetID(), origin);
    };
    const auto make_foreign_absolute = [](const Node& owner, const ILayout*, const point<double>&) {
        make_absolute(owner);
    };
    for_each_owner(top, top.GetPosition(), self, memory, write, make_foreign_absolute);
}

}  // namespace nodeline::internal

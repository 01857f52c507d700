#include <nodeline/layout/internal/steps.h>

#include <algorithm>

namespace nodeline::internal {

namespace {

// The band of a level along x.
struct Band {
    double left;
    double right;
};

class Router {
public:
    explicit Router(LayoutRun& run) : run_(run), settings_(run.settings()) {}

    void Run() {
        const int n = static_cast<int>(run_.levels.size());
        find_y_offset(n);
        const double x = fit_bands(n);
        if (run_.in_any_order) {
            place_in_memory_order(n);
        } else {
            place_level_by_level(n);
        }
        if (n >= 2) {
            adjust_ports(run_, run_.level_at(0), 0.0, ORDER_IN);
            adjust_ports(run_, run_.level_at(n - 1), x, ORDER_OUT);
        }
        run_.extent = {x, max_bottom_};
    }

private:
    // The highest node lands at the top margin at least; a drawing that is lower is not lifted.
    void find_y_offset(int n) {
        double top = settings_.node_spacing;
        for (int k = 1; k <= n - 2; ++k) {
            for (const Vertex v : run_.level_at(k)) top = std::min(top, at(run_.y, v));
        }
        y_offset_ = std::min(0.0, top - settings_.node_spacing);
    }

    // Finds the bands of all inner levels, and gives the x behind the last one.
    double fit_bands(int n) {
        double x = settings_.level_spacing;
        bands_.resize(static_cast<std::size_t>(std::max(n, 0)));
        for (int k = 1; k <= n - 2; ++k) {
            Level& extent = run_.extent_at(k);
            const Band band = fit_band(run_.level_at(k), extent, x);
            extent = {band.left, band.right, band.right - band.left};
            at(bands_, k) = band;
            x = extent.width != 0.0 ? band.right + settings_.level_spacing : band.right;
        }
        return x;
    }

    void place_level_by_level(int n) {
        for (int k = 1; k <= n - 2; ++k) {
            for (const Vertex v : run_.level_at(k)) place(v, at(bands_, k));
            max_bottom_ = std::max(max_bottom_, bottom_ + settings_.node_spacing);
        }
    }

    // Goes through nodes and chains as they lie in memory. The bottom of a level is that of its
    // last real node.
    void place_in_memory_order(int n) {
        const auto is_inner = [&](int level) { return level >= 1 && level <= n - 2; };
        std::vector<double> bottoms(static_cast<std::size_t>(run_.node_count()), 0.0);
        for (Vertex v = 0; v < run_.node_count(); ++v) {
            const int level = run_.level_of(v);
            if (at(run_.hidden, v) != 0 || !is_inner(level)) continue;
            place(v, at(bands_, level));
            at(bottoms, v) = bottom_;
        }
        for (const Vertex v : run_.break_vertices()) {
            if (v == kNoVertex) continue;
            const int level = run_.level_of(v);
            if (is_inner(level)) place(v, at(bands_, level));
        }
        double bottom = 0.0;
        for (int k = 1; k <= n - 2; ++k) {
            const auto& level = run_.level_at(k);
            const auto last = std::find_if(level.rbegin(), level.rend(),
                                           [&](Vertex v) { return !run_.is_dummy(v); });
            if (last != level.rend()) bottom = at(bottoms, *last);
            max_bottom_ = std::max(max_bottom_, bottom + settings_.node_spacing);
        }
    }

    void place(Vertex v, const Band& band) {
        const double y = at(run_.y, v) - y_offset_;
        if (run_.is_dummy(v)) {
            place_break_node(v, band, y);
            return;
        }
        place_normal_node(v, band, y);
        bottom_ = at(run_.y, v) + at(run_.sizes, v).cy;
        place_backedges(v, band);
    }

    // A band neither shrinks nor moves left against what it was, as far as there is room.
    Band fit_band(const std::vector<Vertex>& level, const Level& stored, double x) const {
        Band band{x, x};
        for (const Vertex v : level) {
            if (!run_.is_dummy(v)) band.right = std::max(band.right, x + at(run_.sizes, v).cx);
        }
        if (band.right != band.left) band.right += 2.0 * settings_.backedge_spacing;
        const bool was_as_wide = stored.width >= band.right - band.left;
        const bool began_as_late = stored.start >= band.left;
        if (was_as_wide && began_as_late) return {stored.start, stored.end};
        if (was_as_wide || began_as_late) band.right = std::max(stored.end, band.right);
        return band;
    }

    void place_normal_node(Vertex v, const Band& band, double y) {
        const size<double>& s = at(run_.sizes, v);
        const double x = (band.left + band.right - s.cx) * 0.5;
        at(run_.x, v) = x;
        at(run_.y, v) = y;
        const double out_x = x + s.cx + settings_.backedge_spacing;
        const double in_x = x - settings_.backedge_spacing;
        const double half = 0.5 * s.cy;
        for (const auto& entry : run_.neighbours(OwnerEdges::kChildren, v)) {
            if (at(run_.hidden, entry.node) != 0) continue;
            const EdgeDirection& way = at(run_.directions, entry.edge);
            const bool turns = way.reversed || way.flat;
            meet_node(entry.edge, 0, v, x + s.cx, half, ORDER_OUT);
            meet_node(entry.edge, 1, v, turns ? out_x : band.right, half, ORDER_OUT);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kParents, v)) {
            if (at(run_.hidden, entry.node) != 0) continue;
            // A flat edge arrives like a forward one.
            const bool turns = at(run_.directions, entry.edge).reversed;
            const int last = count_bends(entry.edge) - 1;
            meet_node(entry.edge, last - 1, v, turns ? in_x : band.left, half, ORDER_IN);
            meet_node(entry.edge, last, v, x, half, ORDER_IN);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kEdgesIn, v)) {
            const int last = count_bends(entry.edge) - 1;
            meet_node(entry.edge, last - 1, v, band.left, half, ORDER_IN);
            meet_node(entry.edge, last, v, x, half, ORDER_IN);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kEdgesOut, v)) {
            meet_node(entry.edge, 1, v, band.right, half, ORDER_OUT);
            meet_node(entry.edge, 0, v, x + s.cx, half, ORDER_OUT);
        }
    }

    [[nodiscard]] int count_bends(EdgeIndex e) const {
        const BreakChain* chain = at(run_.edges, e).chain;
        return chain == nullptr ? 0 : chain->GetCount();
    }

    // Puts a bend at `x`, level with the place where its edge meets the node.
    void meet_node(EdgeIndex e, int index, Vertex v, double x, double half, Order side) {
        run_.move_bend(e, index, x, at(run_.y, v) + run_.port_offset(e, v, side, half));
    }

    // Runs of edges that turn lie below their node, one under the other.
    void place_backedges(Vertex v, const Band& band) {
        const double right_lane = at(run_.x, v) + at(run_.sizes, v).cx + settings_.backedge_spacing;
        const double left_lane = at(run_.x, v) - settings_.backedge_spacing;
        for (const auto& entry : run_.neighbours(OwnerEdges::kChildren, v)) {
            if (at(run_.hidden, entry.node) != 0) continue;
            const EdgeDirection& way = at(run_.directions, entry.edge);
            if (!way.reversed && !way.flat) continue;
            bottom_ += settings_.dummy_spacing;
            run_.move_bend(entry.edge, 2, right_lane, bottom_);
            run_.move_bend(entry.edge, 3, band.left, bottom_);
            bottom_ += run_.edge_width(entry.edge);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kParents, v)) {
            if (at(run_.hidden, entry.node) != 0) continue;
            if (!at(run_.directions, entry.edge).reversed) continue;
            bottom_ += settings_.dummy_spacing;
            const int count = count_bends(entry.edge);
            run_.move_bend(entry.edge, count - 4, band.right, bottom_);
            run_.move_bend(entry.edge, count - 3, left_lane, bottom_);
            bottom_ += run_.edge_width(entry.edge);
        }
    }

    // A dummy node and its partner, the other bend of the same crossing, stand at the two edges of
    // the band, in the order in which the edge meets them.
    void place_break_node(Vertex v, const Band& band, double y) {
        const DummyState& state = run_.dummy_state(v);
        const EdgeIndex e = state.edge;
        const int self = run_.is_dead(v) ? -1 : state.index;
        at(run_.y, v) = y;
        const int partner = find_partner(v, self);
        // Whatever a search for the partner passes by has a record from then on.
        const int looked_at = partner < 0 ? count_bends(e) : partner + 1;
        for (int i = 0; i < looked_at; ++i) run_.break_info(e, i).known = true;
        if (partner < 0) {
            run_.move_bend(e, self, band.left, y);
            return;
        }
        const bool partner_first = is_partner_first(e, partner, self);
        run_.move_bend(e, partner, partner_first ? band.left : band.right, y);
        run_.move_bend(e, self, partner_first ? band.right : band.left, y);
    }

    [[nodiscard]] bool is_partner_first(EdgeIndex e, int partner, int self) const {
        if (at(run_.directions, e).reversed) return true;
        if (partner == count_bends(e) - 1) return false;
        return partner + 1 == self;
    }

    // The first bend of the chain on the level of `v` other than `v` itself. The bends of one
    // crossing stand side by side, so the neighbours are looked at before the whole chain.
    [[nodiscard]] int find_partner(Vertex v, int self) {
        const DummyState& state = run_.dummy_state(v);
        const EdgeIndex e = state.edge;
        const int count = count_bends(e);
        const int level = run_.level_of(v);
        const auto fits = [&](int i) {
            return i >= 0 && i < count && i != self && run_.break_info(e, i).level == level;
        };
        for (const int i : {state.index - 1, state.index, state.index + 1}) {
            if (fits(i)) return i;
        }
        for (int i = 0; i < count; ++i) {
            if (fits(i)) return i;
        }
        return -1;
    }

    LayoutRun& run_;
    const LayoutSettings& settings_;
    std::vector<Band> bands_;  // by level
    double y_offset_ = 0.0;
    // The bottom of the real node placed last, with its lanes; runs on from level to level.
    double bottom_ = 0.0;
    double max_bottom_ = 0.0;
};

}  // namespace

void calculate_x_coords(LayoutRun& run) { Router(run).Run(); }

}  // namespace nodeline::internal

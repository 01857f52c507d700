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

    // Places nodes level by level, then chains as they lie in memory, each with all of its bends.
    void place_in_memory_order(int n) {
        placed_.assign(static_cast<std::size_t>(run_.node_count()), 0);
        find_turning();
        for (int k = 1; k <= n - 2; ++k) {
            for (const Vertex v : run_.level_at(k)) {
                if (run_.is_dummy(v)) continue;
                at(placed_, v) = 1;
                put_node(v, at(bands_, k));
                if (at(turns_, v) != 0) place_backedges(v, at(bands_, k));
            }
            max_bottom_ = std::max(max_bottom_, bottom_ + settings_.node_spacing);
        }
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) {
            if (at(run_.edges, e).chain == nullptr) continue;
            place_ends(e);
            if (at(run_.edges, e).region >= 0) place_chain(e, n);
        }
    }

    void find_turning() {
        turns_.assign(static_cast<std::size_t>(run_.node_count()), 0);
        for (EdgeIndex e = 0; e < run_.edge_count(); ++e) {
            const EdgeDirection& way = at(run_.directions, e);
            if (!way.reversed && !way.flat) continue;
            const EdgeState& edge = at(run_.edges, e);
            if (edge.from != kNoVertex) at(turns_, edge.from) = 1;
            if (edge.to != kNoVertex) at(turns_, edge.to) = 1;
        }
    }

    // The bends at the ends of an edge, where its nodes are seen.
    void place_ends(EdgeIndex e) {
        const EdgeState& edge = at(run_.edges, e);
        const Vertex from = edge.from;
        const Vertex to = edge.to;
        const bool is_crossing = from == kNoVertex || to == kNoVertex;
        if (!is_crossing && (at(run_.hidden, from) != 0 || at(run_.hidden, to) != 0)) return;
        if (from != kNoVertex && at(placed_, from) != 0) {
            place_start(e, from, at(bands_, run_.level_of(from)), is_crossing);
        }
        if (to != kNoVertex && at(placed_, to) != 0) {
            place_end(e, to, at(bands_, run_.level_of(to)), is_crossing);
        }
    }

    // The dummy nodes of a chain, with their partners.
    void place_chain(EdgeIndex e, int n) {
        const EdgeState& edge = at(run_.edges, e);
        const bool reversed = at(run_.directions, e).reversed;
        const auto region = static_cast<std::size_t>(edge.region);
        const Vertex* vertices = run_.break_vertices().data() + region;
        BreakInfo* infos = run_.breaks.data() + region;
        point<double>* bends = edge.chain->EditPositions();
        int looked_at = 0;
        for (int i = 0; i < edge.bends; ++i) {
            if (vertices[i] == kNoVertex) continue;
            const int level = infos[i].level;
            if (level < 1 || level > n - 2) continue;
            const Band& band = at(bands_, level);
            const double y = at(run_.y, vertices[i]) - y_offset_;
            at(run_.y, vertices[i]) = y;
            const int partner = find_partner(infos, edge.bends, i, i, level);
            looked_at = std::max(looked_at, partner < 0 ? edge.bends : partner + 1);
            if (partner < 0) {
                bends[i] = {band.left, y};
                continue;
            }
            const bool partner_first = is_partner_first(reversed, edge.bends, partner, i);
            bends[partner] = {partner_first ? band.left : band.right, y};
            bends[i] = {partner_first ? band.right : band.left, y};
            if (vertices[partner] != kNoVertex) at(run_.y, vertices[partner]) = y;
        }
        for (int i = 0; i < looked_at; ++i) infos[i].known = true;
    }

    void place(Vertex v, const Band& band) {
        if (run_.is_dummy(v)) {
            place_break_node(v, band, at(run_.y, v) - y_offset_);
            return;
        }
        place_normal_node(v, band);
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

    void place_normal_node(Vertex v, const Band& band) {
        put_node(v, band);
        for (const auto& entry : run_.neighbours(OwnerEdges::kChildren, v)) {
            if (at(run_.hidden, entry.node) == 0) place_start(entry.edge, v, band, false);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kParents, v)) {
            if (at(run_.hidden, entry.node) == 0) place_end(entry.edge, v, band, false);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kEdgesIn, v)) {
            place_end(entry.edge, v, band, true);
        }
        for (const auto& entry : run_.neighbours(OwnerEdges::kEdgesOut, v)) {
            place_start(entry.edge, v, band, true);
        }
    }

    void put_node(Vertex v, const Band& band) {
        const size<double>& s = at(run_.sizes, v);
        at(run_.x, v) = (band.left + band.right - s.cx) * 0.5;
        at(run_.y, v) -= y_offset_;
        bottom_ = at(run_.y, v) + s.cy;
    }

    // Where an edge leaves its source; the second bend stands where the edge may turn. An edge
    // across the border turns nowhere.
    void place_start(EdgeIndex e, Vertex v, const Band& band, bool is_crossing) {
        const double right = at(run_.x, v) + at(run_.sizes, v).cx;
        const EdgeDirection& way = at(run_.directions, e);
        const bool turns = !is_crossing && (way.reversed || way.flat);
        meet_node(e, 0, right, 1, turns ? right + settings_.backedge_spacing : band.right, v,
                  ORDER_OUT);
    }

    // Where an edge arrives. A flat edge arrives like a forward one.
    void place_end(EdgeIndex e, Vertex v, const Band& band, bool is_crossing) {
        const double left = at(run_.x, v);
        const bool turns = !is_crossing && at(run_.directions, e).reversed;
        const int last = at(run_.edges, e).bends - 1;
        meet_node(e, last, left, last - 1, turns ? left - settings_.backedge_spacing : band.left, v,
                  ORDER_IN);
    }

    // Puts the bend at the node and the next one level with the place where their edge meets the
    // node.
    void meet_node(EdgeIndex e, int at_node, double node_x, int next, double next_x, Vertex v,
                   Order side) {
        const double half = 0.5 * at(run_.sizes, v).cy;
        const double y = at(run_.y, v) + run_.port_offset(e, v, side, half);
        run_.move_bend(e, next, next_x, y);
        run_.move_bend(e, at_node, node_x, y);
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
            const int count = at(run_.edges, entry.edge).bends;
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
        const EdgeState& edge = at(run_.edges, e);
        const int partner = find_partner(run_.breaks.data() + edge.region, edge.bends, state.index,
                                         self, run_.level_of(v));
        // Whatever a search for the partner passes by has a record from then on.
        const int looked_at = partner < 0 ? edge.bends : partner + 1;
        for (int i = 0; i < looked_at; ++i) run_.break_info(e, i).known = true;
        if (partner < 0) {
            run_.move_bend(e, self, band.left, y);
            return;
        }
        const bool reversed = at(run_.directions, e).reversed;
        const bool partner_first = is_partner_first(reversed, edge.bends, partner, self);
        run_.move_bend(e, partner, partner_first ? band.left : band.right, y);
        run_.move_bend(e, self, partner_first ? band.right : band.left, y);
    }

    [[nodiscard]] static bool is_partner_first(bool reversed, int count, int partner, int self) {
        if (reversed) return true;
        if (partner == count - 1) return false;
        return partner + 1 == self;
    }

    // The first bend of a chain on `level` other than `self`. The bends of one crossing stand side
    // by side, so those around `place` are looked at before the whole chain.
    [[nodiscard]] static int find_partner(const BreakInfo* infos, int count, int place, int self,
                                          int level) {
        const auto fits = [&](int i) {
            return i >= 0 && i < count && i != self && infos[i].level == level;
        };
        for (const int i : {place - 1, place, place + 1}) {
            if (fits(i)) return i;
        }
        for (int i = 0; i < count; ++i) {
            if (fits(i)) return i;
        }
        return -1;
    }

    LayoutRun& run_;
    const LayoutSettings& settings_;
    std::vector<Band> bands_;   // by level
    std::vector<char> placed_;  // by real node
    std::vector<char> turns_;   // by real node: whether edges turn beside it
    double y_offset_ = 0.0;
    // The bottom of the real node placed last, with its lanes; runs on from level to level.
    double bottom_ = 0.0;
    double max_bottom_ = 0.0;
};

}  // namespace

void calculate_x_coords(LayoutRun& run) { Router(run).Run(); }

}  // namespace nodeline::internal

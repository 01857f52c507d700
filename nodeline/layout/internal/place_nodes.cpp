#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace nodeline::internal {

namespace {

// Makes room for new nodes that want to stand ahead of level 1: the whole drawing moves up.
void move_levels_up(LayoutRun& run, int min, int max) {
    const int s = 1 - min;
    const std::size_t old_count = run.levels.size();
    run.level_extents.assign(run.level_extents.size() + static_cast<std::size_t>(s), Level());
    run.levels.resize(old_count + static_cast<std::size_t>(s));
    // The entries below `s` keep what they held, so vertices may come to stand there twice.
    if (old_count > 0) run.in_any_order = false;
    for (std::size_t i = old_count; i-- > 0;) {
        run.levels[i + static_cast<std::size_t>(s)] = run.levels[i];
    }
    for (NodeInfo& info : run.infos) info.level += s;
    for (BreakInfo& info : run.breaks) {
        if (info.known) info.level += s;
    }
    const auto longest = static_cast<std::size_t>(max - min + 3);
    if (run.level_extents.size() > longest) run.level_extents.resize(longest);
}

void shift_old_levels(LayoutRun& run) {
    int min = INT_MAX;
    int max = INT_MIN;
    for (Vertex v = 0; v < run.node_count(); ++v) {
        if (run.skips(v)) continue;
        min = std::min(min, at(run.infos, v).level);
        max = std::max(max, at(run.infos, v).level);
    }
    if (min > max) return;
    if (min <= 0) {
        move_levels_up(run, min, max);
        return;
    }
    run.level_extents.resize(static_cast<std::size_t>(max) + 2);
    run.levels.resize(static_cast<std::size_t>(max) + 2);
}

// Gives a bend its level; the bends that stand in the table get a vertex there.
void set_bend_level(LayoutRun& run, EdgeIndex e, int index, int level) {
    BreakInfo& info = run.break_info(e, index);
    info.level = level;
    info.known = true;
}

Vertex put_on_level(LayoutRun& run, EdgeIndex e, int index, int level) {
    set_bend_level(run, e, index, level);
    const Vertex v = run.dummy(e, index);
    run.level_at(level).push_back(v);
    return v;
}

// The chain of an edge that comes in across the border: from level 0 to the node.
void insert_chain_in(LayoutRun& run, Vertex node, EdgeIndex e, int dist) {
    Vertex previous = put_on_level(run, e, 0, 0);
    run.mark_as_neighbours(run.dummy(e, 2 * dist - 2), node, e);
    run.set_shape(e, {0, 2 * dist - 2, true, 0, run.id_of(node)});
    for (int k = 1; k < dist; ++k) {
        set_bend_level(run, e, 2 * k - 1, k);
        const Vertex next = put_on_level(run, e, 2 * k, k);
        run.mark_as_neighbours(previous, next, e);
        previous = next;
    }
}

// The chain of an edge that goes out: from the node to the last level.
void insert_chain_out(LayoutRun& run, Vertex node, EdgeIndex e, int level, int dist) {
    Vertex previous = put_on_level(run, e, 2, level + 1);
    run.mark_as_neighbours(node, previous, e);
    run.set_shape(e, {2, 2 * dist, true, run.id_of(node), 0});
    for (int k = 1; k < dist; ++k) {
        set_bend_level(run, e, 2 * k + 1, level + k);
        const Vertex next = put_on_level(run, e, 2 * k + 2, level + k + 1);
        run.mark_as_neighbours(previous, next, e);
        previous = next;
    }
}

void insert_dummy_nodes_inout(LayoutRun& run, Vertex node, Order order) {
    const auto crossing =
        run.neighbours(order == ORDER_IN ? OwnerEdges::kEdgesIn : OwnerEdges::kEdgesOut, node);
    if (crossing.empty()) return;
    const int level = run.level_of(node);
    int dist = level;
    if (order == ORDER_OUT) {
        if (static_cast<int>(run.levels.size()) - level - 1 < 1) {
            run.level_at(level + 1);
            run.level_extents.emplace_back();
        }
        dist = static_cast<int>(run.levels.size()) - level - 1;
    }
    if (dist < 1) return;
    for (const auto& entry : crossing) {
        run.replace_chain(entry.edge, 2 * dist + 1);
        if (at(run.edges, entry.edge).chain == nullptr) continue;
        if (order == ORDER_IN) {
            insert_chain_in(run, node, entry.edge, dist);
        } else {
            insert_chain_out(run, node, entry.edge, level, dist);
        }
    }
}

// A chain of dummy nodes over the levels between the ends of an edge. It runs from the source to
// the target whatever the direction; only the links look forward.
void insert_long_chain(LayoutRun& run, Vertex from, Vertex to, EdgeIndex e, int distance) {
    const bool reversed = at(run.directions, e).reversed;
    const int first = reversed ? 4 : 2;
    const int count = 2 * std::abs(distance) + (reversed ? 6 : 2);
    if (reversed) {
        ++at(run.backedge_count, from);
        ++at(run.backedge_count, to);
    }
    run.replace_chain(e, count);
    const int step = distance > 0 ? 1 : -1;
    run.set_shape(e, {first, count - first - 2, step == 1, run.id_of(from), run.id_of(to)});
    const auto link = [&](Vertex a, Vertex b) {
        step == 1 ? run.mark_as_neighbours(a, b, e) : run.mark_as_neighbours(b, a, e);
    };
    Vertex previous = from;
    int level = run.level_of(from) + step;
    for (int i = first; i < count - first; i += 2) {
        const Vertex next = put_on_level(run, e, i, level);
        link(previous, next);
        previous = next;
        set_bend_level(run, e, i + 1, level);
        level += step;
    }
    link(previous, to);
}

void insert_dummy_nodes_between(LayoutRun& run, Vertex from, Vertex to, EdgeIndex e) {
    if (!at(run.edges, e).vis) return;
    const int distance = run.level_of(to) - run.level_of(from);
    if (distance == 0) {
        run.replace_chain(e, 6);
        ++at(run.backedge_count, from);
        if (to != from) ++at(run.backedge_count, to);
    } else if (distance == 1) {
        run.mark_as_neighbours(from, to, e);
        run.replace_chain(e, 4);
    } else if (distance == -1) {
        run.mark_as_neighbours(to, from, e);
        ++at(run.backedge_count, from);
        ++at(run.backedge_count, to);
        run.replace_chain(e, 8);
    } else {
        insert_long_chain(run, from, to, e, distance);
    }
}

// Hidden nodes never stand in the table, whatever the stages around think of them.
void place_new_nodes(LayoutRun& run) {
    for (Vertex u = 0; u < run.node_count(); ++u) {
        if (at(run.hidden, u) != 0) continue;
        if (run.is_new(u)) {
            run.level_at(run.level_of(u)).push_back(u);
            insert_dummy_nodes_inout(run, u, ORDER_IN);
            insert_dummy_nodes_inout(run, u, ORDER_OUT);
        }
        for (const auto& entry : run.neighbours(OwnerEdges::kChildren, u)) {
            if (at(run.hidden, entry.node) != 0 || at(run.edges, entry.edge).old) continue;
            insert_dummy_nodes_between(run, u, entry.node, entry.edge);
        }
    }
}

}  // namespace

void place_nodes_on_levels(LayoutRun& run) {
    shift_old_levels(run);
    place_new_nodes(run);
    if (run.in_any_order && !run.has_past()) run.number_by_level();
    run.index_links();
    if (run.levels.empty()) return;
    const auto& last = run.levels.back();
    if (std::all_of(last.begin(), last.end(), [&](Vertex v) { return run.is_dummy(v); })) return;
    run.levels.emplace_back();
    run.level_extents.emplace_back();
}

}  // namespace nodeline::internal

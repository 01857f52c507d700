#include <nodeline/handlers/handlers.h>
#include <support/plain_layout.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace nodeline::test {

namespace {

const Node& At(const std::vector<Node>& chain, int index) {
    return chain[static_cast<std::size_t>(index)];
}

}  // namespace

// --- The level table

void PlainLayout::place_nodes_on_levels() {
    shift_old_levels();
    place_new_nodes();
    const Nodes& last = levels.back();
    if (std::all_of(last.begin(), last.end(), [](const Node& n) { return n.IsDummy(); })) return;
    levels.emplace_back();
    level_extents->emplace_back();
}

void PlainLayout::shift_old_levels() {
    int min = INT_MAX;
    int max = INT_MIN;
    for (const Node& n : nodes) {
        if (skip(n)) continue;
        min = std::min(min, (*infos)[n].level);
        max = std::max(max, (*infos)[n].level);
    }
    if (min > 0) {
        level_extents->resize(static_cast<std::size_t>(max) + 2);
        levels.resize(static_cast<std::size_t>(max) + 2);
        return;
    }
    const int s = 1 - min;
    level_extents->assign(level_extents->size() + static_cast<std::size_t>(s), Level());
    const int count = static_cast<int>(levels.size());
    levels.resize(levels.size() + static_cast<std::size_t>(s));
    for (int i = count - 1; i >= 0; --i) level_at(i + s) = Nodes(level_at(i));
    for (auto& [node, info] : infos->nodes) info.level += s;
    const auto longest = static_cast<std::size_t>(max - min + 3);
    if (level_extents->size() > longest) level_extents->resize(longest);
}

void PlainLayout::place_new_nodes() {
    for (const Node& u : nodes) {
        if (is_hidden(u)) continue;
        if (_is_new(u)) {
            level_at((*infos)[u].level).push_back(u);
            insert_dummy_nodes_inout(u, ORDER_IN);
            insert_dummy_nodes_inout(u, ORDER_OUT);
        }
        for (const auto& [v, e] : pairs(GetChildrenEx(u))) {
            if (!is_hidden(v) && !was_old(e, u.GetOwner())) insert_dummy_nodes_between(u, v, e);
        }
    }
}

void PlainLayout::insert_dummy_nodes_between(const Node& from, const Node& to, Edge edge) {
    const int d = (*infos)[to].level - (*infos)[from].level;
    const Node owner = from.GetOwner();
    edge.RemoveBreakNodesIn(owner);
    if (d == 0) {
        edge.AddBreakNodesIn(owner, 6);
        ++local_infos[from].backedge_count;
        if (to != from) ++local_infos[to].backedge_count;
        return;
    }
    if (d == 1) {
        mark_as_neighbours(from, to, edge);
        edge.AddBreakNodesIn(owner, 4);
        return;
    }
    if (d == -1) {
        mark_as_neighbours(to, from, edge);
        ++local_infos[from].backedge_count;
        ++local_infos[to].backedge_count;
        edge.AddBreakNodesIn(owner, 8);
        return;
    }
    int count = 2 * std::abs(d) + 2;
    int first = 2;
    if (local_infos[edge].reversed) {
        count += 4;
        first = 4;
        ++local_infos[from].backedge_count;
        ++local_infos[to].backedge_count;
    }
    edge.AddBreakNodesIn(owner, count);
    const Nodes b = chain(edge, owner);
    const int step = d > 0 ? 1 : -1;
    Node prev = from;
    int level = (*infos)[from].level + step;
    for (int i = first; i != count - first; i += 2, level += step) {
        (*infos)[At(b, i)].level = level;
        level_at(level).push_back(At(b, i));
        step == 1 ? mark_as_neighbours(prev, At(b, i), edge)
                  : mark_as_neighbours(At(b, i), prev, edge);
        prev = At(b, i);
        (*infos)[At(b, i + 1)].level = level;
    }
    step == 1 ? mark_as_neighbours(prev, to, edge) : mark_as_neighbours(to, prev, edge);
}

void PlainLayout::insert_dummy_nodes_inout(const Node& node, Order order) {
    const Node owner = node.GetOwner();
    const int level = (*infos)[node].level;
    const Pairs set = pairs(order == ORDER_IN ? GetEdgesInEx(node) : GetEdgesOutEx(node));
    if (set.empty()) return;
    int dist = order == ORDER_IN ? level : static_cast<int>(levels.size()) - level - 1;
    if (order == ORDER_OUT && dist == 0) {
        levels.emplace_back();
        level_extents->emplace_back();
        dist = 1;
    }
    if (dist < 1) return;
    for (auto [n, e] : set) {
        e.RemoveBreakNodesIn(owner);
        e.AddBreakNodesIn(owner, 2 * dist + 1);
        const Nodes b = chain(e, owner);
        if (order == ORDER_IN) {
            (*infos)[b[0]].level = 0;
            level_at(0).push_back(b[0]);
            mark_as_neighbours(At(b, 2 * dist - 2), node, e);
            Node prev = b[0];
            for (int k = 1; k < dist; ++k) {
                const int i = 2 * k - 1;
                (*infos)[At(b, i)].level = k;
                (*infos)[At(b, i + 1)].level = k;
                level_at(k).push_back(At(b, i + 1));
                mark_as_neighbours(prev, At(b, i + 1), e);
                prev = At(b, i + 1);
            }
        } else {
            (*infos)[b[2]].level = level + 1;
            level_at(level + 1).push_back(b[2]);
            mark_as_neighbours(node, b[2], e);
            Node prev = b[2];
            for (int k = 1; k < dist; ++k) {
                const int i = 2 * k + 1;
                (*infos)[At(b, i)].level = level + k;
                (*infos)[At(b, i + 1)].level = level + k + 1;
                level_at(level + k + 1).push_back(At(b, i + 1));
                mark_as_neighbours(prev, At(b, i + 1), e);
                prev = At(b, i + 1);
            }
        }
    }
}

// --- Order

void PlainLayout::enumerate_level_by_y_coord(Nodes* level) {
    for (std::size_t i = 0; i < level->size(); ++i) {
        (*level)[i].SetPosition(0.0, static_cast<double>(i));
    }
}

double PlainLayout::key_of(const Node& node, Pairs LocalNodeInfo::*side) {
    const Pairs& set = local_infos[node].*side;
    if (set.empty()) return node.GetPosition().y;
    double sum = 0.0;
    for (const auto& pair : set) sum += pair.node.GetPosition().y;
    return sum / static_cast<double>(set.size());
}

void PlainLayout::sort_level(Nodes* level, Pairs LocalNodeInfo::*side) {
    std::stable_sort(level->begin(), level->end(), [&](const Node& a, const Node& b) {
        if (a == b) return false;
        return key_of(a, side) < key_of(b, side);
    });
    enumerate_level_by_y_coord(level);
}

void PlainLayout::barycentric_adjust() {
    enumerate_level_by_y_coord(&level_at(1));
    const int n = static_cast<int>(levels.size());
    if (n < 4) return;
    for (int k = 1; k <= n - 2; ++k) sort_level(&level_at(k), &LocalNodeInfo::in);
    for (int k = n - 3; k >= 1; --k) sort_level(&level_at(k), &LocalNodeInfo::out);
    for (int k = 1; k <= n - 2; ++k) sort_level(&level_at(k), &LocalNodeInfo::in);
}

void PlainLayout::calculate_initial_y_coords() {
    for (int k = 1; k <= static_cast<int>(levels.size()) - 2; ++k) {
        double cursor = 0.0;
        for (Node n : level_at(k)) {
            const double g = n.IsDummy() ? dummy_spacing : node_spacing;
            const double y = cursor + 0.5 * g;
            n.SetPosition(0.0, y);
            cursor = y + 0.5 * g + _get_height(n);
        }
    }
}

}  // namespace nodeline::test

#include <nodeline/handlers/handlers.h>
#include <support/plain_layout.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstdlib>

namespace nodeline::test {

namespace {

// The bends of a chain that a step expects; a missing one is not written.
void Put(const std::vector<Node>& chain, int index, double x, double y) {
    if (index < 0 || index >= static_cast<int>(chain.size())) return;
    Node bend = chain[static_cast<std::size_t>(index)];
    bend.SetPosition(x, y);
}

int CountOf(const std::vector<Node>& chain) { return static_cast<int>(chain.size()); }

const Node& At(const std::vector<Node>& chain, int index) {
    return chain[static_cast<std::size_t>(index)];
}

}  // namespace

PlainLayout::Pairs PlainLayout::pairs(const graph_ptr2<IGraphSet<NodeEdgePair>>& set) {
    Pairs result;
    for (int i = 0; i < set->GetCount(); ++i) result.push_back(set->GetItem(i));
    return result;
}

PlainLayout::Nodes PlainLayout::chain(const Edge& edge, const Node& owner) {
    Nodes result;
    for (const Node& bend : edge.GetBreakNodesIn(owner)) result.push_back(bend);
    return result;
}

PlainLayout::Nodes& PlainLayout::level_at(int index) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= levels.size()) levels.resize(place + 1);
    return levels[place];
}

// --- Frame

void PlainLayout::BeginMake(Node node) {
    if (IsRoot(node)) {
        owner_infos_.clear();
        owner_levels_.clear();
    }
    const NodeSet owned = node.GetOwned();
    for (const Node& n : owned) n.GetLayout()->Make(n);
    infos = &owner_infos_[node];
    infos->Clear();
    local_infos.Clear();
    old_infos.Clear();
    nodes.clear();
    levels.clear();
    for (const Node& n : owned) nodes.push_back(n);
    level_extents = &owner_levels_[node];
    level_extents->clear();
}

void PlainLayout::Make(Node node) {
    if (node.GetOwned().GetCount() == 0) {
        if (IsRoot(node)) owner_infos_.clear();
        node.SetSize(node.GetHandler()->GetSize(node));
        return;
    }
    BeginMake(node);
    determine_levels();
    place_nodes_on_levels();
    barycentric_adjust();
    calculate_initial_y_coords();
    force_adjust();
    calculate_x_coords();
    mark_old();
    node.SetSize(extent);
}

void PlainLayout::BeginUpdate(Node node) {
    const NodeSet owned = node.GetOwned();
    for (const Node& n : owned) n.GetLayout()->Update(n);
    infos = &owner_infos_[node];
    old_infos = *infos;
    infos->Clear();
    local_infos.Clear();
    level_extents = &owner_levels_[node];
    nodes.clear();
    for (const Node& n : owned) nodes.push_back(n);
    levels.clear();
    const double h = node.GetHandler()->GetSize(node).cy;
    const point<double> o = node.GetPosition();
    for (auto& [key, info] : old_infos.nodes) {
        Node n = key;
        const point<double> p = n.GetPosition();
        n.SetPosition(p.x - o.x, p.y - o.y - h);
    }
}

void PlainLayout::Update(Node node) {
    if (node.GetOwned().GetCount() == 0) {
        node.SetSize(node.GetHandler()->GetSize(node));
        return;
    }
    BeginUpdate(node);
    restore_old_levels();
    make_y_shifts();
    determine_new_nodes_levels();
    place_nodes_on_levels();
    calculate_new_nodes_y_coords();
    calculate_x_coords();
    mark_old();
    node.SetSize(extent);
}

void PlainLayout::Resize(Node node) {
    const NodeSet owned = node.GetOwned();
    if (owned.GetCount() == 0) {
        node.SetSize(node.GetHandler()->GetSize(node));
        return;
    }
    infos = &owner_infos_[node];
    old_infos = *infos;
    infos->Clear();
    nodes.clear();
    for (const Node& n : owned) nodes.push_back(n);
    levels.clear();
    level_extents = &owner_levels_[node];
    level_extents->clear();
    UnshiftPosition(node);
    restore_old_levels();
    make_y_shifts();
    calculate_x_coords();
    mark_old();
    node.SetSize(extent);
    ShiftPosition(node, point<double>{0.0, 0.0});
}

// --- Helpers of all steps

bool PlainLayout::was_old(const Node& node) {
    const NodeInfo& info = old_infos[node];
    return info.old && (node.IsDummy() || info.level != -1);
}

bool PlainLayout::was_old_and_shown(const Node& node) {
    return was_old(node) && !old_infos[node].was_hidden;
}

bool PlainLayout::was_old(const Edge& edge, const Node& owner) {
    return old_infos[edge].old && edge.GetBreakNodesIn(owner).GetCount() > 0;
}

bool PlainLayout::_is_new(const Node& node) { return !was_old_and_shown(node); }

double PlainLayout::_get_height(const Node& node) {
    if (node.IsDummy()) {
        const Edge edge = node.GetEdgesOut().GetItem(0);
        return edge.GetHandler()->GetWidth(edge);
    }
    const double h = node.GetSize().cy;
    const int c = local_infos[node].backedge_count;
    if (c < 1) return h;
    Pairs set = pairs(GetParentsEx(node));
    if (set.empty()) set = pairs(GetChildrenEx(node));
    const double w = set.empty() ? 0.0 : set[0].edge.GetHandler()->GetWidth(set[0].edge);
    return h + c * (dummy_spacing + w);
}

void PlainLayout::mark_as_neighbours(const Node& a, const Node& b, const Edge& edge) {
    local_infos[a].out.push_back({b, edge});
    local_infos[b].in.push_back({a, edge});
}

// The conversion to coordinates of the whole picture asks every edge for its bends in every owner,
// which leaves an empty stretch where there are none.
void PlainLayout::ask_all_edges() const {
    for (const Node& u : nodes) {
        for (const auto& pair : pairs(GetChildrenEx(u))) chain(pair.edge, u.GetOwner());
        for (const auto& pair : pairs(GetEdgesOutEx(u))) chain(pair.edge, u.GetOwner());
        for (const auto& pair : pairs(GetEdgesInEx(u))) chain(pair.edge, u.GetOwner());
    }
}

void PlainLayout::mark_old() {
    ask_all_edges();
    for (const Node& u : nodes) {
        if (skip(u)) continue;
        (*infos)[u].was_hidden = is_hidden(u);
        (*infos)[u].old = true;
        for (const auto& [v, e] : pairs(GetChildrenEx(u))) {
            if (is_hidden(v) || is_hidden(u)) continue;
            (*infos)[e].old = true;
            for (const Node& b : chain(e, v.GetOwner())) {
                (*infos)[b].old = true;
                (*infos)[b].was_hidden = false;
            }
        }
    }
}

// --- Levels

void PlainLayout::determine_levels() {
    for (const Nodes& component : find_connectivity_components(nodes)) {
        enumerate_connectivity_component(component);
    }
    mark_reversed_edges(nodes, true);
    mark_levels(nodes);
    mark_reversed_edges(nodes, false);
}

std::vector<PlainLayout::Nodes> PlainLayout::find_connectivity_components(const Nodes& all) {
    for (const Node& n : all) local_infos[n].visited = false;
    std::vector<Nodes> components;
    for (const Node& n : all) {
        if (skip(n) || local_infos[n].visited) continue;
        components.emplace_back();
        collect_connectivity_component(n, &components.back());
    }
    return components;
}

void PlainLayout::collect_connectivity_component(const Node& node, Nodes* component) {
    local_infos[node].visited = true;
    component->push_back(node);
    for (const auto& [c, e] : pairs(GetChildrenEx(node))) {
        if (!skip(c) && !local_infos[c].visited) collect_connectivity_component(c, component);
    }
    for (const auto& [p, e] : pairs(GetParentsEx(node))) {
        if (!skip(p) && !local_infos[p].visited) collect_connectivity_component(p, component);
    }
}

void PlainLayout::_mark_edges(const Node& node) {
    for (const auto& pair : pairs(GetParentsEx(node))) local_infos[pair.edge].marked = true;
    for (const auto& pair : pairs(GetChildrenEx(node))) local_infos[pair.edge].marked = true;
}

int PlainLayout::_degree(const Pairs& set) const {
    int count = 0;
    const Node* previous = nullptr;
    for (const auto& pair : set) {
        const bool first = previous == nullptr || *previous != pair.node;
        previous = &pair.node;
        if (first && !skip(pair.node)) ++count;
    }
    return count;
}

int PlainLayout::count_degree(const Node& node, const Pairs& set, bool LocalEdgeInfo::*flag,
                              bool wanted) {
    int count = 0;
    const Node* previous = nullptr;
    for (const auto& pair : set) {
        const bool first = previous == nullptr || *previous != pair.node;
        previous = &pair.node;
        if (!first || local_infos[pair.edge].*flag != wanted) continue;
        if (!skip(pair.node) && pair.node != node) ++count;
    }
    return count;
}

int PlainLayout::_degree_ex(const Node& node, bool LocalEdgeInfo::*flag, Order order,
                            bool with_opposite) {
    const Pairs parents = pairs(GetParentsEx(node));
    const Pairs children = pairs(GetChildrenEx(node));
    int count = count_degree(node, order == ORDER_IN ? parents : children, flag, false);
    if (with_opposite)
        count += count_degree(node, order == ORDER_IN ? children : parents, flag, true);
    return count;
}

void PlainLayout::enumerate_connectivity_component(const Nodes& component) {
    int low = 0;
    int high = static_cast<int>(component.size()) - 1;
    int remaining = static_cast<int>(component.size());
    const auto take = [&](const Node& v, int number) {
        local_infos[v].number = number;
        _mark_edges(v);
        --remaining;
    };
    for (const Node& v : component) {
        if (_degree(pairs(GetParentsEx(v))) == 0) {
            take(v, 0);
            low = 1;
        } else if (_degree(pairs(GetChildrenEx(v))) == 0) {
            take(v, high--);
        } else {
            local_infos[v].number = -1;
        }
    }
    while (remaining != 0) {
        Node best = component.at(0);
        int best_delta = INT_MIN;
        bool found = false;
        for (const Node& v : component) {
            if (local_infos[v].number != -1) continue;
            const int in = _degree_ex(v, &LocalEdgeInfo::marked, ORDER_IN, false);
            if (in == 0) {
                take(v, low++);
                found = true;
                continue;
            }
            const int out = _degree_ex(v, &LocalEdgeInfo::marked, ORDER_OUT, false);
            if (out == 0) {
                take(v, high--);
                found = true;
                continue;
            }
            if (best_delta < out - in) {
                best_delta = out - in;
                best = v;
            }
        }
        if (!found) take(best, low++);
    }
}

void PlainLayout::mark_reversed_edges(const Nodes& some, bool by_number) {
    for (const Node& u : some) {
        if (skip(u)) continue;
        for (const auto& [v, e] : pairs(GetChildrenEx(u))) {
            if (skip(v)) continue;
            const int d = by_number ? local_infos[u].number - local_infos[v].number
                                    : (*infos)[u].level - (*infos)[v].level;
            local_infos[e].reversed = d > 0;
            local_infos[e].flat = d == 0;
        }
    }
}

void PlainLayout::mark_levels(const Nodes& some) {
    Nodes starts;
    for (const Node& u : some) {
        if (skip(u)) continue;
        if (_degree_ex(u, &LocalEdgeInfo::reversed, ORDER_IN, true) != 0) continue;
        (*infos)[u].level = 1;
        set_node_level(u, 1);
        starts.push_back(u);
    }
    if (starts.size() > 1) tighten_start_nodes(starts);
}

void PlainLayout::set_node_level(const Node& node, int level) {
    if (level < (*infos)[node].level) return;
    (*infos)[node].level = level;
    for (const auto& [c, e] : pairs(GetChildrenEx(node))) {
        if (!skip(c) && !local_infos[e].reversed && c != node) set_node_level(c, level + 1);
    }
    for (const auto& [p, e] : pairs(GetParentsEx(node))) {
        if (!skip(p) && local_infos[e].reversed && p != node) set_node_level(p, level + 1);
    }
}

void PlainLayout::tighten_start_nodes(const Nodes& starts) {
    for (const Node& s : starts) {
        int min = INT_MAX;
        bool found = false;
        const auto look_at = [&](const Pairs& set, bool reversed) {
            for (const auto& [n, e] : set) {
                if (skip(n) || local_infos[e].reversed != reversed || n == s) continue;
                min = std::min(min, (*infos)[n].level);
                found = true;
            }
        };
        look_at(pairs(GetChildrenEx(s)), false);
        look_at(pairs(GetParentsEx(s)), true);
        if (found && min > 2) (*infos)[s].level = min - 1;
    }
}

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

// --- Forces

void PlainLayout::force_adjust() {
    const int n = static_cast<int>(levels.size());
    if (n < 3) return;
    const auto adjust = [&](int k, DependenceLevel dependence) {
        const Nodes& level = level_at(k);
        force_adjust_block(level.data(), level.data() + level.size(), dependence, false, -DBL_MAX,
                           DBL_MAX);
    };
    for (int k = 2; k <= n - 2; ++k) adjust(k, DEPEND_IN);
    for (int k = n - 3; k >= 1; --k) adjust(k, DEPEND_OUT);
    for (int k = n - 3; k >= 1; --k) {
        const Nodes& level = level_at(k);
        double lowest = -DBL_MAX;
        for (std::size_t i = 0; i < level.size();) {
            if (!level[i].IsDummy()) {
                lowest = level[i].GetPosition().y + 0.5 * node_spacing + _get_height(level[i]);
                ++i;
                continue;
            }
            std::size_t end = i;
            while (end < level.size() && level[end].IsDummy()) ++end;
            const double highest =
                end == level.size() ? DBL_MAX : level[end].GetPosition().y - 0.5 * node_spacing;
            force_adjust_block(level.data() + i, level.data() + end, DEPEND_OUT, true, lowest,
                               highest);
            i = end;
        }
    }
}

point<double> PlainLayout::get_inout_coords(const NodeEdgePair& pair, Order side) {
    const Node& node = pair.node;
    if (node.IsDummy()) return node.GetPosition();
    const double x = node.GetPosition().x + (side == ORDER_OUT ? node.GetSize().cx : 0.0);
    const double y = node.GetPosition().y;
    const Nodes inner = chain(pair.edge, node);
    if (inner.empty()) return {x, y + 0.5 * node.GetSize().cy};
    return {x, y + (side == ORDER_OUT ? inner.back() : inner.front()).GetPosition().y};
}

void PlainLayout::force_adjust_block(const Node* first, const Node* last,
                                     DependenceLevel dependence, bool with_dummies, double lower,
                                     double upper) {
    std::map<Node, double, ById> forces;
    std::map<Node, bool, ById> is_free;
    for (const Node* q = first; q != last; ++q) {
        if (!with_dummies && q->IsDummy()) continue;
        double c = q->GetPosition().y;
        if (!q->IsDummy()) c = c + 0.5 * q->GetSize().cy;
        double sum = 0.0;
        int count = 0;
        if (dependence != DEPEND_OUT) {
            for (const auto& entry : local_infos[*q].in) {
                const point<double> p = get_inout_coords(entry, ORDER_OUT);
                if (entry.node.IsDummy() && !q->IsDummy()) continue;
                sum = sum + (p.y - c);
                ++count;
            }
        }
        if (dependence != DEPEND_IN) {
            for (const auto& entry : local_infos[*q].out) {
                const point<double> p = get_inout_coords(entry, ORDER_OUT);
                if (entry.node.IsDummy() && !q->IsDummy()) continue;
                if (dependence == DEPEND_INOUT) {
                    const NodeInfo& info = (*infos)[entry.node];
                    if (!info.old || info.was_hidden) continue;
                }
                sum = sum + (p.y - c);
                ++count;
            }
        }
        forces[*q] = count > 0 ? sum / count : 0.0;
        is_free[*q] = count == 0;
    }
    const auto move = [](Node n, double shift) {
        n.SetPosition(n.GetPosition().x, n.GetPosition().y + shift);
    };
    double floor = lower;
    const Node* q = first;
    while (true) {
        const Node* block_start = q;
        double previous = DBL_MAX;
        double sum = 0.0;
        int count = 0;
        while (q != last) {
            if ((!with_dummies && q->IsDummy()) || is_free[*q]) {
                ++q;
                continue;
            }
            const double f = forces[*q];
            if (f > previous) break;
            previous = f;
            sum = sum + f;
            ++count;
            ++q;
        }
        if (count == 0) break;
        double shift = sum / count;
        const double y0 = block_start->GetPosition().y;
        if (floor > y0 + shift) {
            shift = floor - y0;
            if (floor > y0 + shift) block_start = first;
        }
        for (const Node* p = block_start; p != q; ++p) move(*p, shift);
        if (q == last) break;
        floor = shift + q->GetPosition().y;
    }
    double ceiling = upper;
    for (const Node* p = last; p != first;) {
        --p;
        const double g = half_spacing(*p);
        const double bottom = p->GetPosition().y + _get_height(*p) + g;
        if (ceiling >= bottom) break;
        const double y = p->GetPosition().y - (bottom - ceiling);
        Node(*p).SetPosition(p->GetPosition().x, y);
        ceiling = y - g;
    }
}

// --- Coordinates

void PlainLayout::calculate_x_coords() {
    const int n = static_cast<int>(levels.size());
    const Node owner = nodes.at(0).GetOwner();
    double top = node_spacing;
    for (int k = 1; k <= n - 2; ++k) {
        for (const Node& p : level_at(k)) top = std::min(top, p.GetPosition().y);
    }
    const double y_offset = std::min(0.0, top - node_spacing);
    double x = level_spacing;
    double bottom = 0.0;
    double max_bottom = 0.0;
    for (int k = 1; k <= n - 2; ++k) {
        double left = x;
        double right = x;
        for (const Node& p : level_at(k)) {
            if (!p.IsDummy()) right = std::max(right, left + p.GetSize().cx);
        }
        if (right != left) right += 2 * backedge_spacing;
        if (static_cast<int>(level_extents->size()) <= k) {
            level_extents->resize(static_cast<std::size_t>(k) + 1);
        }
        Level& stored = (*level_extents)[static_cast<std::size_t>(k)];
        const bool wide = stored.width >= right - left;
        const bool late = stored.start >= left;
        if (wide && late) {
            left = stored.start;
            right = stored.end;
        } else if (wide || late) {
            right = std::max(stored.end, right);
        }
        stored = {left, right, right - left};
        for (Node p : level_at(k)) {
            const double y = p.GetPosition().y - y_offset;
            if (p.IsDummy()) {
                place_break_node(p, left, right, y, owner);
                continue;
            }
            place_normal_node(p, left, right, y);
            const point<double> at = p.GetPosition();
            const size<double> s = p.GetSize();
            bottom = at.y + s.cy;
            for (const auto& [v, e] : pairs(GetChildrenEx(p))) {
                if (is_hidden(v)) continue;
                if (!local_infos[e].reversed && !local_infos[e].flat) continue;
                bottom = bottom + dummy_spacing;
                const Nodes c = chain(e, owner);
                Put(c, 2, at.x + s.cx + backedge_spacing, bottom);
                Put(c, 3, left, bottom);
                bottom = bottom + e.GetHandler()->GetWidth(e);
            }
            for (const auto& [v, e] : pairs(GetParentsEx(p))) {
                if (is_hidden(v) || !local_infos[e].reversed) continue;
                bottom = bottom + dummy_spacing;
                const Nodes c = chain(e, owner);
                Put(c, CountOf(c) - 4, right, bottom);
                Put(c, CountOf(c) - 3, at.x - backedge_spacing, bottom);
                bottom = bottom + e.GetHandler()->GetWidth(e);
            }
        }
        x = stored.width != 0.0 ? right + level_spacing : right;
        max_bottom = std::max(max_bottom, bottom + node_spacing);
    }
    if (n >= 2) {
        adjust_ports(level_at(0), 0.0, ORDER_IN);
        adjust_ports(level_at(n - 1), x, ORDER_OUT);
    }
    extent = {x, max_bottom};
}

void PlainLayout::place_normal_node(Node node, double left, double right, double y) {
    const double w = node.GetSize().cx;
    const double x = (left + right - w) * 0.5;
    node.SetPosition(x, y);
    const double out_x = x + w + backedge_spacing;
    const double in_x = x - backedge_spacing;
    const double mid = y + 0.5 * node.GetSize().cy;
    const Node owner = node.GetOwner();
    const auto meet = [&](const Nodes& c, int index, double at_x, Order side) {
        if (index < 0 || index >= CountOf(c)) return;
        adjust_break_to_inner(At(c, index), node, at_x, mid, side);
    };
    for (const auto& [v, e] : pairs(GetChildrenEx(node))) {
        if (is_hidden(v)) continue;
        const Nodes c = chain(e, owner);
        const bool turns = local_infos[e].reversed || local_infos[e].flat;
        meet(c, 0, x + w, ORDER_OUT);
        meet(c, 1, turns ? out_x : right, ORDER_OUT);
    }
    for (const auto& [v, e] : pairs(GetParentsEx(node))) {
        if (is_hidden(v)) continue;
        const Nodes c = chain(e, owner);
        meet(c, CountOf(c) - 2, local_infos[e].reversed ? in_x : left, ORDER_IN);
        meet(c, CountOf(c) - 1, x, ORDER_IN);
    }
    for (const auto& [v, e] : pairs(GetEdgesInEx(node))) {
        const Nodes c = chain(e, owner);
        meet(c, CountOf(c) - 2, left, ORDER_IN);
        meet(c, CountOf(c) - 1, x, ORDER_IN);
    }
    for (const auto& [v, e] : pairs(GetEdgesOutEx(node))) {
        const Nodes c = chain(e, owner);
        meet(c, 1, right, ORDER_OUT);
        meet(c, 0, x + w, ORDER_OUT);
    }
}

void PlainLayout::adjust_break_to_inner(Node break_node, const Node& inner, double x, double y,
                                        Order side) {
    const Edge e = break_node.GetEdgesOut().GetItem(0);
    const Nodes c = chain(e, inner);
    if (c.empty()) {
        break_node.SetPosition(x, y);
        return;
    }
    const Node& b = side == ORDER_OUT ? c.back() : c.front();
    break_node.SetPosition(x, inner.GetPosition().y + b.GetPosition().y);
}

void PlainLayout::place_break_node(Node node, double left, double right, double y,
                                   const Node& owner) {
    const Edge e = node.GetEdgesOut().GetItem(0);
    const Nodes c = chain(e, owner);
    int partner = 0;
    while (partner < CountOf(c) &&
           ((*infos)[At(c, partner)].level != (*infos)[node].level || At(c, partner) == node)) {
        ++partner;
    }
    if (partner == CountOf(c)) {
        node.SetPosition(left, y);
        return;
    }
    bool partner_left = true;
    if (!local_infos[e].reversed) {
        partner_left = partner != CountOf(c) - 1 && At(c, partner + 1) == node;
    }
    Put(c, partner, partner_left ? left : right, y);
    node.SetPosition(partner_left ? right : left, y);
}

void PlainLayout::adjust_ports(const Nodes& level, double x, Order side) {
    for (Node p : level) {
        const LocalNodeInfo& info = local_infos[p];
        const Pairs& set = side == ORDER_IN ? info.out : info.in;
        if (set.empty()) continue;
        const Node q = set[0].node;
        const double y = q.GetPosition().y;
        if (q.IsDummy()) {
            p.SetPosition(x, y);
        } else {
            adjust_break_to_inner(p, q, x, y + 0.5 * q.GetSize().cy,
                                  side == ORDER_IN ? ORDER_OUT : ORDER_IN);
        }
    }
}

}  // namespace nodeline::test

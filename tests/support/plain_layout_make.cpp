#include <nodeline/handlers/handlers.h>
#include <support/plain_layout.h>

#include <algorithm>
#include <climits>

namespace nodeline::test {

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

}  // namespace nodeline::test

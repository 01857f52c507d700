#include <support/plain_layout.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <deque>
#include <set>

namespace nodeline::test {

namespace {

constexpr double kFar = DBL_MAX / 2;

bool ByY(const Node& a, const Node& b) { return a.GetPosition().y < b.GetPosition().y; }

}  // namespace

// --- The old picture

void PlainLayout::restore_old_levels() {
    for (const Node& u : nodes) {
        if (skip(u) || !was_old(u)) continue;
        const NodeInfo r = old_infos[u];
        level_at(r.level);
        (*infos)[u] = r;
        if (is_hidden(u) || r.was_hidden) continue;
        level_at(r.level).push_back(u);
        restore_old_dummy(u);
    }
    for (Nodes& level : levels) std::stable_sort(level.begin(), level.end(), ByY);
    if (levels.empty()) return;
    const Nodes& last = levels.back();
    if (std::all_of(last.begin(), last.end(), [](const Node& n) { return n.IsDummy(); })) return;
    levels.emplace_back();
    level_extents->resize(levels.size() + 1);
}

void PlainLayout::restore_to_child(const Node& u, const Node& v, const Edge& e) {
    const Nodes b = chain(e, u.GetOwner());
    const bool backwards = old_infos[v].level < old_infos[u].level;
    const std::size_t first = backwards ? 4 : 2;
    Node prev = u;
    std::size_t i = first;
    while (i + first < b.size()) {
        const NodeInfo r = old_infos[b[i]];
        if (r.level >= 0) level_at(r.level).push_back(b[i]);
        (*infos)[b[i]] = r;
        backwards ? mark_as_neighbours(b[i], prev, e) : mark_as_neighbours(prev, b[i], e);
        prev = b[i];
        ++i;
        if (i + first >= b.size()) break;
        (*infos)[b[i]] = r;
        ++i;
    }
}

void PlainLayout::cut_table(int level) {
    const auto length = static_cast<std::size_t>(level + 1);
    if (length < levels.size()) levels.resize(length);
}

void PlainLayout::restore_old_dummy(const Node& u) {
    const Node owner = u.GetOwner();
    for (const auto& [v, e] : pairs(GetChildrenEx(u))) {
        if (is_hidden(v) || !was_old(e, owner)) continue;
        if (old_infos[v].level != old_infos[u].level) restore_to_child(u, v, e);
    }
    for (const auto& [n, e] : pairs(GetEdgesInEx(u))) {
        if (!was_old(e, owner)) continue;
        const Nodes b = chain(e, owner);
        Node prev = b[0];
        std::size_t i = 0;
        while (i + 1 < b.size()) {
            if (b[i] != prev) mark_as_neighbours(prev, b[i], e);
            const NodeInfo r = old_infos[b[i]];
            cut_table(r.level);
            if (r.level >= 0) level_at(r.level).push_back(b[i]);
            (*infos)[b[i]] = r;
            prev = b[i];
            ++i;
            if (i + 2 == b.size()) break;
            (*infos)[b[i]] = r;
            ++i;
        }
        mark_as_neighbours(prev, u, e);
    }
    for (const auto& [n, e] : pairs(GetEdgesOutEx(u))) {
        if (!was_old(e, owner)) continue;
        const Nodes b = chain(e, owner);
        Node prev = u;
        std::size_t i = 2;
        while (i < b.size()) {
            mark_as_neighbours(prev, b[i], e);
            const NodeInfo r = old_infos[b[i]];
            cut_table(r.level);
            if (r.level >= 0) level_at(r.level).push_back(b[i]);
            (*infos)[b[i]] = r;
            prev = b[i];
            ++i;
            if (i == b.size()) break;
            (*infos)[b[i]] = r;
            ++i;
        }
    }
}

void PlainLayout::make_y_shifts() {
    const int n = static_cast<int>(levels.size());
    const double gap = 0.5 * std::min(dummy_spacing, node_spacing);
    std::map<double, double> shifts;
    for (int k = 1; k <= n - 2; ++k) {
        const Nodes& level = level_at(k);
        for (std::size_t i = 0; i + 1 < level.size(); ++i) {
            const double need = level[i].GetPosition().y + _get_height(level[i]) + gap;
            const double top = level[i + 1].GetPosition().y;
            if (!(top < need)) continue;
            const auto found = shifts.find(top);
            if (found == shifts.end()) {
                shifts[top] = need - top;
            } else {
                found->second = std::max(found->second, need - top);
            }
        }
    }
    if (shifts.empty()) return;
    double sum = 0.0;
    for (auto& [top, shift] : shifts) {
        sum = sum + shift;
        shift = sum;
    }
    for (int k = 1; k <= n - 2; ++k) {
        for (Node v : level_at(k)) {
            const double mid = v.GetPosition().y + 0.5 * _get_height(v);
            auto it = shifts.begin();
            while (it != shifts.end() && !(mid < it->first)) ++it;
            if (it == shifts.begin()) continue;
            --it;
            v.SetPosition(v.GetPosition().x, v.GetPosition().y + it->second);
        }
    }
}

// --- Levels of what is new

void PlainLayout::determine_new_nodes_levels() {
    for (const Nodes& component : find_connectivity_components(nodes)) {
        if (std::all_of(component.begin(), component.end(),
                        [&](const Node& n) { return _is_new(n); })) {
            enumerate_connectivity_component(component);
            mark_reversed_edges(component, true);
            mark_levels(component);
        } else {
            mark_new_nodes_levels(component);
        }
    }
    mark_reversed_edges(nodes, false);
}

bool PlainLayout::choose_level(const std::vector<int>& parent_levels,
                               const std::vector<int>& child_levels, int* level) const {
    const std::multiset<int> parents(parent_levels.begin(), parent_levels.end());
    const std::multiset<int> children(child_levels.begin(), child_levels.end());
    if (parents.empty() && children.empty()) return false;
    if (parents.empty()) {
        *level = *children.begin() - 1;
    } else if (children.empty()) {
        *level = *parents.rbegin() + 1;
    } else {
        const int lo = std::min(*parents.begin(), *children.begin());
        const int hi = std::max(*parents.rbegin(), *children.rbegin());
        std::map<int, int> counts;
        for (int k = lo; k <= hi; ++k) counts[k] = 0;
        for (const int c : children) {
            for (int k = c; k <= hi; ++k) ++counts[k];
        }
        for (const int p : parents) {
            for (int k = p; k >= lo; --k) ++counts[k];
        }
        *level = lo;
        for (const auto& [k, count] : counts) {
            if (count < counts[*level]) *level = k;
        }
    }
    return true;
}

void PlainLayout::mark_new_nodes_levels(const Nodes& component) {
    std::deque<Node> queue;
    for (const Node& n : component) {
        if (!skip(n) && !was_old(n)) queue.push_back(n);
    }
    while (!queue.empty()) {
        bool assigned = false;
        for (std::size_t left = queue.size(); left > 0; --left) {
            const Node n = queue.front();
            std::vector<int> parents;
            std::vector<int> children;
            for (const auto& [p, e] : pairs(GetParentsEx(n))) {
                if (!skip(p) && was_old_and_shown(p)) parents.push_back(old_infos[p].level);
            }
            for (const auto& [c, e] : pairs(GetChildrenEx(n))) {
                if (!skip(c) && was_old_and_shown(c)) children.push_back(old_infos[c].level);
            }
            int level = 0;
            if (choose_level(parents, children, &level)) {
                (*infos)[n].level = level;
                assigned = true;
            } else {
                queue.push_back(n);
            }
            queue.pop_front();
        }
        if (assigned) continue;
        settle(Nodes(queue.begin(), queue.end()));
        return;
    }
}

void PlainLayout::settle(Nodes rest) {
    bool assigned = true;
    while (assigned && !rest.empty()) {
        assigned = false;
        Nodes waiting;
        for (const Node& n : rest) {
            std::vector<int> parents;
            std::vector<int> children;
            for (const auto& [p, e] : pairs(GetParentsEx(n))) {
                if (skip(p) || p == n || (*infos)[p].level == -1) continue;
                parents.push_back((*infos)[p].level);
            }
            for (const auto& [c, e] : pairs(GetChildrenEx(n))) {
                if (skip(c) || c == n || (*infos)[c].level == -1) continue;
                children.push_back((*infos)[c].level);
            }
            int level = 0;
            if (choose_level(parents, children, &level)) {
                (*infos)[n].level = std::max(0, level);
                assigned = true;
            } else {
                waiting.push_back(n);
            }
        }
        rest = waiting;
    }
    for (const Node& n : rest) (*infos)[n].level = 1;
}

// --- Places of what is new

void PlainLayout::calculate_new_nodes_y_coords() {
    for (std::size_t k = 0; k < levels.size(); ++k) fill_level(Nodes(levels[k]));
}

void PlainLayout::fill_level(const Nodes& level) {
    std::vector<FreeSpace> gaps;
    double cursor = -kFar;
    std::size_t first_new = 0;
    for (; first_new < level.size(); ++first_new) {
        const Node& v = level[first_new];
        if (_is_new(v)) {
            gaps.push_back({cursor, kFar, kFar - cursor});
            break;
        }
        const double g = half_spacing(v);
        const double y = v.GetPosition().y;
        if (cursor < y - g) gaps.push_back({cursor, y - g, y - g - cursor});
        cursor = y + _get_height(v) + g;
    }
    std::map<std::size_t, Nodes> groups;
    for (std::size_t k = first_new; k < level.size(); ++k) {
        Node n = level[k];
        if (!_is_new(n)) continue;
        double sum = 0.0;
        int count = 0;
        for (const auto& [other, e] : local_infos[n].in) {
            sum = sum + (other.GetPosition().y + 0.5 * _get_height(other));
            ++count;
        }
        for (const auto& [other, e] : local_infos[n].out) {
            if (!was_old_and_shown(other)) continue;
            sum = sum + (other.GetPosition().y + 0.5 * _get_height(other));
            ++count;
        }
        const double want = count > 0 ? sum / count : 0.0;
        n.SetPosition(0.0, want);
        const double need = _get_height(n) + (n.IsDummy() ? dummy_spacing : node_spacing);
        if (gaps.size() == 1 || want < gaps[0].end) {
            groups[0].push_back(n);
            continue;
        }
        std::size_t i = 1;
        while (gaps[i].end < want) ++i;
        std::size_t left = i - 1;
        double dl = want - gaps[left].end;
        double dr = gaps[i].start - want;
        std::size_t j = 0;
        while (true) {
            j = dl < dr ? left : i;
            if (need < gaps[j].size) break;
            if (j == left) {
                --left;
                dl = want - gaps[left].end;
            } else {
                ++i;
                dr = gaps[i].start - want;
            }
        }
        groups[j].push_back(n);
        gaps[j].size = gaps[j].size - need;
    }
    for (auto& [j, group] : groups) {
        std::stable_sort(group.begin(), group.end(), ByY);
        FreeSpace& gap = gaps[j];
        if (j == 0 && gaps.size() > 1) {
            double y = gap.end;
            for (auto it = group.rbegin(); it != group.rend(); ++it) {
                const double g = half_spacing(*it);
                y = y - g - _get_height(*it);
                it->SetPosition(0.0, y);
                y = y - g;
            }
            gap.start = gap.start + half_spacing(group.front());
        } else {
            double y = j == 0 ? 0.0 : gap.start;
            for (Node& n : group) {
                const double g = half_spacing(n);
                y = y + g;
                n.SetPosition(0.0, y);
                y = y + _get_height(n) + g;
            }
            gap.start = gap.start + half_spacing(group.back());
        }
        force_adjust_block(group.data(), group.data() + group.size(), DEPEND_INOUT, true, gap.start,
                           gap.end);
    }
}

}  // namespace nodeline::test

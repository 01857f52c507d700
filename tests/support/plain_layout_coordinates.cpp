#include <nodeline/handlers/handlers.h>
#include <support/plain_layout.h>

#include <algorithm>

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

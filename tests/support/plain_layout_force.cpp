#include <nodeline/handlers/handlers.h>
#include <support/plain_layout.h>

#include <cfloat>

namespace nodeline::test {

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

}  // namespace nodeline::test

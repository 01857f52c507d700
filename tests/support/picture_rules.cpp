#include <support/picture_parts.h>
#include <support/picture_rules.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace nodeline::test {

namespace {

// Whether a line runs through the inside of a box.
bool Cuts(const point<double>& a, const point<double>& b, const Box& box) {
    double first = 0.0;
    double last = 1.0;
    const auto clip = [&](double from, double to, double low, double high) {
        const double d = to - from;
        if (d == 0.0) return low < from && from < high;
        const double t1 = (low - from) / d;
        const double t2 = (high - from) / d;
        first = std::max(first, std::min(t1, t2));
        last = std::min(last, std::max(t1, t2));
        return first < last;
    };
    const double slack = 1e-4;
    if (box.right - box.left <= 2 * slack || box.bottom - box.top <= 2 * slack) return false;
    return clip(a.x, b.x, box.left + slack, box.right - slack) &&
           clip(a.y, b.y, box.top + slack, box.bottom - slack);
}

class Examiner {
public:
    explicit Examiner(const graph_ptr2<Graph>& graph) : parts_(graph) {}

    std::vector<std::string> Run(const PictureRules& rules) {
        FindFaultsOfRooms(parts_, rules, faults_);
        for (const Edge& edge : parts_.edges) LookAtRoute(edge);
        return std::move(faults_);
    }

private:
    void LookAtRoute(Edge edge) {
        const Node from = edge.From();
        const Node to = edge.To();
        const std::vector<Node> up = PathOf(from);
        const std::vector<Node> down = PathOf(to);
        std::vector<point<double>> bends;
        for (const Node& bend : edge.GetBreakNodes()) bends.push_back(bend.GetPosition());
        if (bends.size() < 2) {
            Tell(faults_, "edge ", edge.GetID(), " has no route");
            return;
        }
        LookAtEnds(edge, bends);
        LookAtStretches(edge, OwnersAlong(from, to, up, down), static_cast<int>(bends.size()));
        for (const Node& node : parts_.nodes) {
            const bool crosses = (Holds(up, node) && !(node == from)) ||
                                 (Holds(down, node) && !(node == to)) ||
                                 (node == from && Holds(down, from) && !(from == to)) ||
                                 (node == to && Holds(up, to) && !(from == to));
            if (crosses) continue;
            const Box box = BoxOf(node);
            for (std::size_t i = 0; i + 1 < bends.size(); ++i) {
                if (!Cuts(bends[i], bends[i + 1], box)) continue;
                Tell(faults_, "edge ", edge.GetID(), " runs through ", node.GetID());
                break;
            }
        }
    }

    void LookAtEnds(Edge edge, const std::vector<point<double>>& bends) {
        const Box a = BoxOf(edge.From());
        const Box b = BoxOf(edge.To());
        const auto meets = [](const point<double>& p, double x, const Box& box) {
            return std::abs(p.x - x) <= kPictureSlack && p.y >= box.top - kPictureSlack &&
                   p.y <= box.bottom + kPictureSlack;
        };
        if (!meets(bends.front(), a.right, a))
            Tell(faults_, "edge ", edge.GetID(), " leaves in the air");
        if (!meets(bends.back(), b.left, b))
            Tell(faults_, "edge ", edge.GetID(), " ends in the air");
    }

    // The owners that the edge runs through, in its direction.
    static std::vector<Node> OwnersAlong(const Node& from, const Node& to,
                                         const std::vector<Node>& up,
                                         const std::vector<Node>& down) {
        if (from == to) return {from.GetOwner()};
        std::vector<Node> owners;
        for (const Node& node : up) {
            if (node != from || Holds(down, from)) owners.push_back(node);
            if (Holds(down, node)) break;
        }
        std::vector<Node> way_down;
        for (const Node& node : down) {
            if (Holds(up, node)) break;
            if (node != to) way_down.push_back(node);
        }
        owners.insert(owners.end(), way_down.rbegin(), way_down.rend());
        return owners;
    }

    // Stretches meet at the borders of the owners that the edge crosses, and there are no others.
    void LookAtStretches(const Edge& edge, const std::vector<Node>& owners, int bend_count) {
        point<double> last{0.0, 0.0};
        int seen = 0;
        for (const Node& owner : owners) {
            const NodeSet bends = edge.GetBreakNodesIn(owner);
            if (bends.GetCount() == 0) continue;
            const point<double> first = bends.GetItem(0).GetPosition();
            if (seen > 0 && (std::abs(last.x - first.x) > kPictureSlack ||
                             std::abs(last.y - first.y) > kPictureSlack)) {
                Tell(faults_, "edge ", edge.GetID(), " is broken at the border of ", owner.GetID());
            }
            last = bends.GetItem(bends.GetCount() - 1).GetPosition();
            seen += bends.GetCount();
        }
        if (seen != bend_count) {
            Tell(faults_, "edge ", edge.GetID(),
                 " has bends in owners that it does not run through");
        }
    }

    PictureParts parts_;
    std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> FindFaults(const graph_ptr2<Graph>& graph, const PictureRules& rules) {
    return Examiner(graph).Run(rules);
}

std::string Faults(const graph_ptr2<Graph>& graph, const PictureRules& rules) {
    std::string text;
    for (const std::string& fault : FindFaults(graph, rules)) text += fault + '\n';
    return text;
}

}  // namespace nodeline::test

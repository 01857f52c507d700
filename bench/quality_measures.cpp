#include <bench/quality_measures.h>

#include <bench/quality_grid.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace nodeline::bench {

namespace {

// What is nearer than this is in the same place: programs print so many digits.
constexpr double kSamePlace = 1e-4;
// Routes with an end in common have come together when they are so near to it.
constexpr double kAtEnd = 1.0;
// A route may graze a node: it has to be so deep inside to run over it.
constexpr double kInside = 1.0;
constexpr double kFullTurn = 2.0 * 3.14159265358979323846;
constexpr double kDegree = kFullTurn / 360.0;

using Route = std::vector<point<double>>;

double cross(const point<double>& a, const point<double>& b) { return a.x * b.y - a.y * b.x; }
double dot(const point<double>& a, const point<double>& b) { return a.x * b.x + a.y * b.y; }
double distance(const point<double>& a, const point<double>& b) {
    return std::sqrt(dot(b - a, b - a));
}

// From 0 to a full turn, which is what it takes to turn from one direction to another.
double angle_between(const point<double>& from, const point<double>& to) {
    const double angle = std::atan2(cross(from, to), dot(from, to));
    return angle < 0.0 ? angle + kFullTurn : angle;
}

Route without_repeats(const Route& route) {
    Route points;
    for (const point<double>& p : route) {
        if (points.empty() || distance(points.back(), p) > kSamePlace) points.push_back(p);
    }
    return points;
}

// Whether the numbers from one to another, in any order, are none of those from `c` to `d`.
bool are_apart(double a, double b, double c, double d) {
    return std::max(a, b) < std::min(c, d) - kSamePlace ||
           std::max(c, d) < std::min(a, b) - kSamePlace;
}

// On which side of the line through a piece a point lies: -1, 1, or 0 if on the line.
int side_of(const Piece& piece, const point<double>& p) {
    const double area = cross(piece.b - piece.a, p - piece.a);
    if (std::abs(area) <= kSamePlace * piece.length) return 0;
    return area > 0.0 ? 1 : -1;
}

// Whether a point on the line through a piece lies between its ends.
bool is_between_ends(const Piece& piece, const point<double>& p) {
    const double along = dot(piece.b - piece.a, p - piece.a) / piece.length;
    return along > kSamePlace && along < piece.length - kSamePlace;
}

// Whether two routes with a corner in the same place change sides there: the ways in and out of one
// take turns with those of the other. If two lead in the same direction, the routes run on top of
// each other.
bool cross_at_corner(const point<double>& in, const point<double>& out, const point<double>& in2,
                     const point<double>& out2) {
    constexpr double kSameDirection = 1e-6;
    const auto is_within = [](const point<double>& from, const point<double>& to,
                              const point<double>& p) {
        const double whole = angle_between(from, to);
        const double part = angle_between(from, p);
        return part > kSameDirection && part < whole - kSameDirection;
    };
    const auto leads_elsewhere = [&](const point<double>& p) {
        return is_within(in, out, p) != is_within(out, in, p);
    };
    return leads_elsewhere(in2) && leads_elsewhere(out2) &&
           is_within(in, out, in2) != is_within(in, out, out2);
}

class Measurer {
public:
    explicit Measurer(const Drawing& drawing) : drawing_(drawing) {
        for (std::size_t i = 0; i < drawing.edges.size(); ++i) {
            routes_.push_back(without_repeats(drawing.edges[i].route));
            const Route& route = routes_.back();
            for (std::size_t k = 1; k < route.size(); ++k) {
                pieces_.push_back({static_cast<int>(i), static_cast<int>(k), route[k - 1], route[k],
                                   distance(route[k - 1], route[k])});
            }
        }
    }

    Measures Run() {
        measure_routes();
        for (const Piece& piece : pieces_) measures_.length += piece.length;
        measure_size();
        const PieceGrid grid(pieces_);
        count_crossings(grid);
        count_runs_over(grid);
        return measures_;
    }

private:
    void measure_routes() {
        for (std::size_t i = 0; i < routes_.size(); ++i) {
            const Route& route = routes_[i];
            if (route.size() < 2) continue;
            ++measures_.edges;
            measures_.bends += drawing_.edges[i].bends.value_or(count_corners(route));
        }
    }

    static int count_corners(const Route& route) {
        int corners = 0;
        for (std::size_t k = 1; k + 1 < route.size(); ++k) {
            const double turn = angle_between(route[k] - route[k - 1], route[k + 1] - route[k]);
            if (turn > kDegree && turn < kFullTurn - kDegree) ++corners;
        }
        return corners;
    }

    void measure_size() {
        constexpr double kFar = std::numeric_limits<double>::max();
        rectangle<double> all{kFar, kFar, -kFar, -kFar};
        const auto add = [&](double left, double top, double right, double bottom) {
            all = {std::min(all.left, left), std::min(all.top, top), std::max(all.right, right),
                   std::max(all.bottom, bottom)};
        };
        for (const DrawnNode& node : drawing_.nodes) {
            add(node.box.left, node.box.top, node.box.right, node.box.bottom);
        }
        for (const Route& route : routes_) {
            for (const point<double>& p : route) add(p.x, p.y, p.x, p.y);
        }
        measures_.width = std::max(0.0, all.right - all.left);
        measures_.height = std::max(0.0, all.bottom - all.top);
    }

    void count_crossings(const PieceGrid& grid) {
        // By edge, the last of those before it that is known to cross it.
        std::vector<int> crossed_by(routes_.size(), -1);
        for (const Piece& piece : pieces_) {
            grid.ForEachLaterNear(piece, [&](const Piece& other) {
                int& last = crossed_by[static_cast<std::size_t>(other.edge)];
                if (last == piece.edge || !do_cross(piece, other)) return;
                last = piece.edge;
                ++measures_.crossings;
            });
        }
    }

    // Whether the routes change sides on these pieces, or at the corners where these end.
    [[nodiscard]] bool do_cross(const Piece& one, const Piece& two) const {
        if (are_apart(one.a.x, one.b.x, two.a.x, two.b.x) ||
            are_apart(one.a.y, one.b.y, two.a.y, two.b.y)) {
            return false;
        }
        const int a_of_one = side_of(two, one.a);
        const int b_of_one = side_of(two, one.b);
        if (a_of_one * b_of_one > 0) return false;
        const int a_of_two = side_of(one, two.a);
        const int b_of_two = side_of(one, two.b);
        if (a_of_two * b_of_two > 0) return false;
        if (a_of_one * b_of_one < 0 && a_of_two * b_of_two < 0) {
            const point<double> way = one.b - one.a;
            const double part = cross(two.a - one.a, two.b - two.a) / cross(way, two.b - two.a);
            return !have_come_together({one.a.x + part * way.x, one.a.y + part * way.y}, one.edge,
                                       two.edge);
        }
        return ends_on_other_side(one, two) || ends_on_other_side(two, one) ||
               cross_where_both_end(one, two);
    }

    // Whether a corner at the end of one piece lies on the other, and the route goes on beyond it.
    [[nodiscard]] bool ends_on_other_side(const Piece& one, const Piece& two) const {
        const point<double>* next = point_after(one);
        return next != nullptr && side_of(two, one.b) == 0 && is_between_ends(two, one.b) &&
               side_of(two, one.a) * side_of(two, *next) < 0 &&
               !have_come_together(one.b, one.edge, two.edge);
    }

    [[nodiscard]] bool cross_where_both_end(const Piece& one, const Piece& two) const {
        const point<double>* next = point_after(one);
        const point<double>* next_of_two = point_after(two);
        return next != nullptr && next_of_two != nullptr && distance(one.b, two.b) <= kSamePlace &&
               cross_at_corner(one.a - one.b, *next - one.b, two.a - two.b, *next_of_two - two.b) &&
               !have_common_end(one.edge, two.edge);
    }

    [[nodiscard]] const point<double>* point_after(const Piece& piece) const {
        const Route& route = routes_[static_cast<std::size_t>(piece.edge)];
        const auto next = static_cast<std::size_t>(piece.end) + 1;
        return next < route.size() ? &route[next] : nullptr;
    }

    [[nodiscard]] bool have_common_end(int one, int two) const {
        const DrawnEdge& first = drawing_.edges[static_cast<std::size_t>(one)];
        const DrawnEdge& second = drawing_.edges[static_cast<std::size_t>(two)];
        return first.from == second.from || first.from == second.to || first.to == second.from ||
               first.to == second.to;
    }

    // Whether a place is where two edges meet at an end that they have in common.
    [[nodiscard]] bool have_come_together(const point<double>& place, int one, int two) const {
        const auto end_near = [&](int edge, int node) {
            const DrawnEdge& drawn = drawing_.edges[static_cast<std::size_t>(edge)];
            const Route& route = routes_[static_cast<std::size_t>(edge)];
            return (drawn.from == node && distance(route.front(), place) <= kAtEnd) ||
                   (drawn.to == node && distance(route.back(), place) <= kAtEnd);
        };
        const DrawnEdge& first = drawing_.edges[static_cast<std::size_t>(one)];
        return (end_near(one, first.from) && end_near(two, first.from)) ||
               (end_near(one, first.to) && end_near(two, first.to));
    }

    void count_runs_over(const PieceGrid& grid) {
        // By edge, the last node that is known not to matter to it any more.
        std::vector<int> done_with(routes_.size(), -1);
        for (std::size_t i = 0; i < drawing_.nodes.size(); ++i) {
            const int node = static_cast<int>(i);
            const rectangle<double>& box = drawing_.nodes[i].box;
            const rectangle<double> inside{box.left + kInside, box.top + kInside,
                                           box.right - kInside, box.bottom - kInside};
            if (inside.left >= inside.right || inside.top >= inside.bottom) continue;
            grid.ForEachNear(inside, [&](const Piece& piece) {
                int& last = done_with[static_cast<std::size_t>(piece.edge)];
                if (last == node || !meets(piece, inside)) return;
                last = node;
                const DrawnEdge& edge = drawing_.edges[static_cast<std::size_t>(piece.edge)];
                if (!is_or_owns(node, edge.from) && !is_or_owns(node, edge.to)) {
                    ++measures_.runs_over;
                }
            });
        }
    }

    static bool meets(const Piece& piece, const rectangle<double>& box) {
        double first = 0.0;
        double last = 1.0;
        const auto clip = [&](double from, double to, double low, double high) {
            const double way = to - from;
            if (way == 0.0) return low < from && from < high;
            first = std::max(first, std::min((low - from) / way, (high - from) / way));
            last = std::min(last, std::max((low - from) / way, (high - from) / way));
            return first < last;
        };
        return clip(piece.a.x, piece.b.x, box.left, box.right) &&
               clip(piece.a.y, piece.b.y, box.top, box.bottom);
    }

    [[nodiscard]] bool is_or_owns(int owner, int node) const {
        while (node != -1 && node != owner) {
            node = drawing_.nodes[static_cast<std::size_t>(node)].owner;
        }
        return node == owner;
    }

    const Drawing& drawing_;
    std::vector<Route> routes_;
    std::vector<Piece> pieces_;
    Measures measures_;
};

}  // namespace

Measures Measure(const Drawing& drawing) { return Measurer(drawing).Run(); }

}  // namespace nodeline::bench

// Where what is new to a stable picture finds its place along a level.
#include <nodeline/layout/internal/stable_steps.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <utility>

namespace nodeline::internal {

namespace {

// Rounding alone never closes a place, and never opens one.
constexpr double kSlack = 1e-7;
// Between what comes in on top and what was there: more can come in between the two.
constexpr double kHair = 1e-8;
constexpr double kEndless = std::numeric_limits<double>::infinity();

// The free room between the neighbours of one level, from the top down. Each neighbour keeps half
// of its spacing to itself.
class Gaps {
public:
    explicit Gaps(StableRun& run) : run_(run) {}

    // Takes what has a place, in the order of y.
    void Reset(const std::vector<Vertex>& placed) {
        gaps_.clear();
        double start = -kEndless;
        for (const Vertex v : placed) {
            add(start, top(v, at(run_.y, v)));
            start = bottom(v, at(run_.y, v));
        }
        add(start, kEndless);
    }

    // The free place nearest to `wish`, at most `reach` from it; NaN if there is none.
    [[nodiscard]] double FindNearest(Vertex v, double wish, double reach) const {
        double best = std::numeric_limits<double>::quiet_NaN();
        double least = reach;
        const auto try_gap = [&](const auto& gap) {
            const double y = place_in(v, wish, gap.first, gap.second);
            if (!(std::abs(y - wish) <= least)) return;
            least = std::abs(y - wish);
            best = y;
        };
        const auto middle = gaps_.upper_bound(wish);
        for (auto it = middle; it != gaps_.begin();) {
            --it;
            if (it != gaps_.begin() && wish - it->second > least) break;
            try_gap(*it);
        }
        for (auto it = middle; it != gaps_.end() && it->first - wish <= least; ++it) try_gap(*it);
        return best;
    }

    // Takes the room that a vertex fills.
    void Fill(Vertex v, double y) {
        auto after = gaps_.upper_bound(y);
        if (after == gaps_.begin()) return;
        const auto gap = std::prev(after);
        const double end = gap->second;
        const double start = gap->first;
        gaps_.erase(gap);
        add(start, top(v, y));
        add(bottom(v, y), end);
    }

private:
    [[nodiscard]] double half(Vertex v) const { return run_.half_spacing(v); }
    [[nodiscard]] double top(Vertex v, double y) const { return y - half(v); }
    [[nodiscard]] double bottom(Vertex v, double y) const { return y + run_.height(v) + half(v); }
    void add(double start, double end) {
        if (end - start > kSlack) gaps_.emplace(start, end);
    }
    // The place in a gap that is nearest to `wish`; NaN if the gap is too small.
    [[nodiscard]] double place_in(Vertex v, double wish, double start, double end) const {
        const double lowest = std::max(start + half(v), run_.top_margin());
        const double highest = end - (bottom(v, 0.0));
        if (highest < lowest) return std::numeric_limits<double>::quiet_NaN();
        return std::clamp(wish, lowest, highest);
    }

    StableRun& run_;
    std::map<double, double> gaps_;  // start to end
};

// Fills the levels. What has a neighbour on the left with a place comes first, level by level; then
// what has one on the right; the rest stands on top.
class Fitter {
public:
    explicit Fitter(StableRun& run) : run_(run), gaps_(run) {}

    void Run() {
        const int n = static_cast<int>(run_.levels.size());
        for (int k = 1; k <= n - 2; ++k) fit(k, ORDER_IN);
        if (is_waiting_) {
            is_waiting_ = false;
            for (int k = n - 2; k >= 1; --k) fit(k, ORDER_OUT);
        }
        if (is_waiting_) {
            is_last_ = true;
            for (int k = 1; k <= n - 2; ++k) fit(k, ORDER_IN);
        }
    }

private:
    struct Wish {
        double y;
        Vertex vertex;
    };

    [[nodiscard]] bool is_placed(Vertex v) const { return at(run_.placing, v) == Placing::kPlaced; }

    void fit(int k, Order side) {
        std::vector<Vertex>& level = run_.level_at(k);
        const bool is_full =
            std::all_of(level.begin(), level.end(), [&](Vertex v) { return is_placed(v); });
        if (is_full) {
            sort_by_y(level);
            return;
        }
        placed_.clear();
        inserted_.clear();
        std::copy_if(level.begin(), level.end(), std::back_inserter(placed_),
                     [&](Vertex v) { return is_placed(v); });
        sort_by_y(placed_);
        bring_back(level);
        gaps_.Reset(placed_);
        for (const Wish& wish : returning_) {
            settle(wish.vertex, gaps_.FindNearest(wish.vertex, wish.y, kEndless));
        }
        collect_wishes(level, side);
        for (const Wish& wish : wishes_) place(wish);
        sort_by_y(level);
    }

    // Keys beside their vertices: a level may be long, and its vertices lie far apart.
    void sort_by_y(std::vector<Vertex>& level) {
        keys_.clear();
        bool sorted = true;
        for (const Vertex v : level) {
            const double y = at(run_.y, v);
            sorted = sorted && (keys_.empty() || keys_.back().y <= y);
            keys_.push_back({y, v});
        }
        if (sorted) return;
        sort(keys_);
        for (std::size_t i = 0; i < level.size(); ++i) level[i] = keys_[i].vertex;
    }

    // What was hidden takes its old place if that is free; else it stays for the nearest one.
    void bring_back(const std::vector<Vertex>& level) {
        returning_.clear();
        for (const Vertex v : level) {
            if (at(run_.placing, v) == Placing::kReturning)
                returning_.push_back({at(run_.y, v), v});
        }
        if (returning_.empty()) return;
        sort(returning_);
        std::vector<Vertex> merged;
        std::vector<Wish> late;
        merged.reserve(placed_.size() + returning_.size());
        auto next = placed_.begin();
        for (const Wish& wish : returning_) {
            while (next != placed_.end() && at(run_.y, *next) <= wish.y) merged.push_back(*next++);
            const bool fits = (merged.empty() || follows(merged.back(), wish.vertex)) &&
                              (next == placed_.end() || follows(wish.vertex, *next));
            if (!fits) {
                late.push_back(wish);
                continue;
            }
            at(run_.placing, wish.vertex) = Placing::kPlaced;
            merged.push_back(wish.vertex);
        }
        merged.insert(merged.end(), next, placed_.end());
        placed_.swap(merged);
        returning_.swap(late);
    }

    // Whether one vertex of the level may stand below another where they are.
    [[nodiscard]] bool follows(Vertex above, Vertex below) const {
        const double end = at(run_.y, above) + run_.height(above) + run_.spacing(above, below);
        return end <= at(run_.y, below) + kSlack;
    }

    void collect_wishes(const std::vector<Vertex>& level, Order side) {
        wishes_.clear();
        for (const Vertex v : level) {
            if (is_placed(v)) continue;
            const double y = wish(v, side);
            if (std::isnan(y)) {
                is_waiting_ = true;
            } else {
                wishes_.push_back({y, v});
            }
        }
        sort(wishes_);
    }

    static void sort(std::vector<Wish>& wishes) {
        std::stable_sort(wishes.begin(), wishes.end(),
                         [](const Wish& a, const Wish& b) { return a.y < b.y; });
    }

    // A long edge goes straight on; a node stands level with the mean of its neighbours.
    [[nodiscard]] double wish(Vertex v, Order side) const {
        double sum = 0.0;
        int count = 0;
        const auto look = [&](Order where) {
            for (const auto& link : run_.links(where, v)) {
                if (!is_placed(link.node)) continue;
                sum += meeting_y(link, where);
                ++count;
            }
        };
        look(side);
        if (count == 0 || !run_.is_dummy(v)) look(side == ORDER_IN ? ORDER_OUT : ORDER_IN);
        if (count == 0) {
            return is_last_ ? run_.top_margin() : std::numeric_limits<double>::quiet_NaN();
        }
        const double middle = run_.is_dummy(v) ? 0.0 : 0.5 * at(run_.sizes, v).cy;
        return sum / count - middle;
    }

    // A neighbour on the left is met at its right side, and the other way round.
    [[nodiscard]] double meeting_y(const LayoutRun::Link& link, Order where) const {
        if (run_.is_dummy(link.node)) return at(run_.y, link.node);
        return run_.end_y(link.edge, link.node, where == ORDER_IN ? ORDER_OUT : ORDER_IN);
    }

    void place(const Wish& wish) {
        const Vertex v = wish.vertex;
        const double y = gaps_.FindNearest(v, wish.y, run_.options().reach);
        if (std::isnan(y)) {
            put_between(v, wish.y);
        } else {
            settle(v, y);
        }
    }

    void settle(Vertex v, double y) {
        gaps_.Fill(v, y);
        put(v, y);
    }

    void put(Vertex v, double y) {
        at(run_.y, v) = y;
        at(run_.placing, v) = Placing::kPlaced;
        inserted_.emplace(y, v);
    }

    // The last vertex that stands above `y`, and the first that does not.
    [[nodiscard]] std::pair<Vertex, Vertex> neighbours_of(double y) const {
        const auto below = std::partition_point(placed_.begin(), placed_.end(),
                                                [&](Vertex u) { return at(run_.y, u) < y; });
        Vertex above_y = below == placed_.begin() ? kNoVertex : *std::prev(below);
        Vertex below_y = below == placed_.end() ? kNoVertex : *below;
        const auto later = inserted_.lower_bound({y, kNoVertex});
        if (later != inserted_.begin()) {
            const auto [other, v] = *std::prev(later);
            if (above_y == kNoVertex || at(run_.y, above_y) < other) above_y = v;
        }
        if (later != inserted_.end()) {
            const auto [other, v] = *later;
            if (below_y == kNoVertex || other < at(run_.y, below_y)) below_y = v;
        }
        return {above_y, below_y};
    }

    // Stands between the two that are in the way; the drawing opens there later. Its y lies
    // strictly between theirs, so that what is below can be told from what is above.
    void put_between(Vertex v, double wish) {
        double y = std::max(wish, run_.top_margin());
        const auto [above, below] = neighbours_of(y);
        const double ceiling = below == kNoVertex ? kEndless : at(run_.y, below);
        if (above == kNoVertex) {
            put(v, y < ceiling ? y : ceiling - kHair);
            return;
        }
        const double end = at(run_.y, above) + run_.height(above) + run_.spacing(above, v);
        y = std::max(y, end);
        put(v, y < ceiling ? y : 0.5 * (at(run_.y, above) + ceiling));
    }

    StableRun& run_;
    Gaps gaps_;
    // What had a place before, and what has got one since, by y.
    std::vector<Vertex> placed_;
    std::set<std::pair<double, Vertex>> inserted_;
    std::vector<Wish> returning_;
    std::vector<Wish> wishes_;
    std::vector<Wish> keys_;
    bool is_waiting_ = false;
    bool is_last_ = false;
};

}  // namespace

void fit_in(StableRun& run) { Fitter(run).Run(); }

}  // namespace nodeline::internal

// How the stable layout goes on from the order that three sweeps have found.
#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace nodeline::internal {

namespace {

using Crossings = std::int64_t;

// The heights at which edges cross the border, by the vertex that they lead to inside: what is next
// to the border on the left comes in there, what is next to it on the right goes out.
class BorderPulls {
public:
    explicit BorderPulls(const StableRun& run) {
        if (run.anchors == nullptr || run.anchors->IsEmpty()) return;
        const int last = static_cast<int>(run.levels.size()) - 2;
        for (EdgeIndex e = 0; e < run.edge_count(); ++e) {
            const Course& course = at(run.courses, e);
            if (course.kind == CourseKind::kIn) {
                add(run, e, ORDER_IN, course.crossed() > 0 ? run.vertex_on(e, 1) : course.to);
            } else if (course.kind == CourseKind::kOut) {
                add(run, e, ORDER_OUT, course.crossed() > 0 ? run.vertex_on(e, last) : course.from);
            }
        }
        for (auto& side : pulls_) std::sort(side.begin(), side.end());
    }

    [[nodiscard]] bool IsEmpty() const { return pulls_[0].empty() && pulls_[1].empty(); }

    // Calls `f(height)` for the edges of a vertex across a border, from the top down.
    template <class F>
    void ForEach(Order side, Vertex v, F f) const {
        const auto& pulls = pulls_[side];
        auto it = std::lower_bound(pulls.begin(), pulls.end(), std::pair(v, -1.0));
        for (; it != pulls.end() && it->first == v; ++it) f(it->second);
    }

private:
    void add(const StableRun& run, EdgeIndex e, Order side, Vertex v) {
        const auto height = run.anchors->Find(run.owner_id(), run.edge_id(e), side);
        if (height) pulls_[side].emplace_back(v, *height);
    }

    std::vector<std::pair<Vertex, double>> pulls_[2];
};

// Orders the levels next to the borders by what pulls at them from both sides.
class BorderSorter {
public:
    BorderSorter(StableRun& run, const BorderPulls& pulls) : run_(run), pulls_(pulls) {}

    void Sort(std::vector<Vertex>& level, Order side) {
        keys_.clear();
        const auto size = static_cast<double>(level.size());
        for (const Vertex v : level) {
            double sum = 0.0;
            int count = 0;
            for (const auto& link : run_.links(side, v)) {
                sum += at(run_.y, link.node);
                ++count;
            }
            pulls_.ForEach(side, v, [&](double height) {
                sum += height * size;
                ++count;
            });
            keys_.emplace_back(count > 0 ? sum / count : at(run_.y, v), v);
        }
        std::stable_sort(keys_.begin(), keys_.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        for (std::size_t i = 0; i < level.size(); ++i) {
            level[i] = keys_[i].second;
            at(run_.y, level[i]) = static_cast<double>(i);
        }
    }

private:
    StableRun& run_;
    const BorderPulls& pulls_;
    std::vector<std::pair<double, Vertex>> keys_;
};

// Counts crossings between neighbouring levels, and with what pulls at the borders. The y of a
// vertex is its place in its level.
class CrossingCounter {
public:
    CrossingCounter(const StableRun& run, const BorderPulls& pulls) : run_(run), pulls_(pulls) {}

    [[nodiscard]] Crossings Count() {
        Crossings sum = 0;
        const int n = static_cast<int>(run_.levels.size());
        for (int k = 1; k <= n - 3; ++k) sum += count_between(at(run_.levels, k), k + 1);
        if (pulls_.IsEmpty()) return sum;
        return sum + count_at_border(at(run_.levels, 1), ORDER_IN) +
               count_at_border(at(run_.levels, n - 2), ORDER_OUT);
    }

private:
    // The pairs of edges across a border that come to lie the other way round on the level.
    [[nodiscard]] Crossings count_at_border(const std::vector<Vertex>& level, Order side) {
        heights_.clear();
        for (const Vertex v : level) {
            pulls_.ForEach(side, v, [&](double height) { heights_.push_back(height); });
        }
        ranks_ = heights_;
        std::sort(ranks_.begin(), ranks_.end());
        sums_.assign(ranks_.size() + 1, 0);
        Crossings crossings = 0;
        Crossings seen = 0;
        for (const double height : heights_) {
            const auto rank = static_cast<std::size_t>(
                std::lower_bound(ranks_.begin(), ranks_.end(), height) - ranks_.begin());
            crossings += seen++ - sum_up_to(rank);
            add(rank);
        }
        return crossings;
    }

    // Inversions, by a tree of sums over the places of the right level.
    [[nodiscard]] Crossings count_between(const std::vector<Vertex>& left, int right_level) {
        const std::size_t size = at(run_.levels, right_level).size();
        sums_.assign(size + 1, 0);
        Crossings crossings = 0;
        Crossings seen = 0;
        for (const Vertex v : left) {
            places_.clear();
            for (const auto& link : run_.links(ORDER_OUT, v)) {
                places_.push_back(static_cast<std::size_t>(at(run_.y, link.node)));
            }
            if (places_.size() > 1) std::sort(places_.begin(), places_.end());
            for (const std::size_t place : places_) crossings += seen - sum_up_to(place);
            for (const std::size_t place : places_) add(place);
            seen += static_cast<Crossings>(places_.size());
        }
        return crossings;
    }

    [[nodiscard]] Crossings sum_up_to(std::size_t place) const {
        Crossings sum = 0;
        for (std::size_t i = place + 1; i > 0; i &= i - 1) sum += sums_[i];
        return sum;
    }
    void add(std::size_t place) {
        for (std::size_t i = place + 1; i < sums_.size(); i += i & (~i + 1)) ++sums_[i];
    }

    const StableRun& run_;
    const BorderPulls& pulls_;
    std::vector<Crossings> sums_;
    std::vector<std::size_t> places_;
    std::vector<double> heights_;
    std::vector<double> ranks_;
};

// Swaps neighbours of a level where that takes crossings away.
class NeighbourSwapper {
public:
    NeighbourSwapper(StableRun& run, const BorderPulls& pulls) : run_(run), pulls_(pulls) {}

    // One pass over all levels; whether it has swapped anything.
    bool Run() {
        bool changed = false;
        const int n = static_cast<int>(run_.levels.size());
        for (int k = 1; k <= n - 2; ++k) changed = pass(run_.level_at(k)) || changed;
        return changed;
    }

private:
    bool pass(std::vector<Vertex>& level) {
        bool changed = false;
        for (std::size_t i = 0; i + 1 < level.size(); ++i) {
            Vertex& upper = level[i];
            Vertex& lower = level[i + 1];
            if (gain(upper, lower) <= 0) continue;
            std::swap(upper, lower);
            std::swap(at(run_.y, upper), at(run_.y, lower));
            changed = true;
        }
        return changed;
    }

    // The crossings between the edges of two neighbours, less those after a swap.
    [[nodiscard]] Crossings gain(Vertex upper, Vertex lower) {
        const Crossings inside = gain_on(ORDER_IN, upper, lower) + gain_on(ORDER_OUT, upper, lower);
        if (pulls_.IsEmpty()) return inside;
        return inside + gain_at_border(ORDER_IN, upper, lower) +
               gain_at_border(ORDER_OUT, upper, lower);
    }

    [[nodiscard]] Crossings gain_at_border(Order side, Vertex upper, Vertex lower) {
        upper_.clear();
        lower_.clear();
        pulls_.ForEach(side, upper, [&](double height) { upper_.push_back(height); });
        pulls_.ForEach(side, lower, [&](double height) { lower_.push_back(height); });
        return inversions(upper_, lower_) - inversions(lower_, upper_);
    }

    [[nodiscard]] Crossings gain_on(Order side, Vertex upper, Vertex lower) {
        const LayoutRun::Links above = run_.links(side, upper);
        const LayoutRun::Links below = run_.links(side, lower);
        if (above.empty() || below.empty()) return 0;
        if (above.last - above.first == 1 && below.last - below.first == 1) {
            const double a = at(run_.y, above.first->node);
            const double b = at(run_.y, below.first->node);
            return (b < a ? 1 : 0) - (a < b ? 1 : 0);
        }
        take_places(above, upper_);
        take_places(below, lower_);
        return inversions(upper_, lower_) - inversions(lower_, upper_);
    }

    void take_places(const LayoutRun::Links& links, std::vector<double>& places) const {
        places.clear();
        for (const auto& link : links) places.push_back(at(run_.y, link.node));
        if (places.size() > 1) std::sort(places.begin(), places.end());
    }

    // The pairs of which the first lies below the second.
    static Crossings inversions(const std::vector<double>& first,
                                const std::vector<double>& second) {
        Crossings sum = 0;
        std::size_t below = 0;
        for (const double place : first) {
            while (below < second.size() && second[below] < place) ++below;
            sum += static_cast<Crossings>(below);
        }
        return sum;
    }

    StableRun& run_;
    const BorderPulls& pulls_;
    std::vector<double> upper_;
    std::vector<double> lower_;
};

void number_levels(StableRun& run) {
    const int n = static_cast<int>(run.levels.size());
    for (int k = 1; k <= n - 2; ++k) {
        const auto& level = run.level_at(k);
        for (std::size_t i = 0; i < level.size(); ++i) at(run.y, level[i]) = static_cast<double>(i);
    }
}

}  // namespace

void reduce_crossings(StableRun& run) {
    const int n = static_cast<int>(run.levels.size());
    if (run.options().sweeps <= 3 || n < 3) return;
    constexpr int kPatience = 2;
    const BorderPulls pulls(run);
    BorderSorter border(run, pulls);
    CrossingCounter counter(run, pulls);
    NeighbourSwapper swapper(run, pulls);
    LevelTable best = run.levels;
    Crossings fewest = counter.Count();
    const int sweeps = run.options().sweeps - 3;
    for (int i = 0, fruitless = 0; i < sweeps && fruitless < kPatience && fewest > 0; ++i) {
        const bool leftwards = i % 2 == 0;
        if (!pulls.IsEmpty()) {
            leftwards ? border.Sort(run.level_at(n - 2), ORDER_OUT)
                      : border.Sort(run.level_at(1), ORDER_IN);
        }
        leftwards ? backward_barycentric_adjust(run) : forward_barycentric_adjust(run);
        swapper.Run();
        const Crossings crossings = counter.Count();
        ++fruitless;
        if (crossings >= fewest) continue;
        fewest = crossings;
        best = run.levels;
        fruitless = 0;
    }
    run.levels = std::move(best);
    number_levels(run);
    for (int i = 0; i < 1 && swapper.Run(); ++i) {
    }
}

}  // namespace nodeline::internal

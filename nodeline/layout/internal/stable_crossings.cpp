// How the stable layout goes on from the order that three sweeps have found.
#include <nodeline/layout/internal/stable_steps.h>
#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace nodeline::internal {

namespace {

using Crossings = std::int64_t;

// Counts crossings between neighbouring levels. The y of a vertex is its place in its level.
class CrossingCounter {
public:
    explicit CrossingCounter(const StableRun& run) : run_(run) {}

    [[nodiscard]] Crossings Count() {
        Crossings sum = 0;
        const int n = static_cast<int>(run_.levels.size());
        for (int k = 1; k <= n - 3; ++k) sum += count_between(at(run_.levels, k), k + 1);
        return sum;
    }

private:
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
    std::vector<Crossings> sums_;
    std::vector<std::size_t> places_;
};

// Swaps neighbours of a level where that takes crossings away.
class NeighbourSwapper {
public:
    explicit NeighbourSwapper(StableRun& run) : run_(run) {}

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
        return gain_on(ORDER_IN, upper, lower) + gain_on(ORDER_OUT, upper, lower);
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
    if (run.options().sweeps <= 3 || run.levels.size() < 4) return;
    constexpr int kPatience = 2;
    CrossingCounter counter(run);
    NeighbourSwapper swapper(run);
    LevelTable best = run.levels;
    Crossings fewest = counter.Count();
    const int sweeps = run.options().sweeps - 3;
    for (int i = 0, fruitless = 0; i < sweeps && fruitless < kPatience && fewest > 0; ++i) {
        i % 2 == 0 ? backward_barycentric_adjust(run) : forward_barycentric_adjust(run);
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
    for (int i = 0; i < 2 && swapper.Run(); ++i) {
    }
}

}  // namespace nodeline::internal

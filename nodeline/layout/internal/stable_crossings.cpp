// How the stable layout finds the order of its levels.
#include <nodeline/layout/internal/stable_order.h>
#include <nodeline/layout/internal/stable_steps.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace nodeline::internal {

namespace {

using Crossings = std::int64_t;
using Item = LevelOrder::Item;

// Orders levels by the mean place of the neighbours on one side. What has none there competes with
// its own place, and equal means keep their order.
class MeanSorter {
public:
    explicit MeanSorter(LevelOrder& order) : order_(order) {}

    void SweepRightwards(bool with_pulls) {
        for (int k = 1; k <= order_.last(); ++k) sort(k, ORDER_IN, with_pulls);
    }
    void SweepLeftwards(bool with_pulls) {
        for (int k = order_.last(); k >= 1; --k) sort(k, ORDER_OUT, with_pulls);
    }

private:
    struct Key {
        double mean;
        Item item;
    };

    void sort(int k, Order side, bool with_pulls) {
        // Nothing else lies beyond the levels at the ends.
        const bool is_pulled = order_.is_pulled(k, side);
        if (k == (side == ORDER_IN ? 1 : order_.last()) && !(with_pulls && is_pulled)) return;
        const auto level = order_.level(k);
        keys_.clear();
        bool sorted = true;
        for (const Item item : level) {
            const double mean =
                is_pulled ? mean_pull(item, side, level.size()) : mean_of(item, side);
            sorted = sorted && (keys_.empty() || keys_.back().mean <= mean);
            keys_.push_back({mean, item});
        }
        if (!sorted) {
            sort_keys();
            for (std::size_t i = 0; i < level.size(); ++i) level[i] = sorted_[i].item;
        }
        order_.Number(k);
    }

    [[nodiscard]] double mean_of(Item item, Order side) const {
        const auto links = order_.links(side, item);
        if (links.empty()) return order_.place(item);
        if (links.size() == 1) return order_.place(links[0]);
        std::int64_t sum = 0;
        for (const Item far : links) sum += order_.place(far);
        return static_cast<double>(sum) / static_cast<double>(links.size());
    }

    [[nodiscard]] double mean_pull(Item item, Order side, std::size_t size) const {
        const auto pulls = order_.pulls(side, item);
        if (pulls.empty()) return order_.place(item);
        double sum = 0.0;
        for (const auto& pull : pulls) sum += pull.height * static_cast<double>(size);
        return sum / static_cast<double>(pulls.size());
    }

    // Keys are places or means of places, so their whole parts are small numbers, and few keys
    // share one. By these they are sorted in one go.
    void sort_keys() {
        const auto whole = [](const Key& key) { return static_cast<std::size_t>(key.mean); };
        std::size_t highest = 0;
        for (const Key& key : keys_) highest = std::max(highest, whole(key));
        ends_.assign(highest + 2, 0);
        for (const Key& key : keys_) ++ends_[whole(key) + 1];
        for (std::size_t i = 1; i < ends_.size(); ++i) ends_[i] += ends_[i - 1];
        sorted_.resize(keys_.size());
        for (const Key& key : keys_) sorted_[ends_[whole(key)]++] = key;
        std::size_t first = 0;
        for (std::size_t i = 0; i <= highest; ++i) {
            sort_few(sorted_.data() + first, sorted_.data() + ends_[i]);
            first = ends_[i];
        }
    }

    static void sort_few(Key* first, Key* last) {
        const auto before = [](const Key& a, const Key& b) { return a.mean < b.mean; };
        constexpr std::ptrdiff_t kFew = 16;
        if (last - first > kFew) {
            if (!std::is_sorted(first, last, before)) std::stable_sort(first, last, before);
            return;
        }
        for (Key* next = first; next != last; ++next) {
            const Key key = *next;
            Key* place = next;
            for (; place != first && before(key, place[-1]); --place) *place = place[-1];
            *place = key;
        }
    }

    LevelOrder& order_;
    std::vector<Key> keys_;
    std::vector<Key> sorted_;
    std::vector<std::size_t> ends_;
};

// Counts crossings between neighbouring levels, and with what pulls at the borders.
class CrossingCounter {
public:
    explicit CrossingCounter(LevelOrder& order) : order_(order) {}

    // Ends at any number from `enough` on.
    [[nodiscard]] Crossings Count(Crossings enough) {
        Crossings sum = 0;
        const int last = order_.last();
        for (int k = 1; k < last && sum < enough; ++k) sum += count_between(k);
        if (order_.is_pulled(1, ORDER_IN)) sum += count_at_border(1, ORDER_IN);
        if (order_.is_pulled(last, ORDER_OUT)) sum += count_at_border(last, ORDER_OUT);
        return sum;
    }

private:
    // The pairs of edges across a border that come to lie the other way round on the level.
    [[nodiscard]] Crossings count_at_border(int k, Order side) {
        sums_.assign(order_.pull_count(side) + 1, 0);
        Crossings crossings = 0;
        std::int32_t seen = 0;
        for (const Item item : order_.level(k)) {
            for (const auto& pull : order_.pulls(side, item)) {
                const auto rank = static_cast<std::size_t>(pull.rank);
                crossings += seen++ - sum_up_to(rank);
                add(rank);
            }
        }
        return crossings;
    }

    // Inversions, by a tree of sums over the places of the level behind.
    [[nodiscard]] Crossings count_between(int k) {
        sums_.assign(order_.level(k + 1).size() + 1, 0);
        Crossings crossings = 0;
        std::int32_t seen = 0;
        int lowest = -1;
        for (const Item item : order_.level(k)) {
            const auto links = order_.links_in_order(ORDER_OUT, item);
            if (links.empty()) continue;
            for (const Item far : links) {
                const int place = order_.place(far);
                if (place >= lowest) break;  // it leads below all that was seen
                crossings += seen - sum_up_to(static_cast<std::size_t>(place));
            }
            for (const Item far : links) add(static_cast<std::size_t>(order_.place(far)));
            seen += static_cast<std::int32_t>(links.size());
            lowest = std::max(lowest, order_.place(links[links.size() - 1]));
        }
        return crossings;
    }

    [[nodiscard]] std::int32_t sum_up_to(std::size_t place) const {
        std::int32_t sum = 0;
        for (std::size_t i = place + 1; i > 0; i &= i - 1) sum += sums_[i];
        return sum;
    }
    void add(std::size_t place) {
        for (std::size_t i = place + 1; i < sums_.size(); i += i & (~i + 1)) ++sums_[i];
    }

    LevelOrder& order_;
    std::vector<std::int32_t> sums_;
};

// Swaps neighbours of a level where that takes crossings away.
class NeighbourSwapper {
public:
    explicit NeighbourSwapper(LevelOrder& order) : order_(order) {}

    // One pass over all levels.
    void Run() {
        for (int k = 1; k <= order_.last(); ++k) pass(k);
    }

private:
    // Where the edges of an item end on either side, in `ends_` from the top down: the places of
    // its neighbours, or the ranks of what pulls at it. There is never both.
    struct Reach {
        std::size_t first[2];
        std::size_t last[2];
    };

    void pass(int k) {
        const auto level = order_.level(k);
        find_ends(k);
        for (std::size_t i = 0; i + 1 < level.size(); ++i) {
            if (gain(reaches_[i], reaches_[i + 1]) <= 0) continue;
            std::swap(level[i], level[i + 1]);
            std::swap(reaches_[i], reaches_[i + 1]);
            order_.SetPlace(level[i], i);
            order_.SetPlace(level[i + 1], i + 1);
        }
    }

    void find_ends(int k) {
        ends_.clear();
        reaches_.clear();
        for (const Item item : order_.level(k)) {
            Reach& reach = reaches_.emplace_back();
            for (const Order side : {ORDER_IN, ORDER_OUT}) {
                reach.first[side] = ends_.size();
                if (order_.is_pulled(k, side)) {
                    for (const auto& pull : order_.pulls(side, item)) ends_.push_back(pull.rank);
                } else {
                    for (const Item far : order_.links_in_order(side, item)) {
                        ends_.push_back(order_.place(far));
                    }
                }
                reach.last[side] = ends_.size();
            }
        }
    }

    // The crossings between the edges of two neighbours, less those after a swap. Edges that do not
    // cross gain nothing, and most do not.
    [[nodiscard]] Crossings gain(const Reach& upper, const Reach& lower) const {
        if (!may_cross(ORDER_IN, upper, lower) && !may_cross(ORDER_OUT, upper, lower)) return 0;
        return gain_on(ORDER_IN, upper, lower) + gain_on(ORDER_OUT, upper, lower);
    }

    [[nodiscard]] bool may_cross(Order side, const Reach& upper, const Reach& lower) const {
        return upper.first[side] != upper.last[side] && lower.first[side] != lower.last[side] &&
               ends_[upper.last[side] - 1] > ends_[lower.first[side]];
    }

    [[nodiscard]] Crossings gain_on(Order side, const Reach& upper, const Reach& lower) const {
        const std::size_t last = lower.last[side];
        std::size_t less = lower.first[side];      // the ends above that of an edge come before it,
        std::size_t not_more = lower.first[side];  // and those at its height before this one
        Crossings sum = 0;
        for (std::size_t i = upper.first[side]; i < upper.last[side]; ++i) {
            while (less < last && ends_[less] < ends_[i]) ++less;
            while (not_more < last && ends_[not_more] <= ends_[i]) ++not_more;
            sum += static_cast<Crossings>(less - lower.first[side]);
            sum -= static_cast<Crossings>(last - not_more);
        }
        return sum;
    }

    LevelOrder& order_;
    std::vector<Reach> reaches_;  // by place in the level
    std::vector<std::int32_t> ends_;
};

// Sweeps on while that helps, and keeps the order with the fewest crossings.
void reduce_crossings(LevelOrder& order, MeanSorter& sorter, int sweeps) {
    constexpr int kPatience = 2;
    CrossingCounter counter(order);
    NeighbourSwapper swapper(order);
    std::vector<Item> best = order.items();
    Crossings fewest = counter.Count(std::numeric_limits<Crossings>::max());
    for (int i = 0, fruitless = 0; i < sweeps && fruitless < kPatience && fewest > 0; ++i) {
        i % 2 == 0 ? sorter.SweepLeftwards(true) : sorter.SweepRightwards(true);
        swapper.Run();
        const Crossings crossings = counter.Count(fewest);
        ++fruitless;
        if (crossings >= fewest) continue;
        fewest = crossings;
        best = order.items();
        fruitless = 0;
    }
    order.SetItems(std::move(best));
    if (fewest > 0) swapper.Run();
}

void find_order(const StableRun& run, LevelOrder& order) {
    order.Connect(run);
    MeanSorter sorter(order);
    sorter.SweepRightwards(false);
    sorter.SweepLeftwards(false);
    sorter.SweepRightwards(false);
    const int sweeps = run.options().sweeps - 3;
    if (sweeps > 0 && order.last() > 0) reduce_crossings(order, sorter, sweeps);
}

}  // namespace

void order_levels_ahead(StableRun& run) {
    LevelOrder order(run);
    find_order(run, order);
    order.WriteTo(run);
    run.memory().order = order.items();
}

void order_levels(StableRun& run) {
    LevelOrder order(run);
    std::vector<Item> known = std::exchange(run.memory().order, {});
    if (!known.empty() && order.Fits(known)) {
        order.SetItems(std::move(known));
    } else {
        find_order(run, order);
    }
    order.WriteTo(run);
}

}  // namespace nodeline::internal

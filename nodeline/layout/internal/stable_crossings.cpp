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
        double sum = 0.0;
        int count = 0;
        order_.ForEachPull(side, item, [&](double height) {
            sum += height * static_cast<double>(size);
            ++count;
        });
        return count > 0 ? sum / count : order_.place(item);
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
        heights_.clear();
        for (const Item item : order_.level(k)) {
            order_.ForEachPull(side, item, [&](double height) { heights_.push_back(height); });
        }
        ranks_ = heights_;
        std::sort(ranks_.begin(), ranks_.end());
        sums_.assign(ranks_.size() + 1, 0);
        Crossings crossings = 0;
        std::int32_t seen = 0;
        for (const double height : heights_) {
            const auto rank = static_cast<std::size_t>(
                std::lower_bound(ranks_.begin(), ranks_.end(), height) - ranks_.begin());
            crossings += seen++ - sum_up_to(rank);
            add(rank);
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
    std::vector<double> heights_;
    std::vector<double> ranks_;
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
    // How far the neighbours of an item on either side reach along their levels. One that has none
    // is in nobody's way.
    struct Reach {
        int top[2] = {std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
        int bottom[2] = {-1, -1};

        [[nodiscard]] bool Meets(const Reach& below) const {
            return bottom[0] > below.top[0] || bottom[1] > below.top[1];
        }
    };

    void pass(int k) {
        const auto level = order_.level(k);
        const bool is_pulled = order_.is_pulled(k, ORDER_IN) || order_.is_pulled(k, ORDER_OUT);
        reaches_.clear();
        for (const Item item : level) reaches_.push_back(reach_of(item));
        for (std::size_t i = 0; i + 1 < level.size(); ++i) {
            // Edges that do not cross gain nothing.
            if (!is_pulled && !reaches_[i].Meets(reaches_[i + 1])) continue;
            if (gain(k, level[i], level[i + 1]) <= 0) continue;
            std::swap(level[i], level[i + 1]);
            std::swap(reaches_[i], reaches_[i + 1]);
            order_.SetPlace(level[i], i);
            order_.SetPlace(level[i + 1], i + 1);
        }
    }

    [[nodiscard]] Reach reach_of(Item item) {
        Reach reach;
        for (const Order side : {ORDER_IN, ORDER_OUT}) {
            for (const Item far : order_.links(side, item)) {
                const int place = order_.place(far);
                reach.top[side] = std::min(reach.top[side], place);
                reach.bottom[side] = std::max(reach.bottom[side], place);
            }
        }
        return reach;
    }

    // The crossings between the edges of two neighbours, less those after a swap.
    [[nodiscard]] Crossings gain(int k, Item upper, Item lower) {
        Crossings sum = 0;
        for (const Order side : {ORDER_IN, ORDER_OUT}) {
            take_places(side, upper, upper_);
            take_places(side, lower, lower_);
            sum += inversions(upper_, lower_) - inversions(lower_, upper_);
            if (!order_.is_pulled(k, side)) continue;
            take_pulls(side, upper, upper_);
            take_pulls(side, lower, lower_);
            sum += inversions(upper_, lower_) - inversions(lower_, upper_);
        }
        return sum;
    }

    void take_places(Order side, Item item, std::vector<double>& places) {
        places.clear();
        for (const Item far : order_.links_in_order(side, item)) {
            places.push_back(order_.place(far));
        }
    }

    void take_pulls(Order side, Item item, std::vector<double>& heights) const {
        heights.clear();
        order_.ForEachPull(side, item, [&](double height) { heights.push_back(height); });
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

    LevelOrder& order_;
    std::vector<Reach> reaches_;  // by place in the level
    std::vector<double> upper_;
    std::vector<double> lower_;
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

}  // namespace

void order_levels(StableRun& run) {
    LevelOrder order(run);
    MeanSorter sorter(order);
    sorter.SweepRightwards(false);
    sorter.SweepLeftwards(false);
    sorter.SweepRightwards(false);
    const int sweeps = run.options().sweeps - 3;
    if (sweeps > 0 && order.last() > 0) reduce_crossings(order, sorter, sweeps);
    order.WriteTo(run);
}

}  // namespace nodeline::internal

// The order of the levels, packed for the many passes that look for a better one.
#pragma once

#include <nodeline/layout/internal/stable_run.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace nodeline::internal {

// Holds the inner levels of a run, from 1 to `last()`, the links between neighbouring ones, and
// what pulls at the borders. Nothing of the run changes until the order is written back.
class LevelOrder {
public:
    // A vertex, by its place in the whole table at the start.
    using Item = std::int32_t;

    template <class T>
    struct Range {
        T* first;
        T* last;
        [[nodiscard]] T* begin() const { return first; }
        [[nodiscard]] T* end() const { return last; }
        [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(last - first); }
        [[nodiscard]] bool empty() const { return first == last; }
        T& operator[](std::size_t i) const { return first[i]; }
    };

    explicit LevelOrder(const StableRun& run);
    // Gives the run the order, and each vertex its place as its y.
    void WriteTo(StableRun& run) const;

    // 0 if there are no inner levels.
    [[nodiscard]] int last() const { return static_cast<int>(starts_.size()) - 2; }
    // What stands on a level, from the top down.
    [[nodiscard]] Range<Item> level(int k) {
        return {items_.data() + at(starts_, k), items_.data() + at(starts_, k + 1)};
    }
    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    // Takes an order that `items` gave.
    void SetItems(std::vector<Item> items);

    // The place of an item on its level. At first all but those of the first level are 0.
    [[nodiscard]] int place(Item item) const { return at(places_, item); }
    void SetPlace(Item item, std::size_t place) { at(places_, item) = static_cast<int>(place); }
    // Brings the places of a level up to date.
    void Number(int k);
    // The neighbours of an item on the level before it or behind it.
    [[nodiscard]] Range<Item> links(Order side, Item item) {
        const std::vector<std::int32_t>& starts = link_starts_[side];
        Item* const base = links_[side].data();
        return {base + at(starts, item), base + at(starts, item + 1)};
    }
    // The same, from the top down.
    [[nodiscard]] Range<Item> links_in_order(Order side, Item item);

    // Whether anything pulls at the edges of a level that cross the border on one side: what is
    // next to the border on the left comes in there, what is next to it on the right goes out.
    [[nodiscard]] bool is_pulled(int k, Order side) const {
        return !pulls_[side].empty() && k == (side == ORDER_IN ? 1 : last());
    }
    // Calls `f(height)` for the edges of an item across a border, from the top down.
    template <class F>
    void ForEachPull(Order side, Item item, F f) const {
        const auto& pulls = pulls_[side];
        auto it = std::lower_bound(pulls.begin(), pulls.end(), std::pair(item, -1.0));
        for (; it != pulls.end() && it->first == item; ++it) f(it->second);
    }

private:
    void collect_links(const StableRun& run, const std::vector<Item>& item_of);
    void collect_pulls(const StableRun& run, const std::vector<Item>& item_of);

    // Where a level begins among the items, by level; and the end of the last one.
    std::vector<std::int32_t> starts_;
    std::vector<Item> items_;
    std::vector<Vertex> vertices_;      // by item
    std::vector<std::int32_t> places_;  // by item
    std::vector<std::int32_t> link_starts_[2];
    std::vector<Item> links_[2];
    std::vector<std::pair<Item, double>> pulls_[2];
};

}  // namespace nodeline::internal

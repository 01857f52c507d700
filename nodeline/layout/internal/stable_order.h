// The order of the levels, packed for the many passes that look for a better one.
#pragma once

#include <nodeline/layout/internal/stable_run.h>

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
    // Makes links and pulls readable.
    void Connect(const StableRun& run);
    // Gives the run the order, and each vertex its place as its y.
    void WriteTo(StableRun& run) const;

    // 0 if there are no inner levels.
    [[nodiscard]] int last() const { return static_cast<int>(starts_.size()) - 2; }
    // What stands on a level, from the top down.
    [[nodiscard]] Range<Item> level(int k) {
        return {items_.data() + at(starts_, k), items_.data() + at(starts_, k + 1)};
    }
    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    // Takes an order that `items` gave, and numbers the places anew.
    void SetItems(std::vector<Item> items);
    // Whether this can be such an order.
    [[nodiscard]] bool Fits(const std::vector<Item>& items) const;

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

    // What pulls at an edge that crosses the border: what is next to the border on the left comes
    // in on the first level, what is next to it on the right goes out on the last one.
    struct Pull {
        double height;
        std::int32_t rank;  // among the heights of that side
    };
    [[nodiscard]] bool is_pulled(int k, Order side) const {
        return !pulls_[side].empty() && k == border_level(side);
    }
    // Those of an item on a level that is pulled, from the top down.
    [[nodiscard]] Range<const Pull> pulls(Order side, Item item) const {
        const std::vector<std::int32_t>& starts = pull_starts_[side];
        const Item first = at(starts_, border_level(side));
        const Pull* const base = pulls_[side].data();
        return {base + at(starts, item - first), base + at(starts, item - first + 1)};
    }
    [[nodiscard]] std::size_t pull_count(Order side) const { return pulls_[side].size(); }

private:
    [[nodiscard]] int border_level(Order side) const { return side == ORDER_IN ? 1 : last(); }
    void collect_links(const StableRun& run, const std::vector<Item>& item_of);
    void collect_pulls(const StableRun& run, const std::vector<Item>& item_of);
    void rank_pulls(Order side, std::vector<std::pair<Item, double>>& found);

    // Where a level begins among the items, by level; and the end of the last one.
    std::vector<std::int32_t> starts_;
    std::vector<Item> items_;
    std::vector<Vertex> vertices_;      // by item
    std::vector<std::int32_t> places_;  // by item
    std::vector<std::int32_t> link_starts_[2];
    std::vector<Item> links_[2];
    std::vector<std::int32_t> pull_starts_[2];  // by item of the level at that border
    std::vector<Pull> pulls_[2];
};

}  // namespace nodeline::internal

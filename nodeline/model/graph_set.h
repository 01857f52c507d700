// Indexable, counted collections: the interface `IGraphSet` and the bag `GraphSet` behind it.
#pragma once

#include <nodeline/model/graph_ptr.h>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>
#include <vector>

namespace nodeline {

// A sequence of items that are read by index. Items are handed out by value.
template <class T>
class IGraphSet : public Countable {
public:
    // A place in a set. It does not keep the set alive. Two iterators are equal if they stand at
    // the same index of the same set; `End()` is the end at the moment of the call.
    class Iterator {
    public:
        // Item `index` of `set`, which is not null and outlives the iterator.
        Iterator(int index, const IGraphSet* set) : index_(index), set_(set) {}

        // By set and index.
        bool operator==(const Iterator& other) const {
            return set_ == other.set_ && index_ == other.index_;
        }
        bool operator!=(const Iterator& other) const { return !(*this == other); }
        // Goes on to the next item, and may go beyond the end.
        Iterator operator++(int) {
            Iterator old = *this;
            ++index_;
            return old;
        }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        // Fetches the item anew at each use.
        T operator*() const { return set_->GetItem(index_); }

        // Keeps the fetched item alive for the length of the member access.
        class Arrow {
        public:
            // Holds `item`, and points at it.
            explicit Arrow(T item) : item_(std::move(item)) {}
            T* operator->() { return &item_; }

        private:
            T item_;
        };
        // Fetches anew, like `operator*`.
        Arrow operator->() const { return Arrow(set_->GetItem(index_)); }

        // Counted from 0.
        [[nodiscard]] int index() const { return index_; }

    private:
        int index_;
        const IGraphSet* set_;
    };

    // The number of items.
    [[nodiscard]] virtual int GetCount() const = 0;
    // Item `index`, counted from 0. An index out of range gives an empty item.
    [[nodiscard]] virtual T GetItem(int index) const = 0;

    // The places of the first item and behind the last one.
    [[nodiscard]] Iterator Begin() const { return Iterator(0, this); }
    [[nodiscard]] Iterator End() const { return Iterator(GetCount(), this); }

    // For range-based loops.
    [[nodiscard]] Iterator begin() const { return Begin(); }
    [[nodiscard]] Iterator end() const { return End(); }
};

// A bag in the order of insertion until the first `Find`, which sorts it in place; what is added
// later stands unsorted at the end until the next `Find`.
template <class T>
class GraphSet : public IGraphSet<T> {
public:
    // The iterator of the interface.
    using Iterator = typename IGraphSet<T>::Iterator;

    [[nodiscard]] int GetCount() const override { return static_cast<int>(items_.size() - head_); }

    [[nodiscard]] T GetItem(int index) const override {
        const bool inside = index >= 0 && index < GetCount();
        assert(inside && "index out of range");
        return inside ? (*this)[index] : T();
    }

    // Item `index` without a copy; the index must be in range.
    [[nodiscard]] const T& operator[](int index) const {
        return items_[head_ + static_cast<std::size_t>(index)];
    }

    // Appends an item; duplicates are not looked for. Amortised constant time.
    Iterator Add(const T& item) {
        items_.push_back(item);
        sorted_ = false;
        return Iterator(GetCount() - 1, this);
    }

    // Sorts the items if anything was added since the last call, and gives the place of the first
    // item that is not less than `item`. It tests no equality: an absent item gives the place where
    // it would stand.
    Iterator Find(const T& item) {
        Sort();
        const auto place = std::lower_bound(first(), items_.end(), item);
        return Iterator(static_cast<int>(place - first()), this);
    }

    // Takes out the item at which `Find` points, or the last item if it points at the end. The
    // order of the others stays. Taking out the first item costs constant time.
    void Remove(const T& item) {
        int index = Find(item).index();
        if (GetCount() == 0) return;
        if (index == GetCount()) --index;
        RemoveAt(index);
    }

    // Takes out the item at `index`, which must be in range.
    void RemoveAt(int index) {
        if (index == 0) {
            items_[head_] = T();
            if (2 * ++head_ >= items_.size()) drop_taken();
            return;
        }
        items_.erase(first() + index);
    }

    // Sorts the items by their order unless they are sorted already.
    void Sort() {
        if (sorted_) return;
        std::sort(first(), items_.end());
        sorted_ = true;
    }

    // Sorts, and keeps only the first item of each run of equal ones. A set of fewer than two items
    // is left alone.
    void SortUnique() {
        if (GetCount() < 2) return;
        Sort();
        items_.erase(std::unique(first(), items_.end()), items_.end());
    }

    // Empties the array. The sorted flag stays as it is.
    void Clear() {
        items_.clear();
        head_ = 0;
    }

    // Whether nothing was added since the items were last sorted; false for a new set.
    [[nodiscard]] bool IsSorted() const { return sorted_; }
    // Makes room for `count` items in all; `count` is not negative.
    void Reserve(int count) { items_.reserve(head_ + static_cast<std::size_t>(count)); }

private:
    auto first() { return items_.begin() + static_cast<std::ptrdiff_t>(head_); }

    // Closes the gap at the front. It is as long as what moves, so each item that was taken out
    // pays for one move.
    void drop_taken() {
        items_.erase(items_.begin(), first());
        head_ = 0;
    }

    // The items from `head_` on; those before it were taken out at the front.
    std::vector<T> items_;
    std::size_t head_ = 0;
    bool sorted_ = false;
};

}  // namespace nodeline

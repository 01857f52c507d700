// Finds the dense index of an id, by an array where the ids lie close together.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

namespace nodeline::internal {

// Prepared for a known range and number of ids, then filled and asked. Ids that come from one graph
// are mostly consecutive; where they are not, a hash table takes the place of the array.
class IdMap {
public:
    static constexpr std::int32_t kNone = -1;

    // Empties the map, and makes room for up to `count` ids from `lowest` to `highest`.
    void Reset(int lowest, int highest, std::size_t count) {
        sparse_.clear();
        lowest_ = lowest;
        const auto range =
            static_cast<std::size_t>(std::max<std::int64_t>(0, std::int64_t{highest} - lowest + 1));
        is_dense_ = range <= 8 * count + 1024;
        if (is_dense_) {
            dense_.assign(range, kNone);
        } else {
            dense_.clear();
            sparse_.reserve(count);
        }
    }

    // The index of `id`, or `kNone`.
    [[nodiscard]] std::int32_t Find(int id) const {
        if (is_dense_) {
            const std::int64_t place = std::int64_t{id} - lowest_;
            if (place < 0 || place >= static_cast<std::int64_t>(dense_.size())) return kNone;
            return dense_[static_cast<std::size_t>(place)];
        }
        const auto found = sparse_.find(id);
        return found == sparse_.end() ? kNone : found->second;
    }

    // Enters an id of the range that `Reset` was given.
    void Set(int id, std::int32_t index) {
        if (is_dense_) {
            dense_[static_cast<std::size_t>(std::int64_t{id} - lowest_)] = index;
        } else {
            sparse_[id] = index;
        }
    }

private:
    bool is_dense_ = true;
    int lowest_ = 0;
    std::vector<std::int32_t> dense_;
    std::unordered_map<int, std::int32_t> sparse_;
};

// Fills a map with the places of entries by their ids.
template <class Entry>
void number_by_id(const std::vector<Entry>& entries, IdMap& map) {
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::min();
    for (const Entry& entry : entries) {
        lowest = std::min(lowest, entry.id);
        highest = std::max(highest, entry.id);
    }
    map.Reset(lowest, highest, entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        map.Set(entries[i].id, static_cast<std::int32_t>(i));
    }
}

}  // namespace nodeline::internal

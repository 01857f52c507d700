// What a `GraphSet` stands for, spelled out over a vector of ids.
#pragma once

#include <algorithm>
#include <vector>

namespace nodeline::test {

struct PlainSet {
    std::vector<int> ids;
    bool sorted = false;

    void Add(int id) {
        ids.push_back(id);
        sorted = false;
    }

    // The place of the first id that is not less.
    int Find(int id) {
        Sort();
        return static_cast<int>(std::lower_bound(ids.begin(), ids.end(), id) - ids.begin());
    }

    // Takes out what stands at the place, or the last.
    void Remove(int id) {
        int place = Find(id);
        if (ids.empty()) return;
        if (place == static_cast<int>(ids.size())) --place;
        ids.erase(ids.begin() + place);
    }

    void SortUnique() {
        if (ids.size() < 2) return;
        Sort();
        ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    }

    void Sort() {
        if (!sorted) std::sort(ids.begin(), ids.end());
        sorted = true;
    }
};

}  // namespace nodeline::test

// How what lies outside of an owner pulls at the edges across its border.
#pragma once

#include <nodeline/layout/internal/layout_records.h>

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace nodeline::internal {

// For the edges that cross the border of an owner: how high they come from on the left, or go to on
// the right, among all that stands next to the owner there; 0 is the top, and 1 the bottom.
class Anchors {
public:
    void Set(int owner_id, int edge_id, Order side, double height) {
        heights_[side][key(owner_id, edge_id)] = height;
    }
    [[nodiscard]] std::optional<double> Find(int owner_id, int edge_id, Order side) const {
        const auto found = heights_[side].find(key(owner_id, edge_id));
        if (found == heights_[side].end()) return std::nullopt;
        return found->second;
    }
    [[nodiscard]] bool IsEmpty() const { return heights_[0].empty() && heights_[1].empty(); }
    void Clear() {
        for (auto& heights : heights_) heights.clear();
    }

private:
    static std::uint64_t key(int owner_id, int edge_id) {
        return (std::uint64_t{static_cast<std::uint32_t>(owner_id)} << 32) |
               static_cast<std::uint32_t>(edge_id);
    }

    std::unordered_map<std::uint64_t, double> heights_[2];
};

}  // namespace nodeline::internal

#include <nodeline/model/internal/hit_index.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace nodeline::internal {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool is_apart(const HitBox& box, double x1, double y1, double x2, double y2) {
    return x1 > box.right || box.left > x2 || y1 > box.bottom || box.top > y2;
}

// A bound that is no number sets nothing apart, so it counts as infinite.
void widen_nan(HitBox& box) {
    if (std::isnan(box.left)) box.left = -kInfinity;
    if (std::isnan(box.top)) box.top = -kInfinity;
    if (std::isnan(box.right)) box.right = kInfinity;
    if (std::isnan(box.bottom)) box.bottom = kInfinity;
}

// Centres only steer the packing; halves keep them finite.
double centre_x(const HitBox& box) { return 0.5 * box.left + 0.5 * box.right; }
double centre_y(const HitBox& box) { return 0.5 * box.top + 0.5 * box.bottom; }

// A total order also where a centre is no number.
bool is_less(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return !std::isnan(a) && std::isnan(b);
    return a < b;
}

}  // namespace

void HitIndex::Clear() { levels_.clear(); }

void HitIndex::Build(std::vector<HitBox> boxes) {
    levels_.clear();
    if (boxes.empty()) return;
    for (auto& box : boxes) widen_nan(box);
    std::sort(boxes.begin(), boxes.end(),
              [](const HitBox& a, const HitBox& b) { return is_less(centre_x(a), centre_x(b)); });
    const std::size_t leaves = (boxes.size() + kFanOut - 1) / kFanOut;
    const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(double(leaves))));
    const std::size_t column = (leaves + columns - 1) / columns * kFanOut;
    for (std::size_t begin = 0; begin < boxes.size(); begin += column) {
        const std::size_t end = std::min(boxes.size(), begin + column);
        std::sort(
            boxes.begin() + static_cast<std::ptrdiff_t>(begin),
            boxes.begin() + static_cast<std::ptrdiff_t>(end),
            [](const HitBox& a, const HitBox& b) { return is_less(centre_y(a), centre_y(b)); });
    }
    levels_.push_back(std::move(boxes));
    while (levels_.back().size() > kFanOut) {
        const auto& below = levels_.back();
        std::vector<HitBox> level;
        level.reserve(below.size() / kFanOut + 1);
        for (std::size_t begin = 0; begin < below.size(); begin += kFanOut) {
            HitBox cover = below[begin];
            cover.item = static_cast<std::int32_t>(begin);
            for (std::size_t i = begin; i < std::min(below.size(), begin + kFanOut); ++i) {
                cover.left = std::min(cover.left, below[i].left);
                cover.top = std::min(cover.top, below[i].top);
                cover.right = std::max(cover.right, below[i].right);
                cover.bottom = std::max(cover.bottom, below[i].bottom);
            }
            level.push_back(cover);
        }
        levels_.push_back(std::move(level));
    }
}

void HitIndex::Query(double x1, double y1, double x2, double y2,
                     std::vector<std::int32_t>& items) const {
    if (levels_.empty()) return;
    // Pairs of a level and the place of its first box to look at, up to a multiple of the fan-out.
    std::vector<std::pair<std::size_t, std::size_t>> open{{levels_.size() - 1, 0}};
    while (!open.empty()) {
        const auto [depth, begin] = open.back();
        open.pop_back();
        const auto& level = levels_[depth];
        for (std::size_t i = begin; i < std::min(level.size(), begin + kFanOut); ++i) {
            if (is_apart(level[i], x1, y1, x2, y2)) continue;
            if (depth == 0) {
                items.push_back(level[i].item);
            } else {
                open.push_back({depth - 1, static_cast<std::size_t>(level[i].item)});
            }
        }
    }
}

}  // namespace nodeline::internal

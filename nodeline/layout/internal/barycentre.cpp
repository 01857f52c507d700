#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <utility>

namespace nodeline::internal {

namespace {

// During ordering the y of a vertex is its place in its level.
void enumerate_level_by_y_coord(LayoutRun& run, const std::vector<Vertex>& level) {
    for (std::size_t i = 0; i < level.size(); ++i) at(run.y, level[i]) = static_cast<double>(i);
}

// Orders a level by the mean place of the neighbours on one side. A vertex without neighbours there
// competes with its own place, and equal means keep their order.
class LevelSorter {
public:
    explicit LevelSorter(LayoutRun& run) : run_(run) {}

    void Sort(std::vector<Vertex>& level, Order side) {
        keys_.clear();
        bool sorted = true;
        for (const Vertex v : level) {
            const double key = key_of(v, side);
            sorted = sorted && (keys_.empty() || keys_.back().first <= key);
            keys_.emplace_back(key, v);
        }
        if (!sorted) {
            std::stable_sort(keys_.begin(), keys_.end(),
                             [](const auto& a, const auto& b) { return a.first < b.first; });
            for (std::size_t i = 0; i < level.size(); ++i) level[i] = keys_[i].second;
        }
        enumerate_level_by_y_coord(run_, level);
    }

private:
    [[nodiscard]] double key_of(Vertex v, Order side) const {
        const LayoutRun::Links links = run_.links(side, v);
        if (links.empty()) return at(run_.y, v);
        double sum = 0.0;
        int count = 0;
        for (const auto& link : links) {
            sum += at(run_.y, link.node);
            ++count;
        }
        return sum / count;
    }

    LayoutRun& run_;
    std::vector<std::pair<double, Vertex>> keys_;
};

}  // namespace

void forward_barycentric_adjust(LayoutRun& run) {
    LevelSorter sorter(run);
    const int n = static_cast<int>(run.levels.size());
    for (int k = 1; k <= n - 2; ++k) sorter.Sort(run.level_at(k), ORDER_IN);
}

// The last inner level keeps the order of the sweep before.
void backward_barycentric_adjust(LayoutRun& run) {
    LevelSorter sorter(run);
    const int n = static_cast<int>(run.levels.size());
    for (int k = n - 3; k >= 1; --k) sorter.Sort(run.level_at(k), ORDER_OUT);
}

void barycentric_adjust(LayoutRun& run) {
    enumerate_level_by_y_coord(run, run.level_at(1));
    if (run.levels.size() < 4) return;
    forward_barycentric_adjust(run);
    backward_barycentric_adjust(run);
    forward_barycentric_adjust(run);
}

void calculate_initial_y_coords(LayoutRun& run) {
    const int n = static_cast<int>(run.levels.size());
    for (int k = 1; k <= n - 2; ++k) {
        double cursor = 0.0;
        for (const Vertex v : run.level_at(k)) {
            const double y = cursor + run.half_spacing(v);
            at(run.y, v) = y;
            cursor = y + run.half_spacing(v) + run.get_height(v);
        }
    }
}

}  // namespace nodeline::internal

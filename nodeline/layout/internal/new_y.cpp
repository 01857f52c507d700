#include <nodeline/layout/internal/block_adjuster.h>
#include <nodeline/layout/internal/steps.h>

#include <algorithm>
#include <cfloat>
#include <map>

namespace nodeline::internal {

namespace {

// A gap along a level between old vertices.
struct FreeSpace {
    double start;
    double end;
    double size;  // the room left in it
};

// Fits the new vertices of one level between its old ones.
class GapFiller {
public:
    GapFiller(LayoutRun& run, BlockAdjuster& adjuster) : run_(run), adjuster_(adjuster) {}

    void Fill(const std::vector<Vertex>& level) {
        if (!has_new(level)) return;
        const std::size_t first_new = find_gaps(level);
        assigned_.clear();
        for (std::size_t i = first_new; i < level.size(); ++i) {
            if (run_.is_new(level[i])) choose_gap(level[i]);
        }
        for (auto& [gap, group] : assigned_) place(gap, group);
    }

private:
    static constexpr double kFar = DBL_MAX / 2.0;

    // Most levels hold nothing new. Handlers are asked for widths in the same order all the same.
    bool has_new(const std::vector<Vertex>& level) {
        for (const Vertex v : level) {
            if (run_.is_new(v)) return true;
            run_.get_height(v);
        }
        return false;
    }

    // Old vertices come first in a level; the first new one marks where they end.
    std::size_t find_gaps(const std::vector<Vertex>& level) {
        gaps_.clear();
        double cursor = -kFar;
        for (std::size_t i = 0; i < level.size(); ++i) {
            const Vertex v = level[i];
            if (run_.is_new(v)) {
                gaps_.push_back({cursor, kFar, kFar - cursor});
                return i;
            }
            const double half = run_.half_spacing(v);
            const double top = at(run_.y, v) - half;
            if (cursor < top) gaps_.push_back({cursor, top, top - cursor});
            cursor = at(run_.y, v) + run_.get_height(v) + half;
        }
        return level.size();
    }

    // The y that a new vertex would like best: level with its neighbours.
    double wish(Vertex v) {
        double sum = 0.0;
        int count = 0;
        const auto pull = [&](Vertex other) {
            sum += at(run_.y, other) + 0.5 * run_.get_height(other);
            ++count;
        };
        for (const auto& link : run_.links(ORDER_IN, v)) pull(link.node);
        for (const auto& link : run_.links(ORDER_OUT, v)) {
            if (!run_.is_new(link.node)) pull(link.node);
        }
        return count > 0 ? sum / count : 0.0;
    }

    // The outermost gaps are practically endless, so the search ends.
    void choose_gap(Vertex v) {
        const double want = wish(v);
        at(run_.y, v) = want;
        const double need = run_.get_height(v) + 2.0 * run_.half_spacing(v);
        if (gaps_.size() == 1 || want < gaps_[0].end) {
            assigned_[0].push_back(v);
            return;
        }
        std::size_t right = 1;
        while (gaps_[right].end < want) ++right;
        std::size_t left = right - 1;
        while (true) {
            const bool goes_left = want - gaps_[left].end < gaps_[right].start - want;
            const std::size_t chosen = goes_left ? left : right;
            if (need < gaps_[chosen].size) {
                gaps_[chosen].size -= need;
                assigned_[chosen].push_back(v);
                return;
            }
            goes_left ? --left : ++right;
        }
    }

    void place(std::size_t gap_index, std::vector<Vertex>& group) {
        std::stable_sort(group.begin(), group.end(),
                         [&](Vertex a, Vertex b) { return at(run_.y, a) < at(run_.y, b); });
        FreeSpace& gap = gaps_[gap_index];
        const bool upwards = gap_index == 0 && gaps_.size() > 1;
        if (upwards) {
            stack_upwards(group, gap.end);
        } else {
            stack_downwards(group, gap_index == 0 ? 0.0 : gap.start);
        }
        gap.start += run_.half_spacing(upwards ? group.front() : group.back());
        adjuster_.force_adjust_block(group.data(), group.data() + group.size(), DEPEND_INOUT, true,
                                     gap.start, gap.end);
    }

    void stack_upwards(const std::vector<Vertex>& group, double y) {
        for (auto it = group.rbegin(); it != group.rend(); ++it) {
            const double half = run_.half_spacing(*it);
            y = y - half - run_.get_height(*it);
            at(run_.y, *it) = y;
            y -= half;
        }
    }

    void stack_downwards(const std::vector<Vertex>& group, double y) {
        for (const Vertex v : group) {
            const double half = run_.half_spacing(v);
            y += half;
            at(run_.y, v) = y;
            y = y + run_.get_height(v) + half;
        }
    }

    LayoutRun& run_;
    BlockAdjuster& adjuster_;
    std::vector<FreeSpace> gaps_;
    // The vertices of each gap, the gaps from the top down.
    std::map<std::size_t, std::vector<Vertex>> assigned_;
};

}  // namespace

// From left to right, so that a new vertex sees where its neighbours before it have come to stand.
void calculate_new_nodes_y_coords(LayoutRun& run) {
    BlockAdjuster adjuster(run);
    GapFiller filler(run, adjuster);
    for (const auto& level : run.levels) filler.Fill(level);
}

}  // namespace nodeline::internal

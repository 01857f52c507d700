// How a stable picture makes room: all levels open alike.
#include <nodeline/layout/internal/stable_steps.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace nodeline::internal {

namespace {

// By how far everything at a height, or below it, moves down. The distances never fall from top to
// bottom, so order is kept and no gap shrinks.
class Openings {
public:
    // Two neighbours of a level, the lower one of which has to move `missing` further than the
    // upper one.
    struct Overlap {
        double above;
        double below;
        double missing;
    };

    // The least distances that satisfy all overlaps, each of which opens at its lower end.
    explicit Openings(std::vector<Overlap> overlaps) {
        std::stable_sort(overlaps.begin(), overlaps.end(),
                         [](const Overlap& a, const Overlap& b) { return a.below < b.below; });
        double reached = 0.0;
        for (const Overlap& overlap : overlaps) {
            const double distance = At(overlap.above) + overlap.missing;
            if (distance <= reached) continue;
            reached = distance;
            steps_.push_back({overlap.below, distance});
        }
    }

    [[nodiscard]] double At(double y) const {
        const auto after = std::partition_point(steps_.begin(), steps_.end(),
                                                [&](const Step& step) { return step.y <= y; });
        return after == steps_.begin() ? 0.0 : std::prev(after)->distance;
    }

private:
    struct Step {
        double y;
        double distance;
    };

    std::vector<Step> steps_;
};

// Less is rounding: of what is missing, and of heights that are meant to be the same.
constexpr double kLeast = 1e-7;
constexpr double kLevel = 1e-6;

std::vector<Openings::Overlap> find_overlaps(StableRun& run) {
    std::vector<Openings::Overlap> overlaps;
    const int n = static_cast<int>(run.levels.size());
    for (int k = 1; k <= n - 2; ++k) {
        const auto& level = run.level_at(k);
        for (std::size_t i = 0; i + 1 < level.size(); ++i) {
            const Vertex above = level[i];
            const Vertex below = level[i + 1];
            double& lower = at(run.y, below);
            const double upper = at(run.y, above);
            if (!(upper < lower)) {
                lower = std::nextafter(upper, std::numeric_limits<double>::infinity());
            }
            const double missing = upper + run.height(above) + run.spacing(above, below) - lower;
            if (missing <= kLeast) continue;
            // What is level but for rounding stays level.
            const double least = lower - std::min(kLevel, 0.5 * (lower - upper));
            overlaps.push_back({upper, least > upper ? least : lower, missing});
        }
    }
    return overlaps;
}

}  // namespace

void open_drawing(StableRun& run) {
    std::vector<Openings::Overlap> overlaps = find_overlaps(run);
    if (overlaps.empty()) return;
    const Openings openings(std::move(overlaps));
    const int n = static_cast<int>(run.levels.size());
    for (int k = 1; k <= n - 2; ++k) {
        for (const Vertex v : run.level_at(k)) at(run.y, v) += openings.At(at(run.y, v));
    }
    for (auto& entry : run.memory().nodes) entry.spot.y += openings.At(entry.spot.y);
    for (auto& spot : run.memory().spots) spot.y += openings.At(spot.y);
}

// The drawing may begin lower, too, if nothing stands higher.
void move_to_margin(StableRun& run) {
    double top = std::numeric_limits<double>::infinity();
    const int n = static_cast<int>(run.levels.size());
    for (int k = 1; k <= n - 2; ++k) {
        for (const Vertex v : run.level_at(k)) top = std::min(top, at(run.y, v));
    }
    if (!(top < std::numeric_limits<double>::infinity())) return;
    // What is highest is at the margin to the last bit.
    for (int k = 1; k <= n - 2; ++k) {
        for (const Vertex v : run.level_at(k)) {
            at(run.y, v) = at(run.y, v) - top + run.top_margin();
        }
    }
}

}  // namespace nodeline::internal

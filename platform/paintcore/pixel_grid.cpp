#include <paintcore/pixel_grid.h>

#include <algorithm>
#include <cmath>

namespace paintcore {

namespace {

// Narrows the stretch from `enter` to `leave` of a segment to where `start` + t * `way` is at most
// `end`.
void cut_stretch(double start, double way, double end, double& enter, double& leave) {
    if (way == 0.0) {
        if (start > end) leave = -1.0;
    } else if (way > 0.0) {
        leave = std::min(leave, (end - start) / way);
    } else {
        enter = std::max(enter, (end - start) / way);
    }
}

}  // namespace

double FloorToPixel(double v) { return std::floor(v + kPixelSlack); }

double CeilToPixel(double v) { return std::ceil(v - kPixelSlack); }

std::optional<std::pair<point<double>, point<double>>> CutSegment(const point<double>& a,
                                                                  const point<double>& b,
                                                                  const rectangle<double>& reach) {
    const point<double> way = b - a;
    double enter = 0.0;
    double leave = 1.0;
    cut_stretch(a.x, way.x, reach.right, enter, leave);
    cut_stretch(-a.x, -way.x, -reach.left, enter, leave);
    cut_stretch(a.y, way.y, reach.bottom, enter, leave);
    cut_stretch(-a.y, -way.y, -reach.top, enter, leave);
    if (!(enter <= leave)) return std::nullopt;
    const point<double> from = enter == 0.0 ? a : a + point<double>{way.x * enter, way.y * enter};
    const point<double> to = leave == 1.0 ? b : a + point<double>{way.x * leave, way.y * leave};
    return std::pair(from, to);
}

}  // namespace paintcore

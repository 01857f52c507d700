#include <viewkit/invalid_region.h>

#include <algorithm>

namespace viewkit {

using paintcore::rectangle;

namespace {

bool is_empty(const rectangle<double>& r) { return !(r.left < r.right && r.top < r.bottom); }

}  // namespace

CInvalidRegion::CInvalidRegion(const rectangle<double>& draw, const rectangle<double>& valid) {
    const rectangle<double> kept{std::max(draw.left, valid.left), std::max(draw.top, valid.top),
                                 std::min(draw.right, valid.right),
                                 std::min(draw.bottom, valid.bottom)};
    if (is_empty(kept) || is_empty(valid)) {
        add(draw);
        return;
    }
    add({draw.left, draw.top, draw.right, kept.top});
    add({draw.left, kept.bottom, draw.right, draw.bottom});
    add({draw.left, kept.top, kept.left, kept.bottom});
    add({kept.right, kept.top, draw.right, kept.bottom});
}

void CInvalidRegion::add(const rectangle<double>& part) {
    if (!is_empty(part)) parts_[static_cast<std::size_t>(count_++)] = part;
}

}  // namespace viewkit

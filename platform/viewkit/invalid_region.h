// Invalid region: what is left of a rectangle when the part that is still valid is cut out.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>

#include <array>

namespace viewkit {

// At most four rectangles that do not overlap, in this order as far as they are there: top and
// bottom over the whole width, left and right between them. A `valid` that is empty or lies outside
// leaves all of `draw`; an empty `draw` leaves nothing.
class NODELINE_API CInvalidRegion {
public:
    // What of `draw` does not lie in `valid`.
    CInvalidRegion(const paintcore::rectangle<double>& draw,
                   const paintcore::rectangle<double>& valid);

    // From 0 to 4.
    [[nodiscard]] int GetCount() const { return count_; }
    // `index` is below the count.
    [[nodiscard]] const paintcore::rectangle<double>& operator[](int index) const {
        return parts_[static_cast<std::size_t>(index)];
    }

private:
    void add(const paintcore::rectangle<double>& part);

    std::array<paintcore::rectangle<double>, 4> parts_;
    int count_ = 0;
};

}  // namespace viewkit

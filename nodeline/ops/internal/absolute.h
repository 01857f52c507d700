// Relative and absolute positions of a picture that a layout has just made.
#pragma once

#include <nodeline/model/graph.h>

namespace nodeline::internal {

// `ShiftPosition` by nothing, and `UnshiftPosition`, for where the layout has asked each edge for
// its bends already: the bends in an owner that stands at the origin are not looked for. They stay
// where they are, and a root mostly stands there, with the bulk of the bends.
void make_absolute(const Node& node);
void make_relative(const Node& node);

}  // namespace nodeline::internal

// Counts of the changes that decide which nodes and edges are drawn, and how they look.
#pragma once

#include <atomic>
#include <cstdint>

namespace nodeline::internal {

// Rises, for the graphs of the process together, whenever a stock record gains or loses an owner,
// an owned node or an edge, or a bit that hides it or marks it as drawn. While it stands, what was
// computed from those is still right.
extern std::atomic<std::uint64_t> drawn_revision;

// Rises likewise with every change of what stands in a stock record and may show in a picture:
// whatever raises the other, captions, and all bits but those that the drawing and the pointer set.
extern std::atomic<std::uint64_t> look_revision;

}  // namespace nodeline::internal

// A count of the changes that decide which nodes and edges are drawn.
#pragma once

#include <atomic>
#include <cstdint>

namespace nodeline::internal {

// Rises, for the graphs of the process together, whenever a stock record gains or loses an owner,
// an owned node or an edge, or a bit that hides it or marks it as drawn. While it stands, what was
// computed from those is still right.
extern std::atomic<std::uint64_t> drawn_revision;

}  // namespace nodeline::internal

// The working state of one run of the stable layout: that of a layout run, and how edges run.
#pragma once

#include <nodeline/layout/internal/layout_run.h>
#include <nodeline/layout/internal/stable_anchors.h>
#include <nodeline/layout/internal/stable_memory.h>
#include <nodeline/layout/stable_layout.h>

#include <cstdint>
#include <vector>

namespace nodeline::internal {

// How an edge runs in the owner, by the levels of its ends.
enum class CourseKind : std::uint8_t {
    kNone,       // not to be seen
    kForward,    // from a level to a higher one
    kBackward,   // from a level to a lower one
    kFlat,       // from a level to itself
    kIn,         // from the left border to a node
    kOut,        // from a node to the right border
    kToOwner,    // from a node back to the left border: the owner is the target
    kFromOwner,  // from the right border back to a node: the owner is the source
};

// The course of one edge. A long edge takes two bends on each level that it crosses, at the two
// sides of the level's band.
struct Course {
    CourseKind kind = CourseKind::kNone;
    Vertex from = kNoVertex;
    Vertex to = kNoVertex;
    // The levels that are crossed; none if `low` is greater.
    int low = 1;
    int high = 0;
    int first_bend = 0;  // the first of the bends on crossed levels
    // The lines below the ends, along which an edge turns.
    double lane_from = 0.0;
    double lane_to = 0.0;

    [[nodiscard]] bool runs_left() const {
        return kind == CourseKind::kBackward || kind == CourseKind::kToOwner ||
               kind == CourseKind::kFromOwner;
    }
    [[nodiscard]] int crossed() const { return high < low ? 0 : high - low + 1; }
    // The first one of the two bends on a crossed level.
    [[nodiscard]] int bend_on(int level) const {
        return first_bend + 2 * (runs_left() ? high - level : level - low);
    }
};

// How far a vertex has come.
enum class Placing : std::uint8_t {
    kFresh,      // it has never been in the picture
    kReturning,  // it was hidden, and has a place in mind
    kPlaced,     // y stands
};

class StableRun : public LayoutRun {
public:
    StableRun(const LayoutSettings& settings, const StableLayout::Options& options,
              const Node& owner, OwnerMemory& memory, LocalInfos& local);

    [[nodiscard]] const StableLayout::Options& options() const { return options_; }
    // What stays free at the top of the owner.
    [[nodiscard]] double top_margin() const { return top_margin_; }
    // A number for all that a run starts from but its memory: what is there, what is hidden, sizes,
    // widths, and where edges go on inside. As an update without a change moves nothing, a run with
    // the number of the last one need not be made.
    [[nodiscard]] std::uint64_t Fingerprint();
    // Whether edges still have the bends that the last run gave them.
    [[nodiscard]] bool IsWhole() const;
    // What the last run left; the shifts of this run are applied to it.
    [[nodiscard]] OwnerMemory& memory() { return memory_; }
    [[nodiscard]] const OwnerMemory::NodeEntry* remembered_node(Vertex v) const;
    [[nodiscard]] const OwnerMemory::EdgeEntry* remembered_edge(EdgeIndex e) const;
    // The places of a long edge from a level on, by rising level.
    struct Spots {
        const Spot* next;
        const Spot* last;
    };
    [[nodiscard]] Spots remembered_spots(EdgeIndex e, int level) const;
    // Whether the edge joins two nodes of the owner, rather than something in them.
    [[nodiscard]] bool joins_nodes(EdgeIndex e) const {
        const EdgeState& edge = at(edges, e);
        return !has_boxes_ && edge.from != kNoVertex && edge.to != kNoVertex;
    }
    // Whether both ends are drawn, and with them all that they lie in.
    [[nodiscard]] bool is_drawn(EdgeIndex e) const;
    // Calls `f` for what the end of an edge lies in, up to the owner that runs, or to the root.
    template <class F>
    void for_each_owner(const INodeImpl* end, F f) const {
        const INodeImpl* const stop = owner().record().get();
        if (end == stop) return;
        for (const INodeImpl* above = end->get_owner().get(); above != nullptr && above != stop;) {
            f(*above);
            const INodeImpl* next = above->get_owner().get();
            above = next == above ? nullptr : next;
        }
    }
    // The vertex of a long edge on a level that it crosses.
    [[nodiscard]] Vertex vertex_on(EdgeIndex e, int level) const;
    // The room between two neighbours of a level.
    [[nodiscard]] double spacing(Vertex above, Vertex below) const;
    // The room that a vertex takes along its level, with the lanes that are really below it.
    [[nodiscard]] double height(Vertex v) {
        return is_dummy(v) ? get_height(v) : at(sizes, v).cy + at(lane_room, v);
    }
    // The y at which an edge leaves or meets a node.
    [[nodiscard]] double end_y(EdgeIndex e, Vertex v, Order side) const {
        return at(y, v) + port_offset(e, v, side, 0.5 * at(sizes, v).cy);
    }

    std::vector<Course> courses;    // by edge
    std::vector<Placing> placing;   // by vertex
    std::vector<int> places;        // by vertex: on its level in the last picture, or -1
    std::vector<double> lane_room;  // by real node
    std::vector<Level> bands;       // by level
    // What pulls at the edges across the border; null if nothing is known.
    const Anchors* anchors = nullptr;
    // By how much levels of the last run have moved up.
    int lifted = 0;

private:
    void hide_owner();
    void forget_own_ends();
    [[nodiscard]] bool shows(INodeImpl* end, Vertex top) const;

    bool has_boxes_ = false;
    double top_margin_ = 0.0;

    StableLayout::Options options_;
    OwnerMemory& memory_;
    IdMap node_places_;
    IdMap edge_places_;
};

}  // namespace nodeline::internal

// What a layout remembers between runs, and the values that tune it.
#pragma once

#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/internal/owner_edges.h>

#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

namespace nodeline::internal {

// The two sides of a node. Edges leave on the right and arrive on the left, also those that run
// backwards.
enum Order { ORDER_IN = 0, ORDER_OUT = 1 };

struct LayoutSettings {
    double level_spacing = 30.0;    // between levels
    double node_spacing = 12.0;     // between nodes along a level
    double dummy_spacing = 2.0;     // between break nodes along a level
    double backedge_spacing = 5.0;  // width of one lane for a flat or reversed edge
    bool backward_force_pass = true;
    // Hidden nodes take part in the levels, so that they come back where they were.
    bool include_hidden = true;
};

// What is known of a node after a run.
struct NodeInfo {
    int level = -1;           // place of its level in the table; -1 until a run has assigned one
    bool old = false;         // laid out by a finished run
    bool was_hidden = false;  // hidden when that run ended
    int place = -1;           // on the level where it last stood; -1 if it never did
};

// What is known of a break node. A record that is not `known` reads as the default one.
struct BreakInfo {
    int level = -1;
    bool known = false;
    bool old = false;
    int place = -1;  // on the level where it last stood; -1 if it never did
};

// The extent of one level along x.
struct Level {
    double start = 0.0;
    double end = 0.0;
    double width = 0.0;
};

// How the dummy nodes of a chain were linked: every other bend from `first` to `last`, in a row,
// with a real node before the first and after the last where there is one.
struct LinkShape {
    int first = 0;
    int last = -1;
    bool forward = true;  // links run along the chain; else against it
    int head_id = 0;      // 0 for none
    int tail_id = 0;

    // Whether everything that `other` tells is told here.
    [[nodiscard]] bool Covers(const LinkShape& other) const {
        return other.last < other.first ||
               (first == other.first && last == other.last && forward == other.forward &&
                (other.head_id == 0 || head_id == other.head_id) &&
                (other.tail_id == 0 || tail_id == other.tail_id));
    }
};

// The record of one owner: where its nodes and the bends of its edges were when a run ended. The
// handles keep alive what the next run moves back, whatever became of it in the graph.
struct OwnerStore {
    struct NodeEntry {
        graph_ptr<INodeVis> vis;
        int id;
        NodeInfo info;
    };
    struct EdgeEntry {
        graph_ptr<DefaultEdgeVis> vis;
        int id;
        bool old;             // laid out by a finished run
        int first_break_id;   // tells whether the chain is still the one that was recorded
        std::int32_t region;  // its records stand in `breaks` from here on
        std::int32_t count;
        // The links that runs have made since the scratch records were last emptied; the first ones
        // win, and a resize adds to them only what they leave open.
        LinkShape links;
        std::vector<LinkShape> more_links;
    };

    // The nodes and edges of that run, for the next one to see whether they are still the same.
    OwnerEdges neighbourhood;
    std::vector<NodeEntry> nodes;
    std::vector<EdgeEntry> edges;
    std::vector<BreakInfo> breaks;
    std::vector<Level> level_extents;
    // The number of dummy nodes that the run had.
    std::size_t dummy_count = 0;
    // The scratch records that the links go with.
    unsigned long long scratch_epoch = 0;
};

// The scratch records that a run leaves to the resizes after it, which count nothing anew.
struct LocalInfos {
    struct Direction {
        bool reversed;
        bool flat;
    };

    // Goes up whenever the records are emptied.
    unsigned long long epoch = 0;
    // The nodes with flat or reversed edges, and how many.
    std::unordered_map<int, int> backedge_counts;
    // The edges that are flat or reversed.
    std::unordered_map<int, Direction> directions;

    void Clear() {
        ++epoch;
        backedge_counts.clear();
        directions.clear();
    }
};

}  // namespace nodeline::internal

// The stable layered layout: levels from left to right, and a picture that wears well.
//
//   graph->SetDefaultLayout(StableLayout::Create());
//
// It arranges a graph as `IncLayout` does, in routed levels, and keeps a promise about every
// picture, whatever was asked for before and in whatever order: nodes do not overlap, everything
// lies inside its owner, routes are unbroken and run around nodes, and what was in the picture
// keeps its level and its order and moves along its level only where something above it grew or
// came in. What is hidden keeps its place in mind, and gets it back if it is still free.
#pragma once

#include <corvex/export.h>
#include <nodeline/model/graph.h>

#include <memory>

namespace nodeline {

namespace internal {
class StableEngine;
}

// A layout that keeps to the picture it has made. One object may serve any number of graphs and
// owners on one thread at a time. What it remembers lies with the graph, and goes with it.
class NODELINE_API StableLayout final : public ILayout {
public:
    // Lengths are in logical units.
    struct Options {
        // Enough above the nodes of an owner for its caption, as the stock handlers draw it.
        static constexpr double kCaptionRoom = 20.0;

        double level_spacing = 30.0;    // between levels
        double node_spacing = 12.0;     // between nodes along a level, and around the drawing
        double dummy_spacing = 2.0;     // between edges along a level
        double backedge_spacing = 5.0;  // width of one lane for an edge that runs backwards
        // What stays free at the top of each owner but the root, for its caption, if that is more
        // than `node_spacing`.
        double caption_room = 0.0;
        // The most sweeps of a `Make` over the levels in search of an order with few crossings, and
        // at least 3. They end before that when they find no better order.
        int sweeps = 5;
        // Whether a `Make` moves long edges and nodes so that edges bend less.
        bool straighten = true;
        // What is new goes into a gap that lies at most so far from where it would like to be;
        // where there is none, the drawing opens.
        double reach = 120.0;
    };

    // With the options as they are at first, or with others.
    StableLayout();
    explicit StableLayout(const Options& options);
    ~StableLayout() override;

    StableLayout(const StableLayout&) = delete;
    StableLayout& operator=(const StableLayout&) = delete;

    // A new layout in a handle that owns it.
    static graph_ptr2<StableLayout> Create();
    static graph_ptr2<StableLayout> Create(const Options& options);

    // Forgets what it knows of the owner and of what lies in it, and lays it out from scratch.
    void Make(Node owner) override;
    // Lays the owner out, contents first; what was there stays, and what is new is fitted in.
    void Update(Node owner) override;
    // Fits the drawing to sizes that have changed. It brings everything in the owner up to date
    // that is not, so that the resize of the root, with which a recalculation ends, leaves nothing
    // behind. Positions are absolute before and after.
    void Resize(Node owner) override;

private:
    // Objects that share a picture take each other's places into account.
    friend class internal::StableEngine;

    std::unique_ptr<internal::StableEngine> engine_;
};

}  // namespace nodeline

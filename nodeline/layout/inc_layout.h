// The incremental layered layout: levels from left to right, and old nodes stay where they were.
//
//   graph->SetDefaultLayout(IncLayout::Create());
//
// A run arranges the nodes of one owner, contents of contents first. It remembers, for each owner,
// where everything was, and later runs keep that picture: `Update` fits in what is new, `Resize`
// opens the drawing where nodes have grown.
#pragma once

#include <corvex/export.h>
#include <nodeline/model/graph.h>

#include <memory>

namespace nodeline {

namespace internal {
class LayoutEngine;
}

// The stock layout. One object may serve any number of owners and graphs on one thread at a time;
// what it remembers is keyed by owner id, and all roots have the id 0, so graphs that are updated
// in turn want an object each.
class NODELINE_API IncLayout final : public ILayout {
public:
    // Calls `Init(30.0, 12.0, 2.0, 5.0)`.
    IncLayout();
    ~IncLayout() override;

    IncLayout(const IncLayout&) = delete;
    IncLayout& operator=(const IncLayout&) = delete;

    // A new layout in a handle that owns it.
    static graph_ptr2<IncLayout> Create();

    // Sets the gaps, in logical units, between levels, between nodes along a level, between break
    // nodes along a level, and the width of a lane for an edge that runs backwards; and appends the
    // steps of the three pipelines. A second call appends them again: they then run twice.
    void Init(double level_spacing, double node_spacing, double dummy_spacing,
              double backedge_spacing);

    // Forgets what it knows of the owner (of all owners, if it is the root), and lays it out from
    // scratch, contents first.
    void Make(Node owner) override;
    // Lays out contents first; keeps levels and order of what was there, and fits in what is new.
    void Update(Node owner) override;
    // Keeps levels and order, opens overlaps along the levels, and computes x anew. Contents are
    // not looked into: resize inner owners first.
    void Resize(Node owner) override;

private:
    std::unique_ptr<internal::LayoutEngine> engine_;
};

// The layout of every node and graph that names no other; made at the first call.
[[nodiscard]] NODELINE_API graph_ptr2<ILayout> GetDefaultLayout();

// Call `Make` and `Update` of the node's own layout on it.
NODELINE_API void _make_layout(Node n);
NODELINE_API void _update_layout(Node n);

}  // namespace nodeline

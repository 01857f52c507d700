// A layout that holds each of its runs to what runs promise, and remembers what they placed.
#pragma once

#include <nodeline/layout/internal/layout_engine.h>
#include <nodeline/model/graph.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace nodeline::test {

// The stock layout with a look at each run when the old picture is back, when overlaps are opened,
// and when the run is over.
class WatchedLayout : public ILayout {
public:
    WatchedLayout();

    void Make(Node owner) override;
    void Update(Node owner) override;
    void Resize(Node owner) override;

    // What is known of an owner since its last run.
    struct Placed {
        std::map<int, int> levels;  // by node: of all nodes, hidden ones as well
        std::set<int> nodes;        // those that stand in the table, below and above the borders
        std::set<int> edges;        // those whose routes go by where their ends stand
    };
    std::map<int, Placed> placed;
    // The promises that were broken, the latest last.
    std::vector<std::string> broken;
    // Real nodes that were there before, counted over all runs.
    long old_nodes = 0;
    // Whether the last run fitted nothing in and found nothing to open.
    bool was_calm = false;

private:
    // A node of the old picture.
    struct Old {
        internal::Vertex node;
        int level;
        double y;
        double middle;
        double opened_y = 0.0;
    };

    template <class Run>
    void watch(Run run);
    static void see_old(internal::LayoutRun& run);
    static void see_opened(internal::LayoutRun& run);
    static void see_end(internal::LayoutRun& run);
    void expect_levels(const internal::LayoutRun& run);
    void expect_order(const internal::LayoutRun& run);
    void expect_distances(const internal::LayoutRun& run);
    void note_placed(const internal::LayoutRun& run);
    void note_edge(const internal::LayoutRun& run, const internal::EdgeState& edge, bool in_place);
    void complain(const internal::LayoutRun& run, const std::string& what);

    internal::LayoutEngine engine_;
    bool resizes_ = false;
    // In the order of the table, level by level.
    std::vector<Old> old_;
    std::set<int> outdated_;
    // The steps are functions without an object; runs of several layouts may be nested.
    static WatchedLayout* watching;
};

}  // namespace nodeline::test

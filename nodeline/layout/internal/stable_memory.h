// What the stable layout remembers of a graph between runs.
#pragma once

#include <nodeline/layout/internal/layout_records.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/internal/owner_edges.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace nodeline::internal {

// A place along a level. It is kept in mind while what stood there is hidden.
struct Spot {
    int level = -1;
    int place = -1;         // from the top, among all that stood on the level then
    bool is_taken = false;  // it stood there when the last run ended
    double y = 0.0;         // in the owner's coordinates
};

// What is known of one owner. Positions are those of the owner's coordinates; the handles are those
// of things that the graph held when the last run ended.
struct OwnerMemory {
    struct NodeEntry {
        int id = 0;
        graph_ptr<INodeVis> vis;
        bool has_place = false;  // it has stood in the picture; else only the level is known
        Spot spot;
        point<double> position{0.0, 0.0};
    };
    struct EdgeEntry {
        int id = 0;
        graph_ptr<DefaultEdgeVis> vis;
        // The places of the long edge on the levels that it crosses, in `spots`.
        std::int32_t first_spot = 0;
        std::int32_t spot_count = 0;
        // The bends, in `bends`; none if the edge was not to be seen.
        std::int32_t first_bend = 0;
        std::int32_t bend_count = 0;
        // The edge joins a node with the owner itself.
        bool meets_owner = false;
    };

    graph_ptr<INodeImpl> owner;
    std::vector<NodeEntry> nodes;
    std::vector<EdgeEntry> edges;
    std::vector<Spot> spots;
    std::vector<point<double>> bends;
    std::vector<Level> bands;  // by level
    size<double> extent{0.0, 0.0};
    // The nodes and edges of that run, for the next one to see whether they are still the same.
    OwnerEdges neighbourhood;
    // The order of the levels that a make has found ahead of the run, as `LevelOrder` gives it;
    // empty if it has not.
    std::vector<std::int32_t> order;
    // Of all that the last run started from; see `StableRun::Fingerprint`.
    std::uint64_t fingerprint = 0;
};

// What is known of one graph, by owner id. It lies in the store of the graph.
class GraphMemory : public Countable {
public:
    // Null if nothing is known of the owner.
    [[nodiscard]] OwnerMemory* Find(int owner_id) {
        const auto found = owners_.find(owner_id);
        return found == owners_.end() ? nullptr : &found->second;
    }
    OwnerMemory& Get(int owner_id) { return owners_[owner_id]; }
    void Forget(int owner_id) { owners_.erase(owner_id); }
    [[nodiscard]] std::size_t GetCount() const { return owners_.size(); }
    // Forgets the owners that are gone from the graph.
    void ForgetRemoved();

private:
    std::unordered_map<int, OwnerMemory> owners_;
};

}  // namespace nodeline::internal

// The neighbourhood of all nodes of one owner, collected at once.
#pragma once

#include <nodeline/model/storage.h>
#include <nodeline/ops/internal/id_map.h>

#include <cstdint>
#include <vector>

namespace nodeline::internal {

// What `GetParentsEx`, `GetChildrenEx`, `GetEdgesInEx` and `GetEdgesOutEx` answer for each node
// that an owner owns, in dense arrays: nodes by their place in the owner's set, edges by the order
// in which they were met. Costs one walk over the owner's subtree and its edges, and a sort.
//
// Points into the records; valid while nothing changes the graph.
class OwnerEdges {
public:
    enum Kind { kParents = 0, kChildren = 1, kEdgesIn = 2, kEdgesOut = 3 };

    // A neighbour: for parents and children a node of the owner, else -1; and the edge to it.
    struct Entry {
        std::int32_t node;
        std::int32_t edge;
    };

    // A run of entries, by rising node id, then edge id.
    struct Run {
        const Entry* first;
        const Entry* last;
        [[nodiscard]] const Entry* begin() const { return first; }
        [[nodiscard]] const Entry* end() const { return last; }
        [[nodiscard]] bool empty() const { return first == last; }
        [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(last - first); }
    };

    // With `sorted` false, runs come in no particular order.
    void Collect(INodeImpl& owner, bool sorted = true);

    [[nodiscard]] std::int32_t node_count() const {
        return static_cast<std::int32_t>(nodes.size());
    }
    [[nodiscard]] std::int32_t edge_count() const {
        return static_cast<std::int32_t>(edges.size());
    }
    [[nodiscard]] Run Of(Kind kind, std::int32_t node) const {
        const auto place =
            static_cast<std::size_t>(kind) * nodes.size() + static_cast<std::size_t>(node);
        return {entries_.data() + starts_[place], entries_.data() + starts_[place + 1]};
    }

    // The owner's nodes, in set order, and the edges of all entries.
    std::vector<INodeImpl*> nodes;
    std::vector<IEdgeImpl*> edges;

private:
    // An entry as it was found; `far_id` orders it within its run.
    struct Found {
        std::int32_t place;
        int far_id;
        int edge_id;
        IEdgeImpl* edge;
        std::int32_t node;
        std::int32_t edge_index;
    };

    void walk(INodeImpl& owner);
    void look_at(INodeImpl& owner, INodeImpl& inner, std::int32_t top);
    void add(Kind kind, std::int32_t top, std::int32_t node, int far_id, IEdgeImpl* edge);
    void number_edges();
    void fill(bool sorted);

    struct Member {
        INodeImpl* node;
        std::int32_t top;
    };

    // Everything under the owner, with the owner's node that holds it.
    std::vector<Member> members_;
    IdMap tops_;
    IdMap edge_numbers_;
    std::vector<Found> found_;
    std::vector<Entry> entries_;
    std::vector<std::size_t> starts_;
};

}  // namespace nodeline::internal

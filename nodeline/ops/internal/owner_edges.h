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
// Points into the records; valid while nothing changes the graph. What `Refresh` has collected may
// be kept beyond that, and brought up to date by another call.
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

    // The ends of an edge, as far as they lie in nodes of the owner; -1 for one that does not.
    struct Ends {
        std::int32_t from = -1;
        std::int32_t to = -1;
    };

    // With `sorted` false, runs come in no particular order.
    void Collect(INodeImpl& owner, bool sorted = true);
    // Collects, unless what is here is what that would give: then it costs the walk alone.
    void Refresh(INodeImpl& owner);

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
    // Their ids.
    std::vector<int> node_ids;
    std::vector<int> edge_ids;
    // By edge.
    std::vector<Ends> ends;

private:
    // What an edge is to the owner, seen from one of its ends.
    enum class Verdict : std::int8_t { kInside, kToOwner, kToOutside, kNowhere };

    // An entry as it was found; `far_id` orders it within its run.
    struct Found {
        std::int32_t place;
        int far_id;
        int edge_id;
        IEdgeImpl* edge;
        std::int32_t node;
        std::int32_t edge_index;
    };
    // A node under the owner, with the owner's node that holds it.
    struct Member {
        INodeImpl* node;
        int id;
        std::int32_t top;
    };
    // An edge in the set of a member; held, so that no later one takes its address.
    struct Seen {
        graph_ptr<IEdgeImpl> edge;
        Verdict verdict;
    };

    // What only collecting needs.
    struct Search {
        IdMap tops;
        std::vector<Found> found;

        void Add(std::int32_t place, int far_id, IEdgeImpl* edge, int edge_id, std::int32_t node) {
            found.push_back({place, far_id, edge_id, edge, node, 0});
        }
    };

    void walk(INodeImpl& owner, Search& search);
    void collect(INodeImpl& owner, bool sorted);
    void look_at(INodeImpl& owner, const Member& member, Search& search);
    void remember(IEdgeImpl* edge, Verdict verdict);
    [[nodiscard]] static Verdict judge_outside(const INodeImpl& owner, const INodeImpl* far);
    void number_edges(std::vector<Found>& found);
    void fill(const std::vector<Found>& found, bool sorted);
    void find_ends();
    [[nodiscard]] bool is_current(INodeImpl& owner) const;
    [[nodiscard]] bool is_member(std::size_t place, const INodeImpl& node, std::int32_t top) const;

    std::vector<Entry> entries_;
    std::vector<std::size_t> starts_;
    // All that was met on the walk, in its order. Ids of nodes are never given out twice, so they
    // tell a node from a later one at its address.
    std::vector<Member> members_;
    // Empty unless there is to be a refresh.
    std::vector<Seen> seen_;
    bool remembers_ = false;
    // Whether the walk met nothing but stock records: only those change by nothing but their sets.
    bool is_stock_ = false;
};

}  // namespace nodeline::internal

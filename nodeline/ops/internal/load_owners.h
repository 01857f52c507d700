// The nodes that a graph file declares, and the step that puts them under their owners.
#pragma once

#include <nodeline/model/graph.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace nodeline::internal {

// A node under its id in the file, with what its line says.
struct DeclaredNode {
    int id;
    int owner;
    int line;
    graph_ptr<INodeImpl> record;
};

// The nodes by their ids in the file. An id keeps the first node that was entered under it.
class DeclaredNodes {
public:
    static constexpr std::int32_t kNone = -1;

    // Returns false, and enters nothing, if the id is taken.
    bool Add(DeclaredNode node);

    // The place of the node with the id, or `kNone`.
    [[nodiscard]] std::int32_t Find(int id) const;

    const DeclaredNode& operator[](std::int32_t place) const {
        return nodes_[static_cast<std::size_t>(place)];
    }
    [[nodiscard]] std::int32_t size() const { return static_cast<std::int32_t>(nodes_.size()); }

private:
    std::vector<DeclaredNode> nodes_;
    // Places by id where the ids lie close together, as they mostly do, and those of all others.
    std::vector<std::int32_t> dense_;
    std::unordered_map<int, std::int32_t> sparse_;
};

// What became of the owners. Places are those in the `DeclaredNodes`, or `kNone`.
struct OwnerOutcome {
    // The node with the least id whose owner does not exist. Then nothing was moved.
    std::int32_t without_owner = DeclaredNodes::kNone;
    // The nodes that stay under the root since they own their owner, at whatever distance.
    std::vector<std::int32_t> refused;
    // The nodes that own themselves and with all their contents hang under no root any more.
    std::vector<std::int32_t> detached;
};

// Gives each node the owner that its line names, as if `Node::SetOwner` were called on all of them
// by rising id. All nodes stand under `root` at first. Linear, but for a sort by id.
OwnerOutcome AssignOwners(const Node& root, const DeclaredNodes& nodes);

}  // namespace nodeline::internal

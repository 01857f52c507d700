// Sets of nodes and edges as lists of ids, which tests compare and print.
#pragma once

#include <nodeline/model/graph.h>

#include <utility>
#include <vector>

namespace nodeline::test {

inline int id_of(const Node& node) { return node.GetID(); }
inline int id_of(const Edge& edge) { return edge.GetID(); }
inline int id_of(const graph_ptr<INodeImpl>& record) { return record->get_id(); }
inline int id_of(const graph_ptr<IEdgeImpl>& record) { return record->get_id(); }

// In set order.
template <class T>
std::vector<int> Ids(const IGraphSet<T>& set) {
    std::vector<int> ids;
    for (int i = 0; i < set.GetCount(); ++i) ids.push_back(id_of(set.GetItem(i)));
    return ids;
}

template <class T>
std::vector<int> Ids(const graph_ptr<T>& set) {
    return Ids(*set);
}

// The ids of what is written down, as in `IdsOf(a, b)`.
template <class... Things>
std::vector<int> IdsOf(const Things&... things) {
    return {id_of(things)...};
}

using IdPairs = std::vector<std::pair<int, int>>;

// Node id and edge id of each pair, in set order.
inline IdPairs Pairs(const graph_ptr2<IGraphSet<NodeEdgePair>>& set) {
    IdPairs pairs;
    for (const NodeEdgePair& pair : *set) pairs.emplace_back(pair.node.GetID(), pair.edge.GetID());
    return pairs;
}

inline std::pair<int, int> PairOf(const Node& node, const Edge& edge) {
    return {node.GetID(), edge.GetID()};
}

}  // namespace nodeline::test

// How requests for layout work become an order of layout runs.
#pragma once

#include <nodeline/model/graph.h>

#include <map>
#include <utility>

namespace nodeline {

// Pending requests of one kind, in order of insertion: the key of every entry is 0.
using RequestMap = std::multimap<int, graph_ptr<INodeImpl>>;

// Files a request for `node` behind the others, unless the root is filed already, which covers
// everything: then the answer is true. With `insert` false it only asks. `depth` receives the
// nesting depth of `node`, the root being 0. Requests for one node may be filed more than once.
NODELINE_API bool check_and_insert(RequestMap* map, graph_ptr<INodeImpl> node, int* depth,
                                   bool insert);

// Files a request for all owners of `node`, from the root down, and for `node` itself. What stands
// among the entries from the second on is not filed again; the first entry is not compared.
NODELINE_API void insert_with_owners(RequestMap* map, graph_ptr<INodeImpl> node);

// Whether the node of `entry` is filed behind the first entry of its key, or of a lesser key down
// to the key that is reached when the node is the root.
NODELINE_API bool is_redundant(std::pair<const int, graph_ptr<INodeImpl>> entry, RequestMap* map);

// Forwards to `Edge::RemoveBreakNodes`.
NODELINE_API void _remove_break_nodes(Edge edge);

}  // namespace nodeline

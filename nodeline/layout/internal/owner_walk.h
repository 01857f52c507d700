// The walk of a layout over the owners that it arranges.
#pragma once

#include <nodeline/handlers/handlers.h>
#include <nodeline/model/graph.h>
#include <nodeline/model/internal/record_access.h>

#include <vector>

namespace nodeline::internal {

inline bool is_leaf(const graph_ptr<INodeImpl>& node) { return owned_of(*node).size() == 0; }

inline void size_leaf(Node node) {
    if (const graph_ptr2<INodeHandler> handler = node.GetHandler()) {
        node.SetSize(handler->GetSize(node));
    }
}

// Calls `own(node)` for `top` and all under it that `self` arranges, contents before their owners,
// and `foreign(node, layout)` for those that another layout object arranges, which are not entered.
// In a loop: only what `foreign` does costs a call level.
template <class Own, class Foreign>
void walk_inside_out(const Node& top, const ILayout& self, Own own, Foreign foreign) {
    struct Frame {
        graph_ptr<INodeImpl> owner;
        int next;
    };
    const graph_ptr<IGraphVis>& store = top.store();
    std::vector<Frame> path{{top.record(), 0}};
    while (!path.empty()) {
        Frame& frame = path.back();
        const auto owned = owned_of(*frame.owner);
        if (frame.next == owned.size()) {
            const Node done(store, frame.owner);
            path.pop_back();
            own(done);
            continue;
        }
        const graph_ptr<INodeImpl>& child = owned[frame.next++];
        if (child.get() == frame.owner.get()) continue;
        const graph_ptr2<ILayout> layout = store->get_node_layout(child);
        if (!layout) continue;
        if (layout.get() == &self) {
            path.push_back({child, 0});
        } else {
            foreign(Node(store, child), *layout);
        }
    }
}

// Calls `f(node, layout)` for what the owner owns and what owns something itself.
template <class F>
void for_each_inner_owner(const Node& owner, F f) {
    const graph_ptr<IGraphVis>& store = owner.store();
    const auto owned = owned_of(*owner.record());
    for (int k = 0; k < owned.size(); ++k) {
        if (owned[k].get() == owner.record().get() || is_leaf(owned[k])) continue;
        if (const graph_ptr2<ILayout> layout = store->get_node_layout(owned[k])) {
            f(Node(store, owned[k]), *layout);
        }
    }
}

}  // namespace nodeline::internal

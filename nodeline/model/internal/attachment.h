// What a part of the library keeps with the store of a graph.
#pragma once

#include <nodeline/model/vis.h>

namespace nodeline::internal {

// The object that the holder of `token` keeps with `store`; made at first use. Null for a store
// that is not the library's own. `T` is the same for all calls with one token.
template <class T>
T* attached_to(const graph_ptr<IGraphVis>& store, const graph_ptr<Countable>& token) {
    auto* const stock = dynamic_cast<DefaultGraphVis*>(store.get());
    if (stock == nullptr) return nullptr;
    graph_ptr<Countable>& kept = stock->attachment(token);
    if (!kept) {
        const graph_ptr<T> fresh(new T);
        kept = fresh;
    }
    return static_cast<T*>(kept.get());
}

}  // namespace nodeline::internal

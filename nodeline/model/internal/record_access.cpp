#include <nodeline/model/internal/record_access.h>

#include <typeinfo>

namespace nodeline::internal {

struct RecordAccess {
    static const NodeImplSet* owned(const DefaultRootNodeImpl& node) { return node.owned_.get(); }
    static const EdgeImplSet* edges_in(const DefaultNodeImpl& node) { return node.edges_in_.get(); }
    static const EdgeImplSet* edges_out(const DefaultNodeImpl& node) {
        return node.edges_out_.get();
    }
    static EdgeEnd from(const DefaultEdgeImpl& edge) { return {edge.from_.get(), edge.from_id_}; }
    static EdgeEnd to(const DefaultEdgeImpl& edge) { return {edge.to_.get(), edge.to_id_}; }
    static int id(const DefaultNodeImpl& node) { return node.id_; }
    static int id(const DefaultEdgeImpl& edge) { return edge.id_; }
};

namespace {

// An exact match of types costs less than a cast, and stock records are not derived from.
const DefaultNodeImpl* as_stock(const INodeImpl& node) {
    return typeid(node) == typeid(DefaultNodeImpl) ? static_cast<const DefaultNodeImpl*>(&node)
                                                   : nullptr;
}

const DefaultEdgeImpl* as_stock(const IEdgeImpl& edge) {
    return typeid(edge) == typeid(DefaultEdgeImpl) ? static_cast<const DefaultEdgeImpl*>(&edge)
                                                   : nullptr;
}

}  // namespace

EdgeEnd from_of(IEdgeImpl& edge) {
    if (const auto* stock = as_stock(edge)) return RecordAccess::from(*stock);
    INodeImpl* node = edge.from().get();
    return {node, node != nullptr ? node->get_id() : 0};
}

EdgeEnd to_of(IEdgeImpl& edge) {
    if (const auto* stock = as_stock(edge)) return RecordAccess::to(*stock);
    INodeImpl* node = edge.to().get();
    return {node, node != nullptr ? node->get_id() : 0};
}

int id_of(const INodeImpl& node) {
    const auto* stock = as_stock(node);
    return stock != nullptr ? RecordAccess::id(*stock) : node.get_id();
}

int id_of(const IEdgeImpl& edge) {
    const auto* stock = as_stock(edge);
    return stock != nullptr ? RecordAccess::id(*stock) : edge.get_id();
}

SetView<NodeImplSet> owned_of(INodeImpl& node) {
    if (const auto* stock = as_stock(node)) {
        return SetView<NodeImplSet>(RecordAccess::owned(*stock));
    }
    return SetView<NodeImplSet>(node.get_owned());
}

SetView<EdgeImplSet> edges_in_of(INodeImpl& node) {
    if (const auto* stock = as_stock(node)) {
        return SetView<EdgeImplSet>(RecordAccess::edges_in(*stock));
    }
    return SetView<EdgeImplSet>(node.get_edges_in());
}

SetView<EdgeImplSet> edges_out_of(INodeImpl& node) {
    if (const auto* stock = as_stock(node)) {
        return SetView<EdgeImplSet>(RecordAccess::edges_out(*stock));
    }
    return SetView<EdgeImplSet>(node.get_edges_out());
}

}  // namespace nodeline::internal

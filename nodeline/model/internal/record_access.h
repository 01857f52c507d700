// Looks into records without making what they lack.
#pragma once

#include <nodeline/model/storage.h>

namespace nodeline::internal {

// A set that may be absent, with whatever keeps it alive.
template <class Set>
class SetView {
public:
    SetView() = default;
    explicit SetView(const Set* set) : set_(set) {}
    explicit SetView(graph_ptr<Set> set) : keep_(set), set_(keep_.get()) {}

    [[nodiscard]] int size() const { return set_ == nullptr ? 0 : set_->GetCount(); }
    const auto& operator[](int index) const { return (*set_)[index]; }

private:
    graph_ptr<Set> keep_;
    const Set* set_ = nullptr;
};

// The sets of a record. A stock record makes a set when it is asked for one by its interface; here
// an absent set stays absent.
[[nodiscard]] SetView<NodeImplSet> owned_of(INodeImpl& node);
[[nodiscard]] SetView<EdgeImplSet> edges_in_of(INodeImpl& node);
[[nodiscard]] SetView<EdgeImplSet> edges_out_of(INodeImpl& node);

// An end of an edge, null once the edge is removed, and its id.
struct EdgeEnd {
    INodeImpl* node;
    int id;
};

// Ends and ids without a count, and for stock records without a look at the far record.
[[nodiscard]] EdgeEnd from_of(IEdgeImpl& edge);
[[nodiscard]] EdgeEnd to_of(IEdgeImpl& edge);
[[nodiscard]] int id_of(const INodeImpl& node);
[[nodiscard]] int id_of(const IEdgeImpl& edge);

}  // namespace nodeline::internal

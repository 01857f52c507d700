#include <nodeline/ops/internal/ex_collectors.h>

#include <nodeline/ops/graph_ops.h>

namespace nodeline {

// Climbing stops, here and below, at a node that owns itself and at one that was removed: neither
// leads anywhere.
void GetNodeEdgeEx::operator()(const Node& n) {
    const Node owner = limit.GetOwner();
    for (const Edge& e : (n.*edges)()) {
        Node other = (e.*end)();
        if (!other) continue;
        if (other == limit && n == limit) {
            result->Add({other, e});
            continue;
        }
        Node above = other.GetOwner();
        while (above && !IsRoot(above) && above != owner && above != other) {
            other = above;
            above = other.GetOwner();
        }
        if (above && above == owner && other != limit) result->Add({other, e});
    }
}

void CheckEdge::operator()(const Edge& e) {
    Node other = (e.*end)();
    if (!other) return;
    if (other == owner) {
        result->Add({other, e});
        result->Add({other, e});
        return;
    }
    while (!IsRoot(other)) {
        const Node above = other.GetOwner();
        if (!above || above == other || above == owner) return;
        other = above;
    }
    result->Add({other, e});
}

void GetInOutEx::operator()(const Node& n) {
    CheckEdge check{end, limit.GetOwner(), result};
    for (const Edge& e : (n.*edges)()) check(e);
}

}  // namespace nodeline

#include <gtest/gtest.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/ops/graph_ops.h>
#include <support/ids.h>
#include <support/random_graph.h>

#include <map>
#include <optional>
#include <vector>

namespace nodeline::test {
namespace {

// The route of an edge by its definition: a map from owners to bends, and the last whole route.
struct PlainRoute {
    std::map<int, std::vector<int>> stretches;
    std::optional<std::vector<int>> whole;

    void Add(int owner, int count, int first_id) {
        if (count < 1) return;
        for (int i = 0; i < count; ++i) stretches[owner].push_back(first_id - i);
        whole.reset();
    }
    void Remove(int owner) {
        stretches.erase(owner);
        whole.reset();
    }
    void Clear() {
        stretches.clear();
        whole.reset();
    }
    const std::vector<int>& In(int owner) { return stretches[owner]; }

    const std::vector<int>& Whole(const Edge& edge) {
        if (whole) return *whole;
        whole.emplace();
        Node top = edge.From().GetOwner();
        for (Node p = top; p; p = p.GetOwner()) {
            const auto found = stretches.find(p.GetID());
            if (found == stretches.end()) continue;
            whole->insert(whole->end(), found->second.begin(), found->second.end());
            top = p;
        }
        std::vector<int> tail;
        for (Node q = edge.To().GetOwner(); q && q != top; q = q.GetOwner()) {
            const auto found = stretches.find(q.GetID());
            if (found == stretches.end()) continue;
            tail.insert(tail.begin(), found->second.begin(), found->second.end());
        }
        whole->insert(whole->end(), tail.begin(), tail.end());
        return *whole;
    }
};

class Session {
public:
    explicit Session(std::uint64_t seed) : random_(seed), g_(seed, {25, 30, 4, 0, 5}) {}

    void Run() {
        for (int step = 0; step < 250; ++step) {
            const Edge edge = random_.Of(g_.edges);
            const Node owner = random_.OneIn(3) ? g_.root : random_.Of(g_.nodes);
            ASSERT_NO_FATAL_FAILURE(act(edge, owner));
        }
        for (const Edge& edge : g_.edges) ASSERT_NO_FATAL_FAILURE(compare(edge));
    }

private:
    void act(Edge edge, const Node& owner) {
        PlainRoute& plain = plain_[edge.GetID()];
        switch (random_.Below(14)) {
            case 0:
            case 1:
            case 2:
            case 3: {
                const int count = random_.Between(-1, 3);
                plain.Add(owner.GetID(), count, DummyNodeImpl::current_id);
                edge.AddBreakNodesIn(owner, count);
                break;
            }
            case 4:
                plain.Remove(owner.GetID());
                edge.RemoveBreakNodesIn(owner);
                break;
            case 5:
                if (!random_.OneIn(5)) break;
                plain.Clear();
                edge.RemoveBreakNodes();
                break;
            case 6:
                ASSERT_EQ(Ids(edge.GetBreakNodesIn(owner)), plain.In(owner.GetID()));
                break;
            case 7:
            case 8:
            case 9:
                compare(edge);
                break;
            case 10: {
                Node node = random_.Of(g_.nodes);
                if (node != owner) node.SetOwner(owner);
                break;
            }
            case 11:
                g_.graph->HitEdgeTest(0, 0, 10, 10);
                for (const Edge& each : g_.edges) {
                    // Only edges that somebody asked about have a route at all.
                    if (plain_.count(each.GetID()) != 0) plain_[each.GetID()].Whole(each);
                }
                break;
            case 12:
                MoveNode(owner, 1, 1);
                for (const Edge& each : owner.GetEdgesOut()) plain_[each.GetID()].Whole(each);
                for (const Edge& each : owner.GetEdgesIn()) plain_[each.GetID()].Whole(each);
                break;
            default:
                shift(owner);
        }
    }

    void compare(const Edge& edge) {
        ASSERT_EQ(Ids(edge.GetBreakNodes()), plain_[edge.GetID()].Whole(edge));
    }

    void shift(const Node& top) {
        ShiftPosition(top, 0.0, 0.0);
        ForEachNodeIn(
            top,
            [&](const Node& node) {
                const int owner = node.GetOwner().GetID();
                for (const auto collect : {GetChildrenEx, GetEdgesOutEx, GetEdgesInEx}) {
                    const auto pairs = collect(node);
                    for (const NodeEdgePair& pair : *pairs) {
                        plain_[pair.edge.GetID()].In(owner);
                    }
                }
            },
            false, false);
    }

    Random random_;
    RandomGraph g_;
    std::map<int, PlainRoute> plain_;
};

TEST(Routes, AreWhatTheirDefinitionSaysAfterAnySequenceOfCalls) {
    for (std::uint64_t seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ASSERT_NO_FATAL_FAILURE(Session(seed).Run());
    }
}

}  // namespace
}  // namespace nodeline::test

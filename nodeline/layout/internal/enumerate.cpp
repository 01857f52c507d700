#include <nodeline/layout/internal/steps.h>

#include <climits>
#include <functional>
#include <queue>
#include <utility>
#include <vector>

namespace nodeline::internal {

namespace {

// The greedy enumeration of one component: sources from the front, sinks from the back, and where a
// pass finds neither, the node with the largest surplus of outgoing over incoming edges.
//
// A pass takes what is ready in component order, and what becomes ready behind the place that it
// has reached; what becomes ready before that place waits for the next pass. Two heaps of places
// stand for this pass and the next one, so no pass walks nodes that are not ready.
class Enumeration {
public:
    Enumeration(LayoutRun& run, const std::vector<Vertex>& component)
        : run_(run), component_(component), nodes_(component.size()) {
        auto& place_of = run.number;  // still free: numbers are given out below
        for (std::size_t i = 0; i < component.size(); ++i) {
            at(place_of, component[i]) = static_cast<int>(i);
        }
        for (std::size_t i = 0; i < component.size(); ++i) count_degrees(static_cast<int>(i));
        high_ = static_cast<int>(component.size()) - 1;
    }

    void Run() {
        take_first_sweep();
        while (remaining_ > 0) {
            if (next_.empty()) {
                take(best(), low_++);
            } else {
                take_ready();
            }
        }
        for (std::size_t i = 0; i < component_.size(); ++i) {
            at(run_.number, component_[i]) = nodes_[i].number;
        }
    }

private:
    using Places = std::priority_queue<int, std::vector<int>, std::greater<>>;

    // Degrees count neighbours that have no number yet.
    struct State {
        int in = 0;
        int out = 0;
        int number = -1;
        bool queued = false;
    };

    // The place in the component.
    [[nodiscard]] int place(Vertex v) const { return at(run_.number, v); }

    // Among parallel edges the first one alone counts, at either end; loops count nowhere.
    void count_degrees(int i) {
        const Vertex v = at(component_, i);
        for (const auto kind : {OwnerEdges::kParents, OwnerEdges::kChildren}) {
            Vertex previous = kNoVertex;
            for (const auto& entry : run_.neighbours(kind, v)) {
                const bool first = entry.node != previous;
                previous = entry.node;
                if (!first || entry.node == v || run_.skips(entry.node)) continue;
                EdgeDirection& edge = at(run_.directions, entry.edge);
                if (kind == OwnerEdges::kParents) {
                    ++at(nodes_, i).in;
                    edge.counted_in = v;
                } else {
                    ++at(nodes_, i).out;
                    edge.counted_out = v;
                }
            }
        }
        ++remaining_;
    }

    // The first sweep goes by the plain degrees, in which a loop counts.
    void take_first_sweep() {
        bool found_source = false;
        std::vector<int> taken;
        for (int i = 0; i < static_cast<int>(component_.size()); ++i) {
            if (is_free(OwnerEdges::kParents, i)) {
                at(nodes_, i).number = 0;
                found_source = true;
            } else if (is_free(OwnerEdges::kChildren, i)) {
                at(nodes_, i).number = high_--;
            } else {
                continue;
            }
            taken.push_back(i);
        }
        low_ = found_source ? 1 : 0;
        for (const int i : taken) release_neighbours(i);
        for (int i = 0; i < static_cast<int>(component_.size()); ++i) queue_if_ready(i);
        remaining_ -= static_cast<int>(taken.size());
    }

    [[nodiscard]] bool is_free(OwnerEdges::Kind kind, int i) const {
        for (const auto& entry : run_.neighbours(kind, at(component_, i))) {
            if (!run_.skips(entry.node)) return false;
        }
        return true;
    }

    void take_ready() {
        std::swap(current_, next_);
        while (!current_.empty()) {
            reached_ = current_.top();
            current_.pop();
            take(reached_, at(nodes_, reached_).in == 0 ? low_++ : high_--);
        }
        reached_ = static_cast<int>(component_.size());
    }

    void take(int i, int number) {
        at(nodes_, i).number = number;
        at(nodes_, i).queued = true;
        --remaining_;
        release_neighbours(i);
    }

    // Takes the edges of a node out of the degrees.
    void release_neighbours(int i) {
        for (const auto kind : {OwnerEdges::kParents, OwnerEdges::kChildren}) {
            for (const auto& entry : run_.neighbours(kind, at(component_, i))) {
                EdgeDirection& edge = at(run_.directions, entry.edge);
                if (edge.marked) continue;
                edge.marked = true;
                if (edge.counted_in != kNoVertex) {
                    --at(nodes_, place(edge.counted_in)).in;
                    touch(place(edge.counted_in));
                }
                if (edge.counted_out != kNoVertex) {
                    --at(nodes_, place(edge.counted_out)).out;
                    touch(place(edge.counted_out));
                }
            }
        }
    }

    void touch(int i) {
        const State& state = at(nodes_, i);
        if (state.number != -1) return;
        if (has_surplus_) surplus_.push({state.out - state.in, -i});
        queue_if_ready(i);
    }

    void queue_if_ready(int i) {
        State& state = at(nodes_, i);
        if (state.number != -1 || state.queued || (state.in > 0 && state.out > 0)) return;
        state.queued = true;
        (i > reached_ ? current_ : next_).push(i);
    }

    // The node with the largest surplus, the first of equal ones. Entries of the heap that are out
    // of date are passed over; every change has entered a fresh one.
    int best() {
        if (!has_surplus_) {
            has_surplus_ = true;
            for (int i = 0; i < static_cast<int>(component_.size()); ++i) {
                const State& state = at(nodes_, i);
                if (state.number == -1) surplus_.push({state.out - state.in, -i});
            }
        }
        while (true) {
            const auto [surplus, negated] = surplus_.top();
            surplus_.pop();
            const State& state = at(nodes_, -negated);
            if (state.number == -1 && state.out - state.in == surplus) return -negated;
        }
    }

    LayoutRun& run_;
    const std::vector<Vertex>& component_;
    std::vector<State> nodes_;
    int low_ = 0;
    int high_ = 0;
    int remaining_ = 0;
    // The place that the pass has reached: past the end between passes.
    int reached_ = INT_MAX;
    Places current_;
    Places next_;
    bool has_surplus_ = false;
    std::priority_queue<std::pair<int, int>> surplus_;
};

}  // namespace

void enumerate_connectivity_component(LayoutRun& run, const std::vector<Vertex>& component) {
    Enumeration(run, component).Run();
}

}  // namespace nodeline::internal

// One layout run, taken step by step.
#pragma once

#include <nodeline/layout/internal/block_adjuster.h>
#include <nodeline/layout/internal/layout_engine.h>
#include <nodeline/layout/internal/steps.h>
#include <nodeline/model/graph.h>

#include <algorithm>
#include <vector>

namespace nodeline::test {

// A make of `owner` whose steps the test calls. Contents are not laid out.
class StepBench {
public:
    explicit StepBench(const Node& owner, const internal::LayoutSettings& settings = {})
        : run(settings, owner, internal::OwnerStore(), local) {
        run.in_any_order = true;
        run.load_positions();
    }

    // The place of a node in the columns; `kNoVertex` for a node of another owner.
    [[nodiscard]] internal::Vertex At(const Node& node) const {
        for (internal::Vertex v = 0; v < run.node_count(); ++v) {
            if (run.id_of(v) == node.GetID()) return v;
        }
        return internal::kNoVertex;
    }
    [[nodiscard]] internal::EdgeIndex At(const Edge& edge) const {
        for (internal::EdgeIndex e = 0; e < run.edge_count(); ++e) {
            const auto& state = internal::at(run.edges, e);
            if (state.vis && state.vis->impl()->get_id() == edge.GetID()) return e;
        }
        return -1;
    }

    [[nodiscard]] int LevelOf(const Node& node) const { return run.level_of(At(node)); }
    [[nodiscard]] int NumberOf(const Node& node) const {
        return internal::at(run.number, At(node));
    }
    [[nodiscard]] double& YOf(const Node& node) { return internal::at(run.y, At(node)); }
    [[nodiscard]] const internal::EdgeDirection& Way(const Edge& edge) const {
        return internal::at(run.directions, At(edge));
    }
    [[nodiscard]] int Lanes(const Node& node) const {
        return internal::at(run.backedge_count, At(node));
    }
    [[nodiscard]] int Bends(const Edge& edge) const {
        const auto* chain = internal::at(run.edges, At(edge)).chain;
        return chain == nullptr ? 0 : chain->GetCount();
    }
    // The vertex of a bend that stands in the table; `kNoVertex` for others.
    [[nodiscard]] internal::Vertex Bend(const Edge& edge, int index) const {
        const auto& state = internal::at(run.edges, At(edge));
        return internal::at(run.break_vertices(), state.region + index);
    }
    [[nodiscard]] int BendLevel(const Edge& edge, int index) {
        return run.break_info(At(edge), index).level;
    }
    // The level that holds a vertex; -1 for none.
    [[nodiscard]] int Shelf(internal::Vertex v) const {
        for (std::size_t k = 0; k < run.levels.size(); ++k) {
            const auto& level = run.levels[k];
            if (std::find(level.begin(), level.end(), v) != level.end()) return static_cast<int>(k);
        }
        return -1;
    }
    [[nodiscard]] std::vector<internal::Vertex> Neighbours(internal::Order side,
                                                           internal::Vertex v) const {
        std::vector<internal::Vertex> result;
        for (const auto& link : run.links(side, v)) result.push_back(link.node);
        return result;
    }
    [[nodiscard]] std::vector<internal::Vertex> Places(const std::vector<Node>& nodes) const {
        std::vector<internal::Vertex> result;
        for (const Node& node : nodes) result.push_back(At(node));
        return result;
    }

    internal::LocalInfos local;
    internal::LayoutRun run;
};

}  // namespace nodeline::test

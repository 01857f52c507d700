// Random sessions as replay scripts.
#pragma once

#include <support/random.h>
#include <support/scripts/script.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace nodeline::test {

struct ScriptPlan {
    int nodes = 12;
    int edges = 18;
    // A node lies at most so deep under the root when it is made; 1 keeps the graph flat.
    int depth = 3;
    int steps = 12;
    // Edges are as wide as this at the most.
    double most_width = 3.5;
    // With lines that a layout has to bear: positions that somebody else sets, numbers that do not
    // exist or exist already.
    bool wild = false;
};

// Plans of all shapes, by number.
[[nodiscard]] ScriptPlan PlanOf(std::uint64_t seed);

// A session with the stable layout. Each step changes something and asks for work, most of the
// time in the right place, and recalculates. Every line can be carried out, unless the plan is
// wild.
class RandomScript {
public:
    RandomScript(std::uint64_t seed, const ScriptPlan& plan);

    [[nodiscard]] const Script& lines() const { return lines_; }

private:
    struct KnownNode {
        int number;
        int owner;
    };
    struct KnownEdge {
        int number;
        int from;
        int to;
    };

    template <class... Words>
    void Say(const char* command, const Words&... words);
    void Step();
    void Change();
    void ChangeParts();
    void ChangeVisibility();
    void Toggle();
    void DoWildly();
    void AskForWork();
    void Ask(int number);
    void AddNode();
    void AddEdge(int from, int to);
    void RemoveNode();
    void RemoveEdge();
    void MoveNode();
    void Resize();
    [[nodiscard]] std::string RandomLength(int most);
    [[nodiscard]] int AnyNode();
    [[nodiscard]] int AnyOwner();
    [[nodiscard]] int OwnerOf(int number) const;
    [[nodiscard]] int DepthOf(int number) const;
    [[nodiscard]] bool LiesIn(int number, int owner) const;

    Random random_;
    ScriptPlan plan_;
    Script lines_;
    std::vector<KnownNode> nodes_;
    std::vector<KnownEdge> edges_;
    int last_node_ = 0;
    int last_edge_ = 0;
};

}  // namespace nodeline::test

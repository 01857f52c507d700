// Random changes of a graph, such as a person or a program makes to it while it is shown.
//
//   bench::Changer changer(graph.seed);
//   for (const bench::ChangeKind kind : changer.NextRound()) {
//       if (auto change = changer.Choose(kind, subject)) subject.Apply(*change);
//   }
#pragma once

#include <bench/stability_subject.h>

#include <array>
#include <optional>
#include <random>
#include <vector>

namespace nodeline::bench {

// The same changes for a seed and a graph on every machine.
class Changer {
public:
    explicit Changer(unsigned seed) : random_(seed) {}

    // One change of each kind in random order, but for a fold that comes before the unfold.
    std::array<ChangeKind, 5> NextRound();

    // A change of that kind to what is visible; none if there is nothing to which it could be done.
    // What is folded here counts as done: a later unfold may choose it.
    std::optional<Change> Choose(ChangeKind kind, const Subject& subject);

private:
    // From 0 to `count` - 1; `count` is positive. The distributions of the standard library differ
    // from one to the next, the engine does not.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(random_() % count); }
    int pick(const std::vector<int>& numbers) { return numbers[below(numbers.size())]; }
    std::optional<Change> choose_fold(const Subject& subject, const std::vector<int>& leaves);
    std::optional<Change> choose_unfold(const Subject& subject);
    std::optional<Change> choose_edge(const Subject& subject, const std::vector<int>& leaves);

    std::mt19937_64 random_;
    std::vector<int> folded_;
};

}  // namespace nodeline::bench

// The ids that nodes have in files.
#pragma once

#include <optional>
#include <vector>

namespace nodeline::formats {

// One id for each node: those that are wanted if there is one for every node, all are different,
// and none is 0, which stands for the root, or -1. Otherwise 1, 2, 3 and so on. Readers and writers
// share this rule, so that what is written and read again has the same ids.
[[nodiscard]] std::vector<int> ChooseIds(const std::vector<std::optional<int>>& wanted);

}  // namespace nodeline::formats

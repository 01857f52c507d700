#include <formats/file_ids.h>

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace nodeline::formats {

std::vector<int> ChooseIds(const std::vector<std::optional<int>>& wanted) {
    std::unordered_set<int> taken = {0, -1};
    const bool are_usable = std::all_of(wanted.begin(), wanted.end(), [&taken](const auto& id) {
        return id && taken.insert(*id).second;
    });
    std::vector<int> ids(wanted.size());
    if (are_usable) {
        std::transform(wanted.begin(), wanted.end(), ids.begin(),
                       [](const auto& id) { return *id; });
    } else {
        std::iota(ids.begin(), ids.end(), 1);
    }
    return ids;
}

}  // namespace nodeline::formats

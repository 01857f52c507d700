#include <apps/cli/view_change.h>

#include <apps/cli/failure.h>
#include <apps/cli/input.h>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

namespace nodeline::cli {

namespace {

// What no int can hold is no id of any node.
std::optional<int> id_of(std::string_view text) {
    int id = 0;
    const std::from_chars_result result =
        std::from_chars(text.data(), text.data() + text.size(), id);
    return result.ec == std::errc() ? std::optional<int>(id) : std::nullopt;
}

std::string describe(const std::string& name) {
    return IsId(name) ? "the id " + name : "the caption \"" + name + "\"";
}

}  // namespace

std::optional<Side> ParseSide(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos) return std::nullopt;
    const std::string direction = text.substr(colon + 1);
    if (direction == "parents") return Side{text.substr(0, colon), FoldParents};
    if (direction == "children") return Side{text.substr(0, colon), FoldChildren};
    return std::nullopt;
}

bool IsId(const std::string& text) {
    const std::size_t digits = text.rfind('-', 0) == 0 ? 1 : 0;
    return text.size() > digits &&
           text.find_first_not_of("0123456789", digits) == std::string::npos;
}

Node FindNode(const std::vector<Node>& nodes, const std::string& name, const std::string& path) {
    const bool by_id = IsId(name);
    const std::optional<int> id = by_id ? id_of(name) : std::nullopt;
    const auto is_named = [&](const Node& node) {
        return by_id ? id == node.GetTag() : node.GetCaption() == name;
    };
    const auto found = std::find_if(nodes.begin(), nodes.end(), is_named);
    if (found == nodes.end()) {
        throw Failure(kBadInput, Message(path, 0, "no node has " + describe(name)));
    }
    const auto count = std::count_if(found, nodes.end(), is_named);
    if (count > 1) {
        const std::string hint = by_id ? "" : "; an id tells which is meant";
        throw Failure(
            kBadInput,
            Message(path, 0, std::to_string(count) + " nodes have " + describe(name) + hint));
    }
    return *found;
}

void Apply(const ViewChange& change, Node node) {
    switch (change.kind) {
        case ViewChange::Kind::kFold:
            Fold(node, change.direction);
            return;
        case ViewChange::Kind::kUnfold:
            Unfold(node, change.direction);
            return;
        case ViewChange::Kind::kHide:
            Hide(node);
            node.GetOwner().UpdateLayout();
            return;
    }
}

}  // namespace nodeline::cli

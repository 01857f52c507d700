// The visible parts of a picture, as tests of pictures look at them.
#pragma once

#include <nodeline/model/graph.h>
#include <support/picture_rules.h>

#include <sstream>
#include <string>
#include <vector>

namespace nodeline::test {

// Less is rounding.
inline constexpr double kPictureSlack = 1e-6;

// Appends a fault, the parts written one behind the other.
template <class... Parts>
void Tell(std::vector<std::string>& faults, const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    faults.push_back(text.str());
}

struct Box {
    double left;
    double top;
    double right;
    double bottom;
};

[[nodiscard]] Box BoxOf(const Node& node);

// The node and all that it lies in, the root last.
[[nodiscard]] std::vector<Node> PathOf(Node node);

[[nodiscard]] bool IsHidden(const Node& node);
// Whether the node hangs under the root, and neither it nor anything that it lies in is hidden.
[[nodiscard]] bool IsShown(const Node& node);
// The visible nodes among those that an owner owns, itself excepted.
[[nodiscard]] std::vector<Node> ShownIn(const Node& owner);

[[nodiscard]] bool Holds(const std::vector<Node>& nodes, const Node& node);

// What is to be seen of a graph.
struct PictureParts {
    explicit PictureParts(const graph_ptr2<Graph>& graph);

    std::vector<Node> nodes;   // without the root
    std::vector<Node> owners;  // those that show something, the root among them
    std::vector<Edge> edges;   // those whose ends both show
};

// Appends the faults of owners and what lies in them; see `FindFaults`.
void FindFaultsOfRooms(const PictureParts& parts, const PictureRules& rules,
                       std::vector<std::string>& faults);

}  // namespace nodeline::test

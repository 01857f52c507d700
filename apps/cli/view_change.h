// Changes to what a picture shows, as the command line asks for them.
#pragma once

#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>

#include <optional>
#include <string>
#include <vector>

namespace nodeline::cli {

struct ViewChange {
    enum class Kind { kFold, kUnfold, kHide };

    Kind kind = Kind::kHide;
    // As the user names it: the id in the file, if this is an integer, else the caption.
    std::string node;
    // The side of a fold.
    FoldDirection direction = FoldParents;
};

// A side of a node, as in "NODE:parents" or "NODE:children". The last colon counts, so that
// captions may hold others. Nothing for any other text.
struct Side {
    std::string node;
    FoldDirection direction;
};
[[nodiscard]] std::optional<Side> ParseSide(const std::string& text);

// Whether a text is an integer, and so an id.
[[nodiscard]] bool IsId(const std::string& text);

// The one node among `nodes`, whose tags are their ids in the file `path`, that is named like this.
// None and several are a `Failure`.
[[nodiscard]] Node FindNode(const std::vector<Node>& nodes, const std::string& name,
                            const std::string& path);

// Carries a change out on the node that it names. The owner is then to be brought up to date.
void Apply(const ViewChange& change, Node node);

}  // namespace nodeline::cli

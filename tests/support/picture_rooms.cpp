// The rules of owners and what lies in them.
#include <nodeline/handlers/handlers.h>
#include <nodeline/model/break_nodes.h>
#include <support/picture_parts.h>
#include <support/picture_rules.h>

#include <algorithm>

namespace nodeline::test {

namespace {

class Room {
public:
    Room(const Node& owner, const PictureParts& parts, const PictureRules& rules,
         std::vector<std::string>& faults)
        : owner_(owner), outer_(BoxOf(owner)), parts_(parts), rules_(rules), faults_(faults) {}

    void Examine() {
        const std::vector<Node> shown = ShownIn(owner_);
        lowest_ = outer_.top;
        rightmost_ = outer_.left;
        for (std::size_t i = 0; i < shown.size(); ++i) {
            LookAtNode(shown[i]);
            for (std::size_t k = i + 1; k < shown.size(); ++k) LookAtPair(shown[i], shown[k]);
        }
        for (const Edge& edge : parts_.edges) LookAtBends(edge);
        LookAtSize();
    }

private:
    // The margin is that of nodes on top and below, and that of levels at the sides.
    void LookAtNode(const Node& node) {
        const Box box = BoxOf(node);
        if (box.left < outer_.left + rules_.level_spacing - kPictureSlack ||
            box.top < outer_.top + rules_.node_spacing - kPictureSlack ||
            box.right > outer_.right + kPictureSlack ||
            box.bottom > outer_.bottom - rules_.node_spacing + kPictureSlack) {
            Tell(faults_, "node ", node.GetID(), " is outside of ", owner_.GetID(),
                 " or in its margin");
        }
        lowest_ = std::max(lowest_, box.bottom);
        rightmost_ = std::max(rightmost_, box.right);
    }

    void LookAtPair(const Node& first, const Node& second) {
        const Box a = BoxOf(first);
        const Box b = BoxOf(second);
        const double gap = std::max(a.top, b.top) - std::min(a.bottom, b.bottom);
        const bool meets = a.left < b.right - kPictureSlack && b.left < a.right - kPictureSlack;
        if (meets && gap < rules_.node_spacing - kPictureSlack) {
            Tell(faults_, "nodes ", first.GetID(), " and ", second.GetID(), " are ", gap, " apart");
        }
    }

    // A line takes the room below its bends.
    void LookAtBends(const Edge& edge) {
        const graph_ptr<IEdgeVis> vis = edge.store()->get_edge_vis(edge.record());
        const auto* route = dynamic_cast<const DefaultEdgeVis*>(vis.get());
        const BreakChain* chain = route == nullptr ? nullptr : route->FindChain(owner_.GetID());
        if (chain == nullptr) return;
        bool strays = false;
        const double width = edge.GetHandler()->GetWidth(edge);
        for (int i = 0; i < chain->GetCount(); ++i) {
            const point<double>& p = chain->GetPositionAt(i);
            strays = strays || p.x < outer_.left - kPictureSlack ||
                     p.x > outer_.right + kPictureSlack ||
                     p.y < outer_.top + rules_.node_spacing - kPictureSlack ||
                     p.y > outer_.bottom - rules_.node_spacing + kPictureSlack;
            lowest_ = std::max(lowest_, p.y + width);
        }
        if (strays) {
            Tell(faults_, "edge ", edge.GetID(), " strays out of ", owner_.GetID(),
                 " or into its margin");
        }
    }

    void LookAtSize() {
        if (outer_.bottom > lowest_ + rules_.node_spacing + kPictureSlack) {
            Tell(faults_, "owner ", owner_.GetID(), " ends ", outer_.bottom - lowest_,
                 " below its contents");
        }
        const double right = rightmost_ + rules_.backedge_spacing + rules_.level_spacing;
        if (rules_.is_made && outer_.right > right + kPictureSlack) {
            Tell(faults_, "owner ", owner_.GetID(), " ends ", outer_.right - right,
                 " too far to the right");
        }
    }

    Node owner_;
    Box outer_;
    const PictureParts& parts_;
    const PictureRules& rules_;
    std::vector<std::string>& faults_;
    double lowest_ = 0.0;
    double rightmost_ = 0.0;
};

}  // namespace

void FindFaultsOfRooms(const PictureParts& parts, const PictureRules& rules,
                       std::vector<std::string>& faults) {
    for (const Node& owner : parts.owners) Room(owner, parts, rules, faults).Examine();
}

}  // namespace nodeline::test

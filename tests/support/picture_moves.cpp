#include <support/picture_moves.h>
#include <support/picture_parts.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace nodeline::test {

std::vector<PlacedNode> PlacesOf(const graph_ptr2<Graph>& graph) {
    std::vector<PlacedNode> places;
    for (const Node& node : PictureParts(graph).nodes) {
        const Box box = BoxOf(node);
        const Box owner = BoxOf(node.GetOwner());
        places.push_back({node.GetID(), node.GetOwner().GetID(), box.top - owner.top,
                          0.5 * (box.left + box.right) - owner.left, box.right - box.left,
                          owner.top == 0.0});
    }
    std::sort(places.begin(), places.end(),
              [](const PlacedNode& a, const PlacedNode& b) { return a.id < b.id; });
    return places;
}

namespace {

// One node in two pictures.
struct Move {
    PlacedNode before;
    PlacedNode after;

    [[nodiscard]] double dy() const { return after.y - before.y; }
};

class OwnerMoves {
public:
    OwnerMoves(std::vector<Move> moves, std::vector<std::string>& faults)
        : moves_(std::move(moves)), faults_(faults) {}

    void Examine() {
        LookAlongY();
        LookAlongX();
    }

private:
    void LookAlongY() {
        Sort([](const Move& m) { return m.before.y; });
        const Move* furthest = nullptr;
        for (const Move& m : moves_) {
            if (m.dy() < -kPictureSlack)
                Tell(faults_, "node ", m.before.id, " moves up by ", -m.dy());
            if (furthest != nullptr && m.dy() < furthest->dy() - kPictureSlack) {
                Tell(faults_, "node ", m.before.id, " moves down by ", m.dy(), ", node ",
                     furthest->before.id, " at or above it by ", furthest->dy());
            }
            if (furthest == nullptr || m.dy() > furthest->dy()) furthest = &m;
        }
        for (std::size_t i = 1; i < moves_.size(); ++i) {
            const Move& a = moves_[i - 1];
            const Move& b = moves_[i];
            const bool was_level = a.before.is_exact && a.before.y == b.before.y;
            if (was_level && std::abs(a.dy() - b.dy()) > kPictureSlack) {
                Tell(faults_, "nodes ", a.before.id, " and ", b.before.id, " were level");
            }
        }
    }

    void LookAlongX() {
        Sort([](const Move& m) { return m.before.centre; });
        for (std::size_t i = 0; i < moves_.size(); ++i) {
            const Move& b = moves_[i];
            if (b.after.centre < b.before.centre - kPictureSlack) {
                Tell(faults_, "node ", b.before.id, " moves left by ",
                     b.before.centre - b.after.centre);
            }
            if (i == 0) continue;
            const Move& a = moves_[i - 1];
            const bool shared = b.before.centre - a.before.centre <= kPictureSlack;
            const double apart = b.after.centre - a.after.centre;
            // Levels of nodes without a width may share an x, and part later.
            const bool may_part = a.before.width == 0.0 && b.before.width == 0.0;
            if (shared ? std::abs(apart) > kPictureSlack && !may_part : apart <= kPictureSlack) {
                Tell(faults_, "nodes ", a.before.id, " and ", b.before.id,
                     " change levels: ", b.before.centre - a.before.centre, " apart, then ", apart);
            }
        }
    }

    template <class Key>
    void Sort(Key key) {
        std::stable_sort(moves_.begin(), moves_.end(),
                         [&](const Move& a, const Move& b) { return key(a) < key(b); });
    }

    std::vector<Move> moves_;
    std::vector<std::string>& faults_;
};

}  // namespace

std::vector<std::string> FindWrongMoves(const std::vector<PlacedNode>& before,
                                        const std::vector<PlacedNode>& after,
                                        const std::function<bool(int)>& is_fresh) {
    std::map<int, std::vector<Move>> by_owner;
    auto now = after.begin();
    for (const PlacedNode& was : before) {
        while (now != after.end() && now->id < was.id) ++now;
        if (now == after.end() || now->id != was.id || now->owner_id != was.owner_id) continue;
        by_owner[was.owner_id].push_back({was, *now});
    }
    std::vector<std::string> faults;
    for (auto& [owner_id, moves] : by_owner) {
        if (!is_fresh(owner_id)) OwnerMoves(std::move(moves), faults).Examine();
    }
    return faults;
}

}  // namespace nodeline::test

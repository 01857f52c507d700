#include <nodeline/viewer/coords_keeper.h>

#include <exception>
#include <utility>

namespace nodeline {

CoordsKeeper::CoordsKeeper(IViewer* viewer, const Node& node, std::weak_ptr<const void> life)
    : viewer_(viewer),
      node_(node),
      position_(node.GetPosition()),
      life_(std::move(life)),
      is_watched_(!life_.expired()),
      exceptions_(std::uncaught_exceptions()) {}

CoordsKeeper::~CoordsKeeper() noexcept(false) {
    if (std::uncaught_exceptions() == exceptions_) {
        follow_node();
        return;
    }
    try {
        follow_node();
    } catch (...) {
        // The one that is on its way is told; a second would end the program.
    }
}

void CoordsKeeper::follow_node() {
    if (is_viewer_gone()) return;
    viewer_->RecalculateLayout();
    if (is_viewer_gone()) return;
    const point<double> p = node_.GetPosition();
    viewer_->SetStartY(p.y - position_.y + viewer_->GetStartY());
    if (is_viewer_gone()) return;
    viewer_->SetStartX(p.x - position_.x + viewer_->GetStartX());
}

}  // namespace nodeline

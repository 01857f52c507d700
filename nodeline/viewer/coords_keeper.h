// Coordinates keeper: holds a node in place on the screen while the layout moves it.
//
//   {
//       CoordsKeeper keeper(&viewer, node);
//       Fold(node, FoldChildren);
//   }  // the layout is done, and `node` stands at the pixel where it stood
#pragma once

#include <corvex/export.h>
#include <nodeline/viewer/viewer.h>

#include <memory>

namespace nodeline {

// Takes the position of a node, and at its own end brings the layout of the viewer up to date and
// moves the view by as much as the node has moved.
class NODELINE_API CoordsKeeper {
public:
    // The viewer must not be null. Where it may die before the keeper, or in the keeper's last
    // calls, `life` is the mark of its life (see `CVisualElement::GetLife`).
    CoordsKeeper(IViewer* viewer, const Node& node, std::weak_ptr<const void> life = {});
    // Passes on what layouts, handlers and slots throw, unless an exception is on its way already.
    ~CoordsKeeper() noexcept(false);
    CoordsKeeper(const CoordsKeeper&) = delete;
    CoordsKeeper& operator=(const CoordsKeeper&) = delete;

private:
    [[nodiscard]] bool is_viewer_gone() const { return is_watched_ && life_.expired(); }
    void follow_node();

    IViewer* viewer_;
    Node node_;
    point<double> position_;
    std::weak_ptr<const void> life_;
    bool is_watched_;
    int exceptions_;  // under way when the keeper was made
};

}  // namespace nodeline

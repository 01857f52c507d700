// Viewer edge handler: the edges of the desktop program, which step back where they are many and
// come forward where they matter.
#pragma once

#include <formats/looks.h>
#include <nodeline/handlers/handlers.h>
#include <paintcore/color.h>

#include <unordered_map>
#include <utility>

namespace nodeline::app {

// A `DummyEdgeHandler` whose edges fade towards the background as the picture gets smaller. Those
// of selected nodes, and the one under the pointer, keep a strong colour.
class ViewerEdgeHandler : public DummyEdgeHandler {
public:
    void Draw(Edge edge, IPainter* painter) override;
    void SetZoomFactor(double factor) override;

    // Colours and pens that a file gives its edges, by their ids.
    void SetLooks(std::unordered_map<int, formats::EdgeLook> looks) { looks_ = std::move(looks); }

    // To be read and changed.
    paintcore::_color background{255, 255, 255};
    paintcore::_color strong_color{0, 0, 0};

private:
    double contrast_ = 1.0;
    std::unordered_map<int, formats::EdgeLook> looks_;
};

}  // namespace nodeline::app

// Viewer node handler: the nodes of the desktop program, which tell owners from leaves and show
// their states by outlines as well as by colours.
//
//   graph_ptr2<ViewerNodeHandler> nodes(new ViewerNodeHandler, true);
//   ApplyLook(IsDark(palette), *nodes, *edges);
//   graph->SetDefaultNodeHandler(nodes);
#pragma once

#include <backends/qt/qt_painter.h>
#include <formats/looks.h>
#include <nodeline/handlers/port_node_handler.h>
#include <paintcore/color.h>

#include <unordered_map>
#include <utility>

namespace nodeline::app {

// How owners look, and outlines by state. The rest of the look is `GetDrawInfo()`.
struct StateLook {
    // Owners directly under the root, those in them, and so on in turn.
    paintcore::_color outer_fill{240, 240, 240};
    paintcore::_color inner_fill{250, 250, 250};
    paintcore::_color owner_border{160, 160, 160};
    paintcore::_color owner_text{0, 0, 0};
    // Outlines of leaves; those of selected ones are two pixels wide.
    paintcore::_color selected_border{0, 0, 0};
    paintcore::_color new_border{0, 0, 0};
    paintcore::_color hovered_border{0, 0, 0};
};

// A `PortNodeHandler` that measures captions by itself, as the Qt backend draws them, in the font
// of its look at every scale. Captions of owners are bold.
class ViewerNodeHandler : public PortNodeHandler {
public:
    ViewerNodeHandler();
    ~ViewerNodeHandler() override;

    void Draw(Node node, IPainter* painter) override;
    size<double> GetSize(Node node) override;
    NodeFrame GetSize(Node node, size<double> inner) override;

    // To be read and changed.
    [[nodiscard]] StateLook& GetStateLook() { return states_; }
    [[nodiscard]] const StateLook& GetStateLook() const { return states_; }

    // Colours and pens that a file gives its nodes, by their ids; states show on top of them.
    void SetLooks(std::unordered_map<int, formats::NodeLook> looks) { looks_ = std::move(looks); }

private:
    class Scope;

    qt::QtPainter measure_;
    StateLook states_;
    std::unordered_map<int, formats::NodeLook> looks_;
};

}  // namespace nodeline::app
